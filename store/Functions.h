#pragma once
// The routines every window shares.

#include "store/Currency.h"
#include "store/ShapeRecordset.h"
#include "store/Value.h"

#include <QString>
#include <functional>
#include <memory>

QString Null_to_text(const Value& value);
// A fixed-point value with four decimals; a text that is not a number fails (13).
Currency Null_to_zero(const Value& value);

// Money and quantities on screen: the value by the mask of int_digits and dec_digits,
// right-aligned in int_digits + dec_digits (+1 for the point) characters; a wider value
// silently loses its left end.
QString Format_amount(double value, int intDigits, int decDigits);
QString Format_amount(Currency value, int intDigits, int decDigits);
// A text is formatted by its value when it is a number, and otherwise placed as it is.
QString Format_amount(const QString& text, int intDigits, int decDigits);
QString Zero_pad(const QString& value, int width);
QString Zero_pad(qint64 value, int width);
QString Right_align(const QString& text, int width);
QString Csv_field(const QString& line, int n);

void Busy_on();
void Busy_off();
qint16 busyCount();

// Opens a report's source on the shape connection. False when that connection is not
// open (the recordset is left alone), when the source fails (with no message), or when
// there are more rows than a 16-bit count holds (the rows are still there).
bool Open_shape(const QString& source, std::shared_ptr<ShapeRecordset>& recordset, const QStringList& fields = {});

bool Debug_mode();

// Shows the failure, writes Logs/YYYYMMDDhhmmss.log beside the program and ends it.
[[noreturn]] void Report_error(int number, const QString& module, const QString& procedure,
                               const QString& description = QString());
QString errorMessageText(int number, const QString& module, const QString& procedure, const QString& description);

// The failure trap of a procedure: runs the body, and sends any failure to Report_error
// with the module and procedure named.
void Trap(const QString& module, const char* procedure, const std::function<void()>& body);
// The same for a procedure that brackets its work with Busy_on and Busy_off: the trap
// calls Busy_off once before it reports.
void BusyTrap(const QString& module, const char* procedure, const std::function<void()>& body);
