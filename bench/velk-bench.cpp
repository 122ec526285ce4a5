// Measures what users wait for on large data: opening and walking tables, seeking by
// key, the list windows, exports and reports, the start of the program. Run it by hand:
//   build/velk-bench [--scale N] [part]
// N times 30,000 invoices of 3 lines, 5,000 customers and 2,000 items (default 1); a part
// (start, windows, exports, reports, debtors, import) runs alone. Besides the figures it
// prints, for a script to check each goal:
//   RATIO <name> <ours ms> <reference ms> <ratio>   against the sqlite3 command line
//   BUDGET <name> <value> <limit> <unit>            against an absolute limit
//   WORST <name> <ratio>                            the largest ratio, last

#include "customers/frmCustomer.h"
#include "customers/frmsearchCust.h"
#include "debtors/frmDebtor.h"
#include "invoices/frmAddInv.h"
#include "invoices/frmInvoice.h"
#include "items/frm_Parts.h"
#include "platform/Platform.h"
#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "reports/FrmExport.h"
#include "reports/frmReports.h"
#include "safety/Import.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

QString connection;

// Best of several runs, in milliseconds.
double timeIt(const std::function<void()>& work, int runs = 5)
{
    double best = 1e9;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        work();
        best = std::min(best, t.nsecsElapsed() / 1e6);
    }
    return best;
}

void figure(const char* what, double ms)
{
    std::printf("%-58s %9.2f ms\n", what, ms);
    std::fflush(stdout);
}

// The comparisons and budgets, as lines a script reads; the worst ratio is kept for the end.
QString worstName;
double worstRatio = 0;
void ratio(QString name, double ours, double reference)
{
    name.replace(QLatin1Char(' '), QLatin1Char('_'));
    const double r = ours / reference;
    std::printf("RATIO %s %.1f %.1f %.2f\n", qPrintable(name), ours, reference, r);
    std::fflush(stdout);
    if (r > worstRatio) {
        worstRatio = r;
        worstName = name;
    }
}
void budget(QString name, double value, double limit, const char* unit)
{
    name.replace(QLatin1Char(' '), QLatin1Char('_'));
    std::printf("BUDGET %s %.1f %.0f %s\n", qPrintable(name), value, limit, unit);
    std::fflush(stdout);
}

// This process's memory in MB, as /proc tells it: VmRSS now, VmHWM its peak since the
// peak was last reset.
double memoryMb(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    const auto m = QRegularExpression(QLatin1String(field) + QStringLiteral(":\\s+(\\d+) kB"))
                       .match(QString::fromLatin1(status.readAll()));
    return m.captured(1).toDouble() / 1024;
}
void resetPeakMemory()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

// The program started on a data file, off screen, until its main window is shown: the
// wall time and the peak memory of the whole process, best of five.
std::pair<double, double> startProgram(const QString& program, const QString& folder)
{
    double best = 1e9, memory = 1e9;
    const QByteArray exe = program.toLocal8Bit(), where = folder.toLocal8Bit();
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer t;
        t.start();
        const pid_t child = fork();
        if (child == 0) {
            if (chdir(where.constData()) != 0)
                _exit(126);
            setenv("QT_QPA_PLATFORM", "offscreen", 1);
            execl(exe.constData(), "velk-invoice", "--quit-when-shown", static_cast<char*>(nullptr));
            _exit(127);
        }
        int status = 0;
        rusage usage{};
        wait4(child, &status, 0, &usage);
        best = std::min(best, t.nsecsElapsed() / 1e6);
        memory = std::min(memory, usage.ru_maxrss / 1024.0);
    }
    return {best, memory};
}

// A window as the user meets it: shown, and its first screen painted.
void shown(QWidget& window)
{
    window.show();
    window.grab();
}

// The sqlite3 command line reading the rows a list shows, for comparison.
double sqliteRows(const QString& path, const QString& query)
{
    return timeIt([&] {
        QProcess p;
        p.setStandardOutputFile(QProcess::nullDevice());
        p.start(QStringLiteral("sqlite3"), {path, query});
        p.waitForFinished(-1);
    });
}

// A list window opened, first time and warm, beside sqlite3 reading the rows it shows.
void listRatio(const QString& path, const QString& name, const std::function<void()>& open, const QString& query)
{
    const double first = timeIt(open, 1);
    const double warm = timeIt(open, 3);
    const double reference = sqliteRows(path, query);
    ratio(name + QStringLiteral(" first open"), first, reference);
    ratio(name + QStringLiteral(" open"), warm, reference);
}

// The sqlite3 command line writing the rows of a query as CSV to a file, for comparison.
double sqliteCsv(const QString& path, const QStringList& queries, const QString& out)
{
    return timeIt([&] {
        QProcess p;
        p.setStandardOutputFile(out);
        QStringList args{QStringLiteral("-csv"), path};
        args << queries;
        p.start(QStringLiteral("sqlite3"), args);
        p.waitForFinished(-1);
    });
}

// The reference data at a scale: per unit 30,000 invoices of three lines each, 5,000
// customers and 2,000 items.
void fill(const QString& path, int scale)
{
    auto db = Database::create(path);
    db->exec(QStringLiteral("BEGIN"));
    for (const TableDef& t : schemaTables())
        for (const QString& sql : createStatements(t))
            db->exec(sql);
    const auto scaled = [scale](QString sql) {
        return sql.replace(QLatin1String("{CUSTOMERS}"), QString::number(5000 * scale))
            .replace(QLatin1String("{INVOICES}"), QString::number(30000 * scale))
            .replace(QLatin1String("{LINES}"), QString::number(90000 * scale - 1))
            .replace(QLatin1String("{ITEMS}"), QString::number(2000 * scale));
    };
    db->exec(scaled(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {CUSTOMERS}) "
        "INSERT INTO Customers (CustID, Date, FirstName, LastName, Phone, Address, Address2, City, address4, Postcode) "
        "SELECT printf('CUS%05d', i), '2026-01-01', 'First' || i, 'Last' || i, '0123 ' || i, i || ' High Street', '', "
        "'Town', '', 'AB1 2CD' FROM n")));
    db->exec(scaled(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {INVOICES}) "
                       "INSERT INTO Invoices (InvNo, Date, CustNo, CustomerName, Subtotal, Vat, Total, Paid, Balance) "
                       "SELECT printf('INV%06d', i), date('2020-01-01', '+' || (i % 2000) || ' days'), "
                       "printf('CUS%05d', 1 + i % {CUSTOMERS}), "
                       "'Customer ' || i, 1000000, 175000, 1175000, 0, 1175000 FROM n")));
    db->exec(
        scaled(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < {LINES}) "
                              "INSERT INTO InvoiceD (InvNo, PartID, Qty, Description, Amount, Total, Taxable) "
                              "SELECT printf('INV%06d', 1 + i / 3), printf('PRT%06d', 1 + i % {ITEMS}), 1 + i % 4, "
                              "'Line ' || i, 12.5, 12.5 * (1 + i % 4), i % 2 FROM n")));
    db->exec(scaled(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {ITEMS}) "
        "INSERT INTO Parts (ID, ShortDesc, Desc, Price, Taxable) "
        "SELECT printf('PRT%06d', i), 'Item ' || i, 'A longer description of item ' || i, i * 1234, i % 2 FROM n")));
    // A settings row, so that the program starts to its main window with no wizard.
    db->exec(QStringLiteral(
        "INSERT INTO System (BusinessName, Currency, TaxAmount, TaxEnabled, InvPrefix, CustPrefix, PartPrefix, "
        "Invstart, CustStart, PartStart, FreeFormInv, FreeformCus, FreeformPart, FreeFormCrd, Text3Name, Text4Name, "
        "Debtorstart, InvoiceType) "
        "VALUES ('Velk Bench', '$', 17.5, 1, 'INV', 'CUS', 'PRT', '900001', '900001', '900001', 0, 0, 0, 0, '', '', "
        "'0', '1')"));
    db->exec(QStringLiteral("COMMIT"));
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::keepFreedMemory(); // as the program does at start
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    int scale = 1;
    if (const qsizetype at = args.indexOf(QStringLiteral("--scale")); at >= 0 && at + 1 < args.size()) {
        scale = std::max(1, args[at + 1].toInt());
        args.remove(at, 2);
    }
    QTemporaryDir dir;
    platform::hooks().programDir = [&] { return dir.path(); };
    const QString path = dir.filePath(QStringLiteral("data.mdb"));
    fill(path, scale);
    connection = QStringLiteral("Data Source='%1';").arg(path);
    ConnectionString = connection;
    platform::hooks().msgBox = [](const QString&, int, const QString&) { return int(platform::vbYes); };
    std::printf("scale %d: %d invoices, %d invoice lines, %d customers, %d items\n", scale, 30000 * scale,
                90000 * scale, 5000 * scale, 2000 * scale);
    const QString only = args.value(0);
    auto wanted = [&](const char* part) { return only.isEmpty() || only == QLatin1String(part); };
    if (wanted("start")) {
        // The program copied beside the data file, so that it takes that folder for its own.
        const QString program = dir.filePath(QStringLiteral("velk-invoice"));
        QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/velk-invoice"), program);
        const auto [ms, mb] = startProgram(program, dir.path());
        budget(QStringLiteral("start to the main window"), ms, 150, "ms");
        budget(QStringLiteral("memory at the main window"), mb, 60, "MB");
    }
    if (wanted("windows")) {
        figure("open Invoices and walk 30,000 rows reading 3 fields", timeIt([] {
                   Recordset rs;
                   rs.open(QStringLiteral("invoices"), connection, Recordset::adLockReadOnly);
                   double sum = 0;
                   for (; !rs.eof(); rs.moveNext()) {
                       sum += Null_to_zero(rs.field(QStringLiteral("Balance"))).toDouble();
                       Null_to_text(rs.field(QStringLiteral("InvNo")));
                       Null_to_text(rs.field(QStringLiteral("CustNo")));
                   }
               }));
        figure("open Invoices on index INVNO and walk to the end", timeIt([] {
                   Recordset rs;
                   rs.open(QStringLiteral("invoices"), connection, Recordset::adLockReadOnly);
                   rs.setIndex(QStringLiteral("INVNO"));
                   for (rs.moveFirst(); !rs.eof(); rs.moveNext())
                       Null_to_text(rs.field(QStringLiteral("InvNo")));
               }));
        figure("1,000 at-or-after seeks on INVNO (per seek)",
               timeIt([] {
                   Recordset rs;
                   rs.open(QStringLiteral("invoices"), connection, Recordset::adLockReadOnly);
                   rs.setIndex(QStringLiteral("INVNO"));
                   for (int i = 0; i < 1000; ++i) {
                       rs.seek(QStringLiteral("inv%1").arg(i * 29 % 30000, 6, 10, QChar('0')));
                       Null_to_text(rs.field(QStringLiteral("InvNo")));
                   }
               }) / 1000.0);
        figure("open Customers, seek one key, read it, close", timeIt([] {
                   Recordset rs;
                   rs.open(QStringLiteral("customers"), connection, Recordset::adLockPessimistic);
                   rs.setIndex(QStringLiteral("CUSTID"));
                   rs.seek(QStringLiteral("CUS02500"));
                   Null_to_text(rs.field(QStringLiteral("LastName")));
               }));
        figure("change and update one invoice", timeIt([] {
                   Recordset rs;
                   rs.open(QStringLiteral("invoices"), connection, Recordset::adLockPessimistic);
                   rs.setIndex(QStringLiteral("INVNO"));
                   rs.seek(QStringLiteral("INV012345"));
                   rs.setField(QStringLiteral("Notes"), QStringLiteral("changed"));
                   rs.update();
               }));
        {
            // One old invoice of three lines, taxed at 17.5 %.
            settings.TaxAmount = 17.5;
            settings.TaxEnabled = 1;
            settings.ConfirmAll = 1;
            EditInvoiceMode = 1;
            OpenInvoiceNo = QStringLiteral("INV012345");
            budget(QStringLiteral("open an invoice"), timeIt([] {
                       frmAddInv w;
                       shown(w);
                   }),
                   20, "ms");
            frmAddInv w;
            figure("OldInvoice: read an old invoice into the window", timeIt([&] { w.OldInvoice(); }));
            figure("refill the window's item picker (2,000 items)", timeIt([&] { w.Fill_Parts_List(); }));
            budget(QStringLiteral("save an invoice"), timeIt([&] { w.Update_cmd_Click(); }), 20, "ms");
            int n = 0;
            figure("  of which the disk's sync: one committed write", timeIt([&] {
                       Recordset rs;
                       rs.open(QStringLiteral("invoices"), connection, Recordset::adLockPessimistic);
                       rs.setIndex(QStringLiteral("INVNO"));
                       rs.seek(QStringLiteral("INV012346"));
                       rs.setField(QStringLiteral("Notes"), QString::number(++n));
                       rs.update();
                   }));
            for (int i = 0; i < frmAddInv::Lines; ++i) {
                w.findChild<QLineEdit*>(QStringLiteral("Qty_txt(%1)").arg(i))->setText(QString::number(i + 1));
                w.findChild<QLineEdit*>(QStringLiteral("Amount_txt(%1)").arg(i))->setText(QStringLiteral("12.345"));
                w.findChild<QCheckBox*>(QStringLiteral("tax(%1)").arg(i))->setChecked(i % 2 == 0);
            }
            figure("Calc_Totals, eight full lines (per pass)", timeIt([&] {
                                                                   for (int i = 0; i < 1000; ++i)
                                                                       w.Calc_Totals();
                                                               }) / 1000.0);
        }
        // Each list beside sqlite3 reading the rows it shows; the first open in this run is
        // the cold one.
        const auto list = [&](const QString& name, const std::function<void()>& open, const QString& query) {
            listRatio(path, name, open, query);
        };
        list(
            QStringLiteral("customer list"),
            [] {
                frmCustomer w;
                shown(w);
            },
            QStringLiteral("SELECT CustID, LastName, FirstName, Phone, Address FROM customers"));
        list(
            QStringLiteral("item list"),
            [] {
                frm_Parts w;
                shown(w);
            },
            QStringLiteral("SELECT ID, ShortDesc, Desc, Price, Taxable FROM parts"));
        list(
            QStringLiteral("customer picker"),
            [] {
                frmsearchCust w;
                shown(w);
            },
            QStringLiteral("SELECT CustID, LastName, FirstName, Phone FROM customers"));
        resetPeakMemory();
        list(
            QStringLiteral("invoice list"),
            [] {
                frmInvoice w;
                shown(w);
            },
            QStringLiteral("SELECT InvNo, Date, CustNo, CustomerName, Total, Balance, Notes FROM invoices"));
        budget(QStringLiteral("memory with the invoice list open"), memoryMb("VmHWM"), 150, "MB");
        {
            frmCustomer w;
            figure("search the customer list, match in the last row", timeIt([&] {
                       w.rules()->SearchPos = 1;
                       w.rules()->Find(QStringLiteral("Last5000"));
                   }));
            figure("search the customer list, nothing found (two passes)", timeIt([&] {
                       w.rules()->SearchPos = 2500;
                       w.rules()->Find(QStringLiteral("nobody"));
                   }));
            auto* list = w.findChild<ListView*>(QStringLiteral("Cust_lst"));
            figure("delete a customer (its invoices counted first)", timeIt(
                                                                         [&] {
                                                                             list->selectRow(list->rowCount() - 1);
                                                                             w.Delete_item();
                                                                         },
                                                                         1));
            figure("sort the customer list by name", timeIt([&] { w.rules()->columnClick(1); }));
        }
        {
            frmInvoice w;
            figure("sort the invoice list by Amount", timeIt([&] { w.rules()->columnClick(4); }));
            figure("sort the invoice list by Date", timeIt([&] { w.rules()->columnClick(1); }));
            figure("search the invoice list, nothing found (two passes)", timeIt([&] {
                       w.rules()->SearchPos = 15000;
                       w.rules()->Find(QStringLiteral("nobody"));
                   }));
            figure("read the sorted invoice list again", timeIt([&] { w.Load_list(); }));
        }
        {
            frm_Parts w;
            auto* rules = w.findChild<ListRules*>();
            figure("search the item list, nothing found", timeIt([&] { rules->Find(QStringLiteral("nothing")); }));
        }
        {
            // A list report over every invoice: ten bound columns, four sums at the end.
            ShapeConnection.open(connection);
            report::Report list;
            list.name = QStringLiteral("Invoices_rpt");
            list.width = 14000;
            list.leftMargin = list.rightMargin = list.topMargin = list.bottomMargin = 500;
            auto control = [](const QString& name, report::ControlKind kind, int left, const QString& field) {
                report::Control c;
                c.name = name;
                c.kind = kind;
                c.left = left;
                c.width = 1350;
                c.height = 250;
                c.field = field;
                c.caption = field;
                c.wordWrap = false;
                if (field == QLatin1String("Date"))
                    c.format = QStringLiteral("dd/MM/yyyy");
                else if (kind != report::ControlKind::Label && field != QLatin1String("InvNo") &&
                         !field.startsWith(QLatin1String("Cust")))
                    c.format = QStringLiteral("0.00");
                return c;
            };
            const QStringList fields{"InvNo", "Date",  "CustNo", "CustomerName", "Subtotal",
                                     "Vat",   "Total", "Paid",   "Balance",      "TaxPer"};
            report::Section header{QStringLiteral("Section2"), report::SectionKind::PageHeader, 300, false, {}};
            report::Section detail{QStringLiteral("Section1"), report::SectionKind::Detail, 260, false, {}};
            report::Section footer{QStringLiteral("Section5"), report::SectionKind::ReportFooter, 300, false, {}};
            for (int i = 0; i < fields.size(); ++i) {
                header.controls.push_back(
                    control(QStringLiteral("Head%1").arg(i), report::ControlKind::Label, i * 1400, fields[i]));
                detail.controls.push_back(
                    control(QStringLiteral("Field%1").arg(i), report::ControlKind::Field, i * 1400, fields[i]));
            }
            for (int i = 4; i < 8; ++i) {
                report::Control sum =
                    control(QStringLiteral("Sum%1").arg(i), report::ControlKind::Function, i * 1400, fields[i]);
                sum.function = QStringLiteral("Sum");
                footer.controls.push_back(sum);
            }
            list.sections = {header, detail, footer};
            std::shared_ptr<ShapeRecordset> rows;
            QTemporaryDir out;
            figure("30,000-row list report to PDF (10 columns, 4 sums)",
                   timeIt(
                       [&] {
                           Open_shape(QStringLiteral("SHAPE {SELECT * FROM invoices} as details"), rows);
                           list.setDataSource(rows);
                           report::Layout layout(list, platform::vbPRPSA4);
                           layout.writePdf(out.filePath(QStringLiteral("list.pdf")));
                       },
                       1));
        }
    }
    if (wanted("exports") || wanted("reports")) {
        // The six exports and the six list reports, each beside the sqlite3 command line
        // writing the same rows as CSV. Every invoice has three lines and owes money.
        ShapeConnection.open(connection);
        auto db = Database::open(path);
        db->exec(QStringLiteral("BEGIN"));
        db->exec(QStringLiteral("UPDATE Invoices SET Notes = 'note ' || rowid"));
        db->exec(QStringLiteral("COMMIT"));
        settings.DefaultStart = QStringLiteral("01/01/2019");
        settings.DefaultEnd = QStringLiteral("31/12/2030");
        settings.Present = 0;
        QTemporaryDir out;
        const platform::Hooks desktop = platform::hooks();
        platform::hooks().programDir = [&] { return out.path(); };
        platform::hooks().paperSize = [] { return int(platform::vbPRPSA4); };
        report::previewHook() = [&](report::Report& r) {
            report::Layout layout(r, platform::vbPRPSA4);
            layout.writePdf(out.filePath(r.name + QStringLiteral(".pdf")));
        };
        const QString range = QStringLiteral(" WHERE Date BETWEEN '2019-01-01' AND '2030-12-31'");
        const QString customers = QStringLiteral("SELECT Date, CustID, FirstName, LastName, Address, Address2, City, "
                                                 "address4, Postcode");
        const QString invoices =
            QStringLiteral("SELECT Date, InvNo, CustNo, CustomerName, Subtotal, Vat, Total, Discount, Paid, "
                           "WrittenOff, Balance, Notes, DiscountPercentage, SalesPerson, SalesNo, ShippedNo, "
                           "TrackingNo FROM invoices");
        const QStringList same[] = {
            {customers + QStringLiteral(" FROM customers") + range},
            {customers +
             QStringLiteral(", Phone, Mobile, Fax, Email, DelAddress1, DelAddress2, DelAddress3, "
                            "DelAddress4, DelAddress5 FROM customers") +
             range},
            {invoices + range},
            {invoices + range,
             QStringLiteral("SELECT InvNo, Qty, PartID, Description, Amount, Total FROM invoiceD ORDER BY InvNo")},
            {QStringLiteral("SELECT ID, ShortDesc, Desc, Price FROM parts")},
            {QStringLiteral("SELECT Date, InvNo, CustNo, CustomerName, Subtotal, Vat, Total, Discount, Paid, "
                            "WrittenOff, Balance, Balance1, Balance2, Balance3, Notes FROM invoices "
                            "WHERE balance > 0")},
        };
        FrmExport exporter;
        auto* exportList = exporter.findChild<QListWidget*>(QStringLiteral("list1"));
        for (int i = 0; i < 6 && wanted("exports"); ++i) {
            exportList->setCurrentRow(i);
            const double ours = timeIt([&] { exporter.Export_cmd_Click(); });
            ratio(QStringLiteral("export ") + exportList->item(i)->text(), ours,
                  sqliteCsv(path, same[i], out.filePath(QStringLiteral("cli.csv"))));
        }
        frmReports chooser;
        auto* reportList = chooser.findChild<QListWidget*>(QStringLiteral("list1"));
        for (int i = 0; i < 6 && wanted("reports"); ++i) {
            reportList->setCurrentRow(i);
            resetPeakMemory();
            const double ours = timeIt([&] { chooser.select_cmd_Click(); }, 1);
            const QString name = QStringLiteral("report ") + reportList->item(i)->text() + QStringLiteral(" to PDF");
            figure(qPrintable(name), ours);
            if (i == 3) { // Invoices and Invoice Details, the largest
                budget(name, ours / 1000, 30, "s");
                budget(QStringLiteral("peak memory of ") + name, memoryMb("VmHWM"), 250, "MB");
            }
        }
        platform::hooks() = desktop;
    }
    if (wanted("debtors")) {
        // Every invoice unpaid, of a different amount, dated in the last 120 days.
        Database::open(path)->exec(
            QStringLiteral("UPDATE Invoices SET Date = date('now', '-' || (rowid % 120) || ' days'), "
                           "Balance = 100 * (rowid * 7919 % 1000000)"));
        listRatio(
            path, QStringLiteral("debtor list"),
            [] {
                frmDebtor w;
                shown(w);
            },
            QStringLiteral("SELECT i.Balance, julianday('now') - julianday(i.Date), i.CustNo, c.CustID, c.LastName, "
                           "c.FirstName, c.Phone, i.InvNo, i.Notes, i.ReminderSent FROM Invoices i "
                           "LEFT JOIN Customers c ON c.CustID = i.CustNo ORDER BY i.rowid"));
        ShapeConnection.open(connection);
        frmDebtor w;
        auto* list = w.findChild<ListView*>(QStringLiteral("debtor_lst"));
        for (int i = 0; i < 500; ++i)
            list->rows()->setCheckState(i * 59, Qt::Checked);
        QTemporaryDir out;
        report::previewHook() = [&](report::Report& r) {
            report::Layout(r, platform::vbPRPSA4).writePdf(out.filePath(QStringLiteral("letters.pdf")));
        };
        figure("500 reminder letters: the Letters table and the PDF", timeIt(
                                                                          [&] {
                                                                              w.Build_table();
                                                                              w.Print_cmd();
                                                                          },
                                                                          1));
        report::previewHook() = nullptr;
    }
    if (wanted("import")) {
        // Tools > Import of 10,000 lines, each a customer, an invoice and two lines.
        QFile file(dir.filePath(QStringLiteral("Invoices1.csv")));
        file.open(QIODevice::WriteOnly);
        for (int i = 1; i <= 10000; ++i)
            file.write(QStringLiteral("IMP%1,2026-02-01,IMPINV%1,First,Last,0123,1 High St,,Town,AB1 2CD,30.00,"
                                      "Labour,20.00,Parts,10.00,,D1,D2,D3,D4,D5\r\n")
                           .arg(i)
                           .toLatin1());
        file.close();
        figure("import 10,000 lines of Invoices1.csv", timeIt([] { safety::mnuImport(); }, 1));
        // One invoice as "Print" shows it, rendered to PDF in place of the preview.
        settings.InvoiceType = QStringLiteral("1");
        EditInvoiceMode = 1;
        OpenInvoiceNo = QStringLiteral("INV012345");
        QTemporaryDir out;
        platform::hooks().paperSize = [] { return int(platform::vbPRPSA4); };
        report::previewHook() = [&](report::Report& r) {
            report::Layout(r, platform::vbPRPSA4).writePdf(out.filePath(QStringLiteral("invoice.pdf")));
        };
        frmAddInv w;
        figure("print one invoice to PDF (design 1, A4)", timeIt([&] { w.Print_Invoice(); }));
    }
    if (worstRatio > 0)
        std::printf("WORST %s %.2f\n", qPrintable(worstName), worstRatio);
    return 0;
}
