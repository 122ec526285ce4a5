// The report engine: sections laid over pages, bound fields, sums and counts, run-time
// changes, paper and orientation, checked in the PDF it writes.

#include "TestUi.h"

#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QtTest>

using namespace report;

namespace
{

using enum ControlKind;

// A control of one line; the text is a label's caption or the column bound.
Control control(ControlKind kind, const char* name, int left, const QString& text, const QString& format = QString(),
                int width = 2000, const char* function = "")
{
    Control c;
    c.name = QLatin1String(name);
    c.kind = kind;
    c.left = left;
    c.width = width;
    c.height = 250;
    c.wordWrap = false;
    c.format = format;
    c.function = QLatin1String(function);
    (kind == Label ? c.caption : c.field) = text;
    return c;
}

Section section(const char* name, SectionKind kind, std::vector<Control> controls, int height = 300)
{
    return {QLatin1String(name), kind, height, false, std::move(controls)};
}

// A list of invoices: title, headings on every page, a row each, count and sum at the end.
std::unique_ptr<Report> invoiceList(int width = 9000)
{
    auto r = std::make_unique<Report>();
    r->name = "List_rpt";
    r->width = width;
    r->leftMargin = r->rightMargin = r->topMargin = r->bottomMargin = 720;
    r->sections = {
        section("Section4", SectionKind::ReportHeader,
                {control(Label, "Title_lbl", 0, "Invoice List", {}, 6000),
                 control(Label, "Date_lbl", 6000, "designed date", {}, 3000)},
                400),
        section("Section2", SectionKind::PageHeader,
                {control(Label, "Head1", 0, "Number"), control(Label, "Head2", 2000, "Dated"),
                 control(Label, "Head3", 4000, "Owing")}),
        section("Section1", SectionKind::Detail,
                {control(Field, "InvNo_txt", 0, "InvNo"), control(Field, "Date_txt", 2000, "Date", "MM/dd/yyyy"),
                 control(Field, "Balance_txt", 4000, "Balance", "0.00;(0.00)")}),
        section("Section5", SectionKind::ReportFooter,
                {control(Function, "Count_fn", 0, "Balance", "", 2000, "Count"),
                 control(Function, "Sum_fn", 4000, "Balance", "0.00", 2000, "Sum")}),
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
    void rowsTotalsAndPages()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addInvoices(120, [](int i) { return i == 2 ? Value() : Value(i == 4 ? -5.0 : 1.25); });
        auto r = invoiceList();
        r->setDataSource(open("SHAPE {SELECT * FROM invoices} as details"));
        // A4 less the margins holds the header, then rows of 300 under a heading of 300.
        const int perPage = (16838 - 1440 - 300) / 300;
        const int firstPage = (16838 - 1440 - 400 - 300) / 300;
        const int pages = 1 + (120 - firstPage + perPage - 1) / perPage;
        Show(*r);
        QCOMPARE(ui.reports.size(), 1);
        QCOMPARE((QList<int>{ui.reports[0].pages, pdfInfo(ui.reports[0].pdf).pages}), (QList<int>{pages, pages}));
        const QString pdf = pdfText(ui.reports[0].pdf);
        QCOMPARE(pdf.count("Number"), pages);
        QCOMPARE(pdf.count("Invoice List"), 1);
        QVERIFY2(pdf.contains(QRegularExpression("INV0001\\s+01/02/2026\\s+1.25")), qPrintable(pdf));
        QVERIFY(pdf.contains(QRegularExpression("INV0002\\s+01/03/2026\\s*\\n"))); // a Null prints blank
        QVERIFY(pdf.contains(QRegularExpression("INV0004\\s+01/05/2026\\s+\\(5.00\\)")));
        // The Null neither adds to the sum nor counts.
        QVERIFY(pdf.contains(QRegularExpression("\\n\\s*119\\s+142.50")));
        QCOMPARE(formatValue(Value(QDate(2026, 3, 4)), "dd/MM/yyyy"), "04/03/2026");
        QCOMPARE(formatValue(Value(Currency::fromTicks(10050)), "0.00"), "1.01");
        VERIFY_UI(ui);
    }

    void runTimeChanges()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addInvoices(3, [](int) { return Value(1.0); });
        auto r = invoiceList();
        r->control("SECTION4", "date_LBL").setCaption("01/01/2026 to 31/12/2026");
        r->control("Section2", "Head2").setVisible(false);
        r->topMargin = 2000;
        r->section("Section4").height = 900;
        r->section("Section1").newPageAfter = true;
        r->setDataSource(open("SHAPE {SELECT * FROM invoices} as details"));
        Show(*r);
        const QString pdf = pdfText(ui.reports[0].pdf);
        QVERIFY(pdf.contains("01/01/2026 to 31/12/2026"));
        QVERIFY(!pdf.contains("designed date"));
        QVERIFY(!pdf.contains("Dated"));
        QCOMPARE((QList<int>{int(pdf.count("Owing")), ui.reports[0].pages, pdfInfo(ui.reports[0].pdf).pages}),
                 (QList<int>{3, 3, 3}));
        try {
            r->control("Section2", "Nothing");
            QFAIL("an unknown control was found");
        } catch (const VbError& e) {
            QCOMPARE(e.number(), int(err::ItemNotFound));
        }
        VERIFY_UI(ui);
    }

    void groupLevels()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addInvoices(2, [](int) { return Value(0.0); });
        for (const auto& [no, total] : {std::pair{"INV0001", 2.5}, {"INV0001", 4.0}, {"INV0002", 7.0}})
            addRow("InvoiceD", {{"InvNo", QLatin1String(no)}, {"Total", total}, {"Description", "line"}});
        auto r = invoiceList();
        r->sections.insert(r->sections.begin() + 2,
                           section("Group", SectionKind::GroupHeader, {control(Field, "Group_txt", 0, "InvNo")}));
        r->section("Section1").controls = {control(Field, "Desc_txt", 500, "Description"),
                                           control(Field, "Total_txt", 4000, "Total", "0.00")};
        r->sections.insert(r->sections.begin() + 4,
                           section("section6", SectionKind::GroupFooter,
                                   {control(Function, "GroupSum", 4000, "Total", "0.00", 2000, "Sum")}));
        r->section("Section5").controls = {control(Function, "AllSum", 4000, "Total", "0.00", 2000, "Sum")};
        r->setDataSource(open("SHAPE {SELECT * FROM invoices} as main APPEND ({SELECT * FROM invoiceD} as "
                              "Details RELATE 'invno' TO 'invno')"));
        Show(*r);
        const QString pdf = pdfText(ui.reports[0].pdf);
        QVERIFY2(pdf.contains(QRegularExpression(
                     "INV0001\\s+line\\s+2.50\\s+line\\s+4.00\\s+6.50\\s+INV0002\\s+line\\s+7.00\\s+7.00\\s+13.50")),
                 qPrintable(pdf));
        VERIFY_UI(ui);
    }

    // Letter, A4, or another form, which takes the locale's A4; a design wider than 11000 turns the page.
    void paperSize_data()
    {
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("width");
        QTest::addColumn<QSize>("points");
        QTest::addColumn<bool>("landscape");
        for (const auto& [paper, name, points] : {std::tuple{1, "Letter", QSize(612, 792)},
                                                  {9, "A4", QSize(595, 842)},
                                                  {256, "other form", QSize(595, 842)}}) {
            QTest::addRow("%s, upright", name) << paper << 9000 << points << false;
            QTest::addRow("%s, turned", name) << paper << 13500 << points.transposed() << true;
        }
    }

    void paperSize()
    {
        QFETCH(int, paper);
        QFETCH(int, width);
        QFETCH(QSize, points);
        QFETCH(bool, landscape);
        TestUi ui;
        auto main = startProgram(ui, {});
        ui.paper = paper;
        Show(*invoiceList(width));
        QCOMPARE(pdfInfo(ui.reports.last().pdf).pageSize.toSize(), points);
        QCOMPARE(ui.reports.last().landscape, landscape);
        VERIFY_UI(ui);
    }

    void pdfFile()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        // A folder that is not there, or a folder where the file should be: told, and nothing left.
        auto r = invoiceList();
        const Layout layout(*r, platform::vbPRPSA4);
        QDir(ui.dir()).mkpath("out/list.pdf");
        QVERIFY(!layout.writePdf(ui.file("gone/list.pdf")));
        QVERIFY(!layout.writePdf(ui.file("out/list.pdf")));
        QVERIFY(layout.writePdf(ui.file("out/other.pdf")));
        QVERIFY(fileBytes(ui.file("out/other.pdf")).startsWith("%PDF"));
        QCOMPARE(QDir(ui.file("out")).entryList(QStringList{"*.pdf*"}, QDir::Files), QStringList{"other.pdf"});
        VERIFY_UI(ui);
    }
};

VELK_TEST(ReportEngineTest)
#include "tst_report_engine.moc"
