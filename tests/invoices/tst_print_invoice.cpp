// "Print" of the invoice window: the labels each of the six layouts gets from the window
// and the settings, the PDF they print to, and the refusals on the way.

#include "PrintedInk.h"
#include "TestUi.h"

#include "invoices/frmAddInv.h"
#include "platform/Activation.h"
#include "platform/MemoBox.h"
#include "report/Report.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QtTest>

using namespace platform;

namespace
{

// Settings given as "column=value": a flag (one digit) is stored as a number.
void setAll(QMap<QString, Value>& row, const QStringList& settings)
{
    for (const QString& s : settings) {
        const QString value = s.section('=', 1);
        const bool flag = value.size() == 1 && value[0].isDigit();
        row.insert(s.section('=', 0, 0), flag ? Value(value.toInt()) : Value(value));
    }
}

QMap<QString, Value> printSettings(const QString& type)
{
    QMap<QString, Value> row{{"TaxAmount", 10.0}, {"InvoiceType", type}};
    setAll(row, QString("BusinessName=Velk Joinery;Address=1 Mill Lane\nHebden;Phone=0123 555;Mobile=0777;"
                        "Email=a@velk.example;Web=velk.example;TaxEnabled=1;TaxName=VAT;TaxNo=GB1;Currency=$;"
                        "InvPrefix=INV;Invstart=100001;IncludeShipping=1;IncludeTerms=1;IncludeStatement=1;"
                        "Statement=Thank you;terms1=Pay in 30 days;Text1Visible=1;Text1Name=Rep;Text2Visible=1;"
                        "Text2Name=Order;Text3Visible=1;Text3Name=Ship By;Text4Visible=1;Text4Name=Track")
                    .split(';'));
    return row;
}

void customer(const QString& id, const QString& street, const QString& dock)
{
    QMap<QString, Value> row;
    setAll(row, {"CustID=" + id, "LastName=Brown", "FirstName=Ann", "Address=" + street, "City=Leeds", "Postcode=LS1",
                 "DelAddress1=" + dock, "DelAddress5=LS9"});
    addRow("Customers", row);
}

QString at(const char* name, int i)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

void set(QWidget& w, const QString& name, const QString& text)
{
    child<QLineEdit>(w, name)->setText(text);
}

// A new invoice for CUS1 with three lines: taxed, untaxed, and a free one.
void fillInvoice(frmAddInv& w)
{
    const QStringList lines{"P1|2|Oak board|50.00|1", "P2|1|Fitting|50.00|0", "P3|0|No charge|0|0"};
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList f = lines[i].split('|');
        set(w, at("PartID_txt", i), f[0]);
        set(w, at("Qty_txt", i), f[1]);
        set(w, at("Desc_txt", i), f[2]);
        set(w, at("Amount_txt", i), f[3]);
        child<QCheckBox>(w, at("tax", i))->setChecked(f[4] == QLatin1String("1"));
    }
    for (const QString field :
         {"SalesPerson_txt=Jo", "SalesOrder_txt=SO-77", "Shipped_txt=DHL", "TrackingNo_txt=TR-9", "Paid_txt=20.00"})
        set(w, field.section('=', 0, 0), field.section('=', 1));
    child<QCheckBox>(w, "Notes_chk")->setChecked(true);
    child<MemoBox>(w, "notes_txt")->setPlainText("Leave at the door");
    w.Calc_Totals();
}

// The captions and visibility of a report as it was shown, by "section.control", and
// the words of its PDF that stand outside their boxes.
struct Shown {
    QMap<QString, QString> captions;
    QStringList hidden;
    bool logo = false;
    QStringList ink;
};

// Prints the window, keeping what the report showed besides the PDF the test seam writes.
Shown print(TestUi& ui, frmAddInv& w)
{
    Shown shown;
    auto& hook = hooks().showReport;
    const auto render = hook;
    hook = [&](report::Report& r) {
        for (const report::Section& s : r.sections)
            for (const report::Control& c : s.controls) {
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
    return shown;
}

// What the report showed for "section.control=caption" entries, in the same form.
QStringList captionsOf(const Shown& shown, const QStringList& expected)
{
    QStringList out;
    for (const QString& c : expected)
        out << c.section('=', 0, 0) + "=" + shown.captions.value(c.section('=', 0, 0));
    return out;
}

// Starts on the settings given and opens a new invoice for the customer, filled.
std::unique_ptr<frmMain> openInvoice(TestUi& ui, const QMap<QString, Value>& row, const QString& custId,
                                     std::unique_ptr<frmAddInv>& window)
{
    auto main = startProgram(ui, row);
    customer("CUS1", "1 High St", "Dock 5");
    customer("CUS3", "3 Next St", "Dock 3");
    EditInvoiceMode = 0;
    PickedCustID = custId;
    PickedFirstName = "Ann";
    PickedLastName = "Brown";
    window = std::make_unique<frmAddInv>();
    activate(window.get()); // the four headings follow the settings when it comes up
    fillInvoice(*window);
    return main;
}

bool familyB(int type)
{
    return type == 2 || type == 4;
}

} // namespace

class PrintInvoiceTest : public QObject
{
    Q_OBJECT
private slots:
    void eachDesign_data();
    void eachDesign();
    void settingsShapeTheBlocks_data();
    void settingsShapeTheBlocks();
    void refusals_data();
    void refusals();
    void failures_data();
    void failures();
};

void PrintInvoiceTest::eachDesign_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("paper");
    for (int type = 1; type <= 6; ++type) {
        QTest::addRow("%d Letter", type) << type << int(vbPRPSLetter);
        QTest::addRow("%d A4", type) << type << int(vbPRPSA4);
    }
}

void PrintInvoiceTest::eachDesign()
{
    QFETCH(int, type);
    QFETCH(int, paper);
    TestUi ui;
    ui.paper = paper;
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, printSettings(QString::number(type)), "CUS1", w);
    const Shown shown = print(ui, *w);
    QCOMPARE(ui.reports.size(), 1);
    QCOMPARE(ui.reports[0].name, QStringLiteral("Invoice%1_rpt").arg(type));
    const QString d = familyB(type) ? "Section4." : "Section2.";
    const QString colon = familyB(type) ? ":" : "";
    // The headings crossed, as the layouts always were: each over the other field's value.
    // Design 1 trims the company's name; the others keep the blanks of the settings.
    QStringList expected = QString("Section4.Invoice_lbl=INVOICE - INV100001;Section2.Total1_lbl=     50.00*;"
                                   "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1;Section2.Total2_lbl=;"
                                   "Section4.ShippingAdd=Ann Brown\nDock 5\nLS9;Section2.Amount1_lbl=50.00 ;"
                                   "Section2.balance_lbl=$140.00")
                               .split(';');
    expected << d + "Date1_lbl=22/11/2026" << d + "Shipping_lbl=Order" + colon << d + "Shipping2_lbl=DHL";
    expected << d + "SalesNO_lbl=Ship By" + colon << d + "SalesNO1_lbl=SO-77";
    expected << "Section4.companyname_lbl=" + QString("Velk Joinery").leftJustified(type == 1 ? 0 : 30);
    QCOMPARE(captionsOf(shown, expected), expected);
    QVERIFY(shown.captions.value("Section4.companyadd")
                .endsWith(type == 4 ? "VAT" + QString(27, ' ') + " No: GB1" + QString(27, ' ') : "VAT No: GB1"));
    QVERIFY(shown.hidden.isEmpty());

    // The PDF: one page of the paper, everything in its box, the texts whole.
    const PdfInfo info = pdfInfo(ui.reports[0].pdf);
    QCOMPARE(info.pages, 1);
    QCOMPARE(info.pageSize.toSize(), paper == vbPRPSA4 ? QSize(595, 842) : QSize(612, 792));
    const QString pdf = pdfText(ui.reports[0].pdf).simplified();
    for (const char* words :
         {"INVOICE - INV100001", "Velk Joinery", "Phone: 0123 555", "Mobile:", "0777", "Email: a@velk.example",
          "VAT No: GB1", "50.00*", "* = Non Taxable Items", "Leave at the door", "Pay in 30 days", "Thank you",
          "Delivery Address:", "Dock 5", "$140.00", "No charge"})
        QVERIFY2(pdf.contains(QLatin1String(words)), qPrintable(QLatin1String(words) + " in " + pdf));
    QVERIFY2(shown.ink.isEmpty(), qPrintable(shown.ink.join('\n')));
    VERIFY_UI(ui);
}

void PrintInvoiceTest::settingsShapeTheBlocks_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("settings"); // column=value
    QTest::addColumn<bool>("notes");
    QTest::addColumn<QStringList>("captions"); // section.control=caption
    QTest::addColumn<QStringList>("hidden");
    QTest::newRow("no tax: no star, no footnote, no tax line")
        << 1 << QStringList{"TaxEnabled=0"} << true
        << QStringList{"Section2.Total1_lbl=     50.00", "Section2.Total0_lbl=    100.00"}
        << QStringList{"taxable_lbl"};
    QTest::newRow("mobile without phone")
        << 3 << QStringList{"Phone="} << true
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\n  Mobile: 0777" + QString(26, ' ') +
                       "\nEmail: a@velk.example" + QString(16, ' ') + "\nWeb: velk.example" + QString(18, ' ') +
                       "\nVAT No: GB1"}
        << QStringList{};
    QTest::newRow("email only: an empty first line")
        << 3 << QStringList{"Phone=", "Mobile=", "Web="} << true
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\n\nEmail: a@velk.example" + QString(16, ' ') +
                       "\nVAT No: GB1"}
        << QStringList{};
    QTest::newRow("design 1 trims that line away")
        << 1 << QStringList{"Phone=", "Mobile=", "Web="} << true
        << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\nEmail: a@velk.example\nVAT No: GB1"} << QStringList{};
    QTest::newRow("no delivery, terms or statement")
        << 5 << QStringList{"IncludeShipping=0", "IncludeTerms=0", "IncludeStatement=0"} << true
        << QStringList{"Section2.statment_lbl=", "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1"}
        << QStringList{"shipping1_lbl", "ShippingAdd", "shippingShape", "Terms_lbl", "Shape1"};
    QTest::newRow("second field hidden, notes unticked")
        << 4 << QStringList{"Text2Visible=0", "Text4Visible=2"} << false << QStringList{"Section2.Notes_lbl="}
        << QStringList{"Shipping_lbl", "Shipping2_lbl", "Tracking_lbl", "TrackNo_lbl"};
}

void PrintInvoiceTest::settingsShapeTheBlocks()
{
    QFETCH(int, type);
    QFETCH(QStringList, settings);
    QFETCH(bool, notes);
    QFETCH(QStringList, captions);
    QFETCH(QStringList, hidden);
    TestUi ui;
    QMap<QString, Value> row = printSettings(QString::number(type));
    setAll(row, settings);
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, row, "CUS1", w);
    child<QCheckBox>(*w, "Notes_chk")->setChecked(notes);
    const Shown shown = print(ui, *w);
    QCOMPARE(captionsOf(shown, captions), captions);
    QStringList hiddenShown = shown.hidden;
    hiddenShown.sort();
    hidden.sort();
    QCOMPARE(hiddenShown, hidden);
    const QString pdf = pdfText(ui.reports[0].pdf);
    QCOMPARE(pdf.contains('*'), !hidden.contains("taxable_lbl"));
    QCOMPARE(pdf.contains("Dock 5"), !hidden.contains("ShippingAdd"));
    QCOMPARE(pdf.contains("Leave at the door"), notes);
    QVERIFY2(shown.ink.isEmpty(), qPrintable(shown.ink.join('\n')));
    VERIFY_UI(ui);
}

void PrintInvoiceTest::refusals_data()
{
    for (const char* column : {"type", "paper", "logo", "custId", "box", "report"})
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

void PrintInvoiceTest::refusals()
{
    QFETCH(QString, type);
    QFETCH(QString, paper);
    QFETCH(QString, logo);
    QFETCH(QString, custId);
    QFETCH(QString, box);
    QFETCH(QString, report);
    TestUi ui;
    ui.paper = paper.toInt();
    QMap<QString, Value> row = printSettings(type);
    const QString path = logo == "picture" ? ui.file("logo.bmp") : ui.file("nothing.jpg");
    if (logo == "picture") {
        QImage image(40, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(path));
    }
    if (!logo.isEmpty())
        row.insert("logopath", path);
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, row, custId, w);
    if (box == "Logo!")
        ui.expectBox(box, "Logo cannot be found", vbOK, vbInformation);
    else if (!box.isEmpty())
        ui.expectBox(box, "Please change the paper size on your printer to 'Letter' or 'A4'", vbOK, vbExclamation);
    const QByteArray before = fileBytes(ui.file("data.mdb"));
    const Shown shown = print(ui, *w);
    QCOMPARE(ui.reports.size(), report.toInt());
    QCOMPARE(shown.logo, logo == "picture");
    if (logo == "missing") {
        QCOMPARE(settings.Logopath, QString()); // in memory only
        ui.paper = 9;
        print(ui, *w); // and it is not said again
        QCOMPARE(ui.reports.size(), 2);
    }
    if (custId == "CUS2")
        QCOMPARE(shown.captions.value("Section4.BillingAdd"), "Ann Brown\n3 Next St\nLeeds\nLS1");
    QCOMPARE(fileBytes(ui.file("data.mdb")), before);
    VERIFY_UI(ui);
}

void PrintInvoiceTest::failures_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("badLogo");
    QTest::addColumn<int>("error");
    QTest::newRow("number with an apostrophe") << "INV'1" << false << 3704;
    QTest::newRow("logo that is no picture") << "INV1" << true << 481;
}

void PrintInvoiceTest::failures()
{
    QFETCH(QString, number);
    QFETCH(bool, badLogo);
    QFETCH(int, error);
    TestUi ui;
    QMap<QString, Value> row = printSettings("1");
    if (badLogo) {
        QFile text(ui.file("logo.jpg"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("not a picture");
        text.close();
        row.insert("logopath", ui.file("logo.jpg"));
    }
    std::unique_ptr<frmAddInv> w;
    auto main = openInvoice(ui, row, "CUS1", w);
    set(*w, "Inv_lbl", number);
    const QByteArray before = fileBytes(ui.file("data.mdb"));
    QVERIFY(endsProgram([&] { print(ui, *w); }));
    QCOMPARE(ui.reports.size(), 0);
    QVERIFY2(ui.shownBoxes.last().contains(QStringLiteral("Error Code \t: %1").arg(error)) &&
                 ui.shownBoxes.last().contains("Print_Invoice") && ui.shownBoxes.last().contains("frmAddInv"),
             qPrintable(ui.shownBoxes.last()));
    QCOMPARE(fileBytes(ui.file("data.mdb")), before);
    ui.clearProblems(); // the failure box is the end of the run
}

VELK_TEST(PrintInvoiceTest)
#include "tst_print_invoice.moc"
