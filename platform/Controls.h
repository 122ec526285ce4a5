#pragma once
// Making a window's controls: each named as the windows and their tests know it.

#include <QString>
#include <functional>

class QCheckBox;
class QDialog;
class QDialogButtonBox;
class QPushButton;
class QWidget;

namespace platform
{

template <class T> T* named(T* widget, const QString& name)
{
    widget->setObjectName(name);
    return widget;
}
QCheckBox* tick(const QString& name, const QString& caption, QWidget* parent);
// A button that is never the default: Enter in a box of the window does not press it.
QPushButton* button(const QString& name, const QString& caption, QWidget* parent);
// OK and Cancel, named OK_cmd and Cancel_cmd: OK runs its routine, Cancel closes the window.
QDialogButtonBox* okCancel(QDialog* dialog, const std::function<void()>& ok);

} // namespace platform
