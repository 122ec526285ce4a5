#include "help/frmBrowser.h"

#include "platform/Browser.h"
#include "store/Functions.h"
#include "store/Globals.h"

#include <QTimer>

frmBrowser::frmBrowser(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmBrowser"));
    setWindowTitle(ProductWebSite);
    frame_ = buildBrowserFrame(this, [this](const QString& key) { tbToolBar_ButtonClick(key); });
    connect(frame_.browser, &platform::Browser::DocumentComplete, this, &frmBrowser::brwWebBrowser_DocumentComplete);
    timTimer = new QTimer(this);
    timTimer->setObjectName(QStringLiteral("timTimer"));
    timTimer->setInterval(5);
    connect(timTimer, &QTimer::timeout, this, &frmBrowser::timTimer_Timer);
    Form_Load();
}

void frmBrowser::Form_Load()
{
    Busy_on();
    Centre_window(this);
    frame_.browser->Navigate(ProductWebSite);
    Busy_off();
}

void frmBrowser::tbToolBar_ButtonClick(const QString& key)
{
    timTimer->start();
    if (key == QLatin1String("Stop"))
        timTimer->stop();
    Browser_command(this, frame_.browser, key, ProductWebSite);
}

// While a page loads after a click the caption says so; then it names the page.
void frmBrowser::timTimer_Timer()
{
    if (frame_.browser->Busy()) {
        setWindowTitle(QStringLiteral("Working..."));
    } else {
        timTimer->stop();
        setWindowTitle(frame_.browser->LocationName());
    }
}

void frmBrowser::brwWebBrowser_DocumentComplete()
{
    setWindowTitle(frame_.browser->LocationName());
}
