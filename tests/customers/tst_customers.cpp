// The customer list and the customer record, driven as a user would.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "platform/MemoBox.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListView.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;
using namespace Qt::StringLiterals;

namespace
{

QMap<QString, Value> customer(const QString& id, const QString& last)
{
    return {{"CustID", id},   {"LastName", last}, {"FirstName", "Ann"}, {"Phone", "0123"},      {"Address", QString()},
            {"Address2", ""}, {"City", ""},       {"address4", ""},     {"Postcode", QString()}};
}

const QString Saved = "Customer details have been saved.";
const QString AddInvoice = "Do you want to add an invoice to this customer?";
const QString InUse = "This Customer number has already been used. Please try again!";
const QString InUseTitle = "Customer Number Already In Use";

} // namespace

class CustomersTest : public QObject
{
    Q_OBJECT
private slots:
    void addressJoinedInTheList()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        // Each customer's address parts, and the cell that joins them.
        const QStringList rows[][2] = {
            {{"1 High St", "Hill", "York", "Yorks", "YO1"}, {"1 High St,  Hill,  York,  Yorks,  YO1"}},
            {{"1 High St", "", "York", "", ""}, {"1 High St,  York,  "}}, // an empty postcode leaves a separator
            {{"1 High St ", "  ", "York", "", "YO1"}, {"1 High St ,    York,  YO1"}}, // blanks joined untrimmed
            {{"", "", "", "", ""}, {""}}};
        QStringList shown;
        for (const auto& [parts, cell] : rows) {
            auto c = customer("CUS" + QString::number(shown.size()), "Smith");
            const char* columns[] = {"Address", "Address2", "City", "address4", "Postcode"};
            for (int i = 0; i < 5; ++i)
                c.insert(columns[i], parts[i]);
            c.remove("Phone"); // a Null phone shows empty
            addRow("Customers", c);
            shown << "CUS" + QString::number(shown.size()) + " | Smith, Ann |  | " + cell[0];
        }
        frmCustomer w;
        QCOMPARE(listRows(child<ListView>(w, "Cust_lst")), shown);
        // A Null in a listed name is a failure of the list.
        addRow("Customers", {{"CustID", "CUS9"}, {"LastName", "Smith"}});
        ui.expectBox("Error Message", errorMessageText(94, "frmCustomer", "Load_list", standardErrorText(94)));
        QVERIFY(endsProgram([] { frmCustomer w; }));
        VERIFY_UI(ui);
    }

    void newNumberedCustomer()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"CustPrefix", "CUS"}, {"CustStart", "100001"}, {"shippingVisible", 1}});
        addRow("Customers", customer("CUS100001", "Taken"));
        addRow("Customers", customer("cus100002", "Taken"));
        frmCustomer list;
        ui.onModal("frmAddCust", [&](QDialog& w) {
            [&] { QCOMPARE(child<QLineEdit>(w, "custid_lbl")->text(), "CUS100003"); }();
            typeInto(w, "FirstName_txt", " Jo ");
            typeInto(w, "Lastname_txt", "Smith");
            child<MemoBox>(w, "address1")->setPlainText("1 High St ");
            typeInto(w, "address3", "York");
            typeInto(w, "postcode_txt", "YO1");
            click(w, "copy_cmd");
            ui.expectBox("Saved", Saved, vbOK, vbInformation);
            ui.expectBox("Add Invoice", AddInvoice, vbNo);
            click(w, "Save_cmd");
            click(w, "exit_cmd"); // saved: no question
            return 0;
        });
        trigger(list, 2);
        // The new row stands last in a list never sorted.
        QCOMPARE(listRows(child<ListView>(list, "Cust_lst")).last(),
                 "CUS100003 | Smith, Jo |  | 1 High St,  York,  YO1");
        QCOMPARE(columnValues("System", "CustStart"), QStringList{"100004"});
        QStringList stored; // the row as stored: texts trimmed, today's date, the delivery copied
        for (const char* f : {"FirstName", "Address", "DelAddress1", "DelAddress5", "Date", "Discount"})
            stored << columnValues("Customers", QLatin1String(f)).last();
        QCOMPARE(stored, (QStringList{"Jo", "1 High St", "1 High St", "YO1", "22/11/2026", "0"}));
        VERIFY_UI(ui);
    }

    void freeFormIdsAndClashes()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"FreeformCus", 1}, {"CustPrefix", "CUS"}, {"CustStart", "100001"}});
        addRow("Customers", customer("ACME", "Taken"));
        auto save = [](const QString& id) {
            NewCustomerMode = 1;
            frmAddCust w;
            typeInto(w, "custid_lbl", id);
            typeInto(w, "FirstName_txt", "Jo");
            typeInto(w, "Lastname_txt", "Smith");
            click(w, "Save_cmd");
        };
        // The same id: both checks show the box. An empty id: the other box, then the beep.
        ui.expectBox(InUseTitle, InUse, vbOK, vbExclamation);
        ui.expectBox(InUseTitle, InUse, vbOK, vbExclamation);
        save("ACME");
        ui.expectBox("Enter Customer ID", " Please enter a Customer ID.", vbOK, vbExclamation);
        save(QString());
        QCOMPARE(ui.beeps, 1);
        QCOMPARE(columnValues("Customers", "CustID"), QStringList{"ACME"});
        // A free-form id is saved trimmed and leaves the next number alone.
        ui.expectBox("Saved", Saved);
        ui.expectBox("Add Invoice", AddInvoice, vbNo);
        save(" Shop 7 ");
        QCOMPARE(settings.CustStart, "100001");
        // An id differing only in case passes the save's own test; the unique index refuses it.
        ui.expectBox(InUseTitle, InUse);
        ui.expectBox("Error Message", errorMessageText(err::DuplicateKey, "frmAddCust", "Save_cmd",
                                                       standardErrorText(err::DuplicateKey)));
        QVERIFY(endsProgram([&] { save("acme"); }));
        QCOMPARE(columnValues("Customers", "CustID"), (QStringList{"ACME", "Shop 7"}));
        VERIFY_UI(ui);
    }

    void deleteRefusesCustomersWithInvoices()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        for (const char* id : {"ONE", "TWO", "NONE", "CASE"})
            addRow("Customers", customer(QLatin1String(id), "X"));
        int n = 0;
        for (const char* owner : {"ONE", "TWO", "TWO", "case"})
            addRow("Invoices", {{"InvNo", u"I%1"_s.arg(++n)}, {"CustNo", QLatin1String(owner)}});
        frmCustomer w;
        auto* lst = child<ListView>(w, "Cust_lst");
        const QString refusal = u"Customer %1 cannot be deleted, as it has %2 attached! Please delete %3 first before "
                                "deleting this customer."_s;
        // Row, answer, then the box that follows a Yes. Invoices naming it in another case do not count.
        const QStringList rows[] = {{"0", "Cannot Delete!", refusal.arg("ONE", "1 invoice", "this invoice")},
                                    {"1", "Cannot Delete!", refusal.arg("TWO", "2 invoices", "these invoices")},
                                    {"2", "", ""},
                                    {"3", "Customer Deleted!", "Customer CASE has been deleted!"}};
        for (const QStringList& r : rows) {
            lst->selectRow(r[0].toInt());
            ui.expectBox("Delete?", "Are you sure you want to delete this customer?", r[1].isEmpty() ? vbNo : vbYes,
                         vbYesNo + vbQuestion);
            if (!r[1].isEmpty())
                ui.expectBox(r[1], r[2], vbOK, r[0] == "3" ? vbInformation : vbExclamation);
            trigger(w, 4);
        }
        QCOMPARE(columnValues("Customers", "CustID"), (QStringList{"ONE", "TWO", "NONE"}));
        QCOMPARE(listRows(lst).size(), 3);
        QCOMPARE(lst->text(lst->currentIndex().row(), 0), "NONE");
        VERIFY_UI(ui);
    }

    // An existing customer: the invoice history, an invoice deleted from it, then the record changed.
    void existingCustomer()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow("Customers", customer("CUS1", "Brown"));
        for (const QString row : {"INV2 CUS1 3 117.5 17.5 rush", "INV1 CUS1 2 10 10", "INV3 CUS9 2 5 0"}) {
            const QStringList f = row.split(' ');
            const double total = f[3].toDouble(), paid = f[4].toDouble();
            addRow("Invoices", {{"InvNo", f[0]},
                                {"CustNo", f[1]},
                                {"Date", QDate(2026, f[2].toInt(), 1)},
                                {"Total", total},
                                {"Paid", paid},
                                {"Balance", total - paid},
                                {"Notes", f.value(5)}});
        }
        for (const char* no : {"INV2", "INV2", "INV1", "INV3"})
            addRow("InvoiceD", {{"InvNo", no}, {"Qty", 1}});
        NewCustomerMode = 0;
        SelectedCustID = "CUS1";
        frmAddCust w;
        auto* lst = child<QTreeWidget>(w, "Inv_lst");
        QCOMPARE(listRows(lst), (QStringList{"01/03/2026 | INV2 |     117.50 |      17.50 |     100.00 | rush",
                                             "01/02/2026 | INV1 |      10.00 |      10.00 |       0.00 | "}));
        QCOMPARE(child<QLabel>(w, "Total_lbl")->text(), "    100.00");
        lst->setCurrentItem(lst->topLevelItem(0));
        ui.expectBox("Confirm", "Are you sure you want to delete this invoice", vbYes);
        click(w, "Delete_cmd");
        QCOMPARE(child<QLabel>(w, "Total_lbl")->text(), "      0.00");
        QCOMPARE(columnValues("Invoices", "InvNo"), (QStringList{"INV1", "INV3"}));
        QCOMPARE(columnValues("InvoiceD", "InvNo"), (QStringList{"INV1", "INV3"}));
        typeInto(w, "Lastname_txt", "Zulu");
        ui.expectBox("Saved", Saved);
        click(w, "Save_cmd");
        QCOMPARE(columnValues("Customers", "LastName"), QStringList{"Zulu"});
        QCOMPARE(CustomerChanged, qint16(1));
        VERIFY_UI(ui);
    }

    // Keys that move or command are no change: only a typed character makes Exit ask. A refused
    // save on the way out closes the window all the same.
    void onlyTypingIsAChange_data()
    {
        QTest::addColumn<bool>("newCustomer");
        QTest::addColumn<QString>("letters"); // typed after three Tabs from the first name
        QTest::addColumn<bool>("copy");       // the copy button pressed
        QTest::addColumn<int>("answer");      // to "save changes?"; 0: not asked
        QTest::newRow("old, moved only") << false << "" << false << 0;
        QTest::newRow("old, typed, not saved") << false << "x" << false << int(vbNo);
        QTest::newRow("new, copied only") << true << "" << true << 0;
        QTest::newRow("new, typed, saved") << true << "x" << false << int(vbYes);
    }

    void onlyTypingIsAChange()
    {
        QFETCH(bool, newCustomer);
        QFETCH(QString, letters);
        QFETCH(bool, copy);
        QFETCH(int, answer);
        TestUi ui;
        auto main = startProgram(ui, {{"CustStart", "100001"}, {"CustPrefix", "CUS"}});
        addRow("Customers", customer("CUS1", "Brown"));
        NewCustomerMode = newCustomer ? 1 : 0;
        SelectedCustID = "CUS1";
        frmAddCust w;
        showUp(w);
        child<QLineEdit>(w, "FirstName_txt")->setFocus();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), letters);
        if (copy)
            click(w, "copy_cmd");
        if (answer)
            ui.expectBox("Save Changes", "Do you wish to save changes?", answer);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier); // "&Exit", pressed on screen
        QTRY_VERIFY(!w.isVisible());
        QCOMPARE(ui.beeps, answer == vbYes ? 1 : 0);
        QCOMPARE(columnValues("Customers", "FirstName"), QStringList{"Ann"});
        VERIFY_UI(ui);
    }

    void customisationShowsAtOnce()
    {
        TestUi ui;
        auto main =
            startProgram(ui, {{"FaxVisible", 1}, {"phoneVisible", 1}, {"ConfirmAll", 1}, {"CustStart", "1001"}});
        NewCustomerMode = 1;
        frmAddCust w;
        w.show();
        // OK stores the ticks in the settings row and the window shows them at once; Cancel keeps nothing.
        for (const bool ok : {true, false}) {
            ui.onModal("frmCustomerSet", [&](QDialog& d) {
                [&] {
                    QCOMPARE(child<QCheckBox>(d, "fax_chk")->isChecked(), ok);
                    QVERIFY(!child<QCheckBox>(d, "mobile_chk")->isChecked() || !ok);
                }();
                child<QCheckBox>(d, "fax_chk")->setChecked(!ok);
                child<QCheckBox>(d, "mobile_chk")->setChecked(ok);
                child<QCheckBox>(d, "Shipping1_chk")->setChecked(ok);
                click(d, ok ? "ok_cmd" : "cancel_cmd");
                return int(ok);
            });
            click(w, "Customize_cmd");
            QVERIFY(!child<QLineEdit>(w, "Fax_txt")->isVisible());
            QVERIFY(child<QLineEdit>(w, "mobile_txt")->isVisible());
            QVERIFY(child<QLineEdit>(w, "delpostcode")->isVisible());
            QCOMPARE(settings.FaxVisible, qint16(0));
            QCOMPARE(settings.mobileVisible, qint16(1));
            for (const char* column : {"FaxVisible", "mobileVisible", "shippingVisible", "phoneVisible", "ConfirmAll"})
                QCOMPARE(column + ("=" + columnValues("System", column).join(',')),
                         column + QString(QLatin1String(column) == "FaxVisible" ? "=0" : "=1"));
        }
        VERIFY_UI(ui);
    }
};

VELK_TEST(CustomersTest)
#include "tst_customers.moc"
