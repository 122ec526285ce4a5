#pragma once
// The web window: the product's web site, with a caption that follows the page.

#include "help/BrowserFrame.h"

#include <QDialog>

class QTimer;

class frmBrowser : public QDialog
{
    Q_OBJECT
public:
    explicit frmBrowser(QWidget* parent = nullptr);

    void tbToolBar_ButtonClick(const QString& key);
    void timTimer_Timer();

private:
    void Form_Load();
    void brwWebBrowser_DocumentComplete();

    BrowserFrame frame_;
    QTimer* timTimer;
};
