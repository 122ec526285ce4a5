#include "safety/Import.h"

#include "platform/CodePage.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"

#include <QFile>
#include <QStringList>

namespace safety
{

namespace
{

// The lines of the file: a line ends at CR LF, CR or LF, and the last may have no end.
QStringList fileLines(const QString& text)
{
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n')
            continue;
        lines << text.mid(start, i - start);
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < text.size())
        lines << text.mid(start);
    return lines;
}

void Import_file()
{
    QFile file(platform::programFile(QStringLiteral("Invoices1.csv")));
    if (!file.open(QIODevice::ReadOnly))
        throw VbError(err::FileNotFound);
    const QStringList lines = fileLines(fromWindows1252(file.readAll()));
    file.close();

    Recordset invoices, invoiced, customers;
    invoices.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockPessimistic);
    invoiced.open(QStringLiteral("invoiced"), ConnectionString, Recordset::adLockPessimistic);
    customers.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockPessimistic);
    // The whole file in one transaction; what was stored before a failure is kept.
    Write_batch(Database::open(dataSourceOf(ConnectionString)), [&] {
        // Where each field of a line goes, in the order the columns are assigned; every
        // value goes as text, for the store to convert.
        struct Column {
            const char* name;
            int field;
        };
        static const Column customer[] = {
            {"CustID", 1},       {"Date", 2},         {"FirstName", 4},    {"LastName", 5},    {"Phone", 6},
            {"Address", 7},      {"Address2", 8},     {"City", 9},         {"Postcode", 10},   {"DelAddress1", 17},
            {"DelAddress2", 18}, {"DelAddress3", 19}, {"DelAddress4", 20}, {"DelAddress5", 21}};
        // Paid in full: what was owed was settled before it came here.
        static const Column invoice[] = {{"CustNo", 1},    {"Date", 2},   {"InvNo", 3},
                                         {"Subtotal", 11}, {"Total", 11}, {"Paid", 11}};
        auto set = [](Recordset& rs, const char* column, const Value& value) {
            rs.setField(QLatin1String(column), value);
        };
        const QString empty;

        for (const QString& line : lines) {
            auto field = [&](int n) { return Value(Csv_field(line, n)); };

            customers.addNew();
            for (const Column& c : customer)
                set(customers, c.name, field(c.field));
            set(customers, "address4", empty);
            set(customers, "notes", empty);
            customers.update();

            invoices.addNew();
            for (const Column& c : invoice)
                set(invoices, c.name, field(c.field));
            set(invoices, "Vat", 0);
            set(invoices, "Discount", 0);
            set(invoices, "Balance", 0);
            set(invoices, "Notes", empty);
            set(invoices, "CustomerName", Csv_field(line, 4) + ' ' + Csv_field(line, 5));
            invoices.update();

            auto addLine = [&](int description, int amount) {
                invoiced.addNew();
                set(invoiced, "InvNo", field(3));
                set(invoiced, "Description", field(description));
                set(invoiced, "Amount", field(amount));
                set(invoiced, "Total", field(amount));
                set(invoiced, "Qty", 1);
                set(invoiced, "PartID", empty);
                invoiced.update();
            };
            addLine(12, 13);
            if (!Csv_field(line, 14).trimmed().isEmpty())
                addLine(14, 15);
        }
        invoices.close();
        invoiced.close();
        customers.close();
    });
}

} // namespace

void mnuImport()
{
    // The import traps nothing itself: a failure takes the program's one way out, named
    // after the menu command it came from.
    BusyTrap(QStringLiteral("frmMain"), "mnuImport_Click", [] { Import_file(); });
}

} // namespace safety
