#include "platform/DateBox.h"

#include <QKeyEvent>

namespace platform
{

void DateBox::keyPressEvent(QKeyEvent* event)
{
    const QString text = event->text();
    const bool separator = text.size() == 1 && QStringLiteral("/.- ").contains(text[0]);
    if (separator && movedOn_) {
        movedOn_ = false;
        event->accept();
        return;
    }
    const Section before = currentSection();
    QDateEdit::keyPressEvent(event);
    movedOn_ = text.size() == 1 && text[0].isDigit() && currentSection() != before;
}

} // namespace platform
