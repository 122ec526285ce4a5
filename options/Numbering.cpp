#include "options/Numbering.h"

#include "platform/Platform.h"
#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

namespace {

struct SeriesInfo {
    const char* table;
    const char* index;
    const char* idColumn;
    const char* nextColumn;  // as the saving routines spell it
    QString* prefix;
    QString* next;
    const char* inUseTitle;
    const char* inUseText;
};

SeriesInfo info(Series series)
{
    switch (series) {
    case Series::Invoice:
        return {"invoices", "INVNO", "InvNo", "Invstart", &settings.InvPrefix, &settings.Invstart,
                "Invoice Number Already In Use", "This Invoice number has already been used. Please try again!"};
    case Series::Customer:
        return {"CUSTOMERS", "CUSTID", "CustID", "Custstart", &settings.CustPrefix, &settings.CustStart,
                "Customer Number Already In Use", "This Customer number has already been used. Please try again!"};
    case Series::Item:
        break;
    }
    return {"parts", "ID", "ID", "Partstart", &settings.PartPrefix, &settings.PartStart,
            "Item\\Part Number Already In Use", "This Item\\Part number has already been used. Please try again!"};
}

bool freeForm(Series series)
{
    switch (series) {
    case Series::Invoice: return settings.FreeformInv == 1;
    case Series::Customer: return settings.freeformCus == 1;
    case Series::Item: return settings.freeformPart == 1;
    }
    return false;
}

}  // namespace

Proposal Propose_number(Series series)
{
    if (freeForm(series))
        return {QString(), true};
    const SeriesInfo s = info(series);
    if (series == Series::Invoice)
        return {s.prefix->trimmed() + s.next->trimmed(), false};
    QString number = *s.prefix + *s.next;
    qint64 n = Value(*s.next).toLong();
    Recordset rs;
    rs.open(QLatin1String(s.table), ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(QLatin1String(s.index));
    for (;;) {
        rs.seek(series == Series::Item ? number.trimmed() : number);
        if (rs.eof())
            break;
        const QString found = rs.field(QLatin1String(s.idColumn)).toText();
        const bool taken = series == Series::Customer ? found.toUpper() == number.toUpper()
                                                      : found.trimmed() == number.trimmed();
        if (!taken)
            break;
        ++n;
        number = *s.prefix + Zero_pad(n, int(s.next->size()));
    }
    rs.close();
    return {number, false};
}

void Advance_number(Series series, const QString& savedNumber)
{
    const SeriesInfo s = info(series);
    QString digits;
    for (const QChar c : savedNumber)
        if (c >= '0' && c <= '9')
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
    rs.open(QLatin1String(s.table), ConnectionString, Recordset::adLockPessimistic);
    rs.setIndex(QLatin1String(s.index));
    rs.seek(number);
    const bool taken = !rs.eof() && rs.field(QLatin1String(s.idColumn)).toText().toUpper() == number.toUpper();
    rs.close();
    if (taken)
        platform::MsgBox(QLatin1String(s.inUseText), platform::vbExclamation, QLatin1String(s.inUseTitle));
    return taken;
}
