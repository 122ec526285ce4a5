#include "platform/Browser.h"

#include <QUrl>
#include <QVBoxLayout>
#include <QWebEngineHistory>
#include <QWebEngineView>

namespace platform
{

namespace
{

// Where "Search" leads: the engine has no search page of its own.
const QString SearchPage = QStringLiteral("https://duckduckgo.com/");

} // namespace

Browser::Browser(QWidget* parent) : QWidget(parent), view_(new QWebEngineView(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    connect(view_, &QWebEngineView::loadStarted, this, [this] { busy_ = true; });
    connect(view_, &QWebEngineView::loadFinished, this, [this] {
        busy_ = false;
        emit DocumentComplete();
    });
}

void Browser::Navigate(const QString& address)
{
    const QUrl url(address);
    busy_ = true;
    view_->load(url.scheme().size() > 1 ? url : QUrl::fromLocalFile(address));
}

void Browser::GoBack()
{
    if (view_->history()->canGoBack()) {
        busy_ = true;
        view_->back();
    }
}

void Browser::GoForward()
{
    if (view_->history()->canGoForward()) {
        busy_ = true;
        view_->forward();
    }
}

void Browser::Refresh()
{
    if (view_->url().isEmpty())
        return;
    busy_ = true;
    view_->reload();
}

void Browser::GoSearch()
{
    Navigate(SearchPage);
}

void Browser::Stop()
{
    view_->stop();
    busy_ = false;
}

QString Browser::LocationName() const
{
    return view_->title();
}

QString Browser::LocationURL() const
{
    return view_->url().toString();
}

} // namespace platform
