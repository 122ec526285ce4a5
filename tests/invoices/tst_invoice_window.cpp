// The invoice window and the customer picker, driven by control names: totals through
// their two-decimal texts, opening an old invoice, saving and numbering.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "invoices/frmAddInv.h"
#include "platform/Activation.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

QString at(const char* name, int i)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

QLineEdit* edit(QWidget& w, const QString& name)
{
    return child<QLineEdit>(w, name);
}

// The texts of fields or labels named "name|name|...", joined the same way.
QString text(QWidget& w, const QString& names)
{
    QStringList texts;
    for (const QString& name : names.split('|')) {
        auto* e = w.findChild<QLineEdit*>(name);
        texts << (e ? e->text() : child<QLabel>(w, name)->text());
    }
    return texts.join('|');
}

void type(QWidget& w, const QString& name, const QString& keys)
{
    edit(w, name)->clear();
    QTest::keyClicks(edit(w, name), keys);
}

void tick(QWidget& w, const QString& name, bool on)
{
    child<QCheckBox>(w, name)->setChecked(on);
}

// Lines "qty|price|taxed;..." into rows 0, 1, ...; pasted, so a minus sign gets in.
void setLines(QWidget& w, const QString& lines)
{
    const QStringList rows = lines.split(';');
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].isEmpty())
            continue;
        const QStringList f = rows[i].split('|');
        tick(w, at("tax", i), f[2] == QLatin1String("1"));
        edit(w, at("Qty_txt", i))->setText(f[0]);
        edit(w, at("Amount_txt", i))->setText(f[1]);
    }
    qobject_cast<frmAddInv*>(&w)->Calc_Totals();
}

std::unique_ptr<frmMain> start(TestUi& ui, double rate, QMap<QString, Value> more = {})
{
    QMap<QString, Value> row{{"TaxAmount", rate},  {"TaxEnabled", 1},      {"TaxName", "VAT"},
                             {"InvPrefix", "INV"}, {"Invstart", "100001"}, {"ConfirmAll", 1}};
    row.insert(more);
    auto main = startProgram(ui, row);
    EditInvoiceMode = 0;
    PickedCustID = "CUS1";
    PickedFirstName = "Ann";
    PickedLastName = "Brown";
    PickedPhone = "0123";
    return main;
}

// Rows of a table given as "value|value|..." in the order of the columns "name|name|...".
void addRows(const char* table, const QString& columns, const QStringList& rows)
{
    for (const QString& row : rows) {
        QMap<QString, Value> values;
        for (int i = 0; i < int(columns.count('|')) + 1; ++i)
            values.insert(columns.section('|', i, i), row.section('|', i, i));
        addRow(QLatin1String(table), values);
    }
}

// The stored rows of a table, in the same form.
QStringList stored(const QString& table, const QString& columns)
{
    QList<QStringList> values;
    for (const QString& c : columns.split('|'))
        values << columnValues(table, c);
    QStringList rows;
    for (int r = 0; r < values[0].size(); ++r) {
        QStringList cells;
        for (const QStringList& v : values)
            cells << v[r];
        rows << cells.join('|');
    }
    return rows;
}

const QString LineColumns = "InvNo|PartID|Qty|Description|Amount|Total|Taxable";
const QString Figures = "subtotal_txt|vat_txt|Discount_txt|total_txt|Balance_txt";
const QString ClearLine = "Are you sure you want to clear this line?";

} // namespace

class InvoiceWindowTest : public QObject
{
    Q_OBJECT
private slots:
    void totals_data();
    void totals();
    void typingAndClearing();
    void oldInvoiceIsRecomputed_data();
    void oldInvoiceIsRecomputed();
    void itemPicker();
    void saveWritesRowsAndAdvances_data();
    void saveWritesRowsAndAdvances();
    void refusalsAndFailures_data();
    void refusalsAndFailures();
    void resaveReplacesLines();
    void customerPicker();
};

// rate; lines "qty|price|taxed,..."; Discount2_txt|Paid_txt|Writtenoff_txt; the line totals
// then the five Figures; the banner ("PAID", or the StillOwes_lbl caption).
const char* const TotalsTable = R"(
empty qty counts one     ; 0    ; |10|0,3||0   ; 0|0|0    ; 10.00|0.00|10.00|0.00|0.00|10.00|10.00 ; BALANCE: 10.00
3 x 1.125 half away      ; 0    ; 3|1.125|0    ; |0|0     ; 3.38|3.38|0.00|0.00|3.38|3.38 ; BALANCE: 3.38
two 12.5% lines          ; 12.5 ; 1|0.25|1,1|0.75|1 ; 0|1.13|0 ; 0.25|0.75|1.00|0.13|0.00|1.13|0.00 ; PAID
taxes at four decimals   ; 12.5 ; 1|0.01|1,1|0.01|1,1|0.01|1,1|0.01|1 ; 0|0|0 ; 0.01|0.01|0.01|0.01|0.04|0.00|0.00|0.04|0.04 ; BALANCE: 0.04
discount before tax      ; 15   ; 1|100|1      ; 10|0|0   ; 100.00|100.00|15.00|10.00|105.00|105.00 ; BALANCE: 105.00
paid and written off     ; 0    ; 1|100|0      ; 0|30|20  ; 100.00|100.00|0.00|0.00|100.00|50.00 ; BALANCE: 50.00
overpaid                 ; 0    ; 1|100|0      ; 0|120|0  ; 100.00|100.00|0.00|0.00|100.00|-20.00 ; BALANCE: -20.00
zero total, no banner    ; 0    ;              ; 0|5|0    ; 0.00|0.00|0.00|0.00|0.00|-5.00 ;
cut on the left          ; 0    ; 1000|12345.678|0,1|1|0 ; 0|0|0 ; 2345678.00|1.00|2345679.00|0.00|0.00|2345679.00|2345679.00 ; BALANCE: 2345679.00
no rate, ticks ignored   ; 0    ; 2|10|1       ; |0|0     ; 20.00|20.00|0.00|0.00|20.00|20.00 ; BALANCE: 20.00
signs: no tax on -5      ; 10   ; 2|-5|1,-1|4|1,0.5|10|0,1|3|1 ; 0.5|0|0 ; -10.00|-4.00|5.00|3.00|-6.00|-0.10|-0.03|-6.07|-6.07 ; BALANCE: -6.07
)";

void InvoiceWindowTest::totals_data()
{
    for (const char* column : {"rate", "lines", "entries", "figures", "banner"})
        QTest::addColumn<QString>(column);
    for (const QString& row : QString::fromUtf8(TotalsTable).split('\n', Qt::SkipEmptyParts)) {
        const QStringList f = row.split(';');
        QTest::newRow(qPrintable(f[0].trimmed()))
            << f[1].trimmed() << f[2].trimmed() << f[3].trimmed() << f[4].trimmed() << f[5].trimmed();
    }
}

void InvoiceWindowTest::totals()
{
    QFETCH(QString, rate);
    QFETCH(QString, lines);
    QFETCH(QString, entries);
    QFETCH(QString, figures);
    QFETCH(QString, banner);
    TestUi ui;
    auto main = start(ui, rate.toDouble());
    frmAddInv w;
    setLines(w, lines.replace(',', ';'));
    const QStringList e = entries.split('|');
    edit(w, "Discount2_txt")->setText(e[0]);
    edit(w, "Paid_txt")->setText(e[1]);
    edit(w, "Writtenoff_txt")->setText(e[2]);
    w.Calc_Totals();
    QStringList names;
    for (int i = 0; i <= int(lines.count(';')); ++i)
        names << at("tota1l_txt", i);
    // Amount texts are ten wide; the discount is trimmed unless its percentage is empty.
    QString shown = text(w, names.join('|') + '|' + Figures);
    QCOMPARE(shown.split('|').filter(QRegularExpression("^.{10}$")).size(), shown.count('|') + int(e[0].isEmpty()));
    QCOMPARE(shown.remove(' '), figures);
    QCOMPARE(text(w, "tota1l_txt(7)|total_txt2"), "      0.00|" + text(w, "total_txt"));
    QCOMPARE(child<QLabel>(w, "Paid_lbl")->isVisibleTo(&w), banner == QLatin1String("PAID"));
    const bool owes = banner.startsWith(QLatin1String("BALANCE"));
    QCOMPARE(child<QLabel>(w, "StillOwes_lbl")->isVisibleTo(&w), owes);
    QCOMPARE(text(w, "StillOwes_lbl"), owes ? banner : QString());
    // A leading point in the percentage ends the program, as it always did.
    ui.expectBox("Error Message", errorMessageText(13, "frmAddInv", "Calc_Totals", standardErrorText(13)));
    QVERIFY(endsProgram([&] { type(w, "Discount2_txt", "."); }));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::typingAndClearing()
{
    TestUi ui;
    auto main = start(ui, 0, {{"Text1Visible", 1}, {"Text1Name", "  Rep  "}});
    frmAddInv w;
    activate(&w);
    QCOMPARE(text(w, "Inv_lbl|Cust_lbl|Customername_lbl|Label16|vat_lbl|SalesPerson_lbl"),
             "INV100001|CUS1|Ann Brown|0123|VAT @ 0%|Rep");
    setLines(w, ";1|5|0;2|5|0");
    // The keys are filtered; every key release recomputes.
    type(w, "Qty_txt(0)", "1a2.-3");
    type(w, "Amount_txt(0)", "4.5.0-");
    type(w, "Paid_txt", "1.2.3");
    QCOMPARE(text(w, "Qty_txt(0)|Amount_txt(0)|Paid_txt|Balance_txt"), "123|4.50|1.23|    567.27");
    // No row visited since opening: row 0 is the one cleared.
    ui.expectBox("Confirm", ClearLine, vbYes);
    child<QAction>(w, "Toolbar1(4)")->trigger();
    QCOMPARE(text(w, "Qty_txt(0)|Amount_txt(0)|subtotal_txt"), "||     15.00");
    // Leaving a price or an emptied payment rewrites it as an amount.
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
    edit(w, "Amount_txt(2)")->setFocus();
    edit(w, "Writtenoff_txt")->clear();
    edit(w, "Writtenoff_txt")->setFocus();
    edit(w, "Desc_txt(2)")->setFocus();
    QCOMPARE(text(w, "Amount_txt(2)|Writtenoff_txt"), "      5.00|      0.00");
    ui.expectBox("Confirm", ClearLine, vbNo);
    child<QAction>(w, "Toolbar1(4)")->trigger();
    ui.expectBox("Confirm", "Are you very sure you want to clear all lines?", vbYes);
    child<QAction>(w, "Toolbar1(6)")->trigger();
    QCOMPARE(text(w, "Qty_txt(2)|total_txt"), "|      0.00");
    VERIFY_UI(ui);
}

void InvoiceWindowTest::oldInvoiceIsRecomputed_data()
{
    QTest::addColumn<double>("setting");
    QTest::addColumn<QString>("storedRate");
    QTest::addColumn<QString>("tax");
    // The stored rate computes; the setting is only the gate.
    QTest::newRow("at the stored rate") << 20.0 << QString("10") << QString("1.00");
    QTest::newRow("no rate in the settings") << 0.0 << QString("10") << QString("0.00");
    QTest::newRow("stored without a rate") << 20.0 << QString("0") << QString("0.00");
}

void InvoiceWindowTest::oldInvoiceIsRecomputed()
{
    QFETCH(double, setting);
    QFETCH(QString, storedRate);
    QFETCH(QString, tax);
    TestUi ui;
    auto main = start(ui, setting, {{"TaxEnabled", 0}});
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
    QCOMPARE(text(w, "Inv_lbl|Customername_lbl|vat_lbl|Qty_txt(0)|Qty_txt(1)|PartID_txt(7)|Desc_txt(7)|Amount_txt(7)"),
             "INV7|Ann O'Brien|VAT @ " + storedRate + "%|1||P7|d P7|     10.00");
    QCOMPARE(child<QDateEdit>(w, "Date_txt")->date(), QDate(2026, 3, 1));
    QVERIFY(child<QCheckBox>(w, "tax(0)")->isChecked() && !child<QCheckBox>(w, "tax(1)")->isChecked());
    // Eight of the nine lines, 10.00 each; the columns stay for an invoice that bears tax.
    QCOMPARE(text(w, Figures).remove(' '),
             QStringLiteral("80.00|%1|0.00|%2|%3")
                 .arg(tax, QString::number(80 + tax.toDouble(), 'f', 2), QString::number(74 + tax.toDouble(), 'f', 2)));
    QVERIFY(!child<QCheckBox>(w, "PaidFull_chk")->isChecked());
    QCOMPARE(child<QLabel>(w, "toptax")->isVisibleTo(&w), tax != QLatin1String("0.00"));
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

// The item fills the line; its tax mark follows only while tax is enabled.
void InvoiceWindowTest::itemPicker()
{
    for (int taxEnabled : {1, 0}) {
        TestUi ui;
        auto main = start(ui, 10, {{"TaxEnabled", taxEnabled}});
        addRows("Parts", "ID|ShortDesc|Desc|Price|Taxable", {"P1|Bolt|Steel bolt|2.5|0", "P2|Nut|Brass nut|100|1"});
        frmAddInv w;
        auto* list = child<QTreeWidget>(w, "parts_lst");
        QCOMPARE(listRows(list)[1], "P2 | Nut |     100.00 | Brass nut | 1");
        tick(w, "tax(3)", true);
        child<QCheckBox>(w, "Check1(3)")->click();
        list->setCurrentItem(list->topLevelItem(0));
        child<QPushButton>(w, "select_cmd")->click();
        QCOMPARE(text(w, "PartID_txt(3)|Desc_txt(3)|tota1l_txt(3)"), "P1|Steel bolt|      2.50");
        QCOMPARE(child<QCheckBox>(w, "tax(3)")->isChecked(), taxEnabled == 0);
        QVERIFY(!child<QWidget>(w, "part_frame")->isVisibleTo(&w));
        VERIFY_UI(ui);
    }
}

void InvoiceWindowTest::saveWritesRowsAndAdvances_data()
{
    for (const char* column : {"prefix", "next", "number", "nextAfter"})
        QTest::addColumn<QString>(column);
    for (const QString row :
         {"width kept|INV|00000099|INV00000099|00000100", "wraps at the width|INV|9999|INV9999|0000",
          "prefix digit cut off|A1|100001|A1100001|100002", "free form leaves it|INV|100001|my-1|100001"}) {
        const QStringList f = row.split('|');
        QTest::newRow(qPrintable(f[0])) << f[1] << f[2] << f[3] << f[4];
    }
}

void InvoiceWindowTest::saveWritesRowsAndAdvances()
{
    QFETCH(QString, prefix);
    QFETCH(QString, next);
    QFETCH(QString, number);
    QFETCH(QString, nextAfter);
    TestUi ui;
    const bool freeForm = !number.startsWith(prefix);
    auto main =
        start(ui, 12.5, {{"InvPrefix", prefix}, {"Invstart", next}, {"FreeFormInv", int(freeForm)}, {"ConfirmAll", 0}});
    frmAddInv w;
    if (freeForm)
        type(w, "Inv_lbl", number);
    // A quantity alone, a price alone, an empty row, and a taxed line with padded texts.
    setLines(w, "4||0;|5|0;||0;2|0.25|1");
    edit(w, "PartID_txt(3)")->setText(" P9 ");
    edit(w, "Desc_txt(3)")->setText(" two words ");
    edit(w, "SalesPerson_txt")->setText(" Jo ");
    type(w, "Discount2_txt", "12.5");
    ui.expectBox("Continue?", "Are you sure you want to update?", vbYes, vbYesNo + vbQuestion);
    child<QPushButton>(w, "update_cmd")->click();
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

void InvoiceWindowTest::refusalsAndFailures_data()
{
    QTest::addColumn<int>("freeForm");
    QTest::addColumn<QString>("next");      // the prefix is INV when the next number is not empty
    QTest::addColumn<QString>("typed");     // a free-form number, or the second row's quantity
    QTest::addColumn<QStringList>("boxes"); // title|text|answer
    const QString inUse =
        "Invoice Number Already In Use|This Invoice number has already been used. Please try again!|1";
    const QString empty = "Enter Invoice Number| Please enter an invoice number.|1";
    const auto fatal = [](int number) {
        return "Error Message|" + errorMessageText(number, "frmAddInv", "Update_cmd", standardErrorText(number)) + "|1";
    };
    QTest::newRow("in use, whatever the case") << 1 << QString("1") << QString("inv1") << QStringList{inUse};
    QTest::newRow("generated number in use") << 0 << QString("1") << QString("1") << QStringList{inUse};
    QTest::newRow("empty free-form number") << 1 << QString("1") << QString("") << QStringList{empty};
    QTest::newRow("No to the question") << 0 << QString("2") << QString("1")
                                        << QStringList{"Continue?|Are you sure you want to update?|7"};
    // The box, then the focus cannot move to the disabled number.
    QTest::newRow("empty generated number") << 0 << QString("") << QString("1") << QStringList{empty, fatal(5)};
    // No quantity column holds it: the header and the first line stay written.
    QTest::newRow("failure mid-save") << 0 << QString("2") << QString("1e99") << QStringList{fatal(6)};
}

void InvoiceWindowTest::refusalsAndFailures()
{
    QFETCH(int, freeForm);
    QFETCH(QString, next);
    QFETCH(QString, typed);
    QFETCH(QStringList, boxes);
    TestUi ui;
    auto main = start(ui, 0,
                      {{"FreeFormInv", freeForm},
                       {"InvPrefix", next.isEmpty() ? QString() : "INV"},
                       {"Invstart", next},
                       {"ConfirmAll", int(!boxes[0].startsWith(QLatin1String("Continue?")))}});
    addRows("Invoices", "InvNo", {"INV1"});
    frmAddInv w;
    if (freeForm)
        type(w, "Inv_lbl", typed);
    setLines(w, "2|3|0;" + (freeForm ? "1" : typed) + "|1|0");
    for (const QString& b : boxes)
        ui.expectBox(b.section('|', 0, 0), b.section('|', 1, -2), b.section('|', -1).toInt());
    const bool midSave = typed == QLatin1String("1e99");
    QCOMPARE(endsProgram([&] { child<QPushButton>(w, "update_cmd")->click(); }),
             boxes.last().startsWith(QLatin1String("Error")));
    Database::closeAll(); // what the file holds: a failed save's writes are committed
    QCOMPARE(columnValues("Invoices", "InvNo"), (midSave ? QStringList{"INV1", "INV2"} : QStringList{"INV1"}));
    QCOMPARE(stored("InvoiceD", LineColumns), midSave ? QStringList{"INV2||2||3|6|0"} : QStringList{});
    QCOMPARE(InvoiceSaved, qint16(midSave));
    QCOMPARE(busyCount(), qint16(0));
    VERIFY_UI(ui);
}

// New from the customer record, saved, opened again, changed and saved at a new tax
// rate: the history rows follow, the lines are replaced, the number stays.
void InvoiceWindowTest::resaveReplacesLines()
{
    TestUi ui;
    auto main = start(ui, 10);
    addRows("Customers", "CustID|LastName|FirstName|Phone", {"CUS1|Brown|Ann|555"});
    addRows("Invoices", "InvNo", {"INV099"});
    addRows("InvoiceD", LineColumns, {"INV099||1||1|999|0"}); // beside ours in the index, and kept
    NewCustomerMode = 0;
    SelectedCustID = "CUS1";
    frmAddCust customer;
    ui.onModal("frmAddInv", [&](QDialog& w) {
        setLines(w, "2|10|1;1|3|0;1|4|0");
        child<QPushButton>(w, "update_cmd")->click();
        return 1;
    });
    child<QPushButton>(customer, "Add_cmd")->click();
    auto* history = child<QTreeWidget>(customer, "Inv_lst");
    QCOMPARE(listRows(history).last(), "22/11/2026 | INV100001 |      29.00 |       0.00 |      29.00 | ");
    settings.TaxAmount = 20;
    QString reopened;
    ui.onModal("frmAddInv", [&](QDialog& w) {
        reopened = text(w, "Inv_lbl|vat_txt|Amount_txt(2)");
        for (const char* name : {"Qty_txt(1)", "PartID_txt(1)", "Desc_txt(1)", "Amount_txt(1)"})
            edit(w, name)->clear();
        type(w, "Qty_txt(2)", "3");
        type(w, "Paid_txt", "10");
        child<QPushButton>(w, "update_cmd")->click();
        return 1;
    });
    child<QPushButton>(customer, "Edit_cmd")->click();
    QCOMPARE(reopened, "INV100001|      2.00|      4.00"); // at the stored 10 %
    QCOMPARE(listRows(history).last(), "22/11/2026 | INV100001 |      34.00 |      10.00 |      24.00 | ");
    QCOMPARE(stored("InvoiceD", LineColumns),
             (QStringList{"INV099||1||1|999|0", "INV100001||2||10|20|1", "INV100001||3||4|12|0"}));
    QCOMPARE(columnValues("Invoices", "TaxPer") << settings.Invstart, (QStringList{"0", "20", "100002"}));
    VERIFY_UI(ui);
}

// A new invoice from the main window goes through the picker; with no customers Select
// does nothing and Cancel opens nothing.
void InvoiceWindowTest::customerPicker()
{
    TestUi ui;
    auto main = start(ui, 0);
    QString picked;
    for (bool customers : {false, true}) {
        if (customers)
            addRows("Customers", "CustID|LastName|FirstName|Phone", {"C1|Smith|Ann|555", "C2|Brown|Bob|555"});
        ui.expectBox("Add to New Customer", "Do you want to add this invoice to a new customer", vbNo);
        ui.onModal("frmsearchCust", [&](QDialog& d) {
            edit(d, "search_txt")->setText("BRO");
            child<QPushButton>(d, "search_cmd")->click();
            if (customers)
                ui.onModal("frmAddInv", [&](QDialog& w) {
                    picked = text(w, "Cust_lbl|Customername_lbl|Label16");
                    return 0;
                });
            child<QPushButton>(d, "select_cmd")->click();
            if (!customers)
                child<QPushButton>(d, "cancel_cmd")->click();
            return 0;
        });
        main->Toolbar1_ButtonClick(5);
        VERIFY_UI(ui);
    }
    QCOMPARE(picked, "C2|Bob Brown|555");
}

VELK_TEST(InvoiceWindowTest)
#include "tst_invoice_window.moc"
