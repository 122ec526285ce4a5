// The invoice window and the customer picker, driven by control names: totals through
// their two-decimal texts, opening an old invoice, saving and numbering.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "invoices/frmAddInv.h"
#include "platform/Activation.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/ListRules.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QFrame>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

QString at(const char* name, int i)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

// The text of a field or a label.
QString text(QWidget& w, const QString& name)
{
    if (auto* e = w.findChild<QLineEdit*>(name))
        return e->text();
    return child<QLabel>(w, name)->text();
}

void type(QWidget& w, const QString& name, const QString& keys)
{
    auto* e = child<QLineEdit>(w, name);
    e->clear();
    QTest::keyClicks(e, keys);
}

// Focus moves need the window shown and active.
void showActive(QWidget& w)
{
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
}

QCheckBox* tick(QWidget& w, const QString& name)
{
    return child<QCheckBox>(w, name);
}

// Lines as "qty|price|taxed" (taxed 1 or 0), typed into rows 0, 1, ...
void fillLines(QWidget& w, const QStringList& lines)
{
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList f = lines[i].split('|');
        tick(w, at("tax", i))->setChecked(f[2] == QLatin1String("1"));
        type(w, at("Qty_txt", i), f[0]);
        type(w, at("Amount_txt", i), f[1]);
    }
}

QMap<QString, Value> taxed(double rate, int enabled = 1)
{
    return {{"TaxAmount", rate},
            {"TaxEnabled", enabled},
            {"TaxName", QStringLiteral("VAT")},
            {"InvPrefix", QStringLiteral("INV")},
            {"Invstart", QStringLiteral("100001")},
            {"ConfirmAll", 1}};
}

void pickCustomer()
{
    EditInvoiceMode = 0;
    PickedCustID = QStringLiteral("CUS1");
    PickedFirstName = QStringLiteral("Ann");
    PickedLastName = QStringLiteral("Brown");
    PickedPhone = QStringLiteral("0123");
}

void addInvoice(const QString& number, const QMap<QString, Value>& values = {})
{
    QMap<QString, Value> row{{"InvNo", number}, {"CustNo", QStringLiteral("CUS1")}, {"Date", QDate(2026, 3, 1)}};
    row.insert(values);
    addRow(QStringLiteral("Invoices"), row);
}

void addLine(const QString& number, int qty, double amount, int taxable, const QString& part = QString())
{
    addRow(QStringLiteral("InvoiceD"), {{"InvNo", number},
                                        {"PartID", part},
                                        {"Qty", qty},
                                        {"Description", QStringLiteral("d ") + part},
                                        {"Amount", amount},
                                        {"Total", 999.0},
                                        {"Taxable", taxable}});
}

// The stored lines, each "InvNo|PartID|Qty|Description|Amount|Total|Taxable".
QStringList storedLines()
{
    QStringList rows;
    const QStringList columns{"InvNo", "PartID", "Qty", "Description", "Amount", "Total", "Taxable"};
    QList<QStringList> values;
    for (const QString& c : columns)
        values << columnValues(QStringLiteral("InvoiceD"), c);
    for (int r = 0; r < values[0].size(); ++r) {
        QStringList cells;
        for (const QStringList& v : values)
            cells << v[r];
        rows << cells.join('|');
    }
    return rows;
}

} // namespace

class InvoiceWindowTest : public QObject
{
    Q_OBJECT
private slots:
    void totals_data();
    void totals();
    void leadingPointInDiscountIsFatal();
    void keysAndRewrites();
    void newInvoiceFollowsSettings_data();
    void newInvoiceFollowsSettings();
    void oldInvoiceIsRecomputed_data();
    void oldInvoiceIsRecomputed();
    void unknownNumberShowsTheNextHeader();
    void rowHighlightAndClearing();
    void itemPicker_data();
    void itemPicker();
    void saveWritesRowsAndAdvances_data();
    void saveWritesRowsAndAdvances();
    void refusals_data();
    void refusals();
    void failureMidSaveKeepsWhatWasWritten();
    void roundTrip();
    void customerPicker();
};

void InvoiceWindowTest::totals_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("discount");
    QTest::addColumn<QString>("paid");
    QTest::addColumn<QString>("writtenOff");
    QTest::addColumn<QStringList>("lineTotals");
    QTest::addColumn<QStringList>("figures"); // subtotal, tax, discount, total, balance
    QTest::addColumn<QString>("banner");      // "PAID", the StillOwes caption, or empty

    const QStringList none;
    QTest::newRow("empty qty counts one, empty price nothing")
        << 0.0 << QStringList{"|10|0", "3||0"} << "0"
        << "0"
        << "0" << QStringList{"     10.00", "      0.00", "      0.00"}
        << QStringList{"     10.00", "      0.00", "0.00", "     10.00", "     10.00"} << "BALANCE: 10.00";
    QTest::newRow("3 x 1.125 rounds half away")
        << 0.0 << QStringList{"3|1.125|0"} << ""
        << "0"
        << "0" << QStringList{"      3.38"}
        << QStringList{"      3.38", "      0.00", "      0.00", "      3.38", "      3.38"} << "BALANCE: 3.38";
    QTest::newRow("two 12.5% lines: halves to even, then away")
        << 12.5 << QStringList{"1|0.25|1", "1|0.75|1"} << "0"
        << "1.13"
        << "0" << QStringList{"      0.25", "      0.75"}
        << QStringList{"      1.00", "      0.13", "0.00", "      1.13", "      0.00"} << "PAID";
    // Each line's tax 0.00125 is kept as 0.0012: the sum stays under half a penny.
    QTest::newRow("line taxes kept at four decimals")
        << 12.5 << QStringList{"1|0.01|1", "1|0.01|1", "1|0.01|1", "1|0.01|1"} << "0"
        << "0"
        << "0" << QStringList{"      0.01"}
        << QStringList{"      0.04", "      0.00", "0.00", "      0.04", "      0.04"} << "BALANCE: 0.04";
    QTest::newRow("discount on the subtotal only")
        << 15.0 << QStringList{"1|100|1"} << "10"
        << "0"
        << "0" << QStringList{"    100.00"}
        << QStringList{"    100.00", "     15.00", "10.00", "    105.00", "    105.00"} << "BALANCE: 105.00";
    QTest::newRow("paid and written off")
        << 0.0 << QStringList{"1|100|0"} << "0"
        << "30"
        << "20" << none << QStringList{"    100.00", "      0.00", "0.00", "    100.00", "     50.00"}
        << "BALANCE: 50.00";
    QTest::newRow("overpaid") << 0.0 << QStringList{"1|100|0"} << "0"
                              << "120"
                              << "0" << none
                              << QStringList{"    100.00", "      0.00", "0.00", "    100.00", "    -20.00"}
                              << "BALANCE: -20.00";
    QTest::newRow("zero total shows no banner")
        << 0.0 << none << "0"
        << "5"
        << "0" << QStringList{"      0.00"}
        << QStringList{"      0.00", "      0.00", "0.00", "      0.00", "     -5.00"} << "";
    QTest::newRow("1000 x 12345.678 loses its left end")
        << 0.0 << QStringList{"1000|12345.678|0", "1|1|0"} << "0"
        << "0"
        << "0" << QStringList{"2345678.00", "      1.00"}
        << QStringList{"2345679.00", "      0.00", "0.00", "2345679.00", "2345679.00"} << "BALANCE: 2345679.00";
    QTest::newRow("no rate: ticks ignored")
        << 0.0 << QStringList{"2|10|1"} << ""
        << "0"
        << "0" << none << QStringList{"     20.00", "      0.00", "      0.00", "     20.00", "     20.00"}
        << "BALANCE: 20.00";
    QTest::newRow("only a positive price bears tax")
        << 10.0 << QStringList{"2|-5|1", "0.5|10|0", "1|3|1"} << "0.5"
        << "0"
        << "0" << QStringList{"    -10.00", "      5.00", "      3.00"}
        << QStringList{"     -2.00", "      0.30", "-0.01", "     -1.69", "     -1.69"} << "BALANCE: -1.69";
}

void InvoiceWindowTest::totals()
{
    QFETCH(double, rate);
    QFETCH(QStringList, lines);
    QFETCH(QString, discount);
    QFETCH(QString, paid);
    QFETCH(QString, writtenOff);
    QFETCH(QStringList, lineTotals);
    QFETCH(QStringList, figures);
    QFETCH(QString, banner);
    TestUi ui;
    auto main = startProgram(ui, taxed(rate));
    pickCustomer();
    frmAddInv w;
    // Pasted, so that a minus sign reaches the price as it can by the clipboard.
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList f = lines[i].split('|');
        tick(w, at("tax", i))->setChecked(f[2] == QLatin1String("1"));
        child<QLineEdit>(w, at("Qty_txt", i))->setText(f[0]);
        child<QLineEdit>(w, at("Amount_txt", i))->setText(f[1]);
    }
    child<QLineEdit>(w, "Discount2_txt")->setText(discount);
    child<QLineEdit>(w, "Paid_txt")->setText(paid);
    child<QLineEdit>(w, "Writtenoff_txt")->setText(writtenOff);
    w.Calc_Totals();
    for (int i = 0; i < lineTotals.size(); ++i)
        QCOMPARE(text(w, at("tota1l_txt", i)), lineTotals[i]);
    QCOMPARE(text(w, "tota1l_txt(7)"), QStringLiteral("      0.00"));
    const QStringList names{"subtotal_txt", "vat_txt", "Discount_txt", "total_txt", "Balance_txt"};
    for (int i = 0; i < names.size(); ++i)
        QCOMPARE(names[i] + ": " + text(w, names[i]), names[i] + ": " + figures[i]);
    QCOMPARE(text(w, "total_txt2"), text(w, "total_txt"));
    QCOMPARE(child<QLabel>(w, "Paid_lbl")->isVisibleTo(&w), banner == QLatin1String("PAID"));
    const bool owes = banner.startsWith(QLatin1String("BALANCE"));
    QCOMPARE(child<QLabel>(w, "StillOwes_lbl")->isVisibleTo(&w), owes);
    QCOMPARE(text(w, "StillOwes_lbl"), owes ? banner : QString());
    VERIFY_UI(ui);
}

void InvoiceWindowTest::leadingPointInDiscountIsFatal()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    pickCustomer();
    frmAddInv w;
    type(w, "Discount2_txt", "0.5");
    QCOMPARE(text(w, "Discount_txt"), QStringLiteral("0.00"));
    ui.expectBox(
        QStringLiteral("Error Message"),
        errorMessageText(13, QStringLiteral("frmAddInv"), QStringLiteral("Calc_Totals"), standardErrorText(13)));
    QVERIFY(endsProgram([&] { type(w, "Discount2_txt", "."); }));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::keysAndRewrites()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    pickCustomer();
    frmAddInv w;
    type(w, "Qty_txt(0)", "1a2.-3");
    type(w, "Amount_txt(0)", "4.5.0-");
    QCOMPARE(text(w, "Qty_txt(0)"), QStringLiteral("123"));
    QCOMPARE(text(w, "Amount_txt(0)"), QStringLiteral("4.50"));
    // Every key release recomputed.
    QCOMPARE(text(w, "tota1l_txt(0)"), QStringLiteral("    553.50"));
    type(w, "Paid_txt", "1.2.3");
    QCOMPARE(text(w, "Paid_txt"), QStringLiteral("1.23"));
    QCOMPARE(text(w, "Balance_txt"), QStringLiteral("    552.27"));

    // Leaving a price or a payment rewrites it as an amount; an empty price stays empty.
    showActive(w);
    auto leave = [&](const QString& name) {
        child<QLineEdit>(w, name)->setFocus();
        child<QLineEdit>(w, "Desc_txt(5)")->setFocus();
    };
    leave("Amount_txt(0)");
    QCOMPARE(text(w, "Amount_txt(0)"), QStringLiteral("      4.50"));
    leave("Amount_txt(1)");
    QCOMPARE(text(w, "Amount_txt(1)"), QString());
    child<QLineEdit>(w, "Writtenoff_txt")->clear();
    leave("Writtenoff_txt");
    QCOMPARE(text(w, "Writtenoff_txt"), QStringLiteral("      0.00"));
    leave("Paid_txt");
    QCOMPARE(text(w, "Paid_txt"), QStringLiteral("      1.23"));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::newInvoiceFollowsSettings_data()
{
    QTest::addColumn<int>("freeForm");
    QTest::addColumn<int>("taxEnabled");
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("taxShown");
    QTest::newRow("numbered, taxed") << 0 << 1 << "INV100001" << true;
    QTest::newRow("free form, untaxed") << 1 << 0 << "" << false;
}

void InvoiceWindowTest::newInvoiceFollowsSettings()
{
    QFETCH(int, freeForm);
    QFETCH(int, taxEnabled);
    QFETCH(QString, number);
    QFETCH(bool, taxShown);
    TestUi ui;
    QMap<QString, Value> row = taxed(taxEnabled ? 17.5 : 0, taxEnabled);
    row.insert({{"FreeFormInv", freeForm},
                {"Text1Visible", 1},
                {"Text1Name", QStringLiteral("  Rep  ")},
                {"Text2Visible", 2},
                {"Text2Name", QStringLiteral("Order")}});
    auto main = startProgram(ui, row);
    pickCustomer();
    frmAddInv w;
    activate(&w);
    QCOMPARE(w.windowTitle(), QStringLiteral("Invoice"));
    QCOMPARE(text(w, "Inv_lbl"), number);
    QCOMPARE(child<QLineEdit>(w, "Inv_lbl")->isEnabled(), freeForm == 1);
    QCOMPARE(text(w, "Cust_lbl"), QStringLiteral("CUS1"));
    QCOMPARE(text(w, "Customername_lbl"), QStringLiteral("Ann Brown"));
    QCOMPARE(text(w, "Label16"), QStringLiteral("0123"));
    QCOMPARE(child<QDateEdit>(w, "Date_txt")->date(), QDate(2026, 11, 22));
    QCOMPARE(text(w, "vat_lbl"), taxEnabled ? QStringLiteral("VAT @ 17.5%") : QStringLiteral("VAT @ 0%"));
    for (int i = 0; i < frmAddInv::Lines; ++i) {
        QCOMPARE(tick(w, at("tax", i))->isChecked(), taxEnabled == 1);
        QCOMPARE(tick(w, at("tax", i))->isVisibleTo(&w), taxShown);
        QCOMPARE(child<QLineEdit>(w, at("Qty_txt", i))->maxLength(), 4);
        QVERIFY(!child<QLineEdit>(w, at("tota1l_txt", i))->isEnabled());
    }
    QCOMPARE(child<QLabel>(w, "toptax")->isVisibleTo(&w), taxShown);
    QCOMPARE(text(w, "SalesPerson_lbl"), QStringLiteral("Rep"));
    QVERIFY(child<QLineEdit>(w, "SalesPerson_txt")->isVisibleTo(&w));
    QVERIFY(!child<QLineEdit>(w, "SalesOrder_txt")->isVisibleTo(&w));
    QVERIFY(!child<QLabel>(w, "SalesOrder_lbl")->isVisibleTo(&w));
    QCOMPARE(text(w, "Discount2_txt"), QStringLiteral("0"));
    QCOMPARE(child<QAction>(w, "Toolbar1(8)")->text(), QStringLiteral("Print"));
    QCOMPARE(child<QAction>(w, "Toolbar1(10)")->text(), QStringLiteral("Customize"));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::oldInvoiceIsRecomputed_data()
{
    QTest::addColumn<double>("setting");
    QTest::addColumn<double>("stored");
    QTest::addColumn<QString>("tax");
    // The stored rate computes; the setting is only the gate.
    QTest::newRow("at the stored rate") << 20.0 << 10.0 << "      1.00";
    QTest::newRow("no rate in the settings") << 0.0 << 10.0 << "      0.00";
    QTest::newRow("stored without a rate") << 20.0 << 0.0 << "      0.00";
}

void InvoiceWindowTest::oldInvoiceIsRecomputed()
{
    QFETCH(double, setting);
    QFETCH(double, stored);
    QFETCH(QString, tax);
    TestUi ui;
    auto main = startProgram(ui, taxed(setting, 0));
    // Stored figures that the lines do not give, a rate of its own, and written off 5.
    addInvoice(QStringLiteral("INV7"), {{"Subtotal", 1.0},
                                        {"Total", 1.0},
                                        {"Balance", 0.0},
                                        {"Paid", 1.0},
                                        {"WrittenOff", 5.0},
                                        {"TaxPer", stored},
                                        {"CustomerName", QStringLiteral("Ann O'Brien")},
                                        {"SalesNo", QStringLiteral("SO-1")}});
    addInvoice(QStringLiteral("INV8"));
    for (int i = 0; i < 9; ++i)
        addLine(QStringLiteral("INV7"), i == 1 ? 0 : 1, 10, i == 0 ? 1 : 0, QStringLiteral("P%1").arg(i));
    addLine(QStringLiteral("INV8"), 1, 1, 0);
    EditInvoiceMode = 1;
    OpenInvoiceNo = QStringLiteral(" INV7 ");
    frmAddInv w;
    QCOMPARE(text(w, "Inv_lbl"), QStringLiteral("INV7"));
    QCOMPARE(child<QDateEdit>(w, "Date_txt")->date(), QDate(2026, 3, 1));
    QCOMPARE(text(w, "Customername_lbl"), QStringLiteral("Ann O'Brien"));
    QCOMPARE(text(w, "SalesOrder_txt"), QStringLiteral("SO-1"));
    QCOMPARE(text(w, "vat_lbl"), QStringLiteral("VAT @ %1%").arg(stored));
    QCOMPARE(text(w, "Qty_txt(0)"), QStringLiteral("1"));
    QCOMPARE(text(w, "Qty_txt(1)"), QString()); // a stored 0
    QCOMPARE(text(w, "PartID_txt(7)"), QStringLiteral("P7"));
    QCOMPARE(text(w, "Desc_txt(7)"), QStringLiteral("d P7"));
    QCOMPARE(text(w, "Amount_txt(7)"), QStringLiteral("     10.00"));
    QVERIFY(tick(w, "tax(0)")->isChecked());
    QVERIFY(!tick(w, "tax(1)")->isChecked());
    // Eight of the nine lines, 10.00 each.
    QCOMPARE(text(w, "subtotal_txt"), QStringLiteral("     80.00"));
    QCOMPARE(text(w, "vat_txt"), tax);
    QCOMPARE(text(w, "Balance_txt"), Format_amount(74 + Val(tax), 7, 2));
    QVERIFY(!tick(w, "PaidFull_chk")->isChecked());
    // Untaxed settings hide the tax columns only while the invoice bears no tax.
    QCOMPARE(child<QLabel>(w, "toptax")->isVisibleTo(&w), Val(tax) != 0);
    VERIFY_UI(ui);
}

void InvoiceWindowTest::unknownNumberShowsTheNextHeader()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    addInvoice(QStringLiteral("INV5"), {{"Paid", 3.0}, {"DiscountPercentage", 0.0}, {"TaxPer", 0.0}});
    addLine(QStringLiteral("INV5"), 2, 4, 0);
    addInvoice(QStringLiteral("INV6"), {{"Paid", 8.0}, {"DiscountPercentage", 0.0}, {"TaxPer", 0.0}});
    addLine(QStringLiteral("INV6"), 2, 4, 0);
    EditInvoiceMode = 1;
    OpenInvoiceNo = QStringLiteral("INV55");
    frmAddInv w;
    QCOMPARE(text(w, "Inv_lbl"), QStringLiteral("INV6"));
    QCOMPARE(text(w, "Qty_txt(0)"), QString());
    QCOMPARE(text(w, "total_txt"), QStringLiteral("      0.00"));
    QCOMPARE(text(w, "Balance_txt"), QStringLiteral("     -8.00"));
    // Settled: the tick follows the opening, and behaves as a click.
    OpenInvoiceNo = QStringLiteral("INV6");
    Recordset rs;
    rs.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockPessimistic);
    rs.setIndex(QStringLiteral("InvNo"));
    rs.seek(QStringLiteral("INV6"));
    rs.setField(QStringLiteral("WrittenOff"), 2.0);
    rs.setField(QStringLiteral("Paid"), 6.0);
    rs.update();
    rs.close();
    frmAddInv settled;
    QVERIFY(tick(settled, "PaidFull_chk")->isChecked());
    QCOMPARE(text(settled, "Paid_txt"), QStringLiteral("      8.00"));
    QCOMPARE(text(settled, "Balance_txt"), QStringLiteral("     -2.00"));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::rowHighlightAndClearing()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    pickCustomer();
    frmAddInv w;
    fillLines(w, {"1|5|0", "2|5|0", "3|5|0"});
    activate(&w);
    // Right after opening no row was visited: row 0 is the one cleared.
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to clear this line?"), vbYes);
    child<QAction>(w, "Toolbar1(4)")->trigger();
    QCOMPARE(text(w, "Qty_txt(0)"), QString());
    QCOMPARE(text(w, "subtotal_txt"), QStringLiteral("     25.00"));

    showActive(w);
    child<QLineEdit>(w, "Desc_txt(2)")->setFocus();
    QCOMPARE(w.currentLine(), qint16(2));
    QCOMPARE(child<QLineEdit>(w, "Desc_txt(2)")->palette().color(QPalette::Base), QColor(0xFF, 0xFF, 0xC0));
    QCOMPARE(child<QLineEdit>(w, "Blank(2)")->palette().color(QPalette::Base), QColor(0xC0, 0xC0, 0xFF));
    QCOMPARE(child<QLineEdit>(w, "Qty_txt(1)")->palette().color(QPalette::Base), QColor(Qt::white));
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to clear this line?"), vbNo);
    child<QAction>(w, "Toolbar1(4)")->trigger();
    QCOMPARE(text(w, "Qty_txt(2)"), QStringLiteral("3"));
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you very sure you want to clear all lines?"), vbYes);
    child<QAction>(w, "Toolbar1(6)")->trigger();
    QCOMPARE(text(w, "Qty_txt(1)"), QString());
    QCOMPARE(text(w, "total_txt"), QStringLiteral("      0.00"));
    QCOMPARE(busyCount(), qint16(0));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::itemPicker_data()
{
    QTest::addColumn<int>("taxEnabled");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("taxAfter");
    QTest::newRow("select, tax follows the item") << 1 << false << false;
    QTest::newRow("key press picks, tick stays without tax") << 0 << true << true;
}

void InvoiceWindowTest::itemPicker()
{
    QFETCH(int, taxEnabled);
    QFETCH(bool, byKey);
    QFETCH(bool, taxAfter);
    TestUi ui;
    auto main = startProgram(ui, taxed(10, taxEnabled));
    addRow(QStringLiteral("Parts"), {{"ID", QStringLiteral("P1")},
                                     {"ShortDesc", QStringLiteral("Bolt")},
                                     {"Desc", QStringLiteral("Steel bolt")},
                                     {"Price", 2.5},
                                     {"Taxable", 0}});
    addRow(QStringLiteral("Parts"), {{"ID", QStringLiteral("P2")},
                                     {"ShortDesc", QStringLiteral("Nut")},
                                     {"Desc", QStringLiteral("Brass nut")},
                                     {"Price", 100.0},
                                     {"Taxable", 1}});
    pickCustomer();
    frmAddInv w;
    showActive(w);
    auto* list = child<QTreeWidget>(w, "parts_lst");
    QCOMPARE(listRows(list),
             (QStringList{"P1 | Bolt |       2.50 | Steel bolt | 0", "P2 | Nut |     100.00 | Brass nut | 1"}));
    tick(w, "tax(3)")->setChecked(true);
    tick(w, "Check1(3)")->click();
    QVERIFY(child<QFrame>(w, "part_frame")->isVisible());
    QCOMPARE(w.currentLine(), qint16(3));
    // Searching the price column; a miss leaves the selection.
    child<QLineEdit>(w, "Search_txt")->setText(QStringLiteral("2.5"));
    child<QPushButton>(w, "Search_cmd")->click();
    QCOMPARE(w.pickerRules()->selected()->text(0), QStringLiteral("P1"));
    child<QLineEdit>(w, "Search_txt")->setText(QStringLiteral("zzz"));
    child<QPushButton>(w, "Search_cmd")->click();
    QCOMPARE(w.pickerRules()->selected()->text(0), QStringLiteral("P1"));
    if (byKey)
        QTest::keyClick(list, Qt::Key_X);
    else
        child<QPushButton>(w, "select_cmd")->click();
    QCOMPARE(text(w, "PartID_txt(3)"), QStringLiteral("P1"));
    QCOMPARE(text(w, "Desc_txt(3)"), QStringLiteral("Steel bolt"));
    QCOMPARE(text(w, "tota1l_txt(3)"), QStringLiteral("      2.50"));
    QCOMPARE(tick(w, "tax(3)")->isChecked(), taxAfter);
    QVERIFY(!child<QFrame>(w, "part_frame")->isVisible());
    QVERIFY(!tick(w, "Check1(3)")->isChecked());
    QCOMPARE(QApplication::focusWidget(), child<QLineEdit>(w, "Qty_txt(3)"));
    // A toolbar click closes an open picker first.
    tick(w, "Check1(5)")->click();
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to clear this line?"), vbNo);
    child<QAction>(w, "Toolbar1(4)")->trigger();
    QVERIFY(!child<QFrame>(w, "part_frame")->isVisible());
    VERIFY_UI(ui);
}

void InvoiceWindowTest::saveWritesRowsAndAdvances_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("next");
    QTest::addColumn<int>("freeForm");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("nextAfter");
    QTest::newRow("width kept") << "INV"
                                << "00000099" << 0 << "INV00000099"
                                << "00000100";
    QTest::newRow("wraps at the width") << "INV"
                                        << "9999" << 0 << "INV9999"
                                        << "0000";
    QTest::newRow("prefix digit cut off") << "A1"
                                          << "100001" << 0 << "A1100001"
                                          << "100002";
    QTest::newRow("free form leaves it") << "INV"
                                         << "100001" << 1 << "my-1"
                                         << "100001";
}

void InvoiceWindowTest::saveWritesRowsAndAdvances()
{
    QFETCH(QString, prefix);
    QFETCH(QString, next);
    QFETCH(int, freeForm);
    QFETCH(QString, number);
    QFETCH(QString, nextAfter);
    TestUi ui;
    QMap<QString, Value> row = taxed(12.5);
    row.insert({{"InvPrefix", prefix}, {"Invstart", next}, {"FreeFormInv", freeForm}, {"ConfirmAll", 0}});
    auto main = startProgram(ui, row);
    pickCustomer();
    frmAddInv w;
    if (freeForm)
        type(w, "Inv_lbl", number);
    // A quantity alone, a price alone, an empty row, and a taxed line with padded texts.
    fillLines(w, {"4||0", "|5|0", "||0", "2|0.25|1"});
    child<QLineEdit>(w, "PartID_txt(3)")->setText(QStringLiteral(" P9 "));
    child<QLineEdit>(w, "Desc_txt(3)")->setText(QStringLiteral(" two words "));
    child<QLineEdit>(w, "SalesPerson_txt")->setText(QStringLiteral(" Jo "));
    type(w, "Discount2_txt", "12.5");
    ui.expectBox(QStringLiteral("Continue?"), QStringLiteral("Are you sure you want to update?"), vbYes,
                 vbYesNo + vbQuestion);
    child<QPushButton>(w, "update_cmd")->click();
    QCOMPARE(storedLines(),
             (QStringList{number + "||4||0|0|0", number + "||1||5|5|0", number + "|P9|2|two words|0.25|0.5|1"}));
    const QStringList header{
        "InvNo",      "CustNo",  "Date",  "Subtotal",     "Vat",    "Discount",           "Total",       "Paid",
        "WrittenOff", "Balance", "Phone", "CustomerName", "TaxPer", "DiscountPercentage", "SalesPerson", "Notes"};
    QStringList stored;
    for (const QString& c : header)
        stored << columnValues(QStringLiteral("Invoices"), c).join(',');
    // Tax 0.0625 shows 0.06; the discount is 12.5 % of 5.50.
    QCOMPARE(stored, (QStringList{number, "CUS1", "22/11/2026", "5.5", "0.06", "0.69", "4.87", "0", "0", "4.87", "0123",
                                  "Ann Brown", "12.5", "12.5", "Jo", ""}));
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("Invstart")), QStringList{nextAfter});
    QCOMPARE(settings.Invstart, nextAfter);
    QCOMPARE(InvoiceSaved, qint16(1));
    QCOMPARE(LastInvoiceNo.trimmed(), number);
    VERIFY_UI(ui);
}

void InvoiceWindowTest::refusals_data()
{
    QTest::addColumn<int>("freeForm");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("confirmAll");
    QTest::addColumn<QStringList>("boxes"); // title|text|answer
    const QString inUse = QStringLiteral("Invoice Number Already In Use|This Invoice number has already been used. "
                                         "Please try again!|1");
    const QString empty = QStringLiteral("Enter Invoice Number| Please enter an invoice number.|1");
    QTest::newRow("in use, whatever the case") << 1 << "INV"
                                               << "inv1" << 1 << QStringList{inUse};
    QTest::newRow("a generated number in use") << 0 << "INV"
                                               << "" << 1 << QStringList{inUse};
    QTest::newRow("empty free-form number") << 1 << "INV"
                                            << "" << 1 << QStringList{empty};
    QTest::newRow("No to the question") << 0 << "INV"
                                        << "" << 0 << QStringList{"Continue?|Are you sure you want to update?|7"};
    // The box, then the focus cannot move to the disabled number: fatal.
    QTest::newRow("empty generated number")
        << 0 << ""
        << "" << 1
        << QStringList{empty,
                       "Error Message|" + errorMessageText(5, "frmAddInv", "Update_cmd", standardErrorText(5)) + "|1"};
}

void InvoiceWindowTest::refusals()
{
    QFETCH(int, freeForm);
    QFETCH(QString, prefix);
    QFETCH(QString, typed);
    QFETCH(int, confirmAll);
    QFETCH(QStringList, boxes);
    TestUi ui;
    QMap<QString, Value> row = taxed(0);
    row.insert({{"FreeFormInv", freeForm},
                {"InvPrefix", prefix},
                {"Invstart", prefix.isEmpty() ? QString() : QStringLiteral("1")},
                {"ConfirmAll", confirmAll}});
    auto main = startProgram(ui, row);
    addInvoice(QStringLiteral("INV1"));
    pickCustomer();
    frmAddInv w;
    if (freeForm)
        type(w, "Inv_lbl", typed);
    fillLines(w, {"1|5|0"});
    for (const QString& b : boxes) {
        const QStringList f = b.split('|');
        ui.expectBox(f[0], f[1], f[2].toInt());
    }
    const bool fatal = endsProgram([&] { child<QPushButton>(w, "update_cmd")->click(); });
    QCOMPARE(fatal, prefix.isEmpty());
    QCOMPARE(columnValues(QStringLiteral("Invoices"), QStringLiteral("InvNo")), QStringList{"INV1"});
    QVERIFY(storedLines().isEmpty());
    QCOMPARE(InvoiceSaved, qint16(0));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::failureMidSaveKeepsWhatWasWritten()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    pickCustomer();
    frmAddInv w;
    fillLines(w, {"2|3|0", "1|1|0"});
    child<QLineEdit>(w, "Qty_txt(1)")->setText(QStringLiteral("1e99")); // pasted: no quantity column holds it
    ui.expectBox(QStringLiteral("Error Message"),
                 errorMessageText(6, QStringLiteral("frmAddInv"), QStringLiteral("Update_cmd"), standardErrorText(6)));
    QVERIFY(endsProgram([&] { child<QPushButton>(w, "update_cmd")->click(); }));
    Database::closeAll(); // read what the file holds
    QCOMPARE(columnValues(QStringLiteral("Invoices"), QStringLiteral("InvNo")), QStringList{"INV100001"});
    QCOMPARE(storedLines(), QStringList{"INV100001||2||3|6|0"});
    QCOMPARE(settings.Invstart, QStringLiteral("100001"));
    QCOMPARE(InvoiceSaved, qint16(1));
    QCOMPARE(busyCount(), qint16(0));
    VERIFY_UI(ui);
}

// A new invoice from the customer record, saved, opened again, changed and saved again
// at a new tax rate: the history rows follow, the lines are replaced, the number stays.
void InvoiceWindowTest::roundTrip()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(10));
    addRow(QStringLiteral("Customers"), {{"CustID", QStringLiteral("CUS1")},
                                         {"LastName", QStringLiteral("Brown")},
                                         {"FirstName", QStringLiteral("Ann")},
                                         {"Phone", QStringLiteral("0123")},
                                         {"Address", QString()},
                                         {"Address2", QString()},
                                         {"City", QString()},
                                         {"address4", QString()},
                                         {"Postcode", QString()}});
    addInvoice(QStringLiteral("INV099"));
    addLine(QStringLiteral("INV099"), 1, 1, 0); // another customer's line beside ours in the index
    NewCustomerMode = 0;
    SelectedCustID = QStringLiteral("CUS1");
    frmAddCust customer;
    ui.onModal(QStringLiteral("frmAddInv"), [&](QDialog& w) {
        fillLines(w, {"2|10|1", "1|3|0", "1|4|0"});
        child<QPushButton>(w, "update_cmd")->click();
        return 1;
    });
    child<QPushButton>(customer, "Add_cmd")->click();
    auto* history = child<QTreeWidget>(customer, "Inv_lst");
    QCOMPARE(listRows(history).last(),
             QStringLiteral("22/11/2026 | INV100001 |      29.00 |       0.00 |      29.00 | "));
    QCOMPARE(settings.Invstart, QStringLiteral("100002"));

    settings.TaxAmount = 20;
    ui.onModal(QStringLiteral("frmAddInv"), [&](QDialog& w) {
        [&] {
            QCOMPARE(text(w, "Inv_lbl"), QStringLiteral("INV100001"));
            QVERIFY(!child<QLineEdit>(w, "Inv_lbl")->isEnabled());
            QCOMPARE(text(w, "vat_txt"), QStringLiteral("      2.00")); // at the stored 10 %
            QCOMPARE(text(w, "Amount_txt(2)"), QStringLiteral("      4.00"));
        }();
        for (const char* name : {"Qty_txt(1)", "PartID_txt(1)", "Desc_txt(1)", "Amount_txt(1)"})
            child<QLineEdit>(w, name)->clear();
        type(w, "Qty_txt(2)", "3");
        type(w, "Paid_txt", "10");
        child<QPushButton>(w, "update_cmd")->click();
        return 1;
    });
    history->setCurrentItem(history->topLevelItem(history->topLevelItemCount() - 1));
    child<QPushButton>(customer, "Edit_cmd")->click();
    QCOMPARE(listRows(history).last(),
             QStringLiteral("22/11/2026 | INV100001 |      34.00 |      10.00 |      24.00 | "));
    QCOMPARE(storedLines(), (QStringList{"INV099||1|d |1|999|0", "INV100001||2||10|20|1", "INV100001||3||4|12|0"}));
    QCOMPARE(columnValues(QStringLiteral("Invoices"), QStringLiteral("TaxPer")), (QStringList{"0", "20"}));
    QCOMPARE(settings.Invstart, QStringLiteral("100002"));
    VERIFY_UI(ui);
}

void InvoiceWindowTest::customerPicker()
{
    TestUi ui;
    auto main = startProgram(ui, taxed(0));
    auto addInvoiceFromMain = [&] {
        ui.expectBox(QStringLiteral("Add to New Customer"),
                     QStringLiteral("Do you want to add this invoice to a new customer"), vbNo,
                     vbYesNoCancel + vbQuestion);
        main->Toolbar1_ButtonClick(5);
    };
    // No customers: Select does nothing and Cancel opens nothing.
    ui.onModal(QStringLiteral("frmsearchCust"), [&](QDialog& d) {
        child<QPushButton>(d, "select_cmd")->click();
        child<QPushButton>(d, "cancel_cmd")->click();
        return 0;
    });
    addInvoiceFromMain();
    VERIFY_UI(ui);

    for (const auto& [id, last, first] : {std::tuple{"C1", "Smith", "Ann"}, std::tuple{"C2", "Brown", "Bob"}})
        addRow(QStringLiteral("Customers"), {{"CustID", QLatin1String(id)},
                                             {"LastName", QLatin1String(last)},
                                             {"FirstName", QLatin1String(first)},
                                             {"Phone", QStringLiteral("555")},
                                             {"Address", QString()},
                                             {"Address2", QString()},
                                             {"City", QString()},
                                             {"address4", QString()},
                                             {"Postcode", QString()}});
    QString picked;
    ui.onModal(QStringLiteral("frmsearchCust"), [&](QDialog& d) {
        ui.onModal(QStringLiteral("frmAddInv"), [&](QDialog& w) {
            picked = text(w, "Cust_lbl") + "/" + text(w, "Customername_lbl") + "/" + text(w, "Label16");
            return 0;
        });
        [&] {
            QCOMPARE(d.windowTitle(), QStringLiteral("Search for a Customer"));
            auto* list = child<QTreeWidget>(d, "cust_lst");
            QCOMPARE(listRows(list), (QStringList{"C1 | Smith | Ann | 555", "C2 | Brown | Bob | 555"}));
            QCOMPARE(list->currentItem(), list->topLevelItem(0));
            list->header()->sectionClicked(1);
            QCOMPARE(headingMark(list, 1), QString());
            QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("C1")); // descending first
            child<QLineEdit>(d, "search_txt")->setText(QStringLiteral("BRO"));
            child<QPushButton>(d, "search_cmd")->click();
        }();
        child<QPushButton>(d, "select_cmd")->click();
        return 0;
    });
    addInvoiceFromMain();
    QCOMPARE(picked, QStringLiteral("C2/Bob Brown/555"));
    QCOMPARE(EditInvoiceMode, qint16(0));
    VERIFY_UI(ui);
}

VELK_TEST(InvoiceWindowTest)
#include "tst_invoice_window.moc"
