#include "help/Help_frm.h"

#include "platform/Browser.h"
#include "platform/Platform.h"
#include "store/Functions.h"
#include "store/Globals.h"

Help_frm::Help_frm(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Help_frm"));
    setWindowTitle(QStringLiteral("Help"));
    frame_ = buildBrowserFrame(this, [this](const QString& key) { tbToolBar_ButtonClick(key); });
    Form_Load();
}

void Help_frm::Form_Load()
{
    Busy_on();
    frame_.browser->Navigate(platform::shippedFile(HelpTopic.trimmed()));
    Centre_window(this);
    Busy_off();
}

void Help_frm::tbToolBar_ButtonClick(const QString& key)
{
    // Home is the contents page, whichever page the window was opened on.
    Browser_command(this, frame_.browser, key, platform::shippedFile(QStringLiteral("help.htm")));
}

void Show_help(QWidget* opener, const QString& topic)
{
    HelpTopic = topic;
    Help_frm window(opener);
    platform::showModal(window);
}
