#include "help/BrowserFrame.h"

#include "platform/Browser.h"
#include "store/Errors.h"

#include <QAction>
#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

BrowserFrame buildBrowserFrame(QDialog* window, const std::function<void(const QString& key)>& onButton)
{
    BrowserFrame f;
    auto* layout = new QVBoxLayout(window);
    f.toolbar = new QToolBar(window);
    f.toolbar->setObjectName(QStringLiteral("tbToolBar"));
    f.toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const struct {
        const char* key;
        QStyle::StandardPixmap icon;
    } buttons[] = {{"Back", QStyle::SP_ArrowBack},
                   {"Forward", QStyle::SP_ArrowForward},
                   {"Refresh", QStyle::SP_BrowserReload},
                   {"Home", QStyle::SP_DirHomeIcon}};
    for (const auto& b : buttons) {
        const QString key = QLatin1String(b.key);
        QAction* a = f.toolbar->addAction(window->style()->standardIcon(b.icon), key);
        a->setObjectName(key);
        QObject::connect(a, &QAction::triggered, window, [onButton, key] { onButton(key); });
    }
    layout->addWidget(f.toolbar);

    // Without its engine the window could show nothing: that is a fault of the install.
    if (!platform::Browser::engineAvailable())
        throw VbError(err::FileNotFound, QStringLiteral("The web engine (libvelk-webengine.so) was not found"));
    f.browser = new platform::Browser(window);
    f.browser->setObjectName(QStringLiteral("brwWebBrowser"));
    layout->addWidget(f.browser, 1);

    auto* row = new QHBoxLayout;
    row->addStretch();
    f.exit = new QPushButton(QStringLiteral("&Exit"), window);
    f.exit->setObjectName(QStringLiteral("Exit_cmd"));
    QObject::connect(f.exit, &QPushButton::clicked, window, &QDialog::accept);
    row->addWidget(f.exit);
    layout->addLayout(row);
    window->resize(800, 600);
    return f;
}

void Browser_command(QDialog* window, platform::Browser* browser, const QString& key, const QString& home)
{
    if (key == QLatin1String("Back"))
        browser->GoBack();
    else if (key == QLatin1String("Forward"))
        browser->GoForward();
    else if (key == QLatin1String("Refresh"))
        browser->Refresh();
    else if (key == QLatin1String("Home"))
        browser->Navigate(home);
    else if (key == QLatin1String("Search"))
        browser->GoSearch();
    else if (key == QLatin1String("Stop")) {
        browser->Stop();
        window->setWindowTitle(browser->LocationName());
    }
}

void Centre_window(QDialog* window)
{
    if (const QScreen* screen = window->screen())
        window->move(screen->availableGeometry().center() - window->rect().center());
}
