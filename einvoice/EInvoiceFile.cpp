#include "einvoice/EInvoiceFile.h"

#include "einvoice/FacturX.h"
#include "einvoice/InvoiceSource.h"
#include "report/ReportRenderer.h"
#include "store/Errors.h"

#include <QBuffer>
#include <algorithm>

namespace einvoice
{

Document readDocument(const QString& connectionString, const QString& invNo)
{
    Document d;
    d.invoice = loadInvoice(connectionString, invNo, &d.printed, &d.writtenOffCents);
    if (d.invoice.buyer.country.isEmpty())
        d.invoice.buyer.country = d.invoice.seller.country;
    d.conflict = conflictOf(d.invoice, d.printed);
    d.missing = missingOf(d.invoice);
    return d;
}

QStringList missingOf(const Invoice& inv)
{
    const QString seller = QStringLiteral(" (Tools > E-invoicing)");
    const QString customer = QStringLiteral(" (E-invoicing on the customer's record)");
    QStringList missing;
    if (inv.seller.name.trimmed().isEmpty())
        missing << QStringLiteral("the business name (Tools > Options)");
    if (inv.seller.country.isEmpty())
        missing << QStringLiteral("the seller's country code") + seller;
    const bool standardRated = inv.rateBasisPoints != 0 &&
                               std::any_of(inv.lines.begin(), inv.lines.end(), [](const Line& l) { return l.taxed; });
    if (inv.seller.vatId.isEmpty() && (standardRated || inv.seller.legalId.isEmpty()))
        missing << QStringLiteral("the seller's VAT identifier") + seller;
    if (inv.buyer.name.trimmed().isEmpty())
        missing << QStringLiteral("the customer's name on the invoice");
    if (inv.buyer.country.isEmpty())
        missing << QStringLiteral("the customer's country code") + customer;
    const bool reverseCharge = inv.untaxedCategory == QLatin1String("AE") &&
                               std::any_of(inv.lines.begin(), inv.lines.end(),
                                           [&](const Line& l) { return !l.taxed || inv.rateBasisPoints == 0; });
    if (reverseCharge && inv.buyer.vatId.isEmpty())
        missing << QStringLiteral("the customer's VAT identifier, for reverse charge") + customer;
    if (inv.currency.isEmpty())
        missing << QStringLiteral("the currency code") + seller;
    return missing;
}

QString missingText(const Document& d)
{
    return QStringLiteral("Invoice %1 cannot be an e-invoice yet. EN 16931 needs:\n- %2")
        .arg(d.invoice.number, d.missing.join(QStringLiteral("\n- ")));
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
