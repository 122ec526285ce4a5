#pragma once
// Pictures for toolbars and windows: the desktop theme's icon by its freedesktop name,
// so the program looks at home on each desktop, else the one shipped in the program.

#include <QIcon>
#include <QStyle>

namespace platform
{

QIcon themeIcon(const char* name);

// The list windows name their buttons by the style's pixmaps; this gives the theme icon
// of the same meaning, or the style's own picture where there is none.
QIcon standardIcon(QStyle::StandardPixmap pixmap);

} // namespace platform
