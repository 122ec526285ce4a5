// The web engine behind the browser control, built as a plugin of its own: loading it
// links the engine's large libraries, which only the help and web windows need.

#include "platform/BrowserEngine.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QWebEngineHistory>
#include <QWebEngineView>

// Qt's own, from its private headers: the context the engine shares its drawing with.
QOpenGLContext* qt_gl_global_share_context();
void qt_gl_set_global_share_context(QOpenGLContext* context);

namespace
{

// The engine draws through a context shared with the application's, which Qt makes at
// start only when asked to before the application exists. Loaded later, the engine gets
// it made here, once, at its first use instead of at every start of the program.
void shareDrawingContext()
{
    if (qt_gl_global_share_context())
        return;
    auto* context = new QOpenGLContext(QCoreApplication::instance());
    context->setFormat(QSurfaceFormat::defaultFormat());
    context->create();
    qt_gl_set_global_share_context(context);
}

class WebEngine : public platform::BrowserEngine
{
public:
    explicit WebEngine(QWidget* parent) : view_((shareDrawingContext(), new QWebEngineView(parent)))
    {
        QObject::connect(view_, &QWebEngineView::loadStarted, view_, [this] {
            if (loadStarted)
                loadStarted();
        });
        QObject::connect(view_, &QWebEngineView::loadFinished, view_, [this] {
            if (loadFinished)
                loadFinished();
        });
    }
    // The view belongs to its parent widget; it must not call back into a gone engine.
    ~WebEngine() override { QObject::disconnect(view_, nullptr, nullptr, nullptr); }

    QWidget* view() override { return view_; }
    void load(const QUrl& url) override { view_->load(url); }
    bool back() override
    {
        if (!view_->history()->canGoBack())
            return false;
        view_->back();
        return true;
    }
    bool forward() override
    {
        if (!view_->history()->canGoForward())
            return false;
        view_->forward();
        return true;
    }
    void reload() override { view_->reload(); }
    void stop() override { view_->stop(); }
    QString title() const override { return view_->title(); }
    QUrl url() const override { return view_->url(); }

private:
    QWebEngineView* view_;
};

} // namespace

extern "C" Q_DECL_EXPORT platform::BrowserEngine* velkMakeBrowserEngine(QWidget* parent)
{
    return new WebEngine(parent);
}
