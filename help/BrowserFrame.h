#pragma once
// What the help window and the web window share: the browser with its toolbar of Back,
// Forward, Refresh and Home above it and an Exit button below, and the toolbar keys
// both treat alike.

#include <QString>
#include <functional>

class QDialog;
class QPushButton;
class QToolBar;
namespace platform
{
class Browser;
}

struct BrowserFrame {
    platform::Browser* browser;
    QToolBar* toolbar;
    QPushButton* exit;
};

// Each toolbar click hands its key to the window's handler; Exit closes the window.
BrowserFrame buildBrowserFrame(QDialog* window, const std::function<void(const QString& key)>& onButton);

// Back, Forward, Refresh, Search and Stop, and Home to the address given. Stop also
// gives the window the name of the page it stopped on. A call with nothing to do
// (Back with no history) does nothing.
void Browser_command(QDialog* window, platform::Browser* browser, const QString& key, const QString& home);

// Puts the window in the middle of its screen.
void Centre_window(QDialog* window);
