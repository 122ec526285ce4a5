#pragma once
// A saved invoice read from the data file as an e-invoice, with the figures it prints.

#include "einvoice/EInvoice.h"

namespace einvoice
{

// Fails with the store's number when the invoice is not there.
// The written-off amount, when asked, is no part of the e-invoice.
Invoice loadInvoice(const QString& connectionString, const QString& invNo, Printed* printed,
                    qint64* writtenOff = nullptr);

} // namespace einvoice
