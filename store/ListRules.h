#pragma once
// The rules every list window shares: sorting by a click on a heading, the text search
// with its two passes, and rows kept up to date one by one. Each window gives only its
// differences, as data.

#include "store/ListModel.h"

#include <QObject>
#include <QString>
#include <QTreeWidgetItem>
#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class ListView;

struct ListConfig {
    bool sortMarks = true;   // the headings show key1/key2 after a click
    int replacedColumn = -1; // a clicked column that sorts by a hidden one instead...
    int replacementColumn = -1;
    int furtherColumns = 0;        // columns searched besides the first
    QLabel* foundLabel = nullptr;  // where "Not Found" shows, if the window has one
    std::vector<int> moneyColumns; // right-aligned, so padded amounts line up by their last digit
};

// Right-aligns columns of a small list kept in a tree widget, headings and rows alike.
void alignMoneyColumns(QTreeWidget* list, const std::vector<int>& columns);

// A row of such a small list: compares by text, as the lists sort.
class ListRow : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override;
    // A row is aligned as its column's heading is.
    QVariant data(int column, int role) const override;
};

class ListRules : public QObject
{
    Q_OBJECT
public:
    ListRules(ListView* list, ListConfig config, QString module);

    // The search box and button: the box restarts the search when it takes the focus and
    // makes the button the default while it has it; the button runs Find.
    void attachSearch(QLineEdit* box, QPushButton* button, bool selectOnFocus);

    void columnClick(int column);
    void Find();
    void Find(const QString& text);

    // Adds a row: last in a list never sorted, at its sort place in a sorted one. Its
    // place is returned.
    int addRow(const QStringList& cells);
    // A whole reload: clears the list and runs fill, whose rows are appended as they
    // come and then sorted once, if the list is sorted.
    void reload(const std::function<void()>& fill);
    // Rewrites a row in place; it keeps its position until the next sort.
    void setRow(int row, const QStringList& cells);
    // Takes out the selected row and selects the one that then is current.
    void removeSelected();
    // The row selected, or -1.
    int selected() const;
    void select(int row);

    // The rows of a table, for the windows that list one; its index finds a row again by
    // its key. Each runs inside its window's failure trap.
    void setSource(ListModel::Source source, const QString& index);
    // The list read afresh in table order (then sorted, if it is), the first row selected
    // unless told otherwise.
    void loadRows(bool selectFirst = true);
    // Rewrites the selected row from the record found at or after the key.
    void refreshSelected(const QString& key);
    // Adds the row of the record found at or after the key, selected and in view.
    void addRecord(const QString& key);
    // Each time the window comes to the front: the list takes the focus when it has rows.
    void focusList();

    int SearchPos = 0;
    bool sorted() const { return sorted_; }
    int sortColumn() const { return sortColumn_; }
    Qt::SortOrder sortOrder() const { return order_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void sortRows();
    bool matches(const QStringList& cells, const QString& text) const;
    int firstMatch(int from, const QString& text, std::vector<char>& hits) const;
    // The texts of the record found at or after the key, if there is one.
    bool seekRow(const QString& key, QStringList& cells) const;

    ListView* list_;
    ListConfig config_;
    QString module_;
    QLineEdit* box_ = nullptr;
    QPushButton* button_ = nullptr;
    bool selectOnFocus_ = false;
    bool sorted_ = false;
    std::vector<QStringList>* loading_ = nullptr; // rows of a reload under way
    int sortColumn_ = 0;
    Qt::SortOrder order_ = Qt::AscendingOrder;
    QString index_;
};

// The heading mark a column shows ("key1", "key2" or empty), for checks.
QString headingMark(ListView* list, int column);
