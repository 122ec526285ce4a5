#include "platform/Palette.h"

#include <QApplication>
#include <cmath>

namespace platform
{

namespace
{

constexpr double Readable = 4.5;

double luminance(const QColor& c)
{
    const auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

// Follows palette changes of the desktop; setting the mended palette comes back here once
// more and then finds nothing to mend.
class SelectionKeeper : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
            mend();
        return false;
    }
    static void mend()
    {
        const QPalette current = QApplication::palette();
        const QPalette readable = withReadableSelection(current);
        if (readable != current)
            QApplication::setPalette(readable);
    }
};

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QPalette withReadableSelection(QPalette palette)
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        QColor back = palette.color(group, QPalette::Highlight);
        QColor text = palette.color(group, QPalette::HighlightedText);
        if (contrast(back, text) >= Readable)
            continue;
        text = contrast(back, Qt::white) >= contrast(back, Qt::black) ? QColor(Qt::white) : QColor(Qt::black);
        // Toward black under white text, toward white under black text, keeping the hue.
        for (int step = 0; contrast(back, text) < Readable && step < 20; ++step)
            back = text == Qt::white ? back.darker(115) : back.lighter(115);
        palette.setColor(group, QPalette::Highlight, back);
        palette.setColor(group, QPalette::HighlightedText, text);
    }
    return palette;
}

void keepSelectionReadable()
{
    static SelectionKeeper* keeper = nullptr;
    if (!keeper) {
        keeper = new SelectionKeeper(qApp);
        qApp->installEventFilter(keeper);
    }
    SelectionKeeper::mend();
}

} // namespace platform
