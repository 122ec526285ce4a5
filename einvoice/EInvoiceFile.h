#pragma once
// One saved invoice as an e-invoice file, for the invoice window, the invoice list and the
// command line alike: read, checked against its printed figures, written.

#include "einvoice/EInvoice.h"

#include <QDateTime>
#include <QStringList>

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
    QStringList missing;        // what the rules require that is not filled in, and where
    Totals totals() const { return totalsOf(invoice); }
};

// Fails with the store's number when the invoice is not in the file. A customer with no
// country code of its own is taken to be in the seller's.
Document readDocument(const QString& connectionString, const QString& invNo);

// What the EN 16931 rules require of an invoice that its data lacks, each naming where
// the user fills it in; empty when nothing is missing.
QStringList missingOf(const Invoice& invoice);
// The box's text for them: "Invoice INV7 cannot be an e-invoice yet. EN 16931 needs ...".
QString missingText(const Document& document);

// ".pdf" or ".xml", and the file dialog's filter for it.
QString fileSuffix(Format format);
QString fileFilter(Format format);

// The file's bytes: the XML alone, or the page laid out as printed made archival with the
// XML inside. A document with a conflict is written only when issued corrected, its page
// already showing the norm's figures.
QByteArray fileBytes(const Document& document, Format format, const report::Layout* page, const QDateTime& when);

} // namespace einvoice
