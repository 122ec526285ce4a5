#pragma once
// Document numbers: a prefix and a running number, whose width is the length of the
// stored next number. One rule serves invoices, customers and items; the credit series
// is kept in the settings but numbers nothing.

#include <QString>

enum class Series { Invoice, Customer, Item };

struct Proposal {
    QString number; // the text for the number box
    bool enabled;   // free form: the box is empty and open for typing
};

// The number a new record is offered. Invoices take the prefix and next number as they
// are, with no look-up; customers and items skip numbers already taken (customers
// compared upper-cased, items exactly after trimming the box).
Proposal Propose_number(Series series);

// After a new record of a numbered series is saved: the digits of the saved number plus
// one, padded or cut to the width of the current next number, become the next number in
// the settings row and the settings record.
void Advance_number(Series series, const QString& savedNumber);

// True when a record with this number exists (compared upper-cased); the user is told so
// with the series' own box.
bool Number_in_use(Series series, const QString& number);

// A next number must have at least four characters once trimmed.
bool Number_too_short(const QString& nextNumber);
// Tells the user so, titled for the series.
void Number_too_short_box(Series series);
