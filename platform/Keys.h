#pragma once
// The classic key events of a control, as the windows were written for them. A key
// press is a key that types a character (letters, digits, punctuation, Backspace,
// Enter, Escape, and Ctrl with a letter); a key down and a key up are any key. Tab, the
// arrows, Alt with a letter and the other keys that move or command raise no key press.

#include <QString>
#include <functional>

class QKeyEvent;
class QWidget;

namespace platform
{

// Shift states in the classic bits.
enum ShiftState { vbShiftMask = 1, vbCtrlMask = 2, vbAltMask = 4 };

// A control gets its events in the classic order: key down, key press, then key up on
// release.
// The press handler sees the character code (8 Backspace, 13 Enter, 27 Escape) and
// answers the code to let through; 0 swallows the key.
void onKeyPress(QWidget* control, std::function<int(int keyAscii)> handler);
// Down and up see every key, as its Qt key code, with the shift state.
void onKeyDown(QWidget* control, std::function<void(int keyCode, int shift)> handler);
void onKeyUp(QWidget* control, std::function<void(int keyCode, int shift)> handler);

// The character code a key event types, or 0 when it raises no key press.
int keyAscii(const QKeyEvent& event);

// The filter of the number boxes: digits, and one point where a point is allowed and
// the text holds none yet. Backspace and the other control characters pass, so a paste
// (Ctrl+V) and the default and cancel buttons still work.
int numberKey(int keyAscii, const QString& text, bool point);

} // namespace platform
