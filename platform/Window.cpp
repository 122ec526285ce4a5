#include "platform/Window.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>

namespace platform
{

int fullLimitWidth(const QLineEdit* box)
{
    const QFontMetrics metrics = box->fontMetrics();
    // Short boxes hold codes in capitals, so they take their widest letter; longer ones
    // hold words and take the average character.
    const int n = box->maxLength();
    const int text = n <= 10 ? metrics.horizontalAdvance(QString(n, QLatin1Char('W'))) : n * metrics.averageCharWidth();
    const QMargins margins = box->textMargins();
    QStyleOptionFrame option;
    option.initFrom(box);
    option.lineWidth = box->hasFrame() ? box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, box) : 0;
    // The style's own room around the text: what it adds to a box of no text at all.
    const QSize frame = box->style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(0, 0), box);
    const int besideText = 2 * 2; // the box keeps two pixels clear on each side of its text
    return text + margins.left() + margins.right() + frame.width() + besideText;
}

void centreWindow(QWidget* window)
{
    for (QLineEdit* box : window->findChildren<QLineEdit*>()) {
        if (box->maxLength() < 32767 && box->minimumWidth() < fullLimitWidth(box))
            box->setMinimumWidth(fullLimitWidth(box));
    }
    window->resize(window->size().expandedTo(window->sizeHint()));
    QScreen* screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    window->move(area.center() - QPoint(window->width() / 2, window->height() / 2));
}

} // namespace platform
