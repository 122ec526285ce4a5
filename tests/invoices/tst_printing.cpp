// Printing invoices: the six layouts filled to their limits, each word inside its box on
// Letter and on A4; and "Print" of the invoice window, the labels each layout gets from
// the window and the settings, and the refusals on the way.

#include "TestUi.h"

#include "invoices/InvoiceLayouts.h"
#include "invoices/frmAddInv.h"
#include "platform/Activation.h"
#include "platform/MemoBox.h"
#include "report/ReportRenderer.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

using namespace platform;
using namespace report;

namespace
{

// Each word of the PDF, as pdftotext finds it, that stands outside every visible text of
// the report or over another word: one line each.
QStringList inkProblems(const Report& report, int paper, const QString& pdf)
{
    QList<QRectF> boxes;
    const Layout layout(report, paper);
    for (const Band& band : layout.pages().at(0).bands)
        for (const Control& c : band.section->controls)
            if (c.visible && (c.kind == ControlKind::Label || c.kind == ControlKind::Field))
                boxes << QRectF(report.leftMargin + c.left, report.topMargin + band.top + c.top, c.width, c.height);
    QProcess p;
    p.start("pdftotext", {"-bbox", pdf, "-"});
    p.waitForFinished(60000);
    static const QRegularExpression word(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re");
    QList<std::pair<QString, QRectF>> words;
    for (auto it = word.globalMatch(QString::fromUtf8(p.readAllStandardOutput())); it.hasNext();) {
        const auto m = it.next();
        // Glyph boxes reach a little above and below the line a text is set in.
        words.push_back({m.captured(5), QRectF(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                                               QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()))
                                            .adjusted(1.5, 1.5, -1.5, -1.5)});
    }
    QStringList problems;
    for (int i = 0; i < words.size(); ++i) {
        const auto& [text, ink] = words[i];
        if (std::none_of(boxes.begin(), boxes.end(), [&](const QRectF& twips) {
                return QRectF(twips.topLeft() / 20, twips.size() / 20).contains(ink);
            }))
            problems << QStringLiteral("\"%1\" outside its box at %2,%3").arg(text).arg(ink.x()).arg(ink.y());
        for (int j = i + 1; j < words.size(); ++j)
            if (ink.intersects(words[j].second))
                problems << QStringLiteral("\"%1\" over \"%2\"").arg(text, words[j].first);
    }
    return problems;
}

bool familyB(int type)
{
    return type == 2 || type == 4;
}

// A text of the length given, of words as a user would type them.
QString wide(int length, const QString& words)
{
    QString text;
    while (text.size() < length)
        text += words;
    return text.left(length).trimmed().leftJustified(length, QLatin1Char('x'));
}

// Every label as a full invoice with the widest values allowed would fill it: seven
// integer digits, 30-character company and tax names, 45-character customer names,
// 120-character descriptions.
void fillEverything(Report& r, int type)
{
    const QString data = familyB(type) ? "Section4" : "Section2";
    auto set = [&](const QString& section, const QString& name, const QString& text) {
        r.control(section, name).setCaption(text);
    };
    set("Section4", "companyname_lbl", wide(30, "HARTLEY & DAUGHTERS JOINERY "));
    QString address = wide(30, "Unit 4 Mill Lane ");
    for (const char* part : {"Hebden Bridge ", "West Yorkshire ", "United Kingdom ", "HX7 8AD "})
        address += "\n" + wide(29, part);
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
        "Invoice1_lbl=INV123456789", "Date1_lbl=22/11/2026", "CustNo_lbl=CUS123456789", "CustName_lbl=" + customer,
        "SalesPerson_lbl=",          "Shipping2_lbl=",       "SalesNO1_lbl=",           "TrackNo_lbl="};
    for (const QString& v : values)
        set(data, v.section('=', 0, 0), v.endsWith('=') ? wide(20, "TRACK 99 ") : v.section('=', 1));
    for (const char* label : {"Sales_lbl", "Shipping_lbl", "SalesNO_lbl", "Tracking_lbl"})
        set(data, label, wide(20, "Tracking Number ") + (familyB(type) ? ":" : ""));
    for (int i = 0; i < 8; ++i) {
        const auto name = [i](const char* stem) { return QStringLiteral("%1%2_lbl").arg(QLatin1String(stem)).arg(i); };
        set("Section2", name("Parts"), QStringLiteral("PRT12345678%1").arg(i));
        set("Section2", name("Qty"), "9999");
        set("Section2", name("Description"),
            QStringLiteral("Row %1 ").arg(i) +
                wide(114, "OAK skirting board, primed and cut to length on site, with fixings and two coats "));
        set("Section2", name("Amount"), "1234567.89 ");
        set("Section2", name("Total"), "9876543.21*");
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

// Settings given as "column=value": a flag (one digit) is stored as a number.
void setAll(QMap<QString, Value>& row, const QString& settings)
{
    for (const QString& s : settings.split(';', Qt::SkipEmptyParts)) {
        const QString value = s.section('=', 1);
        row.insert(s.section('=', 0, 0), value.size() == 1 && value[0].isDigit() ? Value(value.toInt()) : Value(value));
    }
}

const QString PrintSettings =
    "TaxAmount=10;BusinessName=Velk Joinery;Address=1 Mill Lane\nHebden;Phone=0123 555;Mobile=0777;"
    "Email=a@velk.example;Web=velk.example;TaxEnabled=1;TaxName=VAT;TaxNo=GB1;Currency=$;InvPrefix=INV;"
    "Invstart=100001;IncludeShipping=1;IncludeTerms=1;IncludeStatement=1;Statement=Thank you;terms1=Pay in 30 days;"
    "Text1Visible=1;Text1Name=Rep;Text2Visible=1;Text2Name=Order;Text3Visible=1;Text3Name=Ship By;Text4Visible=1;"
    "Text4Name=Track";

// Starts on the settings given and opens a new invoice for the customer, with three
// lines: taxed, untaxed, and a free one.
std::unique_ptr<frmMain> openInvoice(TestUi& ui, const QString& settings, const QString& custId,
                                     std::unique_ptr<frmAddInv>& w)
{
    QMap<QString, Value> row;
    setAll(row, PrintSettings + ";" + settings);
    auto main = startProgram(ui, row);
    for (const QString c : {"CUS1|1 High St|Dock 5", "CUS3|3 Next St|Dock 3"}) {
        QMap<QString, Value> customer;
        setAll(customer, QStringLiteral("CustID=%1;LastName=Brown;FirstName=Ann;Address=%2;City=Leeds;Postcode=LS1;"
                                        "DelAddress1=%3;DelAddress5=LS9")
                             .arg(c.section('|', 0, 0), c.section('|', 1, 1), c.section('|', 2, 2)));
        addRow("Customers", customer);
    }
    EditInvoiceMode = 0;
    PickedCustID = custId;
    PickedFirstName = "Ann";
    PickedLastName = "Brown";
    w = std::make_unique<frmAddInv>();
    activate(w.get()); // the four headings follow the settings when it comes up
    const QString fields = "PartID_txt(0)=P1;Qty_txt(0)=2;Desc_txt(0)=Oak board;Amount_txt(0)=50.00;"
                           "PartID_txt(1)=P2;Qty_txt(1)=1;Desc_txt(1)=Fitting;Amount_txt(1)=50.00;"
                           "PartID_txt(2)=P3;Qty_txt(2)=0;Desc_txt(2)=No charge;Amount_txt(2)=0;"
                           "SalesPerson_txt=Jo;SalesOrder_txt=SO-77;Shipped_txt=DHL;TrackingNo_txt=TR-9;Paid_txt=20.00";
    for (const QString& f : fields.split(';'))
        child<QLineEdit>(*w, f.section('=', 0, 0))->setText(f.section('=', 1));
    for (int i = 0; i < 3; ++i)
        child<QCheckBox>(*w, QStringLiteral("tax(%1)").arg(i))->setChecked(i == 0);
    child<QCheckBox>(*w, "Notes_chk")->setChecked(true);
    child<MemoBox>(*w, "notes_txt")->setPlainText("Leave at the door");
    w->Calc_Totals();
    return main;
}

// The captions by "section.control" and the hidden controls of a report as it was shown,
// and the words of its PDF out of place.
struct Shown {
    QMap<QString, QString> captions;
    QStringList hidden, ink;
    bool logo = false;
};

Shown print(TestUi& ui, frmAddInv& w)
{
    Shown shown;
    auto& hook = hooks().showReport;
    const auto render = hook;
    hook = [&](Report& r) {
        for (const Section& s : r.sections)
            for (const Control& c : s.controls) {
                shown.captions.insert(s.name + "." + c.name, c.caption);
                if (!c.visible)
                    shown.hidden << c.name;
                shown.logo = shown.logo || !c.picture.isNull();
            }
        render(r);
        shown.ink = inkProblems(r, ui.paper, ui.reports.last().pdf);
    };
    child<QAction>(w, "Toolbar1(8)")->trigger();
    hook = render;
    shown.hidden.sort();
    return shown;
}

} // namespace

class PrintingTest : public QObject
{
    Q_OBJECT
private slots:
    void layoutsFitOnePage_data();
    void layoutsFitOnePage();
    void printEachDesign_data();
    void printEachDesign();
    void refusals_data();
    void refusals();
    void failures_data();
    void failures();
};

void PrintingTest::layoutsFitOnePage_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("paper");
    QTest::addColumn<bool>("shipping");
    for (int type = 1; type <= 6; ++type) {
        QTest::addRow("%d Letter", type) << type << int(vbPRPSLetter) << true;
        QTest::addRow("%d A4", type) << type << int(vbPRPSA4) << true;
        QTest::addRow("%d A4 without delivery", type) << type << int(vbPRPSA4) << false;
    }
}

void PrintingTest::layoutsFitOnePage()
{
    QFETCH(int, type);
    QFETCH(int, paper);
    QFETCH(bool, shipping);
    TestUi ui;
    ui.paper = paper;
    auto main = startProgram(ui, {});
    auto r = Invoice_layout(type);
    if (paper == vbPRPSA4)
        Adjust_for_A4(*r);
    fillEverything(*r, type);
    const Control billing = r->control("Section4", "BillingAdd");
    for (const char* name : {"ShippingAdd", "shippingShape", "shipping1_lbl"})
        r->control("Section4", QLatin1String(name)).setVisible(shipping);
    Show(*r);
    QCOMPARE(ui.reports.size(), 1);
    QCOMPARE(ui.reports[0].pages, 1);
    QCOMPARE(pdfInfo(ui.reports[0].pdf).pages, 1);
    const QStringList ink = inkProblems(*r, paper, ui.reports[0].pdf);
    QVERIFY2(ink.isEmpty(), qPrintable(ink.join('\n')));
    const QString pdf = pdfText(ui.reports[0].pdf);
    for (const char* expected :
         {"INVOICE - INV123456789", "HARTLEY & DAUGHTERS JOINERY", "* = Non Taxable Items",
          "Thank you for your business", "Payment within 30 days", "Delivered in two parts", "PRT123456787",
          "Billing Address:", "TRACK 99", "Balance Due", "$1185176.88", "Customer Name", "9876543.21*"})
        QVERIFY2(pdf.contains(QLatin1String(expected)), qPrintable(QLatin1String(expected) + " in:\n" + pdf));
    QCOMPARE(pdf.count("12 Long Street Name"), shipping ? 2 : 1);
    // Hiding the delivery block leaves the billing box where it was.
    const Control& after = r->control("Section4", "BillingAdd");
    QCOMPARE(QRect(after.left, after.top, after.width, after.height),
             QRect(billing.left, billing.top, billing.width, billing.height));
    VERIFY_UI(ui);
}

void PrintingTest::printEachDesign_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("paper");
    QTest::addColumn<QString>("settings");     // column=value;...
    QTest::addColumn<QStringList>("captions"); // section.control=caption
    QTest::addColumn<QStringList>("hidden");
    for (int type = 1; type <= 6; ++type)
        for (int paper : {int(vbPRPSLetter), int(vbPRPSA4)}) {
            const QString d = familyB(type) ? "Section4." : "Section2.";
            const QString colon = familyB(type) ? ":" : "";
            // The headings crossed, as the layouts always were: each over the other
            // field's value. Design 1 trims the company's name; the others keep the blanks.
            QStringList captions = QString("Section4.Invoice_lbl=INVOICE - INV100001;Section2.Total1_lbl=     50.00*;"
                                           "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1;Section2.Total2_lbl=;"
                                           "Section4.ShippingAdd=Ann Brown\nDock 5\nLS9;Section2.Amount1_lbl=50.00 ;"
                                           "Section2.balance_lbl=$140.00")
                                       .split(';');
            captions << d + "Date1_lbl=22/11/2026" << d + "Shipping_lbl=Order" + colon << d + "Shipping2_lbl=DHL"
                     << d + "SalesNO_lbl=Ship By" + colon << d + "SalesNO1_lbl=SO-77"
                     << "Section4.companyname_lbl=" + QString("Velk Joinery").leftJustified(type == 1 ? 0 : 30);
            QTest::addRow("%d %s", type, paper == vbPRPSA4 ? "A4" : "Letter")
                << type << paper << QString() << captions << QStringList{};
        }
    QTest::newRow("no tax: no star, no footnote")
        << 1 << int(vbPRPSA4) << "TaxEnabled=0"
        << QStringList{"Section2.Total1_lbl=     50.00", "Section2.Total0_lbl=    100.00"}
        << QStringList{"taxable_lbl"};
    QTest::newRow("mobile without phone")
        << 3 << int(vbPRPSA4) << "Phone="
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\n  Mobile: 0777" + QString(26, ' ') +
                       "\nEmail: a@velk.example" + QString(16, ' ') + "\nWeb: velk.example" + QString(18, ' ') +
                       "\nVAT No: GB1"}
        << QStringList{};
    QTest::newRow("email only: an empty first line")
        << 3 << int(vbPRPSA4) << "Phone=;Mobile=;Web="
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\n\nEmail: a@velk.example" + QString(16, ' ') +
                       "\nVAT No: GB1"}
        << QStringList{};
    QTest::newRow("design 1 trims that line away")
        << 1 << int(vbPRPSA4) << "Phone=;Mobile=;Web="
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\nEmail: a@velk.example\nVAT No: GB1"} << QStringList{};
    QTest::newRow("no delivery, terms or statement")
        << 5 << int(vbPRPSA4) << "IncludeShipping=0;IncludeTerms=0;IncludeStatement=0"
        << QStringList{"Section2.statment_lbl=", "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1"}
        << QStringList{"Shape1", "ShippingAdd", "Terms_lbl", "shipping1_lbl", "shippingShape"};
    QTest::newRow("second field hidden, notes unticked")
        << 4 << int(vbPRPSA4) << "Text2Visible=0;Text4Visible=2" << QStringList{"Section2.Notes_lbl="}
        << QStringList{"Shipping2_lbl", "Shipping_lbl", "TrackNo_lbl", "Tracking_lbl"};
}

void PrintingTest::printEachDesign()
{
    QFETCH(int, type);
    QFETCH(int, paper);
    QFETCH(QString, settings);
    QFETCH(QStringList, captions);
    QFETCH(QStringList, hidden);
    TestUi ui;
    ui.paper = paper;
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, "InvoiceType=" + QString::number(type) + ";" + settings, "CUS1", w);
    const bool notes = !captions.contains("Section2.Notes_lbl=");
    child<QCheckBox>(*w, "Notes_chk")->setChecked(notes);
    const Shown shown = print(ui, *w);
    QCOMPARE(ui.reports.size(), 1);
    QCOMPARE(ui.reports[0].name, QStringLiteral("Invoice%1_rpt").arg(type));
    QStringList got;
    for (const QString& c : captions)
        got << c.section('=', 0, 0) + "=" + shown.captions.value(c.section('=', 0, 0));
    QCOMPARE(got, captions);
    QCOMPARE(shown.hidden, hidden);
    // One page of the paper, everything in its box, the texts whole.
    const PdfInfo info = pdfInfo(ui.reports[0].pdf);
    QCOMPARE(info.pages, 1);
    QCOMPARE(info.pageSize.toSize(), paper == vbPRPSA4 ? QSize(595, 842) : QSize(612, 792));
    QVERIFY2(shown.ink.isEmpty(), qPrintable(shown.ink.join('\n')));
    const QString pdf = pdfText(ui.reports[0].pdf).simplified();
    QCOMPARE(pdf.contains('*'), !hidden.contains("taxable_lbl"));
    QCOMPARE(pdf.contains("Dock 5"), !hidden.contains("ShippingAdd"));
    QCOMPARE(pdf.contains("Leave at the door"), notes);
    if (!settings.isEmpty())
        return;
    QVERIFY(shown.captions.value("Section4.companyadd")
                .endsWith(type == 4 ? "VAT" + QString(27, ' ') + " No: GB1" + QString(27, ' ') : "VAT No: GB1"));
    for (const char* words : {"INVOICE - INV100001", "Velk Joinery", "Phone: 0123 555", "Mobile:", "0777",
                              "Email: a@velk.example", "VAT No: GB1", "50.00*", "* = Non Taxable Items",
                              "Pay in 30 days", "Thank you", "Delivery Address:", "$140.00", "No charge"})
        QVERIFY2(pdf.contains(QLatin1String(words)), qPrintable(QLatin1String(words) + " in " + pdf));
    VERIFY_UI(ui);
}

void PrintingTest::refusals_data()
{
    for (const char* column : {"type", "paper", "logo", "custId", "box", "reports"})
        QTest::addColumn<QString>(column);
    // The logo is "missing", "picture" or none; the box is the title of the one shown, if any.
    for (const QString row :
         {"logo missing: said once, printed without|1|1|missing|CUS1|Logo!|1", "logo printed|6|9|picture|CUS1||1",
          "paper Legal|2|5||CUS1|Change Paper Size|0", "type 7|7|1||CUS1||0", "type empty||1||CUS1||0",
          "customer gone: the next one's address|3|1||CUS2||1"}) {
        const QStringList f = row.split('|');
        QTest::newRow(qPrintable(f[0])) << f[1] << f[2] << f[3] << f[4] << f[5] << f[6];
    }
}

void PrintingTest::refusals()
{
    QFETCH(QString, type);
    QFETCH(QString, paper);
    QFETCH(QString, logo);
    QFETCH(QString, custId);
    QFETCH(QString, box);
    QFETCH(QString, reports);
    TestUi ui;
    ui.paper = paper.toInt();
    const QString path = ui.file(logo == "picture" ? "logo.bmp" : "nothing.jpg");
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(logo != "picture" || image.save(path));
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, "InvoiceType=" + type + (logo.isEmpty() ? "" : ";logopath=" + path), custId, w);
    if (box == "Logo!")
        ui.expectBox(box, "Logo cannot be found", vbOK, vbInformation);
    else if (!box.isEmpty())
        ui.expectBox(box, "Please change the paper size on your printer to 'Letter' or 'A4'", vbOK, vbExclamation);
    const QByteArray before = fileBytes(ui.file("data.mdb"));
    const Shown shown = print(ui, *w);
    QCOMPARE(ui.reports.size(), reports.toInt());
    QCOMPARE(shown.logo, logo == "picture");
    if (logo == "missing") {
        QCOMPARE(settings.Logopath, QString()); // in memory only
        ui.paper = vbPRPSA4;
        print(ui, *w); // and it is not said again
        QCOMPARE(ui.reports.size(), 2);
    }
    if (custId == "CUS2")
        QCOMPARE(shown.captions.value("Section4.BillingAdd"), "Ann Brown\n3 Next St\nLeeds\nLS1");
    QCOMPARE(fileBytes(ui.file("data.mdb")), before);
    VERIFY_UI(ui);
}

void PrintingTest::failures_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("badLogo");
    QTest::addColumn<int>("error");
    QTest::newRow("number with an apostrophe") << "INV'1" << false << 3704;
    QTest::newRow("logo that is no picture") << "INV1" << true << 481;
}

void PrintingTest::failures()
{
    QFETCH(QString, number);
    QFETCH(bool, badLogo);
    QFETCH(int, error);
    TestUi ui;
    QFile text(ui.file("logo.jpg"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a picture") > 0);
    text.close();
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, badLogo ? "InvoiceType=1;logopath=" + text.fileName() : "InvoiceType=1", "CUS1", w);
    child<QLineEdit>(*w, "Inv_lbl")->setText(number);
    const QByteArray before = fileBytes(ui.file("data.mdb"));
    QVERIFY(endsProgram([&] { print(ui, *w); }));
    QCOMPARE(ui.reports.size(), 0);
    QVERIFY2(ui.shownBoxes.last().contains(QStringLiteral("Error Code \t: %1").arg(error)) &&
                 ui.shownBoxes.last().contains("Print_Invoice") && ui.shownBoxes.last().contains("frmAddInv"),
             qPrintable(ui.shownBoxes.last()));
    QCOMPARE(fileBytes(ui.file("data.mdb")), before);
    ui.clearProblems(); // the failure box is the end of the run
}

VELK_TEST(PrintingTest)
#include "tst_printing.moc"
