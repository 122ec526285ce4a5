// Invoices: the invoice window (totals, opening, saving, numbering), the invoice list, and
// printing, with each of the six layouts filled to its limits and every word checked to
// stand inside its box on Letter and on A4.

#include "TestUi.h"

#include "invoices/InvoiceLayouts.h"
#include "invoices/frmAddInv.h"
#include "invoices/frmInvoice.h"
#include "platform/Activation.h"
#include "platform/MemoBox.h"
#include "report/ReportRenderer.h"
#include "shell/frmMain.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListView.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace platform;
using namespace report;

namespace
{

// A data table of rows "name; a; b; ...", one a line, with the columns "a;b;..."; a
// test takes a row's fields by fields<count>().
void table(const char* columns, const char* rows)
{
    QTest::addColumn<QStringList>("row");
    for (const QString& row : QString(rows).split('\n', Qt::SkipEmptyParts)) {
        QStringList f = row.split(';');
        QVERIFY2(f.size() == QString(columns).count(';') + 2, qPrintable(row));
        for (QString& field : f)
            field = field.trimmed();
        QTest::newRow(qPrintable(f.takeFirst())) << f;
    }
}

template <int N> std::array<QString, N> fields()
{
    QFETCH(QStringList, row);
    std::array<QString, N> out;
    std::copy_n(row.begin(), N, out.begin());
    return out;
}

// Settings "column=value;...": a flag (one digit) is stored as a number.
QMap<QString, Value> values(const QString& settings)
{
    QMap<QString, Value> row;
    for (const QString& s : settings.split(';', Qt::SkipEmptyParts)) {
        const QString v = s.section('=', 1);
        row.insert(s.section('=', 0, 0), v.size() == 1 && v[0].isDigit() ? Value(v.toInt()) : Value(v));
    }
    return row;
}

// Starts on the settings given over a plain taxed series, with customer CUS1 picked.
std::unique_ptr<frmMain> start(TestUi& ui, const QString& settings)
{
    auto main =
        startProgram(ui, values("TaxEnabled=1;TaxName=VAT;InvPrefix=INV;Invstart=100001;ConfirmAll=1;" + settings));
    EditInvoiceMode = 0;
    std::tie(PickedCustID, PickedFirstName, PickedLastName, PickedPhone) = std::tuple("CUS1", "Ann", "Brown", "0123");
    return main;
}

// Rows of a table given as "value|value|..." in the order of the columns "name|name|...".
void addRows(const char* table, const QString& columns, const QStringList& rows)
{
    for (const QString& row : rows) {
        QMap<QString, Value> values;
        for (int i = 0; i <= int(columns.count('|')); ++i)
            values.insert(columns.section('|', i, i), row.section('|', i, i));
        addRow(QLatin1String(table), values);
    }
}

// The stored rows of a table, in the same form.
QStringList stored(const QString& table, const QString& columns)
{
    return tableRows(table, columns.split('|'));
}

const auto at = [](const char* name, int i) { return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i); };
const auto edit = [](QWidget& w, const QString& name) { return child<QLineEdit>(w, name); };
const auto familyB = [](int type) { return type == 2 || type == 4; };

// The texts of the fields or labels "name|name|...", joined the same way.
QString text(QWidget& w, const QString& names)
{
    return texts(w, names.split('|')).join('|');
}

// Fields "name=text;...": typed key by key, or set at once as pasted.
void enter(QWidget& w, const QString& entries, bool typed = true)
{
    for (const QString& f : entries.split(';')) {
        QLineEdit* e = edit(w, f.section('=', 0, 0));
        e->clear();
        typed ? QTest::keyClicks(e, f.section('=', 1)) : e->setText(f.section('=', 1));
    }
}

// Lines "qty|price|taxed;..." into rows 0, 1, ...; pasted, so a minus sign gets in.
void setLines(QWidget& w, const QString& lines)
{
    const QStringList rows = lines.split(';');
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].isEmpty())
            continue;
        child<QCheckBox>(w, at("tax", i))->setChecked(rows[i].section('|', 2) == QLatin1String("1"));
        edit(w, at("Qty_txt", i))->setText(rows[i].section('|', 0, 0));
        edit(w, at("Amount_txt", i))->setText(rows[i].section('|', 1, 1));
    }
    qobject_cast<frmAddInv*>(&w)->Calc_Totals();
}

const QString LineColumns = "InvNo|PartID|Qty|Description|Amount|Total|Taxable";
const QString Figures = "subtotal_txt|vat_txt|Discount_txt|total_txt|Balance_txt";
const QString DeleteQuestion = "Are you sure you want to delete this invoice";

// The invoice numbers of the list, in its order.
QString numbers(QAbstractItemView* list)
{
    return listRows(list, " ").replaceInStrings(QRegularExpression(" .*"), "").join(' ');
}

// Each word of the PDF, as pdftotext finds it, that stands outside every visible text of
// the report or over another word: one line each.
QString inkProblems(const Report& report, int paper, const QString& pdf)
{
    QList<QRectF> boxes; // in points
    const Layout layout(report, paper);
    for (const Band& band : layout.pages().at(0).bands)
        for (const Control& c : band.section->controls)
            if (c.visible && (c.kind == ControlKind::Label || c.kind == ControlKind::Field))
                boxes << QRectF(QPointF(report.leftMargin + c.left, report.topMargin + band.top + c.top) / 20,
                                QSizeF(c.width, c.height) / 20);
    static const QRegularExpression word(
        R"re(xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)<)re");
    QStringList problems;
    QList<std::pair<QString, QRectF>> words;
    for (auto it = word.globalMatch(runTool("pdftotext", {"-bbox", pdf, "-"})); it.hasNext();) {
        const auto m = it.next();
        const auto n = [&](int i) { return m.captured(i).toDouble(); };
        // Glyph boxes reach a little above and below the line a text is set in.
        const QRectF ink = QRectF(QPointF(n(1), n(2)), QPointF(n(3), n(4))).adjusted(1.5, 1.5, -1.5, -1.5);
        if (std::none_of(boxes.begin(), boxes.end(), [&](const QRectF& box) { return box.contains(ink); }))
            problems << QStringLiteral("\"%1\" outside its box at %2,%3").arg(m.captured(5)).arg(ink.x()).arg(ink.y());
        for (const auto& [text, box] : words)
            if (ink.intersects(box))
                problems << QStringLiteral("\"%1\" over \"%2\"").arg(text, m.captured(5));
        words.push_back({m.captured(5), ink});
    }
    return problems.join('\n');
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
    auto set = [&](const QString& s, const QString& name, const QString& t) { r.control(s, name).setCaption(t); };
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
    for (int i = 12; i < 17; ++i)
        lines += "\n" + wide(50, QStringLiteral("%1 Long Street Name in the Upper Town of Hebden Bridge ").arg(i));
    set("Section4", "BillingAdd", lines);
    set("Section4", "ShippingAdd", lines);
    const QString data = familyB(type) ? "Section4" : "Section2";
    for (const QString v : {"Invoice1_lbl=INV123456789", "Date1_lbl=22/11/2026", "CustNo_lbl=CUS123456789"})
        set(data, v.section('=', 0, 0), v.section('=', 1));
    set(data, "CustName_lbl", customer);
    for (const char* value : {"SalesPerson_lbl", "Shipping2_lbl", "SalesNO1_lbl", "TrackNo_lbl"})
        set(data, value, wide(20, "TRACK 99 "));
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
    set("Section2", "Terms_lbl", wide(200, "Payment within 30 days of the invoice date; goods ours until paid. "));
    set("Section2", "statment_lbl", wide(100, "Thank you for your business. "));
    set("Section2", "taxname_lbl", wide(30, "VALUE ADDED TAX ") + " @ 17.5%");
    for (const char* money : {"Subtotal_lbl", "Tax_lbl", "Discount_lbl", "total11_lbl", "Total10_lbl", "Paid_lbl",
                              "wrttenoff_lbl", "balance_lbl"})
        set("Section2", QLatin1String(money), "$1185176.88");
}

// Starts on the print settings and those given, and opens a new invoice for the customer
// with three lines: taxed, untaxed, and a free one.
auto openInvoice(TestUi& ui, const QString& settings, const QString& custId)
{
    auto main = start(ui, "TaxAmount=10;BusinessName=Velk Joinery;Address=1 Mill Lane\nHebden;Phone=0123 555;"
                          "Mobile=0777;Email=a@velk.example;Web=velk.example;TaxNo=GB1;Currency=$;IncludeShipping=1;"
                          "IncludeTerms=1;IncludeStatement=1;Statement=Thank you;terms1=Pay in 30 days;Text1Visible=1;"
                          "Text1Name=  Rep  ;Text2Visible=1;Text2Name=Order;Text3Visible=1;Text3Name=Ship By;"
                          "Text4Visible=1;Text4Name=Track;" +
                              settings);
    addRows("Customers", "CustID|LastName|FirstName|Address|City|Postcode|DelAddress1|DelAddress5",
            {"CUS1|Brown|Ann|1 High St|Leeds|LS1|Dock 5|LS9", "CUS3|Brown|Ann|3 Next St|Leeds|LS1|Dock 3|LS9"});
    PickedCustID = custId;
    auto w = std::make_unique<frmAddInv>();
    activate(w.get()); // the four headings follow the settings when it comes up
    enter(*w,
          "PartID_txt(0)=P1;Desc_txt(0)=Oak board;PartID_txt(1)=P2;Desc_txt(1)=Fitting;PartID_txt(2)=P3;Paid_txt=20.00;"
          "Desc_txt(2)=No charge;SalesPerson_txt=Jo;SalesOrder_txt=SO-77;Shipped_txt=DHL;TrackingNo_txt=TR-9",
          false);
    child<MemoBox>(*w, "notes_txt")->setPlainText("Leave at the door");
    setLines(*w, "2|50.00|1;1|50.00|0;0|0|0");
    return std::pair(std::move(main), std::move(w));
}

} // namespace

class InvoicesTest : public QObject
{
    Q_OBJECT
private slots:
    void totals_data()
    {
        // Lines "qty|price|taxed,..."; Discount2|Paid|Writtenoff; the line totals, then the
        // five Figures; the banner shown, if any.
        table("rate;lines;entries;figures;banner", R"(
empty qty counts one     ; 0    ; |10|0,3||0   ; 0|0|0    ; 10.00|0.00|10.00|0.00|0.00|10.00|10.00 ; BALANCE: 10.00
3 x 1.125 half away      ; 0    ; 3|1.125|0    ; |0|0     ; 3.38|3.38|0.00|0.00|3.38|3.38 ; BALANCE: 3.38
two 12.5% lines          ; 12.5 ; 1|0.25|1,1|0.75|1 ; 0|1.13|0 ; 0.25|0.75|1.00|0.13|0.00|1.13|0.00 ; PAID IN FULL
line tax half to even    ; 12.5 ; 1|0.01|1,1|0.01|1,1|0.01|1,1|0.01|1 ; 0|0|0 ; 0.01|0.01|0.01|0.01|0.04|0.00|0.00|0.04|0.04 ; BALANCE: 0.04
discount before tax      ; 15   ; 1|100|1      ; 10|0|0   ; 100.00|100.00|15.00|10.00|105.00|105.00 ; BALANCE: 105.00
paid and written off     ; 0    ; 1|100|0      ; 0|30|20  ; 100.00|100.00|0.00|0.00|100.00|50.00 ; BALANCE: 50.00
overpaid                 ; 0    ; 1|100|0      ; 0|120|0  ; 100.00|100.00|0.00|0.00|100.00|-20.00 ; BALANCE: -20.00
zero total, no banner    ; 0    ;              ; 0|5|0    ; 0.00|0.00|0.00|0.00|0.00|-5.00 ;
cut on the left          ; 0    ; 1000|12345.678|0,1|1|0 ; 0|0|0 ; 2345678.00|1.00|2345679.00|0.00|0.00|2345679.00|2345679.00 ; BALANCE: 2345679.00
no rate, ticks ignored   ; 0    ; 2|10|1       ; |0|0     ; 20.00|20.00|0.00|0.00|20.00|20.00 ; BALANCE: 20.00
signs: no tax on -5      ; 10   ; 2|-5|1,-1|4|1,0.5|10|0,1|3|1 ; 0.5|0|0 ; -10.00|-4.00|5.00|3.00|-6.00|-0.10|-0.03|-6.07|-6.07 ; BALANCE: -6.07
)");
    }

    void totals()
    {
        auto [rate, lines, entries, figures, banner] = fields<5>();
        TestUi ui;
        auto main = start(ui, "TaxAmount=" + rate);
        frmAddInv w;
        setLines(w, lines.replace(',', ';'));
        const QStringList e = entries.split('|');
        enter(w, QStringLiteral("Discount2_txt=%1;Paid_txt=%2;Writtenoff_txt=%3").arg(e[0], e[1], e[2]), false);
        w.Calc_Totals();
        QStringList names;
        for (int i = 0; i <= int(lines.count(';')); ++i)
            names << at("tota1l_txt", i);
        // Amount texts are ten wide; the discount is trimmed unless its percentage is empty.
        QString shown = text(w, names.join('|') + '|' + Figures);
        QCOMPARE(shown.split('|').filter(QRegularExpression("^.{10}$")).size(), shown.count('|') + int(e[0].isEmpty()));
        QCOMPARE(shown.remove(' '), figures);
        QCOMPARE(text(w, "tota1l_txt(7)|total_txt2"), "      0.00|" + text(w, "total_txt"));
        auto seen = [&](const char* name) { return child<QLabel>(w, name)->isVisibleTo(&w) ? text(w, name) : ""; };
        QCOMPARE(seen("Paid_lbl") + seen("StillOwes_lbl"), banner);
        // A leading point in the percentage ends the program, as it always did.
        ui.expectBox("Error Message", errorMessageText(13, "frmAddInv", "Calc_Totals", standardErrorText(13)));
        QVERIFY(endsProgram([&] { enter(w, "Discount2_txt=."); }));
        VERIFY_UI(ui);
    }

    void typingAndClearing()
    {
        TestUi ui;
        auto main = start(ui, "TaxAmount=0");
        frmAddInv w;
        setLines(w, ";1|5|0;2|5|0");
        // The keys are filtered; every key release recomputes.
        enter(w, "Qty_txt(0)=1a2.-3;Amount_txt(0)=4.5.0-;Paid_txt=1.2.3");
        QCOMPARE(text(w, "Qty_txt(0)|Amount_txt(0)|Paid_txt|Balance_txt"), "123|4.50|1.23|    567.27");
        ui.expectBox("Confirm", "Are you very sure you want to clear all lines?", vbYes);
        trigger(w, 6);
        QCOMPARE(text(w, "Qty_txt(2)|total_txt"), "|      0.00");
        VERIFY_UI(ui);
    }

    void oldInvoiceIsRecomputed_data()
    {
        // The stored rate computes; the setting is only the gate.
        table("setting;storedRate;tax", R"(
at the stored rate      ; 20 ; 10 ; 1.00
no rate in the settings ; 0  ; 10 ; 0.00
stored without a rate   ; 20 ; 0  ; 0.00
)");
    }

    void oldInvoiceIsRecomputed()
    {
        auto [setting, storedRate, tax] = fields<3>();
        TestUi ui;
        auto main = start(ui, "TaxEnabled=0;TaxAmount=" + setting);
        // Stored figures that the lines do not give, a rate of its own, and nine lines.
        addRows("Invoices", "InvNo|CustNo|Date|Subtotal|Paid|WrittenOff|TaxPer|CustomerName",
                {"INV7|CUS1|2026-03-01|1|1|5|" + storedRate + "|Ann O'Brien", "INV8|CUS1|2026-03-01|0|6|2|0|"});
        QStringList lines;
        for (int i = 0; i < 9; ++i)
            lines << QStringLiteral("INV7|P%1|%2|d P%1|10|999|%3").arg(i).arg(i == 1 ? 0 : 1).arg(i == 0 ? 1 : 0);
        addRows("InvoiceD", LineColumns, lines << "INV8||2||4|999|0");
        EditInvoiceMode = 1;
        OpenInvoiceNo = " INV7 ";
        frmAddInv w;
        QCOMPARE(
            text(w, "Inv_lbl|Customername_lbl|vat_lbl|Qty_txt(0)|Qty_txt(1)|PartID_txt(7)|Desc_txt(7)|Amount_txt(7)"),
            "INV7|Ann O'Brien|VAT @ " + storedRate + "%|1||P7|d P7|     10.00");
        QCOMPARE(child<QDateEdit>(w, "Date_txt")->date(), QDate(2026, 3, 1));
        QVERIFY(child<QCheckBox>(w, "tax(0)")->isChecked());
        QVERIFY(!child<QCheckBox>(w, "tax(1)")->isChecked());
        // Eight of the nine lines, 10.00 each; the columns stay for an invoice that bears tax.
        const double t = tax.toDouble();
        QCOMPARE(text(w, Figures).remove(' '),
                 QStringLiteral("80.00|%1|0.00|%2|%3").arg(tax).arg(80 + t, 0, 'f', 2).arg(74 + t, 0, 'f', 2));
        QVERIFY(!child<QCheckBox>(w, "PaidFull_chk")->isChecked());
        QCOMPARE(child<QLabel>(w, "toptax")->isVisibleTo(&w), t != 0);
        // An unknown number rests on the next, whose header shows with no lines; settled
        // there, the tick comes on as a click and pays the written-off part as well.
        OpenInvoiceNo = "INV75";
        frmAddInv next;
        QCOMPARE(text(next, "Inv_lbl|Qty_txt(0)|total_txt|Balance_txt"), "INV8||      0.00|     -8.00");
        OpenInvoiceNo = "INV8";
        frmAddInv settled;
        QVERIFY(child<QCheckBox>(settled, "PaidFull_chk")->isChecked());
        QCOMPARE(text(settled, "Paid_txt|Balance_txt"), "      8.00|     -2.00");
        VERIFY_UI(ui);
    }

    void saveWritesRowsAndAdvances_data()
    {
        table("prefix;next;number;nextAfter", R"(
width kept           ; INV ; 00000099 ; INV00000099 ; 00000100
wraps at the width   ; INV ; 9999     ; INV9999     ; 0000
prefix digit cut off ; A1  ; 100001   ; A1100001    ; 100002
free form leaves it  ; INV ; 100001   ; my-1        ; 100001
)");
    }

    void saveWritesRowsAndAdvances()
    {
        auto [prefix, next, number, nextAfter] = fields<4>();
        TestUi ui;
        const bool freeForm = !number.startsWith(prefix);
        auto main = start(ui, "TaxAmount=12.5;ConfirmAll=0;InvPrefix=" + prefix + ";Invstart=" + next +
                                  ";FreeFormInv=" + QString::number(freeForm));
        frmAddInv w;
        if (freeForm)
            enter(w, "Inv_lbl=" + number);
        // A quantity alone, a price alone, an empty row, and a taxed line with padded texts.
        setLines(w, "4||0;|5|0;||0;2|0.25|1");
        enter(w, "PartID_txt(3)= P9 ;Desc_txt(3)= two words ;SalesPerson_txt= Jo ", false);
        enter(w, "Discount2_txt=12.5");
        ui.expectBox("Continue?", "Are you sure you want to update?", vbYes, vbYesNo + vbQuestion);
        click(w, "update_cmd");
        QCOMPARE(stored("InvoiceD", LineColumns),
                 (QStringList{number + "||4||0|0|0", number + "||1||5|5|0", number + "|P9|2|two words|0.25|0.5|1"}));
        // Tax 0.0625 shows 0.06; the discount is 12.5 % of 5.50.
        QCOMPARE(stored("Invoices", "InvNo|CustNo|Date|Subtotal|Vat|Discount|Total|Paid|Balance|Phone|CustomerName|"
                                    "TaxPer|DiscountPercentage|SalesPerson|Notes"),
                 QStringList{number + "|CUS1|22/11/2026|5.5|0.06|0.69|4.87|0|4.87|0123|Ann Brown|12.5|12.5|Jo|"});
        QCOMPARE(columnValues("System", "Invstart") << settings.Invstart, (QStringList{nextAfter, nextAfter}));
        QCOMPARE(LastInvoiceNo.trimmed() + QString::number(InvoiceSaved), number + "1");
        VERIFY_UI(ui);
    }

    void refusalsAndFailures_data()
    {
        // With a next number the prefix is INV; typed is a free-form number, or the second
        // row's quantity; the boxes are those of the named messages, with their answers.
        table("freeForm;next;typed;boxes", R"(
in use, whatever the case ; 1 ; 1 ; inv1 ; inUse
generated number in use   ; 0 ; 1 ; 1    ; inUse
empty free-form number    ; 1 ; 1 ;      ; empty
No to the question        ; 0 ; 2 ; 1    ; question
empty generated number    ; 0 ;   ; 1    ; empty,fatal5
failure mid-save          ; 0 ; 2 ; 1e99 ; fatal6
)");
    }

    void refusalsAndFailures()
    {
        auto [freeForm, next, typed, boxes] = fields<4>();
        TestUi ui;
        auto main = start(ui, "TaxAmount=0;FreeFormInv=" + freeForm + (next.isEmpty() ? ";InvPrefix=" : "") +
                                  ";Invstart=" + next + ";ConfirmAll=" + QString::number(boxes != "question"));
        addRows("Invoices", "InvNo", {"INV1"});
        frmAddInv w;
        if (freeForm == "1")
            enter(w, "Inv_lbl=" + typed);
        setLines(w, "2|3|0;" + (freeForm == "1" ? "1" : typed) + "|1|0");
        for (const QString& b : boxes.split(',')) {
            if (b == "inUse")
                ui.expectBox("Invoice Number Already In Use",
                             "This Invoice number has already been used. Please try again!");
            else if (b == "empty")
                ui.expectBox("Enter Invoice Number", " Please enter an invoice number.", vbOK, vbExclamation);
            else if (b == "question")
                ui.expectBox("Continue?", "Are you sure you want to update?", vbNo);
            else // the focus cannot move to the disabled number; no quantity column holds 1e99
                ui.expectBox("Error Message", errorMessageText(b.right(1).toInt(), "frmAddInv", "Update_cmd",
                                                               standardErrorText(b.right(1).toInt())));
        }
        QCOMPARE(endsProgram([&] { click(w, "update_cmd"); }), boxes.contains("fatal"));
        // What the file holds: a failed save's header and first line stay written.
        Database::closeAll();
        const bool midSave = typed == QLatin1String("1e99");
        QCOMPARE(columnValues("Invoices", "InvNo"), (midSave ? QStringList{"INV1", "INV2"} : QStringList{"INV1"}));
        QCOMPARE(stored("InvoiceD", LineColumns), midSave ? QStringList{"INV2||2||3|6|0"} : QStringList{});
        QCOMPARE(InvoiceSaved, qint16(midSave));
        QCOMPARE(busyCount(), qint16(0));
        VERIFY_UI(ui);
    }

    // Saved, opened again at its own rate, changed and saved at a new one: the lines are
    // replaced, the number stays. No row visited since opening: row 0 is the one cleared.
    void resaveReplacesLines()
    {
        TestUi ui;
        auto main = start(ui, "TaxAmount=10");
        addRows("Invoices", "InvNo", {"INV099"});
        addRows("InvoiceD", LineColumns, {"INV099||1||1|999|0"}); // beside ours in the index, and kept
        {
            frmAddInv w;
            setLines(w, "1|3|0;2|10|1;1|4|0");
            click(w, "update_cmd");
        }
        settings.TaxAmount = 20;
        EditInvoiceMode = 1;
        OpenInvoiceNo = "INV100001";
        frmAddInv w;
        QCOMPARE(text(w, "Inv_lbl|vat_txt|Amount_txt(2)"), "INV100001|      2.00|      4.00");
        ui.expectBox("Confirm", "Are you sure you want to clear this line?", vbYes);
        trigger(w, 4);
        enter(w, "Qty_txt(2)=3;Paid_txt=10");
        click(w, "update_cmd");
        QCOMPARE(stored("InvoiceD", LineColumns),
                 (QStringList{"INV099||1||1|999|0", "INV100001||2||10|20|1", "INV100001||3||4|12|0"}));
        QCOMPARE(stored("Invoices", "InvNo|TaxPer|Total|Paid|Balance") << settings.Invstart,
                 (QStringList{"INV099|0|0|0|0", "INV100001|20|34|10|24", "100002"}));
        VERIFY_UI(ui);
    }

    void invoiceList()
    {
        TestUi ui;
        auto main = startProgram(ui, values("CustPrefix=CUS;CustStart=1001"));
        // Three invoices in table order; of their customers only C2 is on file.
        addRows("Invoices", "InvNo|Date|CustNo|CustomerName|Total|Balance|Notes",
                {"INV1002|2026-03-01|C2|Name of C2|100|50|urgent", "INV1001|2025-12-24|C1|Name of C1|9|4.5|",
                 "INV1003|2026-01-15|C3|Name of C3|1234567.5|617283.75|"});
        addRows("Customers", "CustID|LastName|FirstName", {"C2|Smith|Jo", "C9|Young|Al"});
        addRows("InvoiceD", "InvNo", {"INV1001", "INV1002", "INV1002", "INV10020", "INV1003"});
        frmInvoice w;
        auto* list = child<ListView>(w, "Inv_lst");
        const auto chosen = [list] {
            const QModelIndexList rows = list->selectionModel()->selectedRows();
            return rows.isEmpty() ? -1 : rows.first().row();
        };
        // Searched: the number, date, customer and amount, not the balance or notes; from the
        // position given, then round from the top once. None found says so.
        const std::tuple<const char*, int, const char*> searches[] = {
            {"inv1003", 1, "INV1003"}, {"24/12", 1, "INV1001"}, {"c3", 1, "INV1003"}, {"name of c2", 1, "INV1002"},
            {"1234567", 1, "INV1003"}, {"617283", 1, ""},       {"urgent", 1, ""},    {"INV1002", 3, "INV1002"},
            {"INV", 2, "INV1001"}};
        for (const auto& [typed, start, found] : searches) {
            child<QLineEdit>(w, "Search_txt")->setText(typed);
            w.rules()->SearchPos = start;
            list->clearSelection();
            click(w, "search_cmd");
            const QString row = chosen() < 0 ? "" : list->text(chosen(), 0);
            // The search typed leads both sides, so a failure names its row.
            QCOMPARE(QString(typed) + ": " + row + " / " + text(w, "Found_lbl"),
                     QString(typed) + ": " + found + " / " + (*found ? "" : "Not Found"));
        }
        // Amounts in ten places, so that a text sort orders them; a hidden YYYYMMDD sorts dates.
        QCOMPARE(listRows(list)[2], "INV1003 | 15/01/2026 | C3 | Name of C3 | 1234567.50 |  617283.75 |  | 20260115");
        w.rules()->columnClick(1);
        QCOMPARE(numbers(list), "INV1002 INV1003 INV1001");
        w.rules()->columnClick(4); // the order flips on every click
        QCOMPARE(numbers(list), "INV1001 INV1002 INV1003");
        w.rules()->columnClick(4);
        // Saved from either window: only the new row is added, at its sort place; with no
        // number to show, the list is read again in the order chosen.
        auto saveFrom = [&](const char* window, const QString& row, bool shown = true) {
            addRows("Invoices", "InvNo|Date|CustNo|Total|Balance", {row});
            ui.expectBox("Add to New Customer", "Do you want to add this invoice to a new customer",
                         QByteArray(window) == "frmAddCust" ? vbYes : vbNo, vbYesNoCancel + vbQuestion);
            ui.onModal(window, [=](QDialog&) {
                InvoiceSaved = 1;
                LastInvoiceNo = shown ? row.section('|', 0, 0) : QString();
                return 0;
            });
            trigger(w, 2);
        };
        // The customer's name last name first; one not on file leaves both cells empty.
        saveFrom("frmAddCust", "INV2000|2026-04-01|C9|500|250");
        QCOMPARE(listRows(list)[1], "INV2000 | 01/04/2026 | C9 | Young Al |     500.00 |     250.00 |  | 20260401");
        QCOMPARE(chosen(), 1);
        saveFrom("frmsearchCust", "INV2001|2026-04-01|C8|500|250");
        QCOMPARE(listRows(list)[2].left(36), "INV2001 | 01/04/2026 |  |  |     500"); // an equal amount goes after
        saveFrom("frmAddCust", "INV0999|2026-04-01|C1|50|25", false);
        QCOMPARE(numbers(list), "INV1003 INV2000 INV2001 INV1002 INV0999 INV1001");
        // Deleting takes the invoice and its own lines only; the row below is selected.
        w.rules()->select(3);
        ui.expectBox("Confirm", DeleteQuestion, vbNo, vbYesNo + vbQuestion);
        trigger(w, 4);
        ui.expectBox("Confirm", DeleteQuestion, vbYes);
        trigger(w, 4);
        QCOMPARE(numbers(list), "INV1003 INV2000 INV2001 INV0999 INV1001");
        QCOMPARE(chosen(), 3);
        QCOMPARE(columnValues("Invoices", "InvNo"), QString("INV1001 INV1003 INV2000 INV2001 INV0999").split(' '));
        QCOMPARE(columnValues("InvoiceD", "InvNo"), (QStringList{"INV1001", "INV10020", "INV1003"}));
        // With the last rows gone Edit does nothing and Delete says so.
        for (int i = 0; i < 5; ++i) {
            ui.expectBox("Confirm", DeleteQuestion, vbYes);
            trigger(w, 4);
        }
        trigger(w, 6);
        ui.expectBox("Please try again", "No row selected. Please try again.", vbOK, vbExclamation);
        trigger(w, 4);
        VERIFY_UI(ui);
    }

    void printEachDesign_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("paper");
        QTest::addColumn<QString>("settings");
        QTest::addColumn<QStringList>("captions"); // section.control=caption
        QTest::addColumn<QStringList>("hidden");   // sorted
        for (int type = 1; type <= 6; ++type) {
            // The headings crossed, as the layouts always were: each over the other field's
            // value. Design 1 trims the company's name; the others keep the blanks.
            const QString d = familyB(type) ? "Section4." : "Section2.", colon = familyB(type) ? ":" : "";
            QStringList captions =
                QString("Section4.Invoice_lbl=INVOICE - INV100001;Section2.Total1_lbl=     50.00*;"
                        "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1;Section2.Total2_lbl=;"
                        "Section2.Amount1_lbl=50.00 ;Section2.balance_lbl=$140.00;"
                        "Section2.taxname_lbl=VAT @ 10%;Section2.Notes_lbl=Notes:\nLeave at the door;"
                        "Section2.statment_lbl=Thank you;Section2.Terms_lbl=Pay in 30 days")
                    .split(';');
            captions << d + "Date1_lbl=22/11/2026" << d + "Sales_lbl=Rep" + colon << d + "Shipping_lbl=Order" + colon
                     << d + "Shipping2_lbl=DHL" << d + "SalesNO_lbl=Ship By" + colon << d + "SalesNO1_lbl=SO-77"
                     << "Section4.companyname_lbl=" + QString("Velk Joinery").leftJustified(type == 1 ? 0 : 30);
            QTest::addRow("%d A4 without delivery", type)
                << type << int(vbPRPSA4) << QString("IncludeShipping=0") << captions
                << QStringList{"ShippingAdd", "shipping1_lbl", "shippingShape"};
            captions << "Section4.ShippingAdd=Ann Brown\nDock 5\nLS9";
            QTest::addRow("%d Letter", type) << type << int(vbPRPSLetter) << QString() << captions << QStringList();
            QTest::addRow("%d A4", type) << type << int(vbPRPSA4) << QString() << captions << QStringList();
        }
        // Design 1 trims an empty first line; the others keep the blanks of a mobile without a phone.
        QTest::newRow("no tax: no star, no footnote; no phone, mobile, web; two fields hidden, notes unticked")
            << 1 << int(vbPRPSA4) << QString("TaxEnabled=0;Phone=;Mobile=;Web=;Text2Visible=0;Text4Visible=2")
            << QStringList{"Section2.Total1_lbl=     50.00", "Section2.Total0_lbl=    100.00",
                           "Section4.companyadd=1 Mill Lane\nHebden\nEmail: a@velk.example\n", "Section2.Notes_lbl="}
            << QStringList{"Shipping2_lbl", "Shipping_lbl", "TrackNo_lbl", "Tracking_lbl", "taxable_lbl"};
        QTest::newRow("no phone; no delivery, terms or statement")
            << 5 << int(vbPRPSA4) << QString("Phone=;IncludeShipping=0;IncludeTerms=0;IncludeStatement=0")
            << QStringList{"Section4.companyadd=1 Mill Lane\nHebden\n  Mobile: 0777" + QString(26, ' ') +
                               "\nEmail: a@velk.example" + QString(16, ' ') + "\nWeb: velk.example" + QString(18, ' ') +
                               "\nVAT No: GB1",
                           "Section2.statment_lbl=", "Section4.BillingAdd=Ann Brown\n1 High St\nLeeds\nLS1"}
            << QStringList{"Shape1", "ShippingAdd", "Terms_lbl", "shipping1_lbl", "shippingShape"};
    }

    void printEachDesign()
    {
        QFETCH(int, type);
        QFETCH(int, paper);
        QFETCH(QString, settings);
        QFETCH(QStringList, captions);
        QFETCH(QStringList, hidden);
        TestUi ui;
        ui.paper = paper;
        auto [main, w] = openInvoice(ui, QStringLiteral("InvoiceType=%1;").arg(type) + settings, "CUS1");
        child<QCheckBox>(*w, "Notes_chk")->setChecked(!captions.contains("Section2.Notes_lbl="));
        trigger(*w, 8);
        QCOMPARE(ui.reports.size(), 1);
        const auto r = ui.reports[0].report;
        QCOMPARE(r->name, QStringLiteral("Invoice%1_rpt").arg(type));
        QCOMPARE(r->documentName, child<QLineEdit>(*w, "Inv_lbl")->text().trimmed()); // the PDF's proposed name
        QStringList got, hiddenGot;
        for (const QString& c : captions)
            got << c.section('=', 0, 0) + "=" +
                       r->control(c.section('.', 0, 0), c.section('=', 0, 0).section('.', 1)).caption;
        QCOMPARE(got, captions);
        for (const Section& s : r->sections)
            for (const Control& c : s.controls)
                if (!c.visible)
                    hiddenGot << c.name;
        hiddenGot.sort();
        QCOMPARE(hiddenGot, hidden);
        // Design 4 keeps the blanks of the tax line too.
        const QString vat = type == 4 ? "VAT" + QString(27, ' ') + " No: GB1" + QString(27, ' ') : "VAT No: GB1";
        QVERIFY(!settings.isEmpty() || r->control("Section4", "companyadd").caption.endsWith(vat));
        // One page, everything in its box.
        QCOMPARE(ui.reports[0].pages, 1);
        QCOMPARE(inkProblems(*r, paper, ui.reports[0].pdf), QString());
        VERIFY_UI(ui);
        if (!settings.isEmpty() && settings != "IncludeShipping=0")
            return;
        // Filled with the widest values allowed it still fits, none of it cut away.
        fillEverything(*r, type);
        Show(*r);
        QCOMPARE(ui.reports.last().pages, 1);
        QCOMPARE(inkProblems(*r, paper, ui.reports.last().pdf), QString());
        const QString full = pdfText(ui.reports.last().pdf);
        for (const char* expected :
             {"INVOICE - INV123456789", "HARTLEY & DAUGHTERS JOINERY", "* = Non Taxable Items",
              "Thank you for your business", "Payment within 30 days", "Delivered in two parts", "PRT123456787",
              "Billing Address:", "TRACK 99", "Balance Due", "$1185176.88", "Customer Name", "9876543.21*"})
            QVERIFY2(full.contains(QLatin1String(expected)), qPrintable(QLatin1String(expected) + " in:\n" + full));
        QCOMPARE(full.count("12 Long Street Name"), settings.isEmpty() ? 2 : 1);
        // The contact block keeps its phone line whole, in every design.
        QVERIFY2(full.contains(QRegularExpression("Phone: 01422 555123[^\n]*Mobile: 07700")), qPrintable(full));
        // Hiding the delivery block leaves the billing box where it was.
        auto plain = Invoice_layout(type);
        if (paper == vbPRPSA4)
            Adjust_for_A4(*plain);
        const Control &a = plain->control("Section4", "BillingAdd"), &b = r->control("Section4", "BillingAdd");
        QCOMPARE(QRect(b.left, b.top, b.width, b.height), QRect(a.left, a.top, a.width, a.height));
    }

    void printRefusals_data()
    {
        // The logo is missing, a picture or junk; the box is the title of the one shown, or
        // the code of a failure that ends the program.
        table("type;paper;logo;number;custId;box;reports", R"(
logo missing: said once, printed without ; 1 ; 1 ; missing ;       ; CUS1 ; Logo!             ; 1
logo printed                             ; 6 ; 9 ; picture ;       ; CUS1 ;                   ; 1
logo that is no picture                  ; 1 ; 9 ; junk    ;       ; CUS1 ; 481               ; 0
number with an apostrophe                ; 1 ; 9 ;         ; INV'1 ; CUS1 ; 3704              ; 0
paper Legal                              ; 2 ; 5 ;         ;       ; CUS1 ; Change Paper Size ; 0
type 7                                   ; 7 ; 1 ;         ;       ; CUS1 ;                   ; 0
type empty                               ;   ; 1 ;         ;       ; CUS1 ;                   ; 0
customer gone: the next one's address    ; 3 ; 1 ;         ;       ; CUS2 ;                   ; 1
)");
    }

    void printRefusals()
    {
        auto [type, paper, logo, number, custId, box, reports] = fields<7>();
        TestUi ui;
        ui.paper = paper.toInt();
        const QString path = ui.file(logo == "picture" ? "logo.bmp" : "logo.jpg");
        QVERIFY(logo != "picture" ||
                QImage(reinterpret_cast<const uchar*>("\xff\0\0\xff"), 1, 1, QImage::Format_RGB32).save(path));
        if (logo == "junk")
            writeFile(path, "not a picture");
        auto [main, w] = openInvoice(ui, "InvoiceType=" + type + (logo.isEmpty() ? "" : ";logopath=" + path), custId);
        if (!number.isEmpty())
            edit(*w, "Inv_lbl")->setText(number);
        if (box == "Logo!")
            ui.expectBox(box, "Logo cannot be found", vbOK, vbInformation);
        else if (box.startsWith('C'))
            ui.expectBox(box, "Please change the paper size on your printer to 'Letter' or 'A4'", vbOK, vbExclamation);
        const QByteArray before = fileBytes(ui.file("data.mdb"));
        QCOMPARE(endsProgram([&] { trigger(*w, 8); }), box.toInt() > 0);
        QCOMPARE(ui.reports.size(), reports.toInt());
        QCOMPARE(fileBytes(ui.file("data.mdb")), before);
        if (box.toInt() > 0) {
            const QString b = ui.shownBoxes.last();
            for (const QString& part :
                 {"Error Code \t: " + box, QStringLiteral("Print_Invoice"), QStringLiteral("frmAddInv")})
                QVERIFY2(b.contains(part), qPrintable(part + " not in " + b));
            return ui.clearProblems(); // the failure box is the end of the run
        }
        const auto r = ui.reports.value(0).report;
        QCOMPARE(r && !r->control("Section4", "Image1").picture.isNull(), logo == "picture");
        if (logo == "missing") {
            QCOMPARE(settings.Logopath, QString()); // in memory only
            ui.paper = vbPRPSA4;
            trigger(*w, 8); // and it is not said again
            QCOMPARE(ui.reports.size(), 2);
        }
        if (custId == "CUS2")
            QCOMPARE(r->control("Section4", "BillingAdd").caption, "Ann Brown\n3 Next St\nLeeds\nLS1");
        VERIFY_UI(ui);
    }
};

VELK_TEST(InvoicesTest)
#include "tst_invoices.moc"
