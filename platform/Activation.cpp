#include "platform/Activation.h"
#include "platform/Platform.h"
#include "platform/Shortcuts.h"
#include "platform/Window.h"

#include <QDialog>
#include <QPointer>
#include <vector>

namespace platform
{

namespace
{

const char* const HandlerName = "velkActivate";

// Lives as a child of its window, so it goes with it.
class Handler : public QObject
{
public:
    explicit Handler(QWidget* window) : QObject(window) { setObjectName(QLatin1String(HandlerName)); }
    std::function<void()> run;
    bool running = false;
};

Handler* handlerOf(QWidget* window)
{
    return dynamic_cast<Handler*>(window->findChild<QObject*>(QLatin1String(HandlerName), Qt::FindDirectChildrenOnly));
}

// The windows in front of each other, the front one last.
std::vector<QPointer<QWidget>>& front()
{
    static std::vector<QPointer<QWidget>> stack;
    return stack;
}

void runHandler(QWidget* window)
{
    // A window opened by the handler itself does not run it again when it closes.
    Handler* h = handlerOf(window);
    if (!h || !h->run || h->running)
        return;
    h->running = true;
    struct Done {
        QPointer<Handler> h;
        ~Done()
        {
            if (h)
                h->running = false;
        }
    } done{h};
    h->run();
}

void forgetClosed()
{
    auto& stack = front();
    std::erase_if(stack, [](const QPointer<QWidget>& w) { return w.isNull(); });
}

} // namespace

void onActivate(QWidget* window, std::function<void()> handler)
{
    Handler* h = handlerOf(window);
    if (!h)
        h = new Handler(window);
    h->run = std::move(handler);
}

void activate(QWidget* window)
{
    forgetClosed();
    auto& stack = front();
    std::erase(stack, QPointer<QWidget>(window));
    stack.push_back(window);
    runHandler(window);
}

int showModal(QDialog& dialog)
{
    fitToScreen(&dialog);
    addStandardShortcuts(&dialog);
    activate(&dialog);
    const int result = hooks().showModal(dialog);
    forgetClosed();
    std::erase(front(), QPointer<QWidget>(&dialog));
    if (!front().empty())
        runHandler(front().back());
    return result;
}

} // namespace platform
