#pragma once
// What the browser control asks of its web engine, which a plugin of its own provides.

#include <QString>
#include <QUrl>
#include <functional>

class QWidget;

namespace platform
{

class BrowserEngine
{
public:
    virtual ~BrowserEngine() = default;
    virtual QWidget* view() = 0;
    virtual void load(const QUrl& url) = 0;
    virtual bool back() = 0; // false when there is nothing to go back to
    virtual bool forward() = 0;
    virtual void reload() = 0;
    virtual void stop() = 0;
    virtual QString title() const = 0;
    virtual QUrl url() const = 0;
    // Set by the browser control before the first load.
    std::function<void()> loadStarted, loadFinished;
};

} // namespace platform

// The one function the engine's plugin exports.
using VelkBrowserEngineMaker = platform::BrowserEngine*(QWidget* parent);
