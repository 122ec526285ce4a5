#include "store/SettingsTable.h"

#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

namespace
{

using R = SettingsRecord;

template <int N> SettingsColumn fixed(const char* column, FixedText<N> R::*field, bool trimmed = false)
{
    return {column, field, N, NullRule::Empty, trimmed};
}
SettingsColumn text(const char* column, QString R::*field)
{
    return {column, field, 0, NullRule::Empty, false};
}
SettingsColumn number(const char* column, qint16 R::*field, NullRule null = NullRule::Zero)
{
    return {column, field, 0, null, false};
}

const SettingsColumn* find(const QString& column)
{
    for (const SettingsColumn& c : settingsColumns())
        if (column.compare(QLatin1String(c.column), Qt::CaseInsensitive) == 0)
            return &c;
    return nullptr;
}

// A value into its field, as an assignment to the field's type converts it.
void assign(const SettingsColumn& c, const Value& value)
{
    std::visit(
        [&](auto field) {
            using T = std::remove_reference_t<decltype(settings.*field)>;
            if constexpr (std::is_same_v<T, qint16>)
                settings.*field = value.toInt16();
            else if constexpr (std::is_same_v<T, double>)
                settings.*field = value.toDouble();
            else
                settings.*field = value.toText();
        },
        c.field);
}

} // namespace

const std::vector<SettingsColumn>& settingsColumns()
{
    static const std::vector<SettingsColumn> columns = {
        fixed("BusinessName", &R::BusinessName),
        text("Address", &R::Address),
        fixed("Phone", &R::Phone),
        fixed("Mobile", &R::Mobile),
        fixed("Email", &R::Email),
        fixed("Web", &R::Web),
        text("InvPrefix", &R::InvPrefix),
        text("CrdPrefix", &R::CrdPrefix),
        text("CustPrefix", &R::CustPrefix),
        text("PartPrefix", &R::PartPrefix),
        text("CustStart", &R::CustStart),
        text("Invstart", &R::Invstart),
        text("CrdStart", &R::CrdStart),
        text("PartStart", &R::PartStart),
        fixed("Currency", &R::Currency),
        fixed("TaxName", &R::TaxName),
        fixed("TaxNo", &R::TaxNo),
        {"TaxAmount", &R::TaxAmount, 0, NullRule::Zero, false},
        number("TaxEnabled", &R::TaxEnabled),
        text("DefaultStart", &R::DefaultStart),
        text("DefaultEnd", &R::DefaultEnd),
        number("Debtorstart", &R::Debtorstart), // a text column that must hold a number
        text("Reminder1", &R::Reminder1),
        text("Reminder2", &R::Reminder2),
        text("Reminder3", &R::Reminder3),
        number("FreeFormInv", &R::FreeformInv, NullRule::Fails),
        number("FreeformCus", &R::freeformCus, NullRule::Fails),
        number("FreeformPart", &R::freeformPart, NullRule::Fails),
        number("FreeFormCrd", &R::FreeformCrd, NullRule::Fails),
        number("includeshipping", &R::IncludeShipping),
        number("includeterms", &R::IncludeTerms),
        number("includestatement", &R::IncludeStatement),
        text("Statement", &R::Statement),
        text("Terms1", &R::terms1),
        number("ConfirmExit", &R::ConfirmExit),
        number("ConfirmBackup", &R::ConfirmBackup),
        number("ConfirmAll", &R::ConfirmAll),
        number("FaxVisible", &R::FaxVisible),
        number("phoneVisible", &R::phoneVisible),
        number("emailVisible", &R::emailVisible),
        number("webVisible", &R::webVisible),
        number("shippingVisible", &R::shippingVisible),
        number("mobileVisible", &R::mobileVisible),
        number("Text1Visible", &R::text1Visible),
        number("Text2Visible", &R::text2Visible),
        number("Text3Visible", &R::text3Visible),
        number("Text4Visible", &R::text4Visible),
        fixed("Text1Name", &R::text1Name, true),
        fixed("Text2Name", &R::text2Name, true),
        fixed("Text3Name", &R::text3Name, true),
        fixed("Text4Name", &R::text4Name, true),
        number("Present", &R::Present),
        text("InvoiceType", &R::InvoiceType),
        text("logopath", &R::Logopath),
    };
    return columns;
}

void loadSettings(const Recordset& rs)
{
    for (const SettingsColumn& c : settingsColumns()) {
        const Value v = rs.field(QLatin1String(c.column));
        switch (c.null) {
        case NullRule::Empty: {
            const QString t = Null_to_text(v);
            assign(c, c.trimmed ? t.trimmed() : t);
            break;
        }
        case NullRule::Zero: {
            const double d = Null_to_zero(v).toDouble();
            if (std::holds_alternative<double R::*>(c.field))
                assign(c, d);
            else
                assign(c, Value(qint64(toInt16(d))));
            break;
        }
        case NullRule::Fails:
            assign(c, v.toInt16());
            break;
        }
    }
}

void writeSettings(Recordset& rs, const SettingsValues& values)
{
    for (const auto& [column, value] : values)
        rs.setField(column, value);
}

void copySettings(const SettingsValues& values)
{
    for (const auto& [column, value] : values) {
        const SettingsColumn* c = find(column);
        if (!c)
            throw VbError(err::ItemNotFound);
        assign(*c, value);
    }
}
