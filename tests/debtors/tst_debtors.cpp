// The aged debtor list and the reminder letters, driven as a user would.

#include "TestUi.h"

#include "debtors/frmDebtor.h"
#include "platform/MemoBox.h"
#include "shell/frmMain.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListModel.h"
#include "store/ListView.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace platform;

namespace
{

const QDate Today(2026, 11, 22); // the test clock's
const QString Zero = "      0.00";

void addCustomer(const QString& id, const QString& first, const QString& last, const QStringList& address = {})
{
    QMap<QString, Value> row{{"CustID", id}, {"FirstName", first}, {"LastName", last}, {"Phone", "0123 " + id}};
    const char* parts[] = {"Address", "Address2", "City", "address4", "Postcode"};
    for (int i = 0; i < address.size(); ++i)
        row.insert(QLatin1String(parts[i]), address[i]);
    addRow("Customers", row);
}

void addInvoice(const QString& no, const QString& cust, const Value& date, const QString& balance,
                QMap<QString, Value> row = {})
{
    const Currency owed = Currency::fromText(balance), paid = Currency::fromText("10");
    row.insert(QMap<QString, Value>{
        {"InvNo", no}, {"CustNo", cust}, {"Date", date}, {"Total", owed + paid}, {"Paid", paid}, {"Balance", owed}});
    addRow("Invoices", row);
}

ListView* list(QWidget& w)
{
    return child<ListView>(w, "debtor_lst");
}

// The three period totals and the grand total.
QStringList totals(QWidget& w)
{
    return texts(w, {"total30", "total60", "Total61", "TotalG"});
}

// Ticks the rows of the invoices given; returns the invoice numbers of the ticked rows in display order.
QStringList tick(QWidget& w, const QStringList& invoices = {})
{
    QStringList out;
    ListModel* rows = list(w)->rows();
    for (int i = 0; i < rows->count(); ++i) {
        if (invoices.contains(rows->text(i, 3)))
            rows->setData(rows->index(i, 0), Qt::Checked, Qt::CheckStateRole); // as a click on the box does
        if (rows->checkState(i) == Qt::Checked)
            out << rows->text(i, 3);
    }
    return out;
}

} // namespace

class DebtorsTest : public QObject
{
    Q_OBJECT
private slots:
    void ageing()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addCustomer("C1", "Jo", "Smith");
        // Each invoice is numbered "age in days|balance|period", period -1 for no row and no total. A half day is
        // an invoice of noon: 29.5 days rounds to 30, 28.5 to 28, 59.5 to 60, 60.5 to 60. Age -1 is tomorrow.
        QStringList shown;
        for (const QString no :
             {"0|12.5|0", "29|12.5|0", "30|12.5|-1", "31|12.5|1", "59|12.5|1", "60|12.5|-1", "61|12.5|2", "-1|12.5|-1",
              "29.5|12.5|-1", "28.5|12.5|0", "59.5|12.5|-1", "60.5|12.5|-1", "3|0|-1", "3|-4|-1"}) {
            const QStringList f = no.split('|');
            const double age = f[0].toDouble();
            addInvoice(no, "C1",
                       QDateTime(Today.addDays(-int(std::ceil(age))), QTime(age == std::floor(age) ? 0 : 12, 0)), f[1]);
            QStringList amounts{Zero, Zero, Zero};
            if (f[2] != "-1") {
                amounts[f[2].toInt()] = "     12.50";
                shown << "C1 | Smith, Jo | 0123 C1 | " + no + " | " + amounts.join(" | ") + " |  | 0";
            }
        }
        frmDebtor w;
        QCOMPARE(listRows(list(w)), shown);
        // Invoices that make no row count in no total.
        QCOMPARE(totals(w), (QStringList{"     37.50", "     25.00", "     12.50", "     75.00"}));
        VERIFY_UI(ui);
    }

    void rowsAndTotals()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        frmDebtor empty; // no invoices at all: the period totals stay blank
        QCOMPARE(totals(empty), (QStringList{"", "", "", Zero}));
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
        // One row an invoice, in table order.
        QCOMPARE(listRows(list(w)),
                 (QStringList{
                     "C1 | Smith, Jo | 0123 C1 | A1 |     100.01 | " + Zero + " | " + Zero + " | call first | 2",
                     "C2 | Brown, Al | 0123 C2 | A2 | " + Zero + " | 1234567.10 | " + Zero + " |  | 0",
                     "C1 | Smith, Jo | 0123 C1 | A3 | " + Zero + " |       0.40 | " + Zero + " |  | 0",
                     "C1 | Smith, Jo | 0123 C1 | A6 | " + Zero + " | " + Zero + " | 9000000.00 |  | 0",
                 }));
        // The grand total adds the texts shown, and its eight digits lose their left end.
        QCOMPARE(totals(w), (QStringList{"    101.01", "1234567.50", "9000007.00", "0234675.51"}));
        VERIFY_UI(ui);
    }

    // A Null in a listed field of an owing customer, or a logo that cannot be read, ends the program.
    void failuresEndTheProgram()
    {
        for (const char* column : {"Phone", "LastName", "FirstName"}) {
            TestUi ui;
            auto main = startProgram(ui, {});
            QMap<QString, Value> c{{"CustID", "C1"}, {"FirstName", "Jo"}, {"LastName", "Smith"}, {"Phone", "1"}};
            c.remove(QLatin1String(column));
            addRow("Customers", c);
            addInvoice("A0", "C1", Today, "0"); // owing nothing, the customer is never read
            QVERIFY2(!endsProgram([] { frmDebtor w; }), column);
            addInvoice("A1", "C1", Today, "5");
            ui.expectBox("Error Message", errorMessageText(94, "frmDebtor", "Load_list", standardErrorText(94)));
            QVERIFY2(endsProgram([] { frmDebtor w; }), column);
            VERIFY_UI(ui);
        }
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

    void selectionAndView()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addCustomer("C1", "Jo", "Smith");
        addInvoice("B1", "C1", Today.addDays(-1), "9");
        addInvoice("B2", "C1", Today.addDays(-35), "100");
        addInvoice("B3", "C1", Today.addDays(-80), "20");
        addInvoice("B4", "C1", Today.addDays(-10), "0.001"); // shows 0.00: in no period for the buttons
        frmDebtor w;
        // Ticked by hand, the buttons pressed, the rows ticked then.
        const QStringList rows[][3] = {{{}, {"Select7_cmd"}, {"B1"}},
                                       {{}, {"Select7_cmd", "Select14"}, {"B1", "B2"}},
                                       {{"B1"}, {"Select30"}, {"B1", "B3"}},
                                       {{}, {"All_cmd"}, {"B1", "B2", "B3", "B4"}},
                                       {{"B2"}, {"All_cmd", "Unselect_all"}, {}}};
        for (const auto& [byHand, buttons, ticked] : rows) {
            click(w, "Unselect_all");
            tick(w, byHand);
            for (const QString& b : buttons)
                click(w, qPrintable(b));
            QCOMPARE(tick(w), ticked);
        }
        ui.expectBox("No Records", "No letters to print.", vbOK, vbExclamation);
        trigger(w, 3);
        QVERIFY(child<QGroupBox>(w, "Letter_frame")->isHidden());
        // View opens the selected row's invoice, here sorted by number: B4 stands first.
        list(w)->header()->sectionClicked(3);
        list(w)->selectRow(0);
        tick(w, {"B1"});
        ui.onModal("frmAddInv", [&](QDialog&) {
            [&] { QCOMPARE(OpenInvoiceNo, "B4"); }();
            // Paid in the invoice window: the list, reloaded, shows it no more and loses its ticks.
            Database::open(ui.file("data.mdb"))->exec("UPDATE Invoices SET Balance = 0 WHERE InvNo = 'B4'");
            return 0;
        });
        trigger(w, 1);
        QCOMPARE(listRows(list(w)).size(), 3);
        QCOMPARE(tick(w), QStringList());
        VERIFY_UI(ui);
    }

    // Opened by itself at start-up when chosen; the choice is stored on every closing.
    void startUpChoice()
    {
        TestUi ui;
        auto close = [&](bool on) {
            ui.onModal("frmDebtor", [on](QDialog& w) {
                child<QCheckBox>(w, "debtor_chk")->setChecked(on);
                on ? click(w, "Command1") : w.reject(); // Exit, or the window's own close button
                return 0;
            });
        };
        close(false);
        auto main = startProgram(ui, {{"Debtorstart", "1"}});
        QCOMPARE(columnValues("System", "Debtorstart"), QStringList{"0"});
        close(true);
        trigger(*main, 9);
        QCOMPARE(columnValues("System", "Debtorstart"), QStringList{"1"});
        VERIFY_UI(ui);
    }

    // On A4 with Yes to counting the reminders, and on Letter with No.
    void letters_data()
    {
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("answer");
        QTest::newRow("A4, counted") << int(vbPRPSA4) << int(vbYes);
        QTest::newRow("Letter, not counted") << int(vbPRPSLetter) << int(vbNo);
    }

    void letters()
    {
        QFETCH(int, paper);
        QFETCH(int, answer);
        TestUi ui;
        ui.paper = paper;
        auto main = startProgram(ui, {{"BusinessName", "Acme Ltd"},
                                      {"Address", "1 Mill Lane\r\nLeeds"},
                                      {"Phone", "0113 496 0000"},
                                      {"Reminder2", "Second reminder."}});
        addCustomer("C1", "Jo", "Smith", {"1 High St", "Hill", "York", "Yorks", "YO1"});
        addCustomer("C2", "Al", "Brown", {"", "", "York", "", "YO1"});
        addCustomer("C3", "Ed", "Cole", {"1 Low Rd", "", "", "", ""});
        addInvoice("L1", "C3", QDate(2026, 11, 1), "90", {{"ReminderSent", 1}});
        addInvoice("L2", "C2", QDate(2026, 9, 1), "25.5");
        addInvoice("L3", "C1", QDate(2026, 8, 1), "40");
        addRow("Letters", {{"CustID", "OLD"}}); // from an earlier run
        {
            frmDebtor w;
            // Three letters, in the order shown: sorted by number, descending.
            list(w)->header()->sectionClicked(3);
            tick(w, {"L1", "L2", "L3"});
            trigger(w, 3);
            QVERIFY(!list(w)->isEnabled());
            // This visit only: the second reminder changed, and the signature.
            child<MemoBox>(w, "Reminder2")->setText("Please pay now.");
            child<QRadioButton>(w, "Option2")->setChecked(true);
            child<QLineEdit>(w, "Signed_txt")->setText("A. Manager");
            ui.expectBox("Update Reminders Sent",
                         "Do you want to update the amount of reminders sent for the invoices selected?", answer,
                         vbYesNo + vbQuestion);
            click(w, "OK_cmd");
            QVERIFY(list(w)->isEnabled());
            // Yes counts one more on each ticked invoice and reloads without ticks.
            const bool yes = answer == vbYes;
            QCOMPARE(tick(w), yes ? QStringList() : (QStringList{"L3", "L2", "L1"}));
            QCOMPARE(columnValues("Invoices", "ReminderSent"),
                     yes ? (QStringList{"2", "1", "1"}) : (QStringList{"1", "0", "0"}));
        }
        QStringList letters; // one row a letter in the order shown; the earlier run's row is gone
        for (const char* column : {"InvNo", "FirstName", "Address", "Balance", "Paid"})
            letters << columnValues("Letters", QLatin1String(column)).join(" | ");
        QCOMPARE(letters, (QStringList{"L3 | L2 | L1", "Jo Smith | Al Brown | Ed Cole",
                                       "1 High St\r\nHill\r\nYork\r\nYorks\r\nYO1 | \r\nYork\r\nYO1 | 1 Low Rd",
                                       "40 | 25.5 | 90", "10 | 10 | 10"}));
        // One page a letter, on the printer's paper.
        QCOMPARE(ui.reports.size(), 1);
        const PdfInfo info = pdfInfo(ui.reports[0].pdf);
        QCOMPARE(info.pages, 3);
        QCOMPARE(info.pageSize, paper == vbPRPSA4 ? QSizeF(595, 842) : QSizeF(612, 792));
        const QStringList pages = pdfText(ui.reports[0].pdf).split('\f', Qt::SkipEmptyParts);
        QCOMPARE(pages[0].simplified(), "Acme Ltd 1 Mill Lane Leeds 0113 496 0000 22/11/2026 Jo Smith 1 High St Hill "
                                        "York Yorks YO1 Dear Jo Smith Invoice No: L3 Inv Date: 01/08/2026 "
                                        "Amount: 50.00 Balance: 40.00 Please pay now. Yours Sincerely A. Manager");
        QVERIFY(pages[1].simplified().contains("Al Brown York YO1 Dear Al Brown"));
        QVERIFY(pages[2].simplified().contains("Ed Cole 1 Low Rd Dear Ed Cole Invoice No: L1"));
        VERIFY_UI(ui);
        frmDebtor again; // the changed text served that visit only
        QCOMPARE(child<MemoBox>(again, "Reminder2")->text(), "Second reminder.");
    }
};

VELK_TEST(DebtorsTest)
#include "tst_debtors.moc"
