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
const QString Zero = "      0.00";
const QString UpdateQuestion = "Do you want to update the amount of reminders sent for the invoices selected?";

void addCustomer(const QString& id, const QString& first, const QString& last, const QStringList& address = {})
{
    QMap<QString, Value> row{{"CustID", id}, {"FirstName", first}, {"LastName", last}, {"Phone", "0123 " + id}};
    const char* parts[] = {"Address", "Address2", "City", "address4", "Postcode"};
    for (int i = 0; i < address.size(); ++i)
        row.insert(QLatin1String(parts[i]), address[i]);
    addRow("Customers", row);
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
    addRow("Invoices", row);
}

QTreeWidget* list(QWidget& w)
{
    return child<QTreeWidget>(w, "debtor_lst");
}

QString text(QWidget& w, const char* label)
{
    return child<QLabel>(w, QLatin1String(label))->text();
}

// The three period totals and the grand total.
QStringList totals(QWidget& w)
{
    return {text(w, "total30"), text(w, "total60"), text(w, "Total61"), text(w, "TotalG")};
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
    // Rows "age in days|balance|period"; a half day is an invoice of noon: 29.5 days
    // rounds to 30, 28.5 to 28, 59.5 to 60, 60.5 to 60. Age -1 is tomorrow.
    for (const QString row :
         {"0|12.5|0", "29|12.5|0", "30|12.5|-1", "31|12.5|1", "59|12.5|1", "60|12.5|-1", "61|12.5|2", "-1|12.5|-1",
          "29.5|12.5|-1", "28.5|12.5|0", "59.5|12.5|-1", "60.5|12.5|-1", "3|0|-1", "3|-4|-1"}) {
        const QStringList f = row.split('|');
        const double age = f[0].toDouble();
        const QDateTime date(Today.addDays(-int(std::ceil(age))), QTime(age == std::floor(age) ? 0 : 12, 0));
        QTest::newRow(qPrintable(row)) << date << f[1] << f[2].toInt();
    }
}

void DebtorsTest::ageing()
{
    QFETCH(QDateTime, date);
    QFETCH(QString, balance);
    QFETCH(int, period);
    TestUi ui;
    auto main = startProgram(ui, {});
    addCustomer("C1", "Jo", "Smith");
    addInvoice("INV1", "C1", date, balance);
    frmDebtor w;
    QStringList amounts{Zero, Zero, Zero};
    if (period >= 0)
        amounts[period] = "     12.50";
    QCOMPARE(listRows(list(w)),
             period < 0 ? QStringList()
                        : QStringList{"C1 | Smith, Jo | 0123 C1 | INV1 | " + amounts.join(" | ") + " |  | 0"});
    // An invoice that makes no row counts in no total, but the totals are written.
    QCOMPARE(totals(w), amounts + QStringList{period < 0 ? Zero : "     12.50"});
    VERIFY_UI(ui);
}

void DebtorsTest::rowsAndTotals()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    {
        // No invoices at all: the period totals stay blank.
        frmDebtor w;
        QCOMPARE(totals(w), (QStringList{"", "", "", Zero}));
    }
    addCustomer("C1", "Jo", "Smith");
    addCustomer("C2", "Al", "Brown");
    addInvoice("A1", "C1", Today.addDays(-2), "100.005", {{"Notes", "call first"}, {"ReminderSent", 2}});
    addInvoice("A2", "C2", Today.addDays(-40), "1234567.1");
    addInvoice("A3", "C1", Today.addDays(-45), "0.4", {{"ReminderSent", Value()}});
    // The customer is gone, or its number differs in case: counted, not shown.
    addInvoice("A4", "C9", Today.addDays(-70), "7");
    addInvoice("A5", "c1", Today.addDays(-5), "1");
    addInvoice("A6", "C1", Today.addDays(-90), "9000000");
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
    QCOMPARE(totals(w), (QStringList{"    101.01", "1234567.50", "9000007.00", "0234675.51"}));
    VERIFY_UI(ui);
}

void DebtorsTest::nullInTheCustomerEndsTheProgram()
{
    for (const char* column : {"Phone", "LastName", "FirstName"}) {
        TestUi ui;
        auto main = startProgram(ui, {});
        QMap<QString, Value> c{{"CustID", "C1"}, {"FirstName", "Jo"}, {"LastName", "Smith"}, {"Phone", "1"}};
        c.remove(QLatin1String(column));
        addRow("Customers", c);
        // Owing nothing, the customer is never read.
        addInvoice("A0", "C1", Today, "0");
        QVERIFY(!endsProgram([] { frmDebtor w; }));
        addInvoice("A1", "C1", Today, "5");
        ui.expectBox("Error Message", errorMessageText(94, "frmDebtor", "Load_list", standardErrorText(94)));
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
    addCustomer("C1", "Jo", "Smith");
    addInvoice("B1", "C1", Today.addDays(-1), "9");
    addInvoice("B2", "C1", Today.addDays(-35), "100");
    addInvoice("B3", "C1", Today.addDays(-80), "20");
    addInvoice("B4", "C1", Today.addDays(-10), "0.001");
    frmDebtor w;
    tick(w, byHand);
    for (const QString& b : buttons)
        click(w, b);
    QCOMPARE(::ticked(w), ticked);
    if (ticked.isEmpty()) {
        ui.expectBox("No Records", "No letters to print.", vbOK, vbExclamation);
        trigger(w, 3);
        QVERIFY(child<QGroupBox>(w, "Letter_frame")->isHidden());
    }

    // Amounts sort by value through their blanks; the first click is descending.
    list(w)->header()->sectionClicked(4);
    QCOMPARE(headingMark(list(w), 4), "key1");
    QCOMPARE(list(w)->topLevelItem(0)->text(3), "B1");
    list(w)->header()->sectionClicked(5);
    QCOMPARE(headingMark(list(w), 5), "key2");
    QCOMPARE(headingMark(list(w), 4), QString());
    QCOMPARE(list(w)->topLevelItem(3)->text(3), "B2");
    QCOMPARE(::ticked(w).size(), ticked.size()); // the ticks go with their rows
    VERIFY_UI(ui);
}

void DebtorsTest::viewOpensTheInvoiceAndReloads()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addCustomer("C1", "Jo", "Smith");
    addInvoice("V1", "C1", Today.addDays(-1), "9");
    addInvoice("V2", "C1", Today.addDays(-2), "8");
    ui.onModal("frmDebtor", [&](QDialog& w) {
        // Sorted by number, descending: V2 stands first and is opened.
        list(w)->header()->sectionClicked(3);
        list(w)->setCurrentItem(list(w)->topLevelItem(0));
        tick(w, "V1");
        ui.onModal("frmAddInv", [&](QDialog&) {
            [&] {
                QCOMPARE(OpenInvoiceNo, "V2");
                QCOMPARE(EditInvoiceMode, qint16(1));
            }();
            // Paid in the invoice window: the list shows it no more.
            Recordset rs;
            rs.open("invoices", ConnectionString, Recordset::adLockPessimistic);
            rs.setIndex("INVNO");
            rs.seek("V2");
            rs.setField("Balance", Currency());
            rs.update();
            return 0;
        });
        trigger(w, 1);
        [&] {
            QCOMPARE(listRows(list(w)).size(), 1);
            QCOMPARE(::ticked(w), QStringList());
            QCOMPARE(text(w, "total30"), "      9.00");
        }();
        // A double click opens the selected row the same way.
        ui.onModal("frmAddInv", [&](QDialog&) {
            [&] { QCOMPARE(OpenInvoiceNo, "V1"); }();
            return 0;
        });
        emit list(w)->itemDoubleClicked(list(w)->topLevelItem(0), 0);
        ui.onModal("Help_frm", [](QDialog&) { return 0; });
        trigger(w, 5);
        [&] { QCOMPARE(HelpTopic.trimmed(), "debtors.htm"); }();
        click(w, "Command1");
        return 0;
    });
    trigger(*main, 9);
    VERIFY_UI(ui);
}

void DebtorsTest::startUpChoice()
{
    TestUi ui;
    // Opened by itself at the first coming to the front; the choice is cleared there.
    ui.onModal("frmDebtor", [&](QDialog& w) {
        auto* check = child<QCheckBox>(w, "debtor_chk");
        [&] { QVERIFY(check->isChecked()); }();
        check->setChecked(false);
        w.reject(); // the window's own close button
        return 0;
    });
    auto main = startProgram(ui, {{"Debtorstart", "1"}});
    VERIFY_UI(ui);
    QCOMPARE(settings.Debtorstart, qint16(0));
    QCOMPARE(columnValues("System", "Debtorstart"), QStringList{"0"});
    // Another window closing later does not bring it back.
    ui.onModal("frm_Parts", [](QDialog&) { return 0; });
    child<QAction>(*main, "Toolbar1(11)")->trigger();
    VERIFY_UI(ui);

    // Ticked again from the toolbar: stored at once, and the next start opens it once.
    ui.onModal("frmDebtor", [&](QDialog& w) {
        child<QCheckBox>(w, "debtor_chk")->setChecked(true);
        click(w, "Command1");
        return 0;
    });
    trigger(*main, 9);
    QCOMPARE(settings.Debtorstart, qint16(1));
    main.reset();
    resetGlobals();
    ui.onModal("frmDebtor", [](QDialog& w) {
        w.accept();
        return 0;
    });
    frmMain again;
    again.MDIForm_Load();
    activate(&again);
    activate(&again);
    QCOMPARE(columnValues("System", "Debtorstart"), QStringList{"1"});
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
    auto main = startProgram(ui, {{"BusinessName", "Acme Ltd"},
                                  {"Address", "1 Mill Lane\r\nLeeds"},
                                  {"Phone", "0113 496 0000"},
                                  {"Reminder1", "First reminder."},
                                  {"Reminder2", "Second reminder."},
                                  {"Reminder3", "Final reminder."}});
    addCustomer("C1", "Jo", "Smith", address);
    addCustomer("C2", "Al", "Brown", {"2 Low Rd", "", "", "", ""});
    addInvoice("L1", "C1", QDate(2026, 11, 1), "90", {{"ReminderSent", 1}});
    addInvoice("L2", "C2", QDate(2026, 9, 1), "25.5");
    addInvoice("L3", "C1", QDate(2026, 8, 1), "40");
    addRow("Letters", {{"CustID", "OLD"}}); // from an earlier run
    {
        frmDebtor w;
        auto* frame = child<QGroupBox>(w, "Letter_frame");
        QVERIFY(frame->isHidden());
        // Three letters, in the order shown: sorted by number, descending.
        list(w)->header()->sectionClicked(3);
        for (const char* no : {"L1", "L2", "L3"})
            tick(w, QLatin1String(no));
        trigger(w, 3);
        QVERIFY(!frame->isHidden() && !list(w)->isEnabled() && !child<QPushButton>(w, "Command1")->isEnabled());
        QVERIFY(child<QRadioButton>(w, "Option1")->isChecked());
        QCOMPARE(child<MemoBox>(w, "Reminder3")->text(), "Final reminder.");
        QCOMPARE(child<QLineEdit>(w, "Signed_txt")->text(), QStringLiteral("Acme Ltd").leftJustified(30));
        // This visit only: the second reminder changed, and the signature.
        child<MemoBox>(w, "Reminder2")->setText("Please pay now.");
        child<QRadioButton>(w, "Option2")->setChecked(true);
        child<QLineEdit>(w, "Signed_txt")->setText("A. Manager");
        ui.expectBox("Update Reminders Sent", UpdateQuestion, answer, vbYesNo + vbQuestion);
        click(w, "OK_cmd");
        QVERIFY(frame->isHidden() && list(w)->isEnabled());
        // Yes counts one more on each ticked invoice and reloads without ticks.
        const bool yes = answer == vbYes;
        QCOMPARE(::ticked(w), yes ? QStringList() : (QStringList{"L3", "L2", "L1"}));
        QCOMPARE(list(w)->topLevelItem(2)->text(8), yes ? "2" : "1");
        QCOMPARE(columnValues("Invoices", "ReminderSent"),
                 yes ? (QStringList{"2", "1", "1"}) : (QStringList{"1", "0", "0"}));
    }
    // One row a letter in the order shown; the earlier run's row is gone.
    QStringList letters;
    for (const char* column : {"InvNo", "FirstName", "Address", "Balance", "Paid"})
        letters << columnValues("Letters", QLatin1String(column)).join(" | ");
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
    QVERIFY(pages[1].simplified().contains("Dear Al Brown"));
    QVERIFY(pages[2].simplified().contains("Balance: 90.00"));
    VERIFY_UI(ui);

    // The changed text served that visit only.
    frmDebtor again;
    QCOMPARE(child<MemoBox>(again, "Reminder2")->text(), "Second reminder.");
}

void DebtorsTest::unreadableLogoEndsTheProgram()
{
    TestUi ui;
    auto main = startProgram(ui, {{"logopath", "/nowhere/logo.jpg"}});
    addCustomer("C1", "Jo", "Smith");
    addInvoice("L1", "C1", Today, "9");
    frmDebtor w;
    click(w, "All_cmd");
    trigger(w, 3);
    ui.expectBox("Error Message", errorMessageText(53, "frmDebtor", "Print_cmd", standardErrorText(53)));
    QVERIFY(endsProgram([&] { click(w, "OK_cmd"); }));
    // The letters were written before the failure and stay.
    QCOMPARE(columnValues("Letters", "InvNo"), QStringList{"L1"});
    VERIFY_UI(ui);
}

VELK_TEST(DebtorsTest)
#include "tst_debtors.moc"
