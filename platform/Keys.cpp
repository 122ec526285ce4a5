#include "platform/Keys.h"

#include <QKeyEvent>
#include <QWidget>

namespace platform
{

namespace
{

int shiftState(Qt::KeyboardModifiers m)
{
    return (m & Qt::ShiftModifier ? vbShiftMask : 0) | (m & Qt::ControlModifier ? vbCtrlMask : 0) |
           (m & Qt::AltModifier ? vbAltMask : 0);
}

// One filter per control holds its three handlers.
class KeyFilter : public QObject
{
public:
    std::function<int(int)> press;
    std::function<void(int, int)> down;
    std::function<void(int, int)> up;

    static KeyFilter* of(QWidget* control)
    {
        for (QObject* child : control->children())
            if (auto* f = dynamic_cast<KeyFilter*>(child))
                return f;
        auto* f = new KeyFilter(control);
        control->installEventFilter(f);
        return f;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            auto* key = static_cast<QKeyEvent*>(event);
            if (down)
                down(key->key(), shiftState(key->modifiers()));
            const int ascii = keyAscii(*key);
            if (ascii != 0 && press && press(ascii) == 0)
                return true;
        } else if (event->type() == QEvent::KeyRelease && up) {
            auto* key = static_cast<QKeyEvent*>(event);
            up(key->key(), shiftState(key->modifiers()));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    explicit KeyFilter(QWidget* control) : QObject(control) {}
};

} // namespace

void onKeyPress(QWidget* control, std::function<int(int keyAscii)> handler)
{
    KeyFilter::of(control)->press = std::move(handler);
}

void onKeyDown(QWidget* control, std::function<void(int keyCode, int shift)> handler)
{
    KeyFilter::of(control)->down = std::move(handler);
}

void onKeyUp(QWidget* control, std::function<void(int keyCode, int shift)> handler)
{
    KeyFilter::of(control)->up = std::move(handler);
}

int keyAscii(const QKeyEvent& event)
{
    if (event.modifiers() & Qt::AltModifier)
        return 0; // a menu or button shortcut
    switch (event.key()) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 0;
    default:
        break;
    }
    if (event.modifiers() & Qt::ControlModifier)
        return event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z ? event.key() - Qt::Key_A + 1 : 0;
    const QString text = event.text();
    if (text.size() != 1 || text[0].unicode() < 32 || text[0].unicode() == 127)
        return 0;
    return text[0].unicode();
}

int numberKey(int keyAscii, const QString& text, bool point)
{
    if (keyAscii < 32 || (keyAscii >= '0' && keyAscii <= '9'))
        return keyAscii;
    if (point && keyAscii == '.' && !text.contains('.'))
        return keyAscii;
    return 0;
}

} // namespace platform
