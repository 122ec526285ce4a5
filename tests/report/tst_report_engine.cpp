// The report engine: layout of sections over pages, bound fields, sums and counts,
// run-time changes, paper and orientation, checked in the PDF it writes.

#include "TestUi.h"

#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QDir>
#include <QtTest>

using namespace report;

namespace
{

Control control(const char* name, ControlKind kind, int left, int width, const QString& format = QString())
{
    Control c;
    c.name = QLatin1String(name);
    c.kind = kind;
    c.left = left;
    c.width = width;
    c.height = 250;
    c.wordWrap = false;
    c.format = format;
    return c;
}

Control label(const char* name, int left, int width, const QString& caption)
{
    Control c = control(name, ControlKind::Label, left, width);
    c.caption = caption;
    return c;
}

Control field(const char* name, int left, const QString& field, const QString& format = QString())
{
    Control c = control(name, ControlKind::Field, left, 2000, format);
    c.field = field;
    return c;
}

Control function(const char* name, const char* fn, const QString& field, int left)
{
    Control c = control(name, ControlKind::Function, left, 2000, fn == QByteArray("Count") ? "" : "0.00");
    c.field = field;
    c.function = QLatin1String(fn);
    return c;
}

Section section(const char* name, SectionKind kind, int height, std::vector<Control> controls)
{
    return {QLatin1String(name), kind, height, false, std::move(controls)};
}

// A list of invoices: title, headings on every page, a row each, totals at the end.
std::unique_ptr<Report> invoiceList(int width = 9000)
{
    auto r = std::make_unique<Report>();
    r->name = "List_rpt";
    r->width = width;
    r->leftMargin = r->rightMargin = r->topMargin = r->bottomMargin = 720;
    r->sections = {
        section("Section4", SectionKind::ReportHeader, 400,
                {label("Title_lbl", 0, 6000, "Invoice List"), label("Date_lbl", 6000, 3000, "designed date")}),
        section("Section2", SectionKind::PageHeader, 300,
                {label("Head1", 0, 2000, "Number"), label("Head2", 2000, 2000, "Dated"),
                 label("Head3", 4000, 2000, "Owing")}),
        section("Section1", SectionKind::Detail, 300,
                {field("InvNo_txt", 0, "InvNo"), field("Date_txt", 2000, "Date", "MM/dd/yyyy"),
                 field("Balance_txt", 4000, "Balance", "0.00;(0.00)")}),
        section("Section5", SectionKind::ReportFooter, 300,
                {function("Count_fn", "Count", "Balance", 0), function("Sum_fn", "Sum", "Balance", 4000)}),
    };
    return r;
}

void addInvoices(int count, const std::function<Value(int)>& balance)
{
    for (int i = 1; i <= count; ++i)
        addRow("Invoices", {{"InvNo", QStringLiteral("INV%1").arg(i, 4, 10, QChar('0'))},
                            {"Date", QDate(2026, 1, 1).addDays(i)},
                            {"Balance", balance(i)}});
}

std::shared_ptr<ShapeRecordset> open(const QString& source)
{
    std::shared_ptr<ShapeRecordset> rs;
    Open_shape(source, rs);
    return rs;
}

} // namespace

class ReportEngineTest : public QObject
{
    Q_OBJECT
private slots:
    void rowsTotalsAndFormats();
    void pagesRepeatTheirHeader();
    void runTimeChanges();
    void groupLevels();
    void pagePerRecord();
    void paperAndOrientation_data();
    void paperAndOrientation();
    void pdfThatCannotBeWritten();
};

void ReportEngineTest::rowsTotalsAndFormats()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addInvoices(4, [](int i) { return i == 2 ? Value() : Value(i == 4 ? -5.0 : 10.25); });
    auto r = invoiceList();
    r->setDataSource(open("SHAPE {SELECT * FROM invoices} as details"));
    Show(*r);
    QCOMPARE(ui.reports.size(), 1);
    const QString pdf = pdfText(ui.reports[0].pdf);
    QVERIFY2(pdf.contains(QRegularExpression("INV0001\\s+01/02/2026\\s+10.25")), qPrintable(pdf));
    QVERIFY(pdf.contains(QRegularExpression("INV0002\\s+01/03/2026\\s*\\n"))); // a Null prints blank
    QVERIFY(pdf.contains(QRegularExpression("INV0004\\s+01/05/2026\\s+\\(5.00\\)")));
    // The Null neither adds to the sum nor counts.
    QVERIFY2(pdf.contains(QRegularExpression("\\n\\s*3\\s+15.50")), qPrintable(pdf));
    QCOMPARE(ui.reports[0].pages, 1);
    QCOMPARE(formatValue(Value(QDate(2026, 3, 4)), "dd/MM/yyyy"), "04/03/2026");
    QCOMPARE(formatValue(Value(Currency::fromTicks(10050)), "0.00"), "1.01");
    VERIFY_UI(ui);
}

void ReportEngineTest::pagesRepeatTheirHeader()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addInvoices(120, [](int) { return Value(1.0); });
    auto r = invoiceList();
    r->setDataSource(open("SHAPE {SELECT * FROM invoices} as details"));
    const Layout layout(*r, platform::vbPRPSA4);
    // A4 less the margins holds the header, then rows of 300 under a heading of 300.
    const int perPage = (16838 - 1440 - 300) / 300;
    const int firstPage = (16838 - 1440 - 400 - 300) / 300;
    QCOMPARE(int(layout.pages().size()), 1 + (120 - firstPage + perPage - 1) / perPage);
    Show(*r);
    const QString pdf = pdfText(ui.reports[0].pdf);
    QCOMPARE(pdf.count("Number"), ui.reports[0].pages);
    QCOMPARE(pdf.count("Invoice List"), 1);
    QCOMPARE(pdfInfo(ui.reports[0].pdf).pages, ui.reports[0].pages);
    QVERIFY(pdf.contains(QRegularExpression("120\\s+120.00")));
    VERIFY_UI(ui);
}

void ReportEngineTest::runTimeChanges()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    auto r = invoiceList();
    r->control("SECTION4", "date_LBL").setCaption("01/01/2026 to 31/12/2026");
    r->control("Section2", "Head2").setVisible(false);
    r->topMargin = 2000;
    r->section("Section4").height = 900;
    Show(*r); // no source: the headers alone
    const QString pdf = pdfText(ui.reports[0].pdf);
    QVERIFY(pdf.contains("01/01/2026 to 31/12/2026"));
    QVERIFY(!pdf.contains("designed date"));
    QVERIFY(!pdf.contains("Dated"));
    QVERIFY(pdf.contains("Owing"));
    int number = 0;
    try {
        r->control("Section2", "Nothing");
    } catch (const VbError& e) {
        number = e.number();
    }
    QCOMPARE(number, int(err::ItemNotFound));
    VERIFY_UI(ui);
}

void ReportEngineTest::groupLevels()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addInvoices(2, [](int) { return Value(0.0); });
    for (const auto& [no, total] : {std::pair{"INV0001", 2.5}, {"INV0001", 4.0}, {"INV0002", 7.0}})
        addRow("InvoiceD", {{"InvNo", QLatin1String(no)}, {"Total", total}, {"Description", "line"}});
    auto r = invoiceList();
    r->sections.insert(r->sections.begin() + 2,
                       section("Group", SectionKind::GroupHeader, 300, {field("Group_txt", 0, "InvNo")}));
    r->section("Section1").controls = {field("Desc_txt", 500, "Description"),
                                       field("Total_txt", 4000, "Total", "0.00")};
    r->sections.insert(r->sections.begin() + 4, section("section6", SectionKind::GroupFooter, 300,
                                                        {function("GroupSum", "Sum", "Total", 4000)}));
    r->section("Section5").controls = {function("AllSum", "Sum", "Total", 4000)};
    r->setDataSource(open("SHAPE {SELECT * FROM invoices} as main APPEND ({SELECT * FROM invoiceD} as "
                          "Details RELATE 'invno' TO 'invno')"));
    Show(*r);
    const QString pdf = pdfText(ui.reports[0].pdf);
    const QRegularExpression expected(
        "INV0001\\s+line\\s+2.50\\s+line\\s+4.00\\s+6.50\\s+INV0002\\s+line\\s+7.00\\s+7.00\\s+13.50");
    QVERIFY2(pdf.contains(expected), qPrintable(pdf));
    VERIFY_UI(ui);
}

void ReportEngineTest::pagePerRecord()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addInvoices(3, [](int) { return Value(1.0); });
    auto r = invoiceList();
    r->section("Section1").newPageAfter = true;
    r->setDataSource(open("SHAPE {SELECT * FROM invoices} as details"));
    Show(*r);
    QCOMPARE(ui.reports[0].pages, 3);
    QCOMPARE(pdfInfo(ui.reports[0].pdf).pages, 3);
    QCOMPARE(pdfText(ui.reports[0].pdf).count("Number"), 3);
    VERIFY_UI(ui);
}

void ReportEngineTest::paperAndOrientation_data()
{
    QTest::addColumn<int>("paper");
    QTest::addColumn<int>("width");
    QTest::addColumn<QSizeF>("points");
    QTest::newRow("Letter") << 1 << 9000 << QSizeF(612, 792);
    QTest::newRow("A4") << 9 << 9000 << QSizeF(595, 842);
    QTest::newRow("another form: the locale's paper") << 256 << 9000 << QSizeF(595, 842);
    QTest::newRow("wide design on Letter") << 1 << 13500 << QSizeF(792, 612);
    QTest::newRow("wide design on A4") << 9 << 13500 << QSizeF(842, 595);
}

void ReportEngineTest::paperAndOrientation()
{
    QFETCH(int, paper);
    QFETCH(int, width);
    QFETCH(QSizeF, points);
    TestUi ui;
    ui.paper = paper;
    auto main = startProgram(ui, {});
    auto r = invoiceList(width);
    Show(*r);
    const QSizeF size = pdfInfo(ui.reports[0].pdf).pageSize;
    QCOMPARE(qRound(size.width()), qRound(points.width()));
    QCOMPARE(qRound(size.height()), qRound(points.height()));
    QCOMPARE(ui.reports[0].landscape, width > 11000);
    VERIFY_UI(ui);
}

// A folder that is not there, or a folder where the file should be: told, and nothing left.
void ReportEngineTest::pdfThatCannotBeWritten()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    auto r = invoiceList();
    const Layout layout(*r, platform::vbPRPSA4);
    QVERIFY(!layout.writePdf(ui.file("gone/list.pdf")));
    QVERIFY(QDir(ui.dir()).mkdir("list.pdf"));
    QVERIFY(!layout.writePdf(ui.file("list.pdf")));
    QVERIFY(layout.writePdf(ui.file("other.pdf")));
    QVERIFY(fileBytes(ui.file("other.pdf")).startsWith("%PDF"));
    QCOMPARE(QDir(ui.dir()).entryList(QStringList{"*.pdf*"}, QDir::Files), QStringList{"other.pdf"});
    VERIFY_UI(ui);
}

VELK_TEST(ReportEngineTest)
#include "tst_report_engine.moc"
