#include "store/Schema.h"

#include <QStringList>

const std::vector<TableDef>& schemaTables()
{
    // Columns stand in the order they are created; a default of "0" on every number
    // column but the dates; text columns may hold an empty text even where required.
    static const std::vector<TableDef> tables = {
        {"Customers",
         {{"CustID", ColumnType::Text, 50, false, nullptr},     {"Date", ColumnType::Date, 0, true, nullptr},
          {"FirstName", ColumnType::Text, 50, true, nullptr},   {"LastName", ColumnType::Text, 50, true, nullptr},
          {"Phone", ColumnType::Text, 50, true, nullptr},       {"Mobile", ColumnType::Text, 50, true, nullptr},
          {"Email", ColumnType::Text, 50, true, nullptr},       {"Fax", ColumnType::Text, 50, true, nullptr},
          {"Address", ColumnType::Text, 50, true, nullptr},     {"Address2", ColumnType::Text, 50, true, nullptr},
          {"address4", ColumnType::Text, 50, true, nullptr},    {"City", ColumnType::Text, 50, true, nullptr},
          {"Postcode", ColumnType::Text, 50, true, nullptr},    {"DelAddress1", ColumnType::Text, 50, true, nullptr},
          {"DelAddress2", ColumnType::Text, 50, true, nullptr}, {"DelAddress3", ColumnType::Text, 50, true, nullptr},
          {"DelAddress4", ColumnType::Text, 50, true, nullptr}, {"DelAddress5", ColumnType::Text, 50, true, nullptr},
          {"Discount", ColumnType::Long, 0, true, "0"},         {"notes", ColumnType::Text, 200, true, nullptr}},
         {{"CustID", "CustID", true, false}, {"PrimaryKey", "CustID", true, true}}},
        {"InvoiceD",
         {{"InvNo", ColumnType::Text, 50, false, nullptr},
          {"PartID", ColumnType::Text, 50, true, nullptr},
          {"Qty", ColumnType::Long, 0, true, "0"},
          {"Description", ColumnType::Text, 200, true, nullptr},
          {"Amount", ColumnType::Currency, 0, true, "0"},
          {"Total", ColumnType::Currency, 0, true, "0"},
          {"Taxable", ColumnType::Long, 0, true, "0"}},
         {{"InvNo", "InvNo", false, false}, {"PartID", "PartID", false, false}}},
        {"Invoices",
         {{"InvNo", ColumnType::Text, 50, false, nullptr},    {"Date", ColumnType::Date, 0, true, nullptr},
          {"CustNo", ColumnType::Text, 50, true, nullptr},    {"CustomerName", ColumnType::Text, 50, true, nullptr},
          {"SalesNo", ColumnType::Text, 50, true, nullptr},   {"SalesPerson", ColumnType::Text, 50, true, nullptr},
          {"ShippedNo", ColumnType::Text, 50, true, nullptr}, {"TrackingNo", ColumnType::Text, 50, true, nullptr},
          {"Discount", ColumnType::Currency, 0, true, "0"},   {"DiscountPercentage", ColumnType::Double, 0, true, "0"},
          {"Notes", ColumnType::Text, 150, true, nullptr},    {"Subtotal", ColumnType::Currency, 0, true, "0"},
          {"Vat", ColumnType::Currency, 0, true, "0"},        {"Total", ColumnType::Currency, 0, true, "0"},
          {"WrittenOff", ColumnType::Currency, 0, true, "0"}, {"Paid", ColumnType::Currency, 0, true, "0"},
          {"Balance", ColumnType::Currency, 0, true, "0"},    {"Balance1", ColumnType::Currency, 0, true, "0"},
          {"Balance2", ColumnType::Currency, 0, true, "0"},   {"Balance3", ColumnType::Currency, 0, true, "0"},
          {"Phone", ColumnType::Text, 50, true, nullptr},     {"TaxPer", ColumnType::Double, 0, true, "0"},
          {"ReminderSent", ColumnType::Long, 0, true, "0"}},
         {{"InvNo", "InvNo", true, false}, {"PrimaryKey", "InvNo", true, false}, {"CustNo", "CustNo", false, false}}},
        {"Letters",
         {{"Address", ColumnType::Text, 200, true, nullptr}, {"Address2", ColumnType::Text, 50, true, nullptr},
          {"Balance", ColumnType::Currency, 0, true, "0"},   {"City", ColumnType::Text, 50, true, nullptr},
          {"CustID", ColumnType::Text, 50, true, nullptr},   {"Date", ColumnType::Date, 0, true, nullptr},
          {"Date2", ColumnType::Date, 0, true, nullptr},     {"Discount", ColumnType::Long, 0, true, "0"},
          {"Discount2", ColumnType::Currency, 0, true, "0"}, {"Email", ColumnType::Text, 50, true, nullptr},
          {"Fax", ColumnType::Text, 50, true, nullptr},      {"FirstName", ColumnType::Text, 50, true, nullptr},
          {"InvNo", ColumnType::Text, 50, true, nullptr},    {"LastName", ColumnType::Text, 50, true, nullptr},
          {"Mobile", ColumnType::Text, 50, true, nullptr},   {"notes", ColumnType::Text, 50, true, nullptr},
          {"Notes2", ColumnType::Text, 50, true, nullptr},   {"Paid", ColumnType::Currency, 0, true, "0"},
          {"Phone", ColumnType::Text, 50, true, nullptr},    {"Postcode", ColumnType::Text, 50, true, nullptr},
          {"Subtotal", ColumnType::Currency, 0, true, "0"},  {"Total", ColumnType::Currency, 0, true, "0"},
          {"Vat", ColumnType::Currency, 0, true, "0"},       {"WrittenOff", ColumnType::Currency, 0, true, "0"}},
         {{"Paid", "Paid", false, false}}},
        {"Parts",
         {{"ID", ColumnType::Text, 50, false, nullptr},
          {"ShortDesc", ColumnType::Text, 50, true, nullptr},
          {"Desc", ColumnType::Text, 200, true, nullptr},
          {"Price", ColumnType::Currency, 0, true, "0"},
          {"Taxable", ColumnType::Long, 0, true, "0"}},
         {{"PrimaryKey", "ID", true, true}, {"ID", "ID", false, false}}},
        {"System",
         {{"BusinessName", ColumnType::Text, 50, true, nullptr}, {"Address", ColumnType::Text, 151, true, nullptr},
          {"Contact", ColumnType::Text, 50, true, nullptr},      {"ConfirmAll", ColumnType::Long, 0, true, "0"},
          {"ConfirmBackup", ColumnType::Long, 0, true, "0"},     {"ConfirmExit", ColumnType::Long, 0, true, "0"},
          {"CrdPrefix", ColumnType::Text, 50, true, nullptr},    {"CrdStart", ColumnType::Text, 50, true, nullptr},
          {"Currency", ColumnType::Text, 50, true, nullptr},     {"CustPrefix", ColumnType::Text, 50, true, nullptr},
          {"CustStart", ColumnType::Text, 50, true, nullptr},    {"DateFormat", ColumnType::Text, 50, true, nullptr},
          {"Debtorstart", ColumnType::Text, 50, true, nullptr},  {"DefaultEnd", ColumnType::Text, 50, true, nullptr},
          {"DefaultStart", ColumnType::Text, 50, true, nullptr}, {"Email", ColumnType::Text, 50, true, nullptr},
          {"emailVisible", ColumnType::Long, 0, true, "0"},      {"FaxVisible", ColumnType::Long, 0, true, "0"},
          {"FreeFormCrd", ColumnType::Long, 0, true, "0"},       {"FreeformCus", ColumnType::Long, 0, true, "0"},
          {"FreeFormInv", ColumnType::Long, 0, true, "0"},       {"FreeformPart", ColumnType::Long, 0, true, "0"},
          {"includecompany", ColumnType::Long, 0, true, "0"},    {"includeshipping", ColumnType::Long, 0, true, "0"},
          {"includestatement", ColumnType::Long, 0, true, "0"},  {"includeterms", ColumnType::Long, 0, true, "0"},
          {"InvPrefix", ColumnType::Text, 50, true, nullptr},    {"Invstart", ColumnType::Text, 50, true, nullptr},
          {"Mobile", ColumnType::Text, 50, true, nullptr},       {"mobileVisible", ColumnType::Long, 0, true, "0"},
          {"NextCrd", ColumnType::Text, 50, true, nullptr},      {"NextCust", ColumnType::Text, 50, true, nullptr},
          {"NextInv", ColumnType::Text, 50, true, nullptr},      {"NextPart", ColumnType::Text, 50, true, nullptr},
          {"PartPrefix", ColumnType::Text, 50, true, nullptr},   {"PartStart", ColumnType::Text, 50, true, nullptr},
          {"Phone", ColumnType::Text, 50, true, nullptr},        {"phoneVisible", ColumnType::Long, 0, true, "0"},
          {"Reminder1", ColumnType::Text, 255, true, nullptr},   {"Reminder2", ColumnType::Text, 255, true, nullptr},
          {"Reminder3", ColumnType::Text, 255, true, nullptr},   {"Save", ColumnType::Long, 0, true, "0"},
          {"shippingVisible", ColumnType::Long, 0, true, "0"},   {"ShowShipping", ColumnType::Long, 0, true, "0"},
          {"Statement", ColumnType::Text, 100, true, nullptr},   {"TaxAmount", ColumnType::Double, 0, false, "0"},
          {"TaxEnabled", ColumnType::Long, 0, true, "0"},        {"TaxName", ColumnType::Text, 50, true, nullptr},
          {"TaxNo", ColumnType::Text, 50, true, nullptr},        {"Terms", ColumnType::Text, 255, true, nullptr},
          {"Terms1", ColumnType::Text, 250, true, nullptr},      {"Text1Name", ColumnType::Text, 50, true, nullptr},
          {"Text1Visible", ColumnType::Long, 0, true, "0"},      {"Text2Name", ColumnType::Text, 50, true, nullptr},
          {"Text2Visible", ColumnType::Long, 0, true, "0"},      {"Text3Name", ColumnType::Text, 50, false, nullptr},
          {"Text3Visible", ColumnType::Long, 0, true, "0"},      {"Text4Name", ColumnType::Text, 50, false, nullptr},
          {"Text4Visible", ColumnType::Long, 0, true, "0"},      {"Web", ColumnType::Text, 50, true, nullptr},
          {"webVisible", ColumnType::Long, 0, true, "0"},        {"Present", ColumnType::Long, 0, true, "0"},
          {"InvoiceType", ColumnType::Text, 50, true, nullptr},  {"logopath", ColumnType::Text, 200, true, nullptr}},
         {}},
    };
    return tables;
}

const TableDef* schemaTable(const QString& name)
{
    for (const TableDef& t : schemaTables())
        if (name.compare(QLatin1String(t.name), Qt::CaseInsensitive) == 0)
            return &t;
    return nullptr;
}

const ColumnDef* TableDef::column(const QString& name) const
{
    const int i = columnIndex(name);
    return i < 0 ? nullptr : &columns[size_t(i)];
}

int TableDef::columnIndex(const QString& name) const
{
    for (size_t i = 0; i < columns.size(); ++i)
        if (name.compare(QLatin1String(columns[i].name), Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

const IndexDef* TableDef::index(const QString& name) const
{
    for (const IndexDef& i : indexes)
        if (name.compare(QLatin1String(i.name), Qt::CaseInsensitive) == 0)
            return &i;
    return nullptr;
}

QString sqlTypeName(const ColumnDef& column)
{
    switch (column.type) {
    case ColumnType::Text:
        return QStringLiteral("VARCHAR(%1)").arg(column.size);
    case ColumnType::Long:
        return QStringLiteral("INTEGER");
    case ColumnType::Currency:
        return QStringLiteral("CURRENCY");
    case ColumnType::Double:
        return QStringLiteral("DOUBLE");
    case ColumnType::Date:
        return QStringLiteral("DATETIME");
    }
    return {};
}

QString storedIndexName(const TableDef& table, const IndexDef& index)
{
    return QStringLiteral("%1.%2").arg(QLatin1String(table.name), QLatin1String(index.name));
}

QStringList createStatements(const TableDef& table)
{
    QStringList columns;
    for (const ColumnDef& c : table.columns) {
        QString def = QStringLiteral("\"%1\" %2").arg(QLatin1String(c.name), sqlTypeName(c));
        if (!c.nullable)
            def += QStringLiteral(" NOT NULL");
        if (c.defaultValue)
            def += QStringLiteral(" DEFAULT %1").arg(QLatin1String(c.defaultValue));
        // Text compares without regard to case everywhere, in keys and in queries.
        if (c.type == ColumnType::Text)
            def += QStringLiteral(" COLLATE NOCASE");
        for (const IndexDef& i : table.indexes)
            if (i.primaryKey && QLatin1String(i.column) == QLatin1String(c.name))
                def += QStringLiteral(" PRIMARY KEY");
        columns << def;
    }
    QStringList statements;
    statements << QStringLiteral("CREATE TABLE \"%1\" (%2)").arg(QLatin1String(table.name), columns.join(", "));
    for (const IndexDef& i : table.indexes)
        statements << QStringLiteral("CREATE %1INDEX \"%2\" ON \"%3\" (\"%4\")")
                          .arg(i.unique ? "UNIQUE " : "", storedIndexName(table, i), QLatin1String(table.name),
                               QLatin1String(i.column));
    return statements;
}
