#include "customers/CustomerRows.h"

#include "store/Functions.h"

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

QStringList customerRow(const Record& rs)
{
    auto plain = [&](const QString& column) { return rs.field(column).toText(); };
    const QStringList address{plain(QStringLiteral("address")), plain(QStringLiteral("address2")),
                              plain(QStringLiteral("city")), plain(QStringLiteral("address4")),
                              plain(QStringLiteral("postcode"))};
    return {rs.field(QStringLiteral("custid")).toText(),
            Null_to_text(rs.field(QStringLiteral("lastname"))) + QStringLiteral(", ") +
                plain(QStringLiteral("firstname")),
            Null_to_text(rs.field(QStringLiteral("phone"))), joinedAddress(address)};
}

ListModel::Source customerRows()
{
    return {QStringLiteral("customers"),
            {"custid", "lastname", "firstname", "phone", "address", "address2", "city", "address4", "postcode"},
            {"custid", "firstname", "address", "address2", "city", "address4", "postcode"},
            customerRow};
}
