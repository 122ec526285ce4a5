// The report chooser: its range, its sources, the six layouts as printed, and the
// ageing that "Debtors" brings up to date first.

#include "SampleRows.h"

#include "reports/ReportList.h"
#include "reports/frmReports.h"

#include <QAction>
#include <QDateEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace platform;

namespace
{

// Picks an entry and presses "Select"; the text of the report shown, if one was.
QString selectReport(TestUi& ui, frmReports& w, int index)
{
    child<QListWidget>(w, "list1")->setCurrentRow(index);
    const auto shown = ui.reports.size();
    child<QPushButton>(w, "select_cmd")->click();
    if (ui.reports.size() == shown)
        return QString();
    // The PDF's font joins "ff" and "fi"; the captions are compared as typed.
    return pdfText(ui.reports.back().pdf).replace(QChar(0xFB00), QLatin1String("ff")).replace(QChar(0xFB01), "fi");
}

void setRange(frmReports& w, const QDate& start, const QDate& end)
{
    child<QDateEdit>(w, "DTPicker1")->setDate(start);
    child<QDateEdit>(w, "DTPicker2")->setDate(end);
}

} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT
private slots:
    void opening_data();
    void opening();
    void sourceTexts();
    void layouts_data();
    void layouts();
    void emptySources_data();
    void emptySources();
    void paperRefused();
    void ageing_data();
    void ageing();
};

void ReportsTest::opening_data()
{
    QTest::addColumn<int>("present");
    QTest::addColumn<QDate>("end");
    QTest::newRow("default end") << 0 << QDate(2026, 6, 30);
    QTest::newRow("present date") << 1 << QDate(2026, 11, 22);
}

void ReportsTest::opening()
{
    QFETCH(int, present);
    QFETCH(QDate, end);
    TestUi ui;
    auto main = startWithRange(ui, present);
    ui.onModal("frmReports", [&](QDialog& w) {
        [&] {
            QCOMPARE(w.windowTitle(), "Reports");
            auto* list = child<QListWidget>(w, "list1");
            QStringList entries;
            for (int i = 0; i < list->count(); ++i)
                entries << list->item(i)->text();
            QCOMPARE(entries, QStringList({"Customers - Summary", "Customers - Detailed", "Invoices - Summary",
                                           "Invoices and Invoice Details", "Items", "Debtors"}));
            QCOMPARE(list->currentRow(), 0);
            QCOMPARE(child<QDateEdit>(w, "DTPicker1")->date(), QDate(2026, 1, 1));
            QCOMPARE(child<QDateEdit>(w, "DTPicker2")->date(), end);
        }();
        return 0;
    });
    child<QAction>(*main, "Toolbar1(7)")->trigger();
    VERIFY_UI(ui);
}

void ReportsTest::sourceTexts()
{
    const QDate start(2026, 1, 2), end(2026, 12, 31);
    QCOMPARE(Customers_source(start, end),
             "SHAPE {SELECT * FROM customers where Date BETWEEN #01/02/2026# and #12/31/2026#} as details");
    QCOMPARE(Invoices_source(start, end),
             "SHAPE {SELECT * FROM invoices where Date BETWEEN #01/02/2026# and #12/31/2026#} as details");
    QCOMPARE(Invoice_lines_source(start, end),
             "SHAPE {SELECT * FROM invoices where Date BETWEEN #01/02/2026# and #12/31/2026#} as main "
             "APPEND ({SELECT * FROM invoiceD} as Details RELATE 'invno' TO 'invno')  ");
    QCOMPARE(Items_source(), "SHAPE {SELECT * FROM parts} as details");
    QCOMPARE(Debtors_source(), "SHAPE {SELECT * FROM invoices where balance > 0} as details");
}

void ReportsTest::layouts_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("expected"); // patterns, in this order
    QTest::addColumn<QString>("absent");
    QTest::addColumn<bool>("landscape");
    const QString range = "From 01/01/2026 To 30/06/2026";
    const QString customerHead =
        "Cust ID\\s+Date\\s+Last Name\\s+First Name\\s+Street\\s+Town\\s+City\\s+County\\s+Post/Zip Code";
    const QString ann = "CUS1\\s+04/03/2026\\s+Smith\\s+Ann\\s+1 High St\\s+Oldtown\\s+Leeds\\s+Yorks\\s+LS1 1AA";
    const QString bo = "CUS2\\s+30/06/2026\\s+Café, Ltd\\s+Bo\\s*\\n";
    QTest::newRow("Customers - Summary") << 0
                                         << QStringList{"Customer Information - Summary", range, customerHead, ann, bo,
                                                        "Record Count: 2\\s*\\n"}
                                         << "CUS3" << true;
    QTest::newRow("Customers - Detailed")
        << 1
        << QStringList{"Customer Information - Detailed",
                       range,
                       customerHead,
                       ann,
                       "Phone: 0113 1\\s+Mobile: 07700 1\\s+Fax:\\s+Email: ann@x.uk\\s+Notes: Good payer",
                       bo,
                       "Phone:\\s+Mobile:\\s+Fax:\\s+Email:\\s+Notes:\\s*\\n",
                       "Record Count: 2\\s*\\n"}
        << "CUS3" << true;
    const QString invoiceHead =
        "Date\\s+Inv No\\s+Cust No\\s+Customer Name\\s+Phone\\s+Sub Total\\s+Vat\\s+Total\\s+Balance\\s+Notes";
    // The Null VAT of the second invoice prints blank and adds nothing.
    const QString totals = "Record Count: 2\\s+120.00\\s+17.50\\s+137.50\\s+100.00\\s*\\n";
    QTest::newRow("Invoices - Summary")
        << 2
        << QStringList{"Invoice Summary",
                       range,
                       invoiceHead,
                       "02/10/2026\\s+INV001\\s+CUS1\\s+Ann Smith\\s+0113 "
                       "1\\s+100.00\\s+17.50\\s+117.50\\s+100.00\\s+one",
                       "06/30/2026\\s+INV002\\s+CUS2\\s+Bo Café\\s+20.00\\s+20.00\\s+0.00\\s*\\n",
                       totals}
        << "INV003" << true;
    // The count is of invoices, the sums of their own columns, not of their lines.
    QTest::newRow("Invoices and Invoice Details")
        << 3
        << QStringList{"Invoice Detailed",
                       range,
                       invoiceHead,
                       "10/02/2026\\s+INV001\\s+CUS1\\s+Ann Smith\\s+0113 "
                       "1\\s+100.00\\s+17.50\\s+117.50\\s+100.00\\s+one",
                       "Item ID: P1\\s+Quantity: 2\\s+Description:\\s*Widget\\s+Amount:\\s+25.00\\s+Total:\\s+50.00",
                       "Item ID: P2\\s+Quantity: 1\\s+Description:\\s*Gadget\\s+Amount:\\s+12.35\\s+Total:\\s+12.35",
                       "Item ID: P1\\s+Quantity: 3\\s+Description:\\s*Widget\\s+Amount:\\s+25.00\\s+Total:\\s+75.00",
                       "30/06/2026\\s+INV002\\s+CUS2\\s+Bo Café\\s+20.00\\s+20.00\\s+0.00\\s*\\n(?!\\s*Item)",
                       totals}
        << "INV003" << true;
    // Every item, though the range is printed.
    QTest::newRow("Items") << 4
                           << QStringList{"Items",
                                          range,
                                          "Item ID\\s+Description\\s+Price\\s+Taxable",
                                          "P1\\s+A widget\\s+25.00\\s+1\\s*\\n",
                                          "P2\\s+A gadget\\s+12.50\\s*\\n",
                                          "Record Count: 2\\s*\\n"}
                           << "Widget" << false;
    QTest::newRow("Debtors") << 5
                             << QStringList{"Debtors",
                                            range,
                                            "Date\\s+Inv No\\s+Cust No\\s+Customer Name\\s+Phone\\s+Total\\s+Written "
                                            "Off\\s+Paid\\s+Balance\\s+0 to 30 Days\\s+31 to 60 Days\\s+61 Days \\+",
                                            "10/02/2026\\s+INV001\\s+CUS1\\s+Ann Smith\\s+0113 1\\s+117.50\\s+0.00\\s+"
                                            "17.50\\s+100.00\\s+0.00\\s+0.00\\s+100.00",
                                            "01/12/2025\\s+INV003\\s+CUS1\\s+Ann Smith\\s+50.00\\s+0.00\\s+0.00\\s+"
                                            "50.00\\s+0.00\\s+0.00\\s+50.00",
                                            "01/11/2026\\s+INV004\\s+CUS2\\s+Bo Café\\s+30.00\\s+0.00\\s+0.00\\s+"
                                            "30.00\\s+30.00\\s+0.00\\s+0.00",
                                            "Record Count: 3\\s+197.50\\s+0.00\\s+17.50\\s+180.00\\s+30.00\\s+0.00\\s+"
                                            "150.00"}
                             << "INV002" << true;
}

void ReportsTest::layouts()
{
    QFETCH(int, index);
    QFETCH(QStringList, expected);
    QFETCH(QString, absent);
    QFETCH(bool, landscape);
    TestUi ui;
    auto main = startWithRange(ui);
    addSampleRows();
    frmReports w(main.get());
    const QString pdf = selectReport(ui, w, index);
    qsizetype at = 0;
    for (const QString& pattern : expected) {
        const auto m = QRegularExpression(pattern).match(pdf, at);
        QVERIFY2(m.hasMatch(), qPrintable(pattern + "\nin\n" + pdf));
        at = m.capturedEnd();
    }
    QVERIFY(!pdf.contains(absent));
    QCOMPARE(pdf.count("Record Count:"), 1);
    QCOMPARE(ui.reports.back().landscape, landscape);
    VERIFY_UI(ui);
}

void ReportsTest::emptySources_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QString>("expected"); // empty: the "No records to print!" box
    QTest::newRow("customers, empty range") << 0 << QDate(2027, 1, 1) << QString();
    QTest::newRow("detailed customers, empty range") << 1 << QDate(2027, 1, 1) << QString();
    const QString zero = "Record Count: 0\\s+0.00\\s+0.00\\s+0.00\\s+0.00\\s*\\n";
    QTest::newRow("invoices, empty range") << 2 << QDate(2027, 1, 1) << zero;
    QTest::newRow("invoice details, end before start") << 3 << QDate(2026, 7, 1) << zero;
}

void ReportsTest::emptySources()
{
    QFETCH(int, index);
    QFETCH(QDate, start);
    QFETCH(QString, expected);
    TestUi ui;
    auto main = startWithRange(ui);
    addSampleRows();
    frmReports w(main.get());
    setRange(w, start, start.year() == 2027 ? QDate(2027, 12, 31) : QDate(2026, 6, 30));
    if (expected.isEmpty())
        ui.expectBox("Nothing to Print", "No records to print!", vbOK, vbExclamation);
    const QString pdf = selectReport(ui, w, index);
    if (expected.isEmpty())
        QVERIFY(ui.reports.isEmpty());
    else
        QVERIFY2(pdf.contains(QRegularExpression(expected)) && pdf.contains("Sub Total"), qPrintable(pdf));
    VERIFY_UI(ui);
}

void ReportsTest::paperRefused()
{
    TestUi ui;
    ui.paper = 5; // Legal
    auto main = startWithRange(ui);
    frmReports w(main.get());
    ui.expectBox("Change Paper Size", "Please change the paper size on your printer to 'Letter' or 'A4'", vbOK,
                 vbExclamation);
    QVERIFY(selectReport(ui, w, 4).isEmpty());
    QVERIFY(ui.reports.isEmpty());
    VERIFY_UI(ui);
}

void ReportsTest::ageing_data()
{
    QTest::addColumn<bool>("exportRule");
    QTest::addColumn<int>("days");
    QTest::addColumn<QString>("columns"); // BALANCE1 to BALANCE3 after, from 7, 8 and 9
    const struct {
        int days;
        const char *report, *exported;
    } rows[] = {{-1, "7|8|9", "7|8|9"}, {0, "5|0|0", "5|0|0"},  {30, "5|0|0", "5|0|0"}, {31, "0|5|0", "7|8|9"},
                {32, "0|5|0", "0|5|0"}, {59, "0|5|0", "0|5|0"}, {60, "0|5|0", "7|8|9"}, {61, "0|0|5", "0|0|5"}};
    for (const auto& r : rows) {
        QTest::addRow("report, %d days", r.days) << false << r.days << QString::fromLatin1(r.report);
        QTest::addRow("export, %d days", r.days) << true << r.days << QString::fromLatin1(r.exported);
    }
}

void ReportsTest::ageing()
{
    QFETCH(bool, exportRule);
    QFETCH(int, days);
    QFETCH(QString, columns);
    TestUi ui;
    auto main = startWithRange(ui);
    for (const auto& [no, balance] : {std::pair{"A", 5.0}, {"B", 0.0}})
        addRow("Invoices", {{"InvNo", QLatin1String(no)},
                            {"Date", QDate(2026, 11, 22).addDays(-days)},
                            {"Balance", balance},
                            {"Balance1", 7.0},
                            {"Balance2", 8.0},
                            {"Balance3", 9.0}});
    Age_invoices(exportRule ? exportAgeing : reportAgeing);
    QStringList owing, settled;
    for (const char* column : {"Balance1", "Balance2", "Balance3"}) {
        const QStringList values = columnValues("Invoices", QLatin1String(column));
        owing << values[0];
        settled << values[1];
    }
    QCOMPARE(owing.join('|'), columns);
    QCOMPARE(settled.join('|'), "7|8|9"); // nothing owing: never touched
    VERIFY_UI(ui);
}

VELK_TEST(ReportsTest)
#include "tst_reports.moc"
