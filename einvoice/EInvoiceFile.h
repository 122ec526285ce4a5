#pragma once
// One saved invoice as an e-invoice file, for the invoice window, the invoice list and the
// command line alike: read, checked against its printed figures, written.

#include "einvoice/EInvoice.h"

#include <QDateTime>

namespace report
{
class Layout;
}

namespace einvoice
{

enum class Format { FacturX, Cii };

struct Document {
    Invoice invoice;
    Printed printed;
    qint64 writtenOffCents = 0; // shown on the page, no part of the e-invoice
    QString conflict;           // why the printed figures cannot stand; empty when they can
    Totals totals() const { return totalsOf(invoice); }
};

// Fails with the store's number when the invoice is not in the file.
Document readDocument(const QString& connectionString, const QString& invNo);

// ".pdf" or ".xml", and the file dialog's filter for it.
QString fileSuffix(Format format);
QString fileFilter(Format format);

// The file's bytes: the XML alone, or the page laid out as printed made archival with the
// XML inside. A document with a conflict is written only when issued corrected, its page
// already showing the norm's figures.
QByteArray fileBytes(const Document& document, Format format, const report::Layout* page, const QDateTime& when);

} // namespace einvoice
