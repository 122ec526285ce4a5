#pragma once
// "Comes to the front": a window's activation handler runs when the window first comes
// up and again whenever a window opened over it closes. Modal windows opened through
// showModal() are tracked here, so this holds under test as on the desktop.

#include <functional>

class QWidget;

namespace platform
{

// The window's handler; one per window, a later one replaces it.
void onActivate(QWidget* window, std::function<void()> handler);

// Brings a window that was not opened through showModal() (the main window) to the front.
void activate(QWidget* window);

} // namespace platform
