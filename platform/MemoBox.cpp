#include "platform/MemoBox.h"

MemoBox::MemoBox(int maxLength, QWidget* parent) : QPlainTextEdit(parent), maxLength_(maxLength)
{
    setTabChangesFocus(true);
    // Typing and pasting alike stop at the limit.
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        const QString t = toPlainText();
        if (t.size() > maxLength_) {
            QTextCursor c = textCursor();
            const int pos = std::min(c.position(), maxLength_);
            QSignalBlocker block(this);
            setPlainText(t.left(maxLength_));
            c = textCursor();
            c.setPosition(pos);
            setTextCursor(c);
        }
    });
}
