#pragma once
// Tools > Import: a one-shot migration aid that loads Invoices1.csv from the program's
// folder. Every line makes one customer, one fully paid invoice and one or two invoice
// lines; fields stand by position, split at every comma.

#include <QByteArray>
#include <QString>

namespace safety
{

// Asks nothing and shows nothing when it succeeds. A missing file, a repeated customer
// or invoice number, or a value the store refuses ends the program through the failure
// box; every row stored before the failure stays, a half-done line included.
void mnuImport();

} // namespace safety
