#pragma once
// A date field that takes a date typed the way it is written. Qt moves on to the next
// part of the date by itself once a day or month is complete; a separator typed just
// after that would skip a part ("15/07/2026" became 15/11/2026), so it is taken as the
// move already made.

#include <QDateEdit>

namespace platform
{

class DateBox : public QDateEdit
{
public:
    using QDateEdit::QDateEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool movedOn_ = false; // the last digit completed its part and moved to the next
};

} // namespace platform
