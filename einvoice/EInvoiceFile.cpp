#include "einvoice/EInvoiceFile.h"

#include "einvoice/FacturX.h"
#include "einvoice/InvoiceSource.h"
#include "report/ReportRenderer.h"
#include "store/Errors.h"

#include <QBuffer>

namespace einvoice
{

Document readDocument(const QString& connectionString, const QString& invNo)
{
    Document d;
    d.invoice = loadInvoice(connectionString, invNo, &d.printed, &d.writtenOffCents);
    d.conflict = conflictOf(d.invoice, d.printed);
    return d;
}

QString fileSuffix(Format format)
{
    return format == Format::FacturX ? QStringLiteral(".pdf") : QStringLiteral(".xml");
}

QString fileFilter(Format format)
{
    return format == Format::FacturX ? QStringLiteral("Factur-X PDF(*.pdf)|*.pdf")
                                     : QStringLiteral("E-invoice XML(*.xml)|*.xml");
}

QByteArray fileBytes(const Document& document, Format format, const report::Layout* page, const QDateTime& when)
{
    const QByteArray xml = toCii(document.invoice);
    if (format == Format::Cii)
        return xml;
    if (!page)
        throw VbError(err::ObjectNotSet, QStringLiteral("A Factur-X file needs the printed page"));
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    if (!page->writePdf(pdf, true))
        throw VbError(err::DeviceIO, QStringLiteral("The invoice's page could not be drawn"));
    return facturX(pdf.data(), xml, QStringLiteral("Invoice ") + document.invoice.number, when);
}

} // namespace einvoice
