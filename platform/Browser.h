#pragma once
// The browser control of the help and web windows: a real web engine behind the few
// operations those windows use. The engine reports its progress on its own; Busy()
// turns true as soon as a navigation is asked for, so that a caption timer started by
// the same click already sees the load. The engine is a plugin loaded when the first
// browser is made: a session that never opens help or the web window never loads it.

#include "platform/BrowserEngine.h"

#include <QString>
#include <QWidget>
#include <memory>

namespace platform
{

class Browser : public QWidget
{
    Q_OBJECT
public:
    // Loads the engine's plugin, once; false when it is not where the program looks for
    // it. A browser is made only once this has said true.
    static bool engineAvailable();
    explicit Browser(QWidget* parent = nullptr);
    ~Browser() override;

    // An address with a scheme is a web address; anything else is a file on disk.
    void Navigate(const QString& address);
    void GoBack();
    void GoForward();
    void Refresh();
    void GoSearch();
    void Stop();

    // The page's title, or its address while it has none.
    QString LocationName() const;
    QString LocationURL() const;
    bool Busy() const { return busy_; }

signals:
    void DocumentComplete();

private:
    std::unique_ptr<BrowserEngine> engine_;
    bool busy_ = false;
};

} // namespace platform
