#include "einvoice/Fields.h"

#include <QLocale>
#include <QRegularExpression>

namespace einvoice
{

const std::vector<Field>& sellerFields()
{
    static const std::vector<Field> fields{{"Country", "Country code:", 2},
                                           {"VatId", "VAT identifier:", 20},
                                           {"LegalId", "Legal registration:", 50},
                                           {"ElectronicAddress", "Electronic address:", 100},
                                           {"IBAN", "IBAN:", 34},
                                           {"BIC", "BIC:", 11},
                                           {"Currency", "Currency code:", 3},
                                           {"PaymentTerms", "Payment terms:", 100}};
    return fields;
}

const std::vector<Field>& customerFields()
{
    static const std::vector<Field> fields{{"Country", "Country code:", 2},
                                           {"VatId", "VAT identifier:", 20},
                                           {"BuyerReference", "Buyer reference (Leitweg-ID):", 50},
                                           {"ElectronicAddress", "Electronic address:", 100}};
    return fields;
}

namespace
{

// ISO 13616: the country and check digits moved to the end, letters as numbers, mod 97 is 1.
bool ibanChecks(const QString& iban)
{
    const QString moved = iban.mid(4) + iban.left(4);
    int remainder = 0;
    for (const QChar c : moved) {
        const int value = c.isDigit() ? c.digitValue() : c.unicode() - 'A' + 10;
        remainder = (remainder * (value > 9 ? 100 : 10) + value) % 97;
    }
    return remainder == 1;
}

} // namespace

QString fieldProblem(const QString& name, const QString& value)
{
    if (value.isEmpty())
        return QString();
    const auto matches = [&](const char* pattern) {
        return QRegularExpression(QStringLiteral("^(?:%1)$").arg(QLatin1String(pattern))).match(value).hasMatch();
    };
    if (name == QLatin1String("Country") && !matches("[A-Z]{2}"))
        return QStringLiteral("The country code is two capital letters, as DE or FR.");
    if (name == QLatin1String("Currency") && !matches("[A-Z]{3}"))
        return QStringLiteral("The currency code is three capital letters, as EUR.");
    if (name == QLatin1String("VatId") && !matches("[A-Z]{2}[0-9A-Za-z+*.]{2,12}"))
        return QStringLiteral("The VAT identifier starts with its country's two letters, as DE123456789.");
    if (name == QLatin1String("IBAN") && (!matches("[A-Z]{2}[0-9]{2}[A-Z0-9]{11,30}") || !ibanChecks(value)))
        return QStringLiteral("This IBAN is not valid: its check digits do not match. Write it without blanks.");
    if (name == QLatin1String("BIC") && !matches("[A-Z]{6}[A-Z0-9]{2}(?:[A-Z0-9]{3})?"))
        return QStringLiteral("The BIC has 8 or 11 letters and digits, as COBADEFFXXX.");
    if (name == QLatin1String("ElectronicAddress") && !matches("[^@\\s]+@[^@\\s]+\\.[^@\\s]+"))
        return QStringLiteral("The electronic address is an e-mail address, as invoices@example.com.");
    return QString();
}

QString defaultCurrencyCode(const QString& sign)
{
    if (sign == QLatin1String("$"))
        return QStringLiteral("USD");
    if (sign == QStringLiteral("\u00a3"))
        return QStringLiteral("GBP");
    return QStringLiteral("EUR");
}

QString defaultCountryCode(const QString& sign)
{
    if (sign == QLatin1String("$"))
        return QStringLiteral("US");
    if (sign == QStringLiteral("\u00a3"))
        return QStringLiteral("GB");
    return QLocale::territoryToCode(QLocale::system().territory());
}

QString writtenOffNote()
{
    return QStringLiteral("A written-off amount is not part of an e-invoice: it shows the total, the amount paid and "
                          "the amount due.");
}

const std::vector<std::pair<QString, QString>>& untaxedCategories()
{
    static const std::vector<std::pair<QString, QString>> categories{
        {QStringLiteral("Z"), QStringLiteral("Zero-rated")},
        {QStringLiteral("E"), QStringLiteral("Exempt")},
        {QStringLiteral("AE"), QStringLiteral("Reverse charge")}};
    return categories;
}

} // namespace einvoice
