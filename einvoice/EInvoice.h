#pragma once
// One invoice as EN 16931 sees it, and its figures by the norm's rules: each tax
// category's amount is its base times its rate rounded half up, and the discount
// lowers the standard-rated base.

#include <QDate>
#include <QString>
#include <QtGlobal>
#include <vector>

namespace einvoice
{

struct Party {
    QString name, street, city, postcode, country; // country: ISO 3166 two letters
    QString vatId, legalId, electronicAddress;
};

struct Line {
    QString name;
    qint64 quantity = 1;
    qint64 unitPriceTicks = 0; // ten-thousandths, as the store keeps money
    qint64 netCents = 0;       // the line total as the invoice prints it
    bool taxed = true;
};

struct Invoice {
    QString number, currency, buyerReference, paymentTerms, iban, bic;
    QDate issued, due;
    Party seller, buyer;
    std::vector<Line> lines;
    int rateBasisPoints = 0;                       // hundredths of a percent: 1900 = 19 %
    QString untaxedCategory = QStringLiteral("Z"); // Z zero-rated, E exempt, AE reverse charge
    QString exemptionReason;
    qint64 discountCents = 0; // lowers the standard-rated base
    qint64 prepaidCents = 0;
};

// One tax category's base and amount.
struct TaxBreakdown {
    QString category;
    int rateBasisPoints;
    qint64 baseCents, taxCents;
};

struct Totals {
    qint64 lineCents = 0, allowanceCents = 0, taxBasisCents = 0, taxCents = 0, grandCents = 0, dueCents = 0;
    std::vector<TaxBreakdown> taxes;
};

// Cents as the XML writes an amount: "-1234.50".
QString money(qint64 cents);

// Half up, away from zero, as the norm rounds a category's tax.
qint64 taxOf(qint64 baseCents, int rateBasisPoints);
Totals totalsOf(const Invoice& invoice);

// The invoice in the UN/CEFACT Cross Industry Invoice syntax, profile EN 16931.
QByteArray toCii(const Invoice& invoice);

} // namespace einvoice

namespace einvoice
{

// The figures the printed invoice shows.
struct Printed {
    qint64 subtotalCents = 0, discountCents = 0, taxCents = 0, totalCents = 0;
};

// Why the printed figures cannot stand in a valid EN 16931 invoice, naming the rule and
// the amounts; empty when they can.
QString conflictOf(const Invoice& invoice, const Printed& printed);

} // namespace einvoice
