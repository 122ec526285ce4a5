#pragma once
// The frame every list window is built on: a toolbar whose buttons stand after
// separators (so in places 2, 4, 6, ...), a search row, the list and an Exit button.

#include <QStringList>
#include <QStyle>
#include <functional>
#include <vector>

class QDialog;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolBar;
class ListView;

struct ListButton {
    const char* caption;
    QStyle::StandardPixmap icon;
};

// The toolbar every record list shows: Add, Delete, the opening command (its caption
// given) and Help, at places 1 to 4.
std::vector<ListButton> recordButtons(const char* openCaption);

struct ListWindowPlan {
    std::vector<ListButton> buttons;
    std::function<void(int place)> onButton;
    const char* listName;
    QStringList headings;
    const char* searchName;
    int searchMaxLength = 0;      // 0: no limit
    std::function<void()> onOpen; // a double click or Enter on a row
};

struct ListWindow {
    QToolBar* toolbar;
    QLineEdit* search;
    QPushButton* searchButton;
    QLabel* found;
    ListView* list;
    QPushButton* exit;
};

ListWindow buildListWindow(QDialog* window, const ListWindowPlan& plan);
