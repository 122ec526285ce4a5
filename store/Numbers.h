#pragma once
// Reading numbers from text and writing them as text, the two ways the windows use.

#include <QDate>
#include <QDateTime>
#include <QString>

// Lenient reading: blanks are skipped, the leading number is taken as far as it goes
// with the point as decimal separator, the rest ignored; no number gives 0. Never fails.
double Val(const QString& text);

// Strict reading: the whole text, leading and trailing blanks apart, must be a number;
// otherwise error 13 (an empty text and "." included).
double strictNumber(const QString& text);
bool isNumeric(const QString& text);

// A double as text: up to 15 significant digits, no trailing zeros ("17.5", "0.1", "1E+20").
QString numberText(double value);

// Rounds to a 16-bit or 32-bit integer, halves to even; error 6 when out of range.
qint16 toInt16(double value);
qint32 toInt32(double value);

// A whole number of units of 10^-places as decimal text, such as "-12.30"; trimmed, the
// fraction's closing zeros go, and its point with them. Written by hand: lists and
// exports turn every amount into text.
QString decimalText(bool negative, quint64 units, int places, bool trimmed);

// Dates as the windows show them, and as the store keeps them.
QString dateText(const QDate& date);          // DD/MM/YYYY
QString dateTimeText(const QDateTime& value); // DD/MM/YYYY, with hh:mm:ss when there is a time
QString isoDateText(const QDateTime& value);  // YYYY-MM-DD, with " hh:mm:ss" when there is a time
QDateTime parseIsoDate(const QString& text);  // invalid when the text is not such a date
