#include "store/Numbering.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbers.h"
#include "store/Recordset.h"
#include "store/Value.h"

namespace
{

struct SeriesInfo {
    const char* table;
    const char* index;
    const char* idColumn;
    const char* nextColumn; // as the saving routines spell it
    QString* prefix;
    QString* next;
    qint16* freeForm;
    const char* lengthTitle;
    const char* inUseTitle;
    const char* inUseText;
};

SeriesInfo info(Series series)
{
    switch (series) {
    case Series::Invoice:
        return {"invoices",
                "INVNO",
                "InvNo",
                "Invstart",
                &settings.InvPrefix,
                &settings.Invstart,
                &settings.FreeformInv,
                "Invoice Number",
                "Invoice Number Already In Use",
                "This Invoice number has already been used. Please try again!"};
    case Series::Customer:
        return {"CUSTOMERS",
                "CUSTID",
                "CustID",
                "Custstart",
                &settings.CustPrefix,
                &settings.CustStart,
                &settings.freeformCus,
                "Customer Number",
                "Customer Number Already In Use",
                "This Customer number has already been used. Please try again!"};
    case Series::Item:
        break;
    }
    return {"parts",
            "ID",
            "ID",
            "Partstart",
            &settings.PartPrefix,
            &settings.PartStart,
            &settings.freeformPart,
            "Item Number",
            "Item\\Part Number Already In Use",
            "This Item\\Part number has already been used. Please try again!"};
}

} // namespace

Proposal Propose_number(Series series)
{
    const SeriesInfo s = info(series);
    if (*s.freeForm == 1)
        return {QString(), true};
    if (series == Series::Invoice) // a taken invoice number is refused only at saving
        return {s.prefix->trimmed() + s.next->trimmed(), false};

    QString number = *s.prefix + *s.next;
    qint64 n = Value(*s.next).toLong();
    const int width = int(s.next->size());
    Recordset rs;
    rs.open(QLatin1String(s.table), ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(QLatin1String(s.index));
    for (;;) {
        rs.seek(number);
        if (rs.eof())
            break;
        const QString found = rs.field(QLatin1String(s.idColumn)).toText();
        // Items differing only by case are not skipped here; their save refuses them.
        const bool taken = series == Series::Customer ? found.toUpper() == number.toUpper() : found == number.trimmed();
        if (!taken)
            break;
        ++n;
        number = *s.prefix + Zero_pad(n, width);
    }
    rs.close();
    return {number, false};
}

void Advance_number(Series series, const QString& savedNumber)
{
    const SeriesInfo s = info(series);
    // Every digit counts, the prefix's too: they drop out at the cut to the width.
    QString digits;
    for (const QChar c : savedNumber)
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digits += c;
    const QString next = Zero_pad(numberText(Val(digits) + 1).trimmed(), int(s.next->size()));
    Recordset rs;
    rs.open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic);
    rs.moveFirst();
    rs.setField(QLatin1String(s.nextColumn), next);
    rs.update();
    rs.close();
    *s.next = next;
}

bool Number_in_use(Series series, const QString& number)
{
    const SeriesInfo s = info(series);
    Recordset rs;
    rs.open(QLatin1String(s.table), ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(QLatin1String(s.index));
    rs.seek(number);
    const bool taken = !rs.eof() && rs.field(QLatin1String(s.idColumn)).toText().toUpper() == number.toUpper();
    rs.close();
    if (taken)
        platform::MsgBox(QLatin1String(s.inUseText), platform::vbExclamation, QLatin1String(s.inUseTitle));
    return taken;
}

bool Number_too_short(const QString& nextNumber)
{
    return nextNumber.trimmed().size() < 4;
}

void Number_too_short_box(Series series)
{
    platform::MsgBox(QStringLiteral("Please enter a number 4 or more numbers long!"), platform::vbExclamation,
                     QLatin1String(info(series).lengthTitle));
}
