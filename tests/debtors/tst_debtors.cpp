// The aged debtor list and the reminder letters, driven as a user would.

#include "TestUi.h"

#include "debtors/frmDebtor.h"
#include "platform/Activation.h"
#include "platform/MemoBox.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/ListRules.h"
#include "store/Recordset.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

// Today is 22/11/2026 in every test.
const QDate Today(2026, 11, 22);
const QString Zero = QStringLiteral("      0.00");
const QString UpdateQuestion =
    QStringLiteral("Do you want to update the amount of reminders sent for the invoices selected?");

void addCustomer(const QString& id, const QString& first, const QString& last, const QStringList& address = {})
{
    QMap<QString, Value> row{{"CustID", id}, {"FirstName", first}, {"LastName", last}, {"Phone", "0123 " + id}};
    const char* parts[] = {"Address", "Address2", "City", "address4", "Postcode"};
    for (int i = 0; i < address.size(); ++i)
        row.insert(QLatin1String(parts[i]), address[i]);
    addRow(QStringLiteral("Customers"), row);
}

void addInvoice(const QString& no, const QString& cust, const Value& date, const QString& balance,
                const QMap<QString, Value>& more = {})
{
    QMap<QString, Value> row{{"InvNo", no},
                             {"CustNo", cust},
                             {"Date", date},
                             {"Total", Currency::fromText(balance) + Currency::fromText("10")},
                             {"Paid", Currency::fromText("10")},
                             {"Balance", Currency::fromText(balance)}};
    row.insert(more);
    addRow(QStringLiteral("Invoices"), row);
}

QTreeWidget* list(QWidget& w)
{
    return child<QTreeWidget>(w, QStringLiteral("debtor_lst"));
}

QString text(QWidget& w, const char* label)
{
    return child<QLabel>(w, QLatin1String(label))->text();
}

void trigger(QWidget& w, int place)
{
    child<QAction>(w, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

void click(QWidget& w, const QString& name)
{
    child<QPushButton>(w, name)->click();
}

// The invoice numbers of the ticked rows, in display order.
QStringList ticked(QWidget& w)
{
    QStringList out;
    for (int i = 0; i < list(w)->topLevelItemCount(); ++i)
        if (list(w)->topLevelItem(i)->checkState(0) == Qt::Checked)
            out << list(w)->topLevelItem(i)->text(3);
    return out;
}

void tick(QWidget& w, const QString& invNo)
{
    for (int i = 0; i < list(w)->topLevelItemCount(); ++i)
        if (list(w)->topLevelItem(i)->text(3) == invNo)
            list(w)->topLevelItem(i)->setCheckState(0, Qt::Checked);
}

} // namespace

class DebtorsTest : public QObject
{
    Q_OBJECT
private slots:
    void ageing_data();
    void ageing();
    void rowsAndTotals();
    void nullInTheCustomerEndsTheProgram();
    void selectionAndSort_data();
    void selectionAndSort();
    void viewOpensTheInvoiceAndReloads();
    void startUpChoice();
    void letters_data();
    void letters();
    void unreadableLogoEndsTheProgram();
};

void DebtorsTest::ageing_data()
{
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QString>("balance");
    QTest::addColumn<int>("period"); // -1: no row and no total
    auto day = [](int age) { return QDateTime(Today.addDays(-age), QTime(0, 0)); };
    auto noon = [](int age) { return QDateTime(Today.addDays(-age), QTime(12, 0)); };
    QTest::newRow("today") << day(0) << "12.5" << 0;
    QTest::newRow("day 29") << day(29) << "12.5" << 0;
    QTest::newRow("day 30") << day(30) << "12.5" << -1;
    QTest::newRow("day 31") << day(31) << "12.5" << 1;
    QTest::newRow("day 59") << day(59) << "12.5" << 1;
    QTest::newRow("day 60") << day(60) << "12.5" << -1;
    QTest::newRow("day 61") << day(61) << "12.5" << 2;
    QTest::newRow("tomorrow") << day(-1) << "12.5" << -1;
    // A time of day: 29.5 days rounds to 30, 28.5 to 28, 59.5 to 60, 60.5 to 60.
    QTest::newRow("29.5 days") << noon(30) << "12.5" << -1;
    QTest::newRow("28.5 days") << noon(29) << "12.5" << 0;
    QTest::newRow("59.5 days") << noon(60) << "12.5" << -1;
    QTest::newRow("60.5 days") << noon(61) << "12.5" << -1;
    QTest::newRow("paid") << day(3) << "0" << -1;
    QTest::newRow("credit") << day(3) << "-4" << -1;
}

void DebtorsTest::ageing()
{
    QFETCH(QDateTime, date);
    QFETCH(QString, balance);
    QFETCH(int, period);
    TestUi ui;
    auto main = startProgram(ui, {});
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"));
    addInvoice(QStringLiteral("INV1"), QStringLiteral("C1"), date, balance);
    frmDebtor w;
    QStringList amounts{Zero, Zero, Zero};
    if (period >= 0)
        amounts[period] = QStringLiteral("     12.50");
    const QStringList rows = listRows(list(w));
    QCOMPARE(rows, period < 0 ? QStringList()
                              : QStringList{"C1 | Smith, Jo | 0123 C1 | INV1 | " + amounts.join(" | ") + " |  | 0"});
    // An invoice that makes no row counts in no total, but the totals are written.
    QCOMPARE((QStringList{text(w, "total30"), text(w, "total60"), text(w, "Total61"), text(w, "TotalG")}),
             amounts + QStringList{period < 0 ? Zero : QStringLiteral("     12.50")});
    VERIFY_UI(ui);
}

void DebtorsTest::rowsAndTotals()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    {
        // No invoices at all: the period totals stay blank.
        frmDebtor w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Aged Debtors"));
        QCOMPARE((QStringList{text(w, "total30"), text(w, "total60"), text(w, "Total61"), text(w, "TotalG")}),
                 (QStringList{"", "", "", Zero}));
    }
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"));
    addCustomer(QStringLiteral("C2"), QStringLiteral("Al"), QStringLiteral("Brown"));
    addInvoice(QStringLiteral("A1"), QStringLiteral("C1"), Today.addDays(-2), QStringLiteral("100.005"),
               {{"Notes", QStringLiteral("call first")}, {"ReminderSent", 2}});
    addInvoice(QStringLiteral("A2"), QStringLiteral("C2"), Today.addDays(-40), QStringLiteral("1234567.1"));
    addInvoice(QStringLiteral("A3"), QStringLiteral("C1"), Today.addDays(-45), QStringLiteral("0.4"),
               {{"ReminderSent", Value()}});
    // The customer is gone, or its number differs in case: counted, not shown.
    addInvoice(QStringLiteral("A4"), QStringLiteral("C9"), Today.addDays(-70), QStringLiteral("7"));
    addInvoice(QStringLiteral("A5"), QStringLiteral("c1"), Today.addDays(-5), QStringLiteral("1"));
    addInvoice(QStringLiteral("A6"), QStringLiteral("C1"), Today.addDays(-90), QStringLiteral("9000000"));
    frmDebtor w;
    QStringList headings;
    for (int i = 0; i < list(w)->columnCount(); ++i)
        headings << list(w)->headerItem()->text(i);
    QCOMPARE(headings, (QStringList{"Cust ID", "Customer", "Phone No.", "Inv No", "0-30 Days", "31-60 Days", "61+ Days",
                                    "Notes", "Reminders"}));
    // Three invoices of one customer make three rows, in table order.
    QCOMPARE(listRows(list(w)),
             (QStringList{
                 "C1 | Smith, Jo | 0123 C1 | A1 |     100.01 | " + Zero + " | " + Zero + " | call first | 2",
                 "C2 | Brown, Al | 0123 C2 | A2 | " + Zero + " | 1234567.10 | " + Zero + " |  | 0",
                 "C1 | Smith, Jo | 0123 C1 | A3 | " + Zero + " |       0.40 | " + Zero + " |  | 0",
                 "C1 | Smith, Jo | 0123 C1 | A6 | " + Zero + " | " + Zero + " | 9000000.00 |  | 0",
             }));
    QCOMPARE(list(w)->topLevelItem(0)->checkState(0), Qt::Unchecked);
    // The grand total adds the texts shown, and its eight digits lose their left end.
    QCOMPARE(text(w, "total30"), QStringLiteral("    101.01"));
    QCOMPARE(text(w, "total60"), QStringLiteral("1234567.50"));
    QCOMPARE(text(w, "Total61"), QStringLiteral("9000007.00"));
    QCOMPARE(text(w, "TotalG"), QStringLiteral("0234675.51"));
    VERIFY_UI(ui);
}

void DebtorsTest::nullInTheCustomerEndsTheProgram()
{
    for (const char* column : {"Phone", "LastName", "FirstName"}) {
        TestUi ui;
        auto main = startProgram(ui, {});
        QMap<QString, Value> c{{"CustID", "C1"}, {"FirstName", "Jo"}, {"LastName", "Smith"}, {"Phone", "1"}};
        c.remove(QLatin1String(column));
        addRow(QStringLiteral("Customers"), c);
        // Owing nothing, the customer is never read.
        addInvoice(QStringLiteral("A0"), QStringLiteral("C1"), Today, QStringLiteral("0"));
        QVERIFY(!endsProgram([] { frmDebtor w; }));
        addInvoice(QStringLiteral("A1"), QStringLiteral("C1"), Today, QStringLiteral("5"));
        ui.expectBox(
            QStringLiteral("Error Message"),
            errorMessageText(94, QStringLiteral("frmDebtor"), QStringLiteral("Load_list"), standardErrorText(94)));
        QVERIFY(endsProgram([] { frmDebtor w; }));
        VERIFY_UI(ui);
    }
}

void DebtorsTest::selectionAndSort_data()
{
    QTest::addColumn<QString>("byHand");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QStringList>("ticked");
    // B4 owes 0.001, which shows as 0.00 and so is in no period for the buttons.
    QTest::newRow("30 Days") << "" << QStringList{"Select7_cmd"} << QStringList{"B1"};
    QTest::newRow("then 30 -60 Days") << "" << QStringList{"Select7_cmd", "Select14"} << QStringList{"B1", "B2"};
    QTest::newRow("61+ Days keeps a hand tick") << "B1" << QStringList{"Select30"} << QStringList{"B1", "B3"};
    QTest::newRow("Select All") << "" << QStringList{"All_cmd"} << QStringList{"B1", "B2", "B3", "B4"};
    QTest::newRow("Unselect All") << "B2" << QStringList{"All_cmd", "Unselect_all"} << QStringList{};
}

void DebtorsTest::selectionAndSort()
{
    QFETCH(QString, byHand);
    QFETCH(QStringList, buttons);
    QFETCH(QStringList, ticked);
    TestUi ui;
    auto main = startProgram(ui, {});
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"));
    addInvoice(QStringLiteral("B1"), QStringLiteral("C1"), Today.addDays(-1), QStringLiteral("9"));
    addInvoice(QStringLiteral("B2"), QStringLiteral("C1"), Today.addDays(-35), QStringLiteral("100"));
    addInvoice(QStringLiteral("B3"), QStringLiteral("C1"), Today.addDays(-80), QStringLiteral("20"));
    addInvoice(QStringLiteral("B4"), QStringLiteral("C1"), Today.addDays(-10), QStringLiteral("0.001"));
    frmDebtor w;
    QCOMPARE(child<QPushButton>(w, QStringLiteral("Select14"))->text(), QStringLiteral("30 -60 Days"));
    tick(w, byHand);
    for (const QString& b : buttons)
        click(w, b);
    QCOMPARE(::ticked(w), ticked);
    if (ticked.isEmpty()) {
        ui.expectBox(QStringLiteral("No Records"), QStringLiteral("No letters to print."), vbOK, vbExclamation);
        trigger(w, 3);
        QVERIFY(child<QGroupBox>(w, QStringLiteral("Letter_frame"))->isHidden());
    }

    // Amounts sort by value through their blanks; the first click is descending.
    list(w)->header()->sectionClicked(4);
    QCOMPARE(headingMark(list(w), 4), QStringLiteral("key1"));
    QCOMPARE(list(w)->topLevelItem(0)->text(3), QStringLiteral("B1"));
    list(w)->header()->sectionClicked(5);
    QCOMPARE(headingMark(list(w), 5), QStringLiteral("key2"));
    QCOMPARE(headingMark(list(w), 4), QString());
    QCOMPARE(list(w)->topLevelItem(3)->text(3), QStringLiteral("B2"));
    QCOMPARE(::ticked(w).size(), ticked.size()); // the ticks go with their rows
    VERIFY_UI(ui);
}

void DebtorsTest::viewOpensTheInvoiceAndReloads()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"));
    addInvoice(QStringLiteral("V1"), QStringLiteral("C1"), Today.addDays(-1), QStringLiteral("9"));
    addInvoice(QStringLiteral("V2"), QStringLiteral("C1"), Today.addDays(-2), QStringLiteral("8"));
    ui.onModal(QStringLiteral("frmDebtor"), [&](QDialog& w) {
        // Sorted by number, descending: V2 stands first and is opened.
        list(w)->header()->sectionClicked(3);
        list(w)->setCurrentItem(list(w)->topLevelItem(0));
        tick(w, QStringLiteral("V1"));
        ui.onModal(QStringLiteral("frmAddInv"), [&](QDialog&) {
            [&] {
                QCOMPARE(OpenInvoiceNo, QStringLiteral("V2"));
                QCOMPARE(EditInvoiceMode, qint16(1));
            }();
            // Paid in the invoice window: the list shows it no more.
            Recordset rs;
            rs.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockPessimistic);
            rs.setIndex(QStringLiteral("INVNO"));
            rs.seek(QStringLiteral("V2"));
            rs.setField(QStringLiteral("Balance"), Currency());
            rs.update();
            return 0;
        });
        trigger(w, 1);
        [&] {
            QCOMPARE(listRows(list(w)).size(), 1);
            QCOMPARE(::ticked(w), QStringList());
            QCOMPARE(text(w, "total30"), QStringLiteral("      9.00"));
        }();
        // A double click opens the selected row the same way.
        ui.onModal(QStringLiteral("frmAddInv"), [&](QDialog&) {
            [&] { QCOMPARE(OpenInvoiceNo, QStringLiteral("V1")); }();
            return 0;
        });
        emit list(w)->itemDoubleClicked(list(w)->topLevelItem(0), 0);
        ui.onModal(QStringLiteral("Help_frm"), [](QDialog&) { return 0; });
        trigger(w, 5);
        [&] { QCOMPARE(HelpTopic.trimmed(), QStringLiteral("debtors.htm")); }();
        click(w, QStringLiteral("Command1"));
        return 0;
    });
    trigger(*main, 9);
    VERIFY_UI(ui);
}

void DebtorsTest::startUpChoice()
{
    TestUi ui;
    // Opened by itself at the first coming to the front; the choice is cleared there.
    ui.onModal(QStringLiteral("frmDebtor"), [&](QDialog& w) {
        auto* check = child<QCheckBox>(w, QStringLiteral("debtor_chk"));
        [&] {
            QCOMPARE(check->text(), QStringLiteral("Show Debtors at Startup"));
            QVERIFY(check->isChecked());
        }();
        check->setChecked(false);
        w.reject(); // the window's own close button
        return 0;
    });
    auto main = startProgram(ui, {{"Debtorstart", QStringLiteral("1")}});
    VERIFY_UI(ui);
    QCOMPARE(settings.Debtorstart, qint16(0));
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("Debtorstart")), QStringList{"0"});
    // Another window closing later does not bring it back.
    ui.onModal(QStringLiteral("frm_Parts"), [](QDialog&) { return 0; });
    child<QAction>(*main, QStringLiteral("Toolbar1(11)"))->trigger();
    VERIFY_UI(ui);

    // Ticked again from the toolbar: stored at once, and the next start opens it once.
    ui.onModal(QStringLiteral("frmDebtor"), [&](QDialog& w) {
        child<QCheckBox>(w, QStringLiteral("debtor_chk"))->setChecked(true);
        click(w, QStringLiteral("Command1"));
        return 0;
    });
    trigger(*main, 9);
    QCOMPARE(settings.Debtorstart, qint16(1));
    main.reset();
    resetGlobals();
    ui.onModal(QStringLiteral("frmDebtor"), [](QDialog& w) {
        w.accept();
        return 0;
    });
    frmMain again;
    again.MDIForm_Load();
    activate(&again);
    activate(&again);
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("Debtorstart")), QStringList{"1"});
    VERIFY_UI(ui);
}

void DebtorsTest::letters_data()
{
    QTest::addColumn<int>("paper");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QStringList>("address");
    QTest::addColumn<QString>("block");
    QTest::newRow("A4, all parts, Yes") << int(vbPRPSA4) << int(vbYes)
                                        << QStringList{"1 High St", "Hill", "York", "Yorks", "YO1"}
                                        << "1 High St\r\nHill\r\nYork\r\nYorks\r\nYO1";
    QTest::newRow("Letter, city and postcode, No")
        << int(vbPRPSLetter) << int(vbNo) << QStringList{"", "", "York", "", "YO1"} << "\r\nYork\r\nYO1";
    QTest::newRow("A4, street only, Yes")
        << int(vbPRPSA4) << int(vbYes) << QStringList{"1 High St", "", "", "", ""} << "1 High St";
}

void DebtorsTest::letters()
{
    QFETCH(int, paper);
    QFETCH(int, answer);
    QFETCH(QStringList, address);
    QFETCH(QString, block);
    TestUi ui;
    ui.paper = paper;
    auto main = startProgram(ui, {{"BusinessName", QStringLiteral("Acme Ltd")},
                                  {"Address", QStringLiteral("1 Mill Lane\r\nLeeds")},
                                  {"Phone", QStringLiteral("0113 496 0000")},
                                  {"Reminder1", QStringLiteral("First reminder.")},
                                  {"Reminder2", QStringLiteral("Second reminder.")},
                                  {"Reminder3", QStringLiteral("Final reminder.")}});
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"), address);
    addCustomer(QStringLiteral("C2"), QStringLiteral("Al"), QStringLiteral("Brown"), {"2 Low Rd", "", "", "", ""});
    addInvoice(QStringLiteral("L1"), QStringLiteral("C1"), QDate(2026, 11, 1), QStringLiteral("90"),
               {{"ReminderSent", 1}});
    addInvoice(QStringLiteral("L2"), QStringLiteral("C2"), QDate(2026, 9, 1), QStringLiteral("25.5"));
    addInvoice(QStringLiteral("L3"), QStringLiteral("C1"), QDate(2026, 8, 1), QStringLiteral("40"));
    addRow(QStringLiteral("Letters"), {{"CustID", "OLD"}}); // from an earlier run
    {
        frmDebtor w;
        auto* frame = child<QGroupBox>(w, QStringLiteral("Letter_frame"));
        QVERIFY(frame->isHidden());
        // Three letters, in the order shown: sorted by number, descending.
        list(w)->header()->sectionClicked(3);
        for (const char* no : {"L1", "L2", "L3"})
            tick(w, QLatin1String(no));
        trigger(w, 3);
        QVERIFY(!frame->isHidden());
        QCOMPARE(frame->title(), QStringLiteral("Letter Setup"));
        QVERIFY(!list(w)->isEnabled());
        QVERIFY(!child<QPushButton>(w, QStringLiteral("Command1"))->isEnabled());
        QVERIFY(child<QRadioButton>(w, QStringLiteral("Option1"))->isChecked());
        QCOMPARE(child<MemoBox>(w, QStringLiteral("Reminder3"))->text(), QStringLiteral("Final reminder."));
        QCOMPARE(child<QLineEdit>(w, QStringLiteral("Signed_txt"))->text(),
                 QStringLiteral("Acme Ltd").leftJustified(30));
        // This visit only: the second reminder changed, and the signature.
        child<MemoBox>(w, QStringLiteral("Reminder2"))->setText(QStringLiteral("Please pay now."));
        child<QRadioButton>(w, QStringLiteral("Option2"))->setChecked(true);
        child<QLineEdit>(w, QStringLiteral("Signed_txt"))->setText(QStringLiteral("A. Manager"));
        ui.expectBox(QStringLiteral("Update Reminders Sent"), UpdateQuestion, answer, vbYesNo + vbQuestion);
        click(w, QStringLiteral("OK_cmd"));
        QVERIFY(frame->isHidden());
        QVERIFY(list(w)->isEnabled());
        // Yes counts one more on each ticked invoice and reloads without ticks.
        const bool yes = answer == vbYes;
        QCOMPARE(::ticked(w), yes ? QStringList() : (QStringList{"L3", "L2", "L1"}));
        QCOMPARE(list(w)->topLevelItem(2)->text(8), yes ? QStringLiteral("2") : QStringLiteral("1"));
        QCOMPARE(columnValues(QStringLiteral("Invoices"), QStringLiteral("ReminderSent")),
                 yes ? (QStringList{"2", "1", "1"}) : (QStringList{"1", "0", "0"}));
    }
    // One row a letter in the order shown; the earlier run's row is gone.
    QStringList letters;
    for (const char* column : {"InvNo", "FirstName", "Address", "Balance", "Paid"})
        letters << columnValues(QStringLiteral("Letters"), QLatin1String(column)).join(" | ");
    QCOMPARE(letters, (QStringList{"L3 | L2 | L1", "Jo Smith | Al Brown | Jo Smith", block + " | 2 Low Rd | " + block,
                                   "40 | 25.5 | 90", "10 | 10 | 10"}));
    // One page a letter, on the printer's paper.
    QCOMPARE(ui.reports.size(), 1);
    const PdfInfo info = pdfInfo(ui.reports[0].pdf);
    QCOMPARE(info.pages, 3);
    QCOMPARE(info.pageSize, paper == vbPRPSA4 ? QSizeF(595, 842) : QSizeF(612, 792));
    const QStringList pages = pdfText(ui.reports[0].pdf).split('\f', Qt::SkipEmptyParts);
    QCOMPARE(pages[0].simplified(), "Acme Ltd 1 Mill Lane Leeds 0113 496 0000 22/11/2026 Jo Smith " +
                                        address.join(' ').simplified() +
                                        " Dear Jo Smith Invoice No: L3 Inv Date: 01/08/2026 Amount: 50.00 "
                                        "Balance: 40.00 Please pay now. Yours Sincerely A. Manager");
    QVERIFY(pages[1].simplified().contains(QStringLiteral("Dear Al Brown")));
    QVERIFY(pages[2].simplified().contains(QStringLiteral("Balance: 90.00")));
    VERIFY_UI(ui);

    // The changed text served that visit only.
    frmDebtor again;
    QCOMPARE(child<MemoBox>(again, QStringLiteral("Reminder2"))->text(), QStringLiteral("Second reminder."));
}

void DebtorsTest::unreadableLogoEndsTheProgram()
{
    TestUi ui;
    auto main = startProgram(ui, {{"logopath", QStringLiteral("/nowhere/logo.jpg")}});
    addCustomer(QStringLiteral("C1"), QStringLiteral("Jo"), QStringLiteral("Smith"));
    addInvoice(QStringLiteral("L1"), QStringLiteral("C1"), Today, QStringLiteral("9"));
    frmDebtor w;
    click(w, QStringLiteral("All_cmd"));
    trigger(w, 3);
    ui.expectBox(QStringLiteral("Error Message"),
                 errorMessageText(53, QStringLiteral("frmDebtor"), QStringLiteral("Print_cmd"), standardErrorText(53)));
    QVERIFY(endsProgram([&] { click(w, QStringLiteral("OK_cmd")); }));
    // The letters were written before the failure and stay.
    QCOMPARE(columnValues(QStringLiteral("Letters"), QStringLiteral("InvNo")), QStringList{"L1"});
    VERIFY_UI(ui);
}

VELK_TEST(DebtorsTest)
#include "tst_debtors.moc"
