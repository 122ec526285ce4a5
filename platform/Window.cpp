#include "platform/Window.h"

#include <QGuiApplication>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QVBoxLayout>
#include <algorithm>

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
    fitToScreen(window);
    const QScreen* screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    window->move(area.center() - QPoint(window->width() / 2, window->height() / 2));
}

void fitToScreen(QWidget* window)
{
    const QScreen* screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    const QSize room = area.size() - QSize(8, 40); // the window's frame and title bar
    QLayout* layout = window->layout();
    const QSize needed = layout ? layout->minimumSize() : window->minimumSizeHint();
    const bool scrolling = window->findChild<QScrollArea*>(QStringLiteral("WindowBody"), Qt::FindDirectChildrenOnly);
    if (layout && !scrolling && (needed.width() > room.width() || needed.height() > room.height())) {
        // Setting the layout on another widget takes its controls along with it.
        auto* body = new QWidget;
        body->setLayout(layout);
        auto* scroll = new QScrollArea(window);
        scroll->setObjectName(QStringLiteral("WindowBody"));
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidgetResizable(true);
        scroll->setWidget(body);
        auto* outer = new QVBoxLayout(window);
        outer->setContentsMargins(0, 0, 0, 0);
        outer->addWidget(scroll);
    }
    // A window that never set its size takes what its controls need, as showing it would.
    window->resize(window->size().expandedTo(needed).boundedTo(room));
    // Wholly on the screen: a window that hung over an edge comes back inside it.
    const QRect frame(window->pos(), window->size() + QSize(8, 40));
    if (!area.contains(frame))
        window->move(std::clamp(frame.left(), area.left(), std::max(area.left(), area.right() - frame.width())),
                     std::clamp(frame.top(), area.top(), std::max(area.top(), area.bottom() - frame.height())));
}

} // namespace platform
