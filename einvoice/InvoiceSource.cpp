#include "einvoice/InvoiceSource.h"

#include "einvoice/Fields.h"

#include "store/Connection.h"
#include "store/Database.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Recordset.h"

namespace einvoice
{

namespace
{

qint64 cents(const Value& v)
{
    return v.isNull() ? 0 : v.toCurrency().ticks() / 100;
}

QString text(const Value& v)
{
    return v.isNull() ? QString() : v.toText();
}

// Seeks a table's index to the row whose column holds the key, as the windows find it.
bool find(Recordset& rs, const char* index, const QString& key)
{
    rs.setIndex(QLatin1String(index));
    rs.seek(key);
    return !rs.eof() && text(rs.field(index)).compare(key, Qt::CaseInsensitive) == 0;
}

} // namespace

Invoice loadInvoice(const QString& connectionString, const QString& invNo, Printed* printed, qint64* writtenOff)
{
    Recordset head;
    head.open(QStringLiteral("Invoices"), connectionString, Recordset::adLockReadOnly);
    if (!find(head, "InvNo", invNo))
        throw VbError(err::NoCurrentRecord, QStringLiteral("Invoice %1 not found").arg(invNo));
    Connection connection;
    connection.open(connectionString);
    Database& db = *connection.database();
    Invoice inv;
    inv.number = invNo;
    inv.issued = head.field("Date").toDate().date();
    inv.rateBasisPoints = int(qRound(head.field("TaxPer").toDouble() * 100));
    inv.discountCents = cents(head.field("Discount"));
    inv.prepaidCents = cents(head.field("Paid"));
    if (writtenOff)
        *writtenOff = cents(head.field("WrittenOff"));
    if (printed)
        *printed = {cents(head.field("Subtotal")), inv.discountCents, cents(head.field("Vat")),
                    cents(head.field("Total"))};
    const QString custNo = text(head.field("CustNo"));

    Recordset lines;
    lines.open(QStringLiteral("InvoiceD"), connectionString, Recordset::adLockReadOnly);
    // The invoice's lines are those the index holds under its number, in the order saved.
    for (bool at = find(lines, "InvNo", invNo); at && !lines.eof(); lines.moveNext()) {
        if (text(lines.field("InvNo")).compare(invNo, Qt::CaseInsensitive) != 0)
            break;
        const qint64 qty = lines.field("Qty").isNull() ? 0 : lines.field("Qty").toLong();
        // A line with no quantity counts once, as its total shows.
        inv.lines.push_back({text(lines.field("Description")), qty == 0 ? 1 : qty,
                             lines.field("Amount").isNull() ? 0 : lines.field("Amount").toCurrency().ticks(),
                             cents(lines.field("Total")),
                             !lines.field("Taxable").isNull() && lines.field("Taxable").toLong() != 0});
    }

    Recordset system;
    system.open(QStringLiteral("System"), connectionString, Recordset::adLockReadOnly);
    system.moveFirst();
    const QStringList address = text(system.field("Address")).split(QLatin1Char('\n'));
    inv.seller.name = text(system.field("BusinessName"));
    inv.seller.street = address.value(0).trimmed();
    inv.seller.city = address.value(1).trimmed();
    // Unset, the currency and the country follow the sign the setup wizard's country chose.
    const QString sign = text(system.field("Currency")).trimmed();
    inv.seller.country = eInvoiceSetting(db, QStringLiteral("Country"));
    if (inv.seller.country.isEmpty())
        inv.seller.country = defaultCountryCode(sign);
    inv.seller.vatId = eInvoiceSetting(db, QStringLiteral("VatId"));
    inv.seller.legalId = eInvoiceSetting(db, QStringLiteral("LegalId"));
    inv.seller.electronicAddress = eInvoiceSetting(db, QStringLiteral("ElectronicAddress"));
    inv.iban = eInvoiceSetting(db, QStringLiteral("IBAN"));
    inv.bic = eInvoiceSetting(db, QStringLiteral("BIC"));
    inv.currency = eInvoiceSetting(db, QStringLiteral("Currency"));
    if (inv.currency.isEmpty())
        inv.currency = defaultCurrencyCode(sign);
    inv.paymentTerms = eInvoiceSetting(db, QStringLiteral("PaymentTerms"));
    const QString untaxed = eInvoiceSetting(db, QStringLiteral("UntaxedCategory"));
    if (!untaxed.isEmpty())
        inv.untaxedCategory = untaxed;
    inv.exemptionReason = eInvoiceSetting(db, QStringLiteral("ExemptionReason"));

    Recordset customers;
    customers.open(QStringLiteral("Customers"), connectionString, Recordset::adLockReadOnly);
    inv.buyer.name = text(head.field("CustomerName"));
    if (find(customers, "CustID", custNo)) {
        inv.buyer.street = text(customers.field("Address"));
        inv.buyer.city = text(customers.field("City"));
        inv.buyer.postcode = text(customers.field("Postcode"));
    }
    inv.buyer.country = eInvoiceCustomerValue(db, custNo, QStringLiteral("Country"));
    inv.buyer.vatId = eInvoiceCustomerValue(db, custNo, QStringLiteral("VatId"));
    inv.buyer.electronicAddress = eInvoiceCustomerValue(db, custNo, QStringLiteral("ElectronicAddress"));
    inv.buyerReference = eInvoiceCustomerValue(db, custNo, QStringLiteral("BuyerReference"));
    return inv;
}

} // namespace einvoice
