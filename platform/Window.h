#pragma once
// Where a window stands and how big it is: sized once, so that every text box shows as
// many characters as it takes and nothing grows when hidden controls appear, then
// centred on the screen.

class QLineEdit;
class QWidget;

namespace platform
{

// Widens each text box of the window to its limit, sizes the window to hold all of its
// controls and centres it on the screen. Run once, at the end of building the window.
void centreWindow(QWidget* window);

// Keeps the window within the screen's free area, less room for its title bar. A window
// whose controls need more room than that gets them in a scrolling body, so that none is
// cut off on a small or magnified screen. Run before a window is shown; running it again
// changes nothing.
void fitToScreen(QWidget* window);

// The width a one-line box needs to show a text of its limit.
int fullLimitWidth(const QLineEdit* box);

} // namespace platform
