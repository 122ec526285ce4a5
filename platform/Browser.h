#pragma once
// The browser control of the help and web windows: a real web engine behind the few
// operations those windows use. The engine reports its progress on its own; Busy()
// turns true as soon as a navigation is asked for, so that a caption timer started by
// the same click already sees the load.

#include <QString>
#include <QWidget>

class QWebEngineView;

namespace platform
{

class Browser : public QWidget
{
    Q_OBJECT
public:
    explicit Browser(QWidget* parent = nullptr);

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
    QWebEngineView* view_;
    bool busy_ = false;
};

} // namespace platform
