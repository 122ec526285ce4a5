#pragma once
// The help window: one of the program's help pages, from the program's folder.

#include "help/BrowserFrame.h"

#include <QDialog>

class Help_frm : public QDialog
{
    Q_OBJECT
public:
    explicit Help_frm(QWidget* parent = nullptr);

    void tbToolBar_ButtonClick(const QString& key);

private:
    void Form_Load();

    BrowserFrame frame_;
};

// Opens the help window over the opener on the page named ("customers.htm"); every
// window with a Help button calls this.
void Show_help(QWidget* opener, const QString& topic);
