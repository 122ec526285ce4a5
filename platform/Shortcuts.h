#pragma once
// The usual desktop keys for the commands a window already has, found by their captions:
// Ctrl+S saves and Ctrl+P prints in a record window, Ctrl+N adds, F1 opens help, Escape
// presses Cancel, and Ctrl+Q quits the main window. A key only presses a command that
// is shown and enabled, as a click would; captions keep their "&" letters for Alt.

class QWidget;

namespace platform
{

// Run once before the window is first shown; running it again adds nothing.
void addStandardShortcuts(QWidget* window);

} // namespace platform
