#include "platform/Browser.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QVBoxLayout>

namespace platform
{

namespace
{

// Where "Search" leads: the engine has no search page of its own.
const QString SearchPage = QStringLiteral("https://duckduckgo.com/");

// The plugin stands beside the program in a build tree (or one folder up, for the test
// programs), and in the program's library folder when installed.
VelkBrowserEngineMaker* engineMaker()
{
    static VelkBrowserEngineMaker* maker = [] {
        const QDir here(QCoreApplication::applicationDirPath());
        for (const QString& folder : {here.path(), here.filePath(QStringLiteral("..")),
                                      here.filePath(QStringLiteral(VELK_PLUGIN_FROM_BINDIR))}) {
            QLibrary plugin(QDir(folder).filePath(QStringLiteral("libvelk-webengine.so")));
            if (auto* make = reinterpret_cast<VelkBrowserEngineMaker*>(plugin.resolve("velkMakeBrowserEngine")))
                return make;
        }
        return static_cast<VelkBrowserEngineMaker*>(nullptr);
    }();
    return maker;
}

} // namespace

bool Browser::engineAvailable()
{
    return engineMaker() != nullptr;
}

Browser::Browser(QWidget* parent) : QWidget(parent), engine_(engineMaker()(this))
{
    engine_->loadStarted = [this] { busy_ = true; };
    engine_->loadFinished = [this] {
        busy_ = false;
        emit DocumentComplete();
    };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(engine_->view());
}

// The engine's view is a child of this control and goes with it; the engine object
// itself is ours.
Browser::~Browser() = default;

void Browser::Navigate(const QString& address)
{
    const QUrl url(address);
    busy_ = true;
    engine_->load(url.scheme().size() > 1 ? url : QUrl::fromLocalFile(address));
}

void Browser::GoBack()
{
    if (engine_->back())
        busy_ = true;
}

void Browser::GoForward()
{
    if (engine_->forward())
        busy_ = true;
}

void Browser::Refresh()
{
    if (engine_->url().isEmpty())
        return;
    busy_ = true;
    engine_->reload();
}

void Browser::GoSearch()
{
    Navigate(SearchPage);
}

void Browser::Stop()
{
    engine_->stop();
    busy_ = false;
}

QString Browser::LocationName() const
{
    return engine_->title();
}

QString Browser::LocationURL() const
{
    return engine_->url().toString();
}

} // namespace platform
