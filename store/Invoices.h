#pragma once
// Routines on the invoice tables that more than one window runs.

#include "store/Currency.h"

#include <QString>

// Deletes the invoice an at-or-after seek on the number reaches, then the lines of the
// trimmed number, which stand together in the InvNo index. Gives the deleted invoice's
// BALANCE (Null as 0). Not a transaction: a failure after the header is gone leaves its
// lines behind, as users have always had it.
Currency Delete_invoice(const QString& number);
