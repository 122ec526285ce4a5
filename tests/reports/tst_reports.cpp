// The report chooser and the export over a small fixed business: the six layouts as
// printed, empty sources, the ageing "Debtors" brings up to date first, and the six
// files byte for byte with the export's refusals and its code page.

#include "TestUi.h"

#include "platform/CodePage.h"
#include "reports/FrmExport.h"
#include "reports/ReportList.h"
#include "reports/frmReports.h"
#include "shell/frmMain.h"
#include "store/Ageing.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QAction>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace platform;

namespace
{

// A default range of 01/01/2026 to 30/06/2026; today is 22/11/2026.
std::unique_ptr<frmMain> startWithRange(TestUi& ui, int present = 0)
{
    return startProgram(ui, {{"DefaultStart", "01/01/2026"}, {"DefaultEnd", "30/06/2026"}, {"Present", present}});
}

// One row per list of values, in the order of the columns named; a short list leaves the
// columns after it at their defaults, where a Value() puts a Null.
void addRows(const QString& table, const QStringList& columns, const QList<QList<Value>>& rows)
{
    for (const QList<Value>& values : rows) {
        QMap<QString, Value> row;
        for (int i = 0; i < values.size(); ++i)
            row.insert(columns[i], values[i]);
        addRow(table, row);
    }
}

// Customers, invoices with and without lines, items and debtors, some outside the range.
void addSampleRows()
{
    // The comma in the second name shifts the exported columns after it.
    addRows("Customers",
            {"CustID", "Date", "FirstName", "LastName", "Address", "Address2", "City", "address4", "Postcode", "Phone",
             "Mobile", "Email", "DelAddress1", "notes"},
            {{"CUS1", QDate(2026, 3, 4), "Ann", "Smith", "1 High St", "Oldtown", "Leeds", "Yorks", "LS1 1AA", "0113 1",
              "07700 1", "ann@x.uk", "Dock 4", "Good payer"},
             {"CUS2", QDate(2026, 6, 30), "Bo", "Café, Ltd"},
             {"CUS3", QDate(2025, 12, 31), "Early", "Bird"}});
    addRows(
        "Invoices",
        {"InvNo", "Date", "CustNo", "CustomerName", "Subtotal", "Total", "Balance", "Notes", "Vat", "Paid", "Phone",
         "SalesPerson"},
        {{"INV001", QDate(2026, 2, 10), "CUS1", "Ann Smith", 100.0, 117.5, 100.0, "one", 17.5, 17.5, "0113 1", "Jo"},
         {"INV002", QDate(2026, 6, 30), "CUS2", "Bo Café", 20.0, 20.0, 0.0, QString(), Value()},
         {"INV003", QDate(2025, 12, 1), "CUS1", "Ann Smith", 50.0, 50.0, 50.0},
         {"INV004", QDate(2026, 11, 1), "CUS2", "Bo Café", 30.0, 30.0, 30.0, "€ due"}});
    addRows("InvoiceD", {"InvNo", "PartID", "Qty", "Description", "Amount", "Total"},
            {{"INV001", "P1", 2, "Widget", 25.0, 50.0},
             {"INV003", "P1", 1, "Widget", 50.0, 50.0},
             {"INV001", "P2", 1, "Gadget", 12.345, 12.345},
             {"INV001", "P1", 3, "Widget", 25.0, 75.0}});
    addRows("Parts", {"ID", "ShortDesc", "Desc", "Price", "Taxable"},
            {{"P1", "Widget", "A widget", 25.0, 1}, {"P2", "Gadget", "A gadget", 12.5, Value()}});
}

// Picks an entry and presses "Select"; the text of the report shown, if one was.
QString selectReport(TestUi& ui, frmReports& w, int index)
{
    child<QListWidget>(w, "list1")->setCurrentRow(index);
    const auto shown = ui.reports.size();
    click(w, "select_cmd");
    if (ui.reports.size() == shown)
        return QString();
    // The PDF's font joins "ff" and "fi"; the captions are compared as typed.
    return pdfText(ui.reports.back().pdf).replace(QChar(0xFB00), QLatin1String("ff")).replace(QChar(0xFB01), "fi");
}

void pick(FrmExport& w, int index)
{
    auto* list = child<QListWidget>(w, "list1");
    list->setCurrentRow(index);
    emit list->itemClicked(list->currentItem());
}

void exportNow(TestUi& ui, FrmExport& w, bool succeeds = true)
{
    if (succeeds)
        ui.expectBox("Successful", "Export successfully completed.", vbOK, vbInformation);
    click(w, "Export_cmd");
}

QByteArray golden(const QString& name)
{
    return fileBytes(QFINDTESTDATA("golden/" + name));
}

} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT
private slots:
    void layouts_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("absent");
        QTest::addColumn<bool>("landscape");
        QTest::addColumn<QString>("expected"); // patterns, a line each, found in this order
        const QString customers =
            R"(Cust ID\s+Date\s+Last Name\s+First Name\s+Street\s+Town\s+City\s+County\s+Post/Zip Code
            CUS1\s+04/03/2026\s+Smith\s+Ann\s+1 High St\s+Oldtown\s+Leeds\s+Yorks\s+LS1 1AA)";
        QTest::newRow("Customers - Summary")
            << 0 << "CUS3" << true << "Customer Information - Summary\n" + customers + R"(
            CUS2\s+30/06/2026\s+Café, Ltd\s+Bo\s*\n
            Record Count: 2\s*\n)";
        QTest::newRow("Customers - Detailed")
            << 1 << "CUS3" << true << "Customer Information - Detailed\n" + customers + R"(
            Phone: 0113 1\s+Mobile: 07700 1\s+Fax:\s+Email: ann@x.uk\s+Notes: Good payer
            CUS2\s+30/06/2026\s+Café, Ltd\s+Bo\s*\n
            Phone:\s+Mobile:\s+Fax:\s+Email:\s+Notes:\s*\n
            Record Count: 2\s*\n)";
        // The Null VAT of the second invoice prints blank and adds nothing; the count is of
        // invoices, the sums of their own columns, not of their lines.
        QTest::newRow("Invoices - Summary") << 2 << "INV003" << true << R"(Invoice Summary
            Date\s+Inv No\s+Cust No\s+Customer Name\s+Phone\s+Sub Total\s+Vat\s+Total\s+Balance\s+Notes
            02/10/2026\s+INV001\s+CUS1\s+Ann Smith\s+0113 1\s+100.00\s+17.50\s+117.50\s+100.00\s+one
            06/30/2026\s+INV002\s+CUS2\s+Bo Café\s+20.00\s+20.00\s+0.00\s*\n
            Record Count: 2\s+120.00\s+17.50\s+137.50\s+100.00\s*\n)";
        QTest::newRow("Invoices and Invoice Details") << 3 << "INV003" << true << R"(Invoice Detailed
            Date\s+Inv No\s+Cust No\s+Customer Name\s+Phone\s+Sub Total\s+Vat\s+Total\s+Balance\s+Notes
            10/02/2026\s+INV001\s+CUS1\s+Ann Smith\s+0113 1\s+100.00\s+17.50\s+117.50\s+100.00\s+one
            Item ID: P1\s+Quantity: 2\s+Description:\s*Widget\s+Amount:\s+25.00\s+Total:\s+50.00
            Item ID: P2\s+Quantity: 1\s+Description:\s*Gadget\s+Amount:\s+12.35\s+Total:\s+12.35
            Item ID: P1\s+Quantity: 3\s+Description:\s*Widget\s+Amount:\s+25.00\s+Total:\s+75.00
            30/06/2026\s+INV002\s+CUS2\s+Bo Café\s+20.00\s+20.00\s+0.00\s*\n(?!\s*Item)
            Record Count: 2\s+120.00\s+17.50\s+137.50\s+100.00\s*\n)";
        // Every item, though the range is printed.
        QTest::newRow("Items") << 4 << "Widget" << false << R"(Items
            Item ID\s+Description\s+Price\s+Taxable
            P1\s+A widget\s+25.00\s+1\s*\n
            P2\s+A gadget\s+12.50\s*\n
            Record Count: 2\s*\n)";
        QTest::newRow("Debtors") << 5 << "INV002" << true << R"(Debtors
            Date\s+Inv No\s+Cust No\s+Customer Name\s+Phone\s+Total\s+Written Off\s+Paid\s+Balance
            0 to 30 Days\s+31 to 60 Days\s+61 Days \+
            10/02/2026\s+INV001\s+CUS1\s+Ann Smith\s+0113 1\s+117.50\s+0.00\s+17.50\s+100.00\s+0.00\s+0.00\s+100.00
            01/12/2025\s+INV003\s+CUS1\s+Ann Smith\s+50.00\s+0.00\s+0.00\s+50.00\s+0.00\s+0.00\s+50.00
            01/11/2026\s+INV004\s+CUS2\s+Bo Café\s+30.00\s+0.00\s+0.00\s+30.00\s+30.00\s+0.00\s+0.00
            Record Count: 3\s+197.50\s+0.00\s+17.50\s+180.00\s+30.00\s+0.00\s+150.00)";
    }

    void layouts()
    {
        QFETCH(int, index);
        QFETCH(QString, absent);
        QFETCH(bool, landscape);
        QFETCH(QString, expected);
        TestUi ui;
        auto main = startWithRange(ui);
        addSampleRows();
        frmReports w(main.get());
        const QString pdf = selectReport(ui, w, index);
        QStringList patterns = expected.split('\n');
        patterns.insert(1, "From 01/01/2026 To 30/06/2026");
        qsizetype at = 0;
        for (const QString& pattern : patterns) {
            const auto m = QRegularExpression(pattern.trimmed()).match(pdf, at);
            QVERIFY2(m.hasMatch(), qPrintable(pattern + "\nin\n" + pdf));
            at = m.capturedEnd();
        }
        QVERIFY(!pdf.contains(absent));
        QCOMPARE(pdf.count("Record Count:"), 1);
        QCOMPARE(ui.reports.back().landscape, landscape);
        VERIFY_UI(ui);
    }

    void rangeEmptySourcesAndPaper()
    {
        TestUi ui;
        auto main = startWithRange(ui, 1);
        addSampleRows();
        frmReports w(main.get());
        // With "present" set the range ends today; without it, as the layouts show, it is the default.
        QCOMPARE(child<QListWidget>(w, "list1")->currentRow(), 0);
        QCOMPARE((QList<QDate>{child<QDateEdit>(w, "DTPicker1")->date(), child<QDateEdit>(w, "DTPicker2")->date()}),
                 (QList<QDate>{QDate(2026, 1, 1), QDate(2026, 11, 22)}));
        // The customer lists refuse an empty source; the invoice lists print their zero totals,
        // also for a range that ends before it starts.
        for (int index : {0, 1, 2, 3}) {
            child<QDateEdit>(w, "DTPicker1")->setDate(index == 3 ? QDate(2026, 7, 1) : QDate(2027, 1, 1));
            child<QDateEdit>(w, "DTPicker2")->setDate(index == 3 ? QDate(2026, 6, 30) : QDate(2027, 12, 31));
            if (index < 2)
                ui.expectBox("Nothing to Print", "No records to print!", vbOK, vbExclamation);
            const QString pdf = selectReport(ui, w, index);
            QVERIFY2(index < 2
                         ? pdf.isEmpty()
                         : pdf.contains(QRegularExpression("Record Count: 0\\s+0.00\\s+0.00\\s+0.00\\s+0.00\\s*\\n")),
                     qPrintable(pdf));
        }
        QCOMPARE(ui.reports.size(), 2);
        ui.paper = 5; // Legal
        ui.expectBox("Change Paper Size", "Please change the paper size on your printer to 'Letter' or 'A4'", vbOK,
                     vbExclamation);
        QVERIFY(selectReport(ui, w, 4).isEmpty());
        VERIFY_UI(ui);
    }

    void ageing()
    {
        // The column of BALANCE1 to BALANCE3 for an age in days, or none; the export's rule
        // leaves 31 and 60 days out.
        QList<int> report, exported;
        for (int days : {-1, 0, 30, 31, 32, 59, 60, 61}) {
            report << reportAgeing(days);
            exported << exportAgeing(days);
        }
        QCOMPARE(report, (QList<int>{0, 1, 1, 2, 2, 2, 2, 3}));
        QCOMPARE(exported, (QList<int>{0, 1, 1, 0, 2, 2, 0, 3}));
        // The balance goes into its column and clears the others; an age in no column (tomorrow),
        // and an invoice with nothing owing, are left alone.
        TestUi ui;
        auto main = startWithRange(ui);
        addRows("Invoices", {"InvNo", "Date", "Balance", "Balance1", "Balance2", "Balance3"},
                {{"A", QDate(2026, 10, 22), 5.0, 7.0, 8.0, 9.0},
                 {"B", QDate(2026, 11, 23), 5.0, 7.0, 8.0, 9.0},
                 {"C", QDate(2026, 11, 22), 0.0, 7.0, 8.0, 9.0},
                 {"D", QDate(2026, 10, 22), 5.0, Value(), Value(), Value()}});
        QCOMPARE(Age_invoices(reportAgeing), 2); // A and D
        QCOMPARE(columnValues("Invoices", "Balance1") + columnValues("Invoices", "Balance2") +
                     columnValues("Invoices", "Balance3"),
                 (QStringList{"0", "7", "7", "0", "5", "8", "8", "5", "0", "9", "9", "0"}));
        // A second run the same day finds every figure in place and writes nothing.
        QCOMPARE(Age_invoices(reportAgeing), 0);
        VERIFY_UI(ui);
    }

    void exports_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        for (int i = 0; i < 6; ++i)
            QTest::newRow(listEntries()[i].text) << i << QString::fromLatin1(listEntries()[i].fileName);
    }

    void exports()
    {
        QFETCH(int, index);
        QFETCH(QString, name);
        TestUi ui;
        auto main = startWithRange(ui);
        addSampleRows();
        ui.onModal("FrmExport", [&](QDialog& d) {
            auto& w = static_cast<FrmExport&>(d);
            [&] {
                QCOMPARE(child<QLineEdit>(w, "Path_txt")->text(), ui.dir());
                child<QLineEdit>(w, "Filename_txt")->setText("typed");
                pick(w, index);
                QCOMPARE(child<QLineEdit>(w, "Filename_txt")->text(), name);
                exportNow(ui, w);
                QCOMPARE(fileBytes(ui.file(name + ".csv")), golden(name + ".csv"));
                // Once more over the same file: the overwrite question, and the same bytes.
                ui.expectBox("Overwrite?", "File already exists! Do wish to overwrite?", vbYes, vbYesNo + vbQuestion);
                exportNow(ui, w);
                // "Debtors" builds its header onto its own last row of the first time.
                const QByteArray stale = index == 5 ? golden("Debtors.csv").split('\r').at(3).mid(1) : "";
                QCOMPARE(fileBytes(ui.file(name + ".csv")), stale + golden(name + ".csv"));
            }();
            return 0;
        });
        child<QAction>(*main, "mnuExport")->trigger();
        VERIFY_UI(ui);
    }

    void exportRefusals()
    {
        TestUi ui;
        auto main = startWithRange(ui);
        addSampleRows();
        FrmExport w(main.get());
        auto* name = child<QLineEdit>(w, "Filename_txt");
        auto* path = child<QLineEdit>(w, "Path_txt");
        name->setText("   ");
        ui.expectBox("Invalid Filename", "Please enter a filename", vbOK, vbExclamation);
        exportNow(ui, w, false);
        QCOMPARE(QDir(ui.dir()).entryList({"*.csv"}), QStringList());
        name->setText("out");
        path->setText(ui.file("missing"));
        ui.expectBox("Invalid Path", "Folder does not exist please try again!", vbOK, vbExclamation);
        exportNow(ui, w, false);
        writeFile(ui.file("out.csv"), "keep");
        path->setText(ui.dir());
        ui.expectBox("Overwrite?", "File already exists! Do wish to overwrite?", vbNo);
        exportNow(ui, w, false);
        QCOMPARE(fileBytes(ui.file("out.csv")), QByteArray("keep"));
        name->setText("  a"); // only the test trims: the name keeps its blanks
        exportNow(ui, w);
        QCOMPARE(fileBytes(ui.file("  a.csv")), golden("SumCustomers.csv"));
        // "Debtors" next builds its header onto the last row the customers left.
        pick(w, 5);
        exportNow(ui, w);
        QCOMPARE(fileBytes(ui.file("Debtors.csv")),
                 toWindows1252("30/06/2026,CUS2,Bo,Café, Ltd,,,,,,") + golden("Debtors.csv"));
        // The name takes no point, slash or ampersand; a key released in the list names the file again.
        name->clear();
        QTest::keyClicks(name, "a.b/c\\d&e-f g");
        QCOMPARE(name->text(), "abcde-f g");
        auto* list = child<QListWidget>(w, "list1");
        list->setCurrentRow(4);
        QTest::keyRelease(list, Qt::Key_Down);
        QCOMPARE(name->text(), "Items");
        // A failure half way through ends the program; the rows before it stay written.
        child<QDateEdit>(w, "DTPicker1")->setDate(QDate(2025, 11, 1)); // takes in INV003, which has no notes
        pick(w, 2);
        ui.expectBox("Error Message", errorMessageText(err::InvalidUseOfNull, "FrmExport", "Invoices",
                                                       standardErrorText(err::InvalidUseOfNull)));
        QVERIFY(endsProgram([&] { exportNow(ui, w, false); }));
        QCOMPARE(fileBytes(ui.file("SumInvoices.csv")), golden("SumInvoices.csv"));
        VERIFY_UI(ui);
    }

    void exportEmptySources()
    {
        TestUi ui;
        auto main = startWithRange(ui);
        addRow("Invoices", {{"InvNo", "PAID"}, {"Date", QDate(2026, 2, 1)}, {"Balance", 0.0}});
        FrmExport w(main.get());
        child<QDateEdit>(w, "DTPicker1")->setDate(QDate(2026, 3, 1));
        // A range with no invoices leaves a file of 0 bytes; no debtors, no file at all.
        for (int index : {2, 5}) {
            pick(w, index);
            ui.expectBox("No Records", "No records to Export", vbOK, vbExclamation);
            exportNow(ui, w, false);
        }
        QVERIFY(QFile::exists(ui.file("SumInvoices.csv")));
        QCOMPARE(fileBytes(ui.file("SumInvoices.csv")), QByteArray());
        QVERIFY(!QFile::exists(ui.file("Debtors.csv")));
        VERIFY_UI(ui);
    }
};

VELK_TEST(ReportsTest)
#include "tst_reports.moc"
