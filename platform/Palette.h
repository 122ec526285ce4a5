#pragma once
// Selected rows that stay readable: the desktop's selection colours, in light or dark
// themes, do not always set text apart from its background by the 4.5:1 that small
// text needs.

#include <QColor>
#include <QPalette>

namespace platform
{

// The contrast ratio of two colours, 1 to 21, as accessibility guidelines measure it.
double contrast(const QColor& a, const QColor& b);
// The palette with its selection colours, in the active and inactive window, brought to
// at least 4.5:1: the text turns black or white, whichever stands out more, and the
// background darkens or lightens away from it until the two are far enough apart.
QPalette withReadableSelection(QPalette palette);
// Keeps the application's palette so, now and whenever the desktop changes it.
void keepSelectionReadable();

} // namespace platform
