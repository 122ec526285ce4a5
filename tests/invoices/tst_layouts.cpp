// The six printed invoice layouts: every named control in each, one page on Letter and
// on A4, and nothing overlapping when every field is full.

#include "TestUi.h"

#include "PrintedInk.h"
#include "invoices/InvoiceLayouts.h"
#include "shell/frmMain.h"

#include <QFontMetrics>
#include <QtTest>

using namespace report;

namespace
{

const QStringList CommonControls{"companyname_lbl", "companyadd",    "Image1",      "Invoice_lbl",   "Label1",
                                 "BillingAdd",      "shipping1_lbl", "ShippingAdd", "shippingShape", "Shape8"};

QStringList section2Controls()
{
    QStringList names{"Label9",      "Label12",       "Label10", "Label11",      "Label20", "Notes_lbl",
                      "Terms_lbl",   "Shape1",        "Label19", "Total10_lbl",  "Label6",  "Paid_lbl",
                      "Label7",      "wrttenoff_lbl", "Label8",  "balance_lbl",  "Label2",  "Subtotal_lbl",
                      "taxname_lbl", "Tax_lbl",       "Label4",  "Discount_lbl", "Label5",  "total11_lbl",
                      "taxable_lbl", "statment_lbl"};
    for (int i = 0; i < 8; ++i)
        for (const char* stem : {"Parts", "Qty", "Description", "Amount", "Total"})
            names << QStringLiteral("%1%2_lbl").arg(QLatin1String(stem)).arg(i);
    return names;
}

const QStringList DataBlock{"Label13",     "Invoice1_lbl",    "Label14",      "Date1_lbl",
                            "Label15",     "CustNo_lbl",      "Label16",      "CustName_lbl",
                            "Sales_lbl",   "SalesPerson_lbl", "Shipping_lbl", "Shipping2_lbl",
                            "SalesNO_lbl", "SalesNO1_lbl",    "Tracking_lbl", "TrackNo_lbl"};

bool familyB(int type)
{
    return type == 2 || type == 4;
}

// A text of the length given, of words as a user would type them.
QString wide(int length, const QString& words = "WORKSHOP Maximum ")
{
    QString text;
    while (text.size() < length)
        text += words;
    return text.left(length).trimmed().leftJustified(length, QLatin1Char('x'));
}

// Fills every label the way a full invoice with the widest values allowed would: seven
// integer digits behind the currency sign, 30-character company and tax names,
// 45-character customer names, 120-character descriptions, every field at its limit.
void fillEverything(Report& r, int type)
{
    const QString data = familyB(type) ? "Section4" : "Section2";
    auto set = [&](const QString& section, const QString& name, const QString& text) {
        r.control(section, name).setCaption(text);
    };
    set("Section4", "companyname_lbl", wide(30, "HARTLEY & DAUGHTERS JOINERY "));
    const QString address = wide(30, "Unit 4 Mill Lane ") + "\n" + wide(29, "Hebden Bridge ") + "\n" +
                            wide(29, "West Yorkshire ") + "\n" + wide(29, "United Kingdom ") + "\n" +
                            wide(29, "HX7 8AD ");
    set("Section4", "Companyadd",
        address + "\nPhone: " + wide(30, "01422 555123 ") + "  Mobile: " + wide(30, "07700 900123 ") +
            "\nEmail: " + wide(30, "office@hartley.example ") + "\nWeb: " + wide(30, "www.hartley.example ") + "\n" +
            wide(30, "VALUE ADDED TAX ") + " No: " + wide(30, "GB123456789 "));
    set("Section4", "Invoice_Lbl", "INVOICE - INV123456789");
    const QString customer = wide(45, "Alexandra Montgomery-Fotheringham ");
    QString lines = customer;
    for (int i = 0; i < 5; ++i)
        lines += "\n" + wide(50, QStringLiteral("%1 Long Street Name in the Upper Town of Hebden Bridge ").arg(i + 12));
    set("Section4", "BillingAdd", lines);
    set("Section4", "ShippingAdd", lines);
    const QStringList values{
        "INV123456789",       "22/11/2026",       "CUS123456789",       customer, wide(20, "Sales Person "),
        wide(20, "Shipped "), wide(20, "Order "), wide(20, "TRACK 99 ")};
    for (int i = 0; i < 8; ++i)
        set(data, DataBlock[i * 2 + 1], values[i]);
    const QString colon = familyB(type) ? ":" : QString();
    for (int i = 4; i < 8; ++i)
        set(data, DataBlock[i * 2], wide(20, "Tracking Number ") + colon);
    for (int i = 0; i < 8; ++i) {
        set("Section2", QStringLiteral("Parts%1_lbl").arg(i), QStringLiteral("PRT12345678%1").arg(i));
        set("Section2", QStringLiteral("Qty%1_lbl").arg(i), "9999");
        set("Section2", QStringLiteral("Description%1_lbl").arg(i),
            QStringLiteral("Row %1 ").arg(i) +
                wide(114, "OAK skirting board, primed and cut to length on site, with fixings and two coats "));
        set("Section2", QStringLiteral("Amount%1_lbl").arg(i), "1234567.89 ");
        set("Section2", QStringLiteral("Total%1_lbl").arg(i), "9876543.21*");
    }
    set("Section2", "Notes_lbl", "Notes:\n" + wide(150, "Delivered in two parts; the second part follows next week. "));
    set("Section2", "Terms_lbl",
        wide(200, "Payment within 30 days of the invoice date. Goods remain ours until paid. "));
    set("Section2", "statment_lbl", wide(100, "Thank you for your business. "));
    set("Section2", "taxname_lbl", wide(30, "VALUE ADDED TAX ") + " @ 17.5%");
    for (const char* money : {"Subtotal_lbl", "Tax_lbl", "Discount_lbl", "total11_lbl", "Total10_lbl", "Paid_lbl",
                              "wrttenoff_lbl", "balance_lbl"})
        set("Section2", QLatin1String(money), "$1185176.88");
}

} // namespace

class LayoutsTest : public QObject
{
    Q_OBJECT
private slots:
    void everyControlInEveryDesign_data();
    void everyControlInEveryDesign();
    void onePageOnEachPaper_data();
    void onePageOnEachPaper();
};

void LayoutsTest::everyControlInEveryDesign_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QList<int>>("sizes"); // width, left, right, top, bottom, Section4, Section2
    QTest::newRow("1") << 1 << QList<int>{9750, 950, 800, 800, 500, 4335, 9690};
    QTest::newRow("2") << 2 << QList<int>{9900, 950, 500, 1000, 500, 4605, 9120};
    QTest::newRow("3") << 3 << QList<int>{9780, 950, 500, 800, 500, 4275, 9825};
    QTest::newRow("4") << 4 << QList<int>{9855, 950, 500, 1000, 500, 4425, 9600};
    QTest::newRow("5") << 5 << QList<int>{9750, 950, 500, 800, 500, 4275, 9735};
    QTest::newRow("6") << 6 << QList<int>{9690, 950, 800, 800, 500, 4320, 9840};
}

void LayoutsTest::everyControlInEveryDesign()
{
    QFETCH(int, type);
    QFETCH(QList<int>, sizes);
    auto r = Invoice_layout(type);
    QCOMPARE(r->name, QStringLiteral("Invoice%1_rpt").arg(type));
    QCOMPARE((QList<int>{r->width, r->leftMargin, r->rightMargin, r->topMargin, r->bottomMargin,
                         r->section("Section4").height, r->section("Section2").height}),
             sizes);
    QCOMPARE((QList<int>{r->section("Section1").height, r->section("Section3").height, r->section("Section5").height}),
             (QList<int>{0, 0, 45}));
    const QString data = familyB(type) ? "Section4" : "Section2";
    for (const QString& name : CommonControls)
        r->control("Section4", name); // fails with 3265 when missing
    for (const QString& name : section2Controls())
        r->control("Section2", name);
    for (const QString& name : DataBlock)
        r->control(data, name);
    QCOMPARE(r->control("Section2", "Qty1_lbl").name, "qty1_lbl");
    QCOMPARE(r->control(data, "Label13").caption, familyB(type) ? "Invoice No:" : "Invoice No");
    // The line table's columns and rows.
    auto at = [&](const QString& name) { return r->control("Section2", name); };
    QList<int> places;
    for (const char* name : {"Label9", "Label12", "Label10", "Label11", "Label20"})
        places << at(name).left << at(name).width;
    QCOMPARE(places, (QList<int>{30, 1095, 1140, 540, 1740, 5550, 7380, 1095, 8520, 1080}));
    for (int i = 0; i < 7; ++i) {
        const QString d = QStringLiteral("Description%1_lbl");
        QVERIFY(qAbs(at(d.arg(i + 1)).top - at(d.arg(i)).top - 545) <= 10);
        QCOMPARE(at(d.arg(i)).height, 465);
    }
    QCOMPARE((QList<int>{at("Shape1").width, at("Shape1").height, at("Label19").left, at("Label2").left,
                         at("Notes_lbl").width, at("statment_lbl").width}),
             (QList<int>{4980, 1530, 5115, 7410, 5505, 9480}));
    // Nothing overlaps.
    for (const Section& s : r->sections) {
        // On A4 the report header is cut to 4500: everything in it must stand above that.
        const int room = s.name == QLatin1String("Section4") ? std::min(s.height, 4500) : s.height;
        std::vector<const Control*> texts;
        for (const Control& c : s.controls) {
            QVERIFY2(c.top + c.height <= room && c.left + c.width <= r->width,
                     qPrintable(QStringLiteral("%1 leaves its section").arg(c.name)));
            if (c.kind == ControlKind::Label || c.kind == ControlKind::Picture)
                texts.push_back(&c);
        }
        for (size_t i = 0; i < texts.size(); ++i)
            for (size_t j = i + 1; j < texts.size(); ++j) {
                const QRect a(texts[i]->left, texts[i]->top, texts[i]->width, texts[i]->height);
                const QRect b(texts[j]->left, texts[j]->top, texts[j]->width, texts[j]->height);
                QVERIFY2(!a.intersects(b), qPrintable(texts[i]->name + " overlaps " + texts[j]->name));
            }
    }
    // A description of two lines fits its row.
    QFont font("DejaVu Sans");
    font.setPixelSize(180);
    const Control& d = r->control("Section2", "Description0_lbl");
    const QRect needed = QFontMetrics(font).boundingRect(
        QRect(0, 0, d.width, 10000), Qt::TextWordWrap,
        "Row 0 oak skirting board, primed and cut to length on site, with fixings and two coats");
    QVERIFY(needed.height() <= d.height);
}

void LayoutsTest::onePageOnEachPaper_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("paper");
    QTest::addColumn<bool>("shipping");
    for (int type = 1; type <= 6; ++type) {
        QTest::addRow("%d Letter", type) << type << 1 << true;
        QTest::addRow("%d A4", type) << type << 9 << true;
        QTest::addRow("%d A4 without delivery", type) << type << 9 << false;
    }
}

void LayoutsTest::onePageOnEachPaper()
{
    QFETCH(int, type);
    QFETCH(int, paper);
    QFETCH(bool, shipping);
    TestUi ui;
    ui.paper = paper;
    auto main = startProgram(ui, {});
    auto r = Invoice_layout(type);
    if (paper == 9)
        Adjust_for_A4(*r);
    fillEverything(*r, type);
    const Control billing = r->control("Section4", "BillingAdd");
    if (!shipping)
        for (const char* name : {"ShippingAdd", "shippingShape", "shipping1_lbl"})
            r->control("Section4", QLatin1String(name)).setVisible(false);
    Show(*r);
    QCOMPARE(ui.reports.size(), 1);
    QCOMPARE(ui.reports[0].pages, 1);
    QCOMPARE(pdfInfo(ui.reports[0].pdf).pages, 1);
    // Every word printed stands inside its box, over no other.
    const QStringList ink = inkProblems(*r, paper, ui.reports[0].pdf);
    QVERIFY2(ink.isEmpty(), qPrintable(ink.join('\n')));
    const QString pdf = pdfText(ui.reports[0].pdf);
    for (const char* expected :
         {"INVOICE - INV123456789", "HARTLEY & DAUGHTERS JOINERY", "* = Non Taxable Items",
          "Thank you for your business", "Payment within 30 days", "Delivered in two parts", "PRT123456787",
          "Billing Address:", "TRACK 99", "Balance Due", "$1185176.88", "Customer Name", "9876543.21*"})
        QVERIFY2(pdf.contains(QLatin1String(expected)), qPrintable(QLatin1String(expected) + " in:\n" + pdf));
    QCOMPARE(pdf.contains("Delivery Address:"), shipping);
    QCOMPARE(pdf.count("12 Long Street Name"), shipping ? 2 : 1);
    // Hiding the delivery block leaves the billing box where it was.
    const Control& after = r->control("Section4", "BillingAdd");
    QCOMPARE(QRect(after.left, after.top, after.width, after.height),
             QRect(billing.left, billing.top, billing.width, billing.height));
    VERIFY_UI(ui);
}

VELK_TEST(LayoutsTest)
#include "tst_layouts.moc"
