#include "customers/CustomerRows.h"

#include "store/Functions.h"
#include "store/Recordset.h"

QString joinedAddress(const QStringList& parts)
{
    QString cell;
    for (int i = 0; i < parts.size(); ++i) {
        cell += parts[i];
        if (i < parts.size() - 1 && !parts[i].trimmed().isEmpty())
            cell += QStringLiteral(",  ");
    }
    return cell;
}

QStringList customerRow(const Recordset& rs)
{
    auto plain = [&](const char* column) { return rs.field(QLatin1String(column)).toText(); };
    const QStringList address{plain("address"), plain("address2"), plain("city"), plain("address4"), plain("postcode")};
    return {rs.field(QStringLiteral("custid")).toText(),
            Null_to_text(rs.field(QStringLiteral("lastname"))) + QStringLiteral(", ") + plain("firstname"),
            Null_to_text(rs.field(QStringLiteral("phone"))), joinedAddress(address)};
}
