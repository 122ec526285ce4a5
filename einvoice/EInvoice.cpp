#include "einvoice/EInvoice.h"

#include <QXmlStreamWriter>
#include <algorithm>

namespace einvoice
{

QString money(qint64 cents)
{
    const QString sign = cents < 0 ? QStringLiteral("-") : QString();
    const qint64 a = qAbs(cents);
    return sign + QString::number(a / 100) + QLatin1Char('.') +
           QStringLiteral("%1").arg(a % 100, 2, 10, QLatin1Char('0'));
}

namespace
{

QString unitPrice(qint64 ticks)
{
    const qint64 a = qAbs(ticks);
    return QString::number(a / 10000) + QLatin1Char('.') + QStringLiteral("%1").arg(a % 10000, 4, 10, QLatin1Char('0'));
}

QString percent(int basisPoints)
{
    return money(basisPoints);
}

// Standard rate needs a rate above zero: at a rate of 0 the taxed lines bear no tax
// either, so they go with the untaxed ones. The discount lowers the taxed base.
QString taxedCategory(const Invoice& inv)
{
    return inv.rateBasisPoints != 0 ? QStringLiteral("S") : inv.untaxedCategory;
}

QString categoryOf(const Invoice& inv, const Line& line)
{
    return line.taxed ? taxedCategory(inv) : inv.untaxedCategory;
}

int rateOf(const Invoice& inv, const QString& category)
{
    return category == QLatin1String("S") ? inv.rateBasisPoints : 0;
}

} // namespace

qint64 taxOf(qint64 baseCents, int rateBasisPoints)
{
    const qint64 product = baseCents * rateBasisPoints; // in 1/10000 of a cent
    const qint64 half = product < 0 ? -5000 : 5000;
    return (product + half) / 10000;
}

Totals totalsOf(const Invoice& inv)
{
    Totals t;
    for (const Line& line : inv.lines) {
        t.lineCents += line.netCents;
        const QString category = categoryOf(inv, line);
        auto it =
            std::find_if(t.taxes.begin(), t.taxes.end(), [&](const TaxBreakdown& b) { return b.category == category; });
        if (it == t.taxes.end())
            t.taxes.push_back({category, rateOf(inv, category), line.netCents, 0});
        else
            it->baseCents += line.netCents;
    }
    t.allowanceCents = inv.discountCents;
    if (inv.discountCents != 0) {
        const QString category = taxedCategory(inv);
        auto it =
            std::find_if(t.taxes.begin(), t.taxes.end(), [&](const TaxBreakdown& b) { return b.category == category; });
        if (it == t.taxes.end())
            t.taxes.push_back({category, rateOf(inv, category), -inv.discountCents, 0});
        else
            it->baseCents -= inv.discountCents;
    }
    for (TaxBreakdown& b : t.taxes) {
        b.taxCents = taxOf(b.baseCents, b.rateBasisPoints);
        t.taxCents += b.taxCents;
    }
    t.taxBasisCents = t.lineCents - t.allowanceCents;
    t.grandCents = t.taxBasisCents + t.taxCents;
    t.dueCents = t.grandCents - inv.prepaidCents;
    return t;
}

QString conflictOf(const Invoice& inv, const Printed& printed)
{
    const Totals t = totalsOf(inv);
    if (t.taxCents == printed.taxCents && t.grandCents == printed.totalCents)
        return QString();
    const QString category = taxedCategory(inv);
    const auto taxed = std::find_if(t.taxes.begin(), t.taxes.end(), [&](const TaxBreakdown& b) {
        return b.category == category && b.rateBasisPoints != 0;
    });
    const qint64 taxedBase = taxed == t.taxes.end() ? 0 : taxed->baseCents;
    if (inv.discountCents != 0 && taxed != t.taxes.end())
        return QStringLiteral("BR-S-08: the discount of %1 lowers the taxed base to %2, so the tax at %3 % is %4; "
                              "the invoice shows tax of %5 on the amount before the discount.")
            .arg(money(inv.discountCents), money(taxedBase), percent(inv.rateBasisPoints), money(t.taxCents),
                 money(printed.taxCents));
    return QStringLiteral("BR-CO-17: the tax on %1 at %2 %, rounded once, is %3; the invoice shows %4, the sum of "
                          "its rounded line taxes.")
        .arg(money(taxedBase), percent(inv.rateBasisPoints), money(t.taxCents), money(printed.taxCents));
}

namespace
{

const QString rsm = QStringLiteral("urn:un:unece:uncefact:data:standard:CrossIndustryInvoice:100");
const QString ram =
    QStringLiteral("urn:un:unece:uncefact:data:standard:ReusableAggregateBusinessInformationEntity:100");
const QString udt = QStringLiteral("urn:un:unece:uncefact:data:standard:UnqualifiedDataType:100");

void text(QXmlStreamWriter& w, const QString& name, const QString& value)
{
    w.writeTextElement(ram, name, value);
}

void amount(QXmlStreamWriter& w, const QString& name, qint64 cents, const QString& currency = QString())
{
    w.writeStartElement(ram, name);
    if (!currency.isEmpty())
        w.writeAttribute(QStringLiteral("currencyID"), currency);
    w.writeCharacters(money(cents));
    w.writeEndElement();
}

void date(QXmlStreamWriter& w, const QString& name, const QDate& d)
{
    w.writeStartElement(ram, name);
    w.writeStartElement(udt, QStringLiteral("DateTimeString"));
    w.writeAttribute(QStringLiteral("format"), QStringLiteral("102"));
    w.writeCharacters(d.toString(QStringLiteral("yyyyMMdd")));
    w.writeEndElement();
    w.writeEndElement();
}

void tax(QXmlStreamWriter& w, const QString& name, const QString& category, int rate)
{
    w.writeStartElement(ram, name);
    text(w, QStringLiteral("TypeCode"), QStringLiteral("VAT"));
    text(w, QStringLiteral("CategoryCode"), category);
    text(w, QStringLiteral("RateApplicablePercent"), percent(rate));
    w.writeEndElement();
}

// An identifier with its scheme inside its own element; absent when empty.
void schemed(QXmlStreamWriter& w, const QString& outer, const QString& inner, const QString& scheme,
             const QString& value)
{
    if (value.isEmpty())
        return;
    w.writeStartElement(ram, outer);
    w.writeStartElement(ram, inner);
    w.writeAttribute(QStringLiteral("schemeID"), scheme);
    w.writeCharacters(value);
    w.writeEndElement();
    w.writeEndElement();
}

void party(QXmlStreamWriter& w, const QString& name, const Party& p)
{
    w.writeStartElement(ram, name);
    text(w, QStringLiteral("Name"), p.name);
    if (!p.legalId.isEmpty()) {
        w.writeStartElement(ram, QStringLiteral("SpecifiedLegalOrganization"));
        text(w, QStringLiteral("ID"), p.legalId);
        w.writeEndElement();
    }
    w.writeStartElement(ram, QStringLiteral("PostalTradeAddress"));
    if (!p.postcode.isEmpty())
        text(w, QStringLiteral("PostcodeCode"), p.postcode);
    if (!p.street.isEmpty())
        text(w, QStringLiteral("LineOne"), p.street);
    if (!p.city.isEmpty())
        text(w, QStringLiteral("CityName"), p.city);
    text(w, QStringLiteral("CountryID"), p.country);
    w.writeEndElement();
    schemed(w, QStringLiteral("URIUniversalCommunication"), QStringLiteral("URIID"), QStringLiteral("EM"),
            p.electronicAddress);
    schemed(w, QStringLiteral("SpecifiedTaxRegistration"), QStringLiteral("ID"), QStringLiteral("VA"), p.vatId);
    w.writeEndElement();
}

void line(QXmlStreamWriter& w, const Invoice& inv, const Line& l, int index)
{
    w.writeStartElement(ram, QStringLiteral("IncludedSupplyChainTradeLineItem"));
    w.writeStartElement(ram, QStringLiteral("AssociatedDocumentLineDocument"));
    text(w, QStringLiteral("LineID"), QString::number(index));
    w.writeEndElement();
    w.writeStartElement(ram, QStringLiteral("SpecifiedTradeProduct"));
    text(w, QStringLiteral("Name"), l.name);
    w.writeEndElement();
    w.writeStartElement(ram, QStringLiteral("SpecifiedLineTradeAgreement"));
    w.writeStartElement(ram, QStringLiteral("NetPriceProductTradePrice"));
    text(w, QStringLiteral("ChargeAmount"), unitPrice(l.unitPriceTicks));
    w.writeEndElement();
    w.writeEndElement();
    w.writeStartElement(ram, QStringLiteral("SpecifiedLineTradeDelivery"));
    w.writeStartElement(ram, QStringLiteral("BilledQuantity"));
    w.writeAttribute(QStringLiteral("unitCode"), QStringLiteral("C62"));
    // A negative price is not allowed; a credit line carries its sign on the quantity.
    w.writeCharacters(QString::number(l.unitPriceTicks < 0 ? -l.quantity : l.quantity));
    w.writeEndElement();
    w.writeEndElement();
    w.writeStartElement(ram, QStringLiteral("SpecifiedLineTradeSettlement"));
    const QString category = categoryOf(inv, l);
    tax(w, QStringLiteral("ApplicableTradeTax"), category, rateOf(inv, category));
    w.writeStartElement(ram, QStringLiteral("SpecifiedTradeSettlementLineMonetarySummation"));
    amount(w, QStringLiteral("LineTotalAmount"), l.netCents);
    w.writeEndElement();
    w.writeEndElement();
    w.writeEndElement();
}

void settlement(QXmlStreamWriter& w, const Invoice& inv, const Totals& t)
{
    w.writeStartElement(ram, QStringLiteral("ApplicableHeaderTradeSettlement"));
    text(w, QStringLiteral("InvoiceCurrencyCode"), inv.currency);
    if (!inv.iban.isEmpty()) {
        w.writeStartElement(ram, QStringLiteral("SpecifiedTradeSettlementPaymentMeans"));
        text(w, QStringLiteral("TypeCode"), QStringLiteral("58"));
        w.writeStartElement(ram, QStringLiteral("PayeePartyCreditorFinancialAccount"));
        text(w, QStringLiteral("IBANID"), inv.iban);
        w.writeEndElement();
        if (!inv.bic.isEmpty()) {
            w.writeStartElement(ram, QStringLiteral("PayeeSpecifiedCreditorFinancialInstitution"));
            text(w, QStringLiteral("BICID"), inv.bic);
            w.writeEndElement();
        }
        w.writeEndElement();
    }
    for (const TaxBreakdown& b : t.taxes) {
        w.writeStartElement(ram, QStringLiteral("ApplicableTradeTax"));
        amount(w, QStringLiteral("CalculatedAmount"), b.taxCents);
        text(w, QStringLiteral("TypeCode"), QStringLiteral("VAT"));
        if (b.category == QLatin1String("E"))
            text(w, QStringLiteral("ExemptionReason"), inv.exemptionReason);
        else if (b.category == QLatin1String("AE"))
            text(w, QStringLiteral("ExemptionReason"), QStringLiteral("Reverse charge"));
        amount(w, QStringLiteral("BasisAmount"), b.baseCents);
        text(w, QStringLiteral("CategoryCode"), b.category);
        text(w, QStringLiteral("RateApplicablePercent"), percent(b.rateBasisPoints));
        w.writeEndElement();
    }
    if (inv.discountCents != 0) {
        w.writeStartElement(ram, QStringLiteral("SpecifiedTradeAllowanceCharge"));
        w.writeStartElement(ram, QStringLiteral("ChargeIndicator"));
        w.writeTextElement(udt, QStringLiteral("Indicator"), QStringLiteral("false"));
        w.writeEndElement();
        amount(w, QStringLiteral("ActualAmount"), inv.discountCents);
        text(w, QStringLiteral("Reason"), QStringLiteral("Discount"));
        const QString category = taxedCategory(inv);
        tax(w, QStringLiteral("CategoryTradeTax"), category, rateOf(inv, category));
        w.writeEndElement();
    }
    if (!inv.paymentTerms.isEmpty() || inv.due.isValid()) {
        w.writeStartElement(ram, QStringLiteral("SpecifiedTradePaymentTerms"));
        if (!inv.paymentTerms.isEmpty())
            text(w, QStringLiteral("Description"), inv.paymentTerms);
        if (inv.due.isValid())
            date(w, QStringLiteral("DueDateDateTime"), inv.due);
        w.writeEndElement();
    }
    w.writeStartElement(ram, QStringLiteral("SpecifiedTradeSettlementHeaderMonetarySummation"));
    amount(w, QStringLiteral("LineTotalAmount"), t.lineCents);
    if (t.allowanceCents != 0)
        amount(w, QStringLiteral("AllowanceTotalAmount"), t.allowanceCents);
    amount(w, QStringLiteral("TaxBasisTotalAmount"), t.taxBasisCents);
    amount(w, QStringLiteral("TaxTotalAmount"), t.taxCents, inv.currency);
    amount(w, QStringLiteral("GrandTotalAmount"), t.grandCents);
    if (inv.prepaidCents != 0)
        amount(w, QStringLiteral("TotalPrepaidAmount"), inv.prepaidCents);
    amount(w, QStringLiteral("DuePayableAmount"), t.dueCents);
    w.writeEndElement();
    w.writeEndElement();
}

} // namespace

QByteArray toCii(const Invoice& inv)
{
    const Totals t = totalsOf(inv);
    QByteArray out;
    QXmlStreamWriter w(&out);
    w.setAutoFormatting(true);
    w.writeStartDocument();
    w.writeNamespace(rsm, QStringLiteral("rsm"));
    w.writeNamespace(ram, QStringLiteral("ram"));
    w.writeNamespace(udt, QStringLiteral("udt"));
    w.writeStartElement(rsm, QStringLiteral("CrossIndustryInvoice"));
    w.writeStartElement(rsm, QStringLiteral("ExchangedDocumentContext"));
    w.writeStartElement(ram, QStringLiteral("GuidelineSpecifiedDocumentContextParameter"));
    text(w, QStringLiteral("ID"), QStringLiteral("urn:cen.eu:en16931:2017"));
    w.writeEndElement();
    w.writeEndElement();
    w.writeStartElement(rsm, QStringLiteral("ExchangedDocument"));
    text(w, QStringLiteral("ID"), inv.number);
    text(w, QStringLiteral("TypeCode"), QStringLiteral("380"));
    date(w, QStringLiteral("IssueDateTime"), inv.issued);
    w.writeEndElement();
    w.writeStartElement(rsm, QStringLiteral("SupplyChainTradeTransaction"));
    for (size_t i = 0; i < inv.lines.size(); ++i)
        line(w, inv, inv.lines[i], int(i) + 1);
    w.writeStartElement(ram, QStringLiteral("ApplicableHeaderTradeAgreement"));
    if (!inv.buyerReference.isEmpty())
        text(w, QStringLiteral("BuyerReference"), inv.buyerReference);
    party(w, QStringLiteral("SellerTradeParty"), inv.seller);
    party(w, QStringLiteral("BuyerTradeParty"), inv.buyer);
    w.writeEndElement();
    w.writeEmptyElement(ram, QStringLiteral("ApplicableHeaderTradeDelivery"));
    settlement(w, inv, t);
    w.writeEndElement();
    w.writeEndElement();
    w.writeEndDocument();
    return out;
}

} // namespace einvoice
