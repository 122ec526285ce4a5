// The customer list and the customer record, driven as a user would.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "platform/Activation.h"
#include "platform/MemoBox.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QAction>
#include <QCheckBox>
#include <QHeaderView>
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
    return {{"CustID", id},       {"LastName", last},     {"FirstName", u"Ann"_s},
            {"Phone", u"0123"_s}, {"Address", QString()}, {"Address2", ""},
            {"City", ""},         {"address4", ""},       {"Postcode", QString()}};
}

void type(QWidget& w, const char* name, const QString& text)
{
    auto* box = child<QLineEdit>(w, QLatin1String(name));
    box->clear();
    QTest::keyClicks(box, text);
}

void click(QWidget& w, const char* name)
{
    child<QPushButton>(w, QLatin1String(name))->click();
}

void trigger(QWidget& w, int place)
{
    child<QAction>(w, u"Toolbar1(%1)"_s.arg(place))->trigger();
}

QTreeWidget* custList(QWidget& w)
{
    return child<QTreeWidget>(w, u"Cust_lst"_s);
}

const QString Saved = u"Customer details have been saved."_s;
const QString AddInvoice = u"Do you want to add an invoice to this customer?"_s;
const QString InUse = u"This Customer number has already been used. Please try again!"_s;
const QString InUseTitle = u"Customer Number Already In Use"_s;
const QString SaveChanges = u"Do you wish to save changes?"_s;

} // namespace

class CustomersTest : public QObject
{
    Q_OBJECT
private slots:
    void addressJoinedInTheList_data()
    {
        QTest::addColumn<QStringList>("parts");
        QTest::addColumn<QString>("cell");
        QTest::newRow("all five") << QStringList{"1 High St", "Hill", "York", "Yorks", "YO1"}
                                  << "1 High St,  Hill,  York,  Yorks,  YO1";
        QTest::newRow("empty postcode leaves a separator")
            << QStringList{"1 High St", "", "York", "", ""} << "1 High St,  York,  ";
        QTest::newRow("blank part joined untrimmed")
            << QStringList{"1 High St ", "  ", "York", "", "YO1"} << "1 High St ,    York,  YO1";
        QTest::newRow("nothing") << QStringList{"", "", "", "", ""} << "";
    }
    void addressJoinedInTheList()
    {
        QFETCH(QStringList, parts);
        QFETCH(QString, cell);
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow(u"Customers"_s, customer(u"CUS2"_s, u"Zed"_s));
        auto c = customer(u"CUS1"_s, u"Smith"_s);
        const char* columns[] = {"Address", "Address2", "City", "address4", "Postcode"};
        for (int i = 0; i < 5; ++i)
            c.insert(QLatin1String(columns[i]), parts[i]);
        c.remove(u"Phone"_s); // a Null phone shows empty
        addRow(u"Customers"_s, c);
        frmCustomer w;
        QCOMPARE(listRows(custList(w)), (QStringList{"CUS2 | Zed, Ann | 0123 | ", "CUS1 | Smith, Ann |  | " + cell}));
        QCOMPARE(custList(w)->currentItem(), custList(w)->topLevelItem(0));
        // A Null in a listed name is a failure of the list.
        addRow(u"Customers"_s, {{"CustID", u"CUS9"_s}, {"LastName", u"Smith"_s}});
        ui.expectBox(u"Error Message"_s, errorMessageText(94, u"frmCustomer"_s, u"Load_list"_s, standardErrorText(94)));
        QVERIFY(endsProgram([] { frmCustomer w; }));
        VERIFY_UI(ui);
    }

    void newNumberedCustomer()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"CustPrefix", u"CUS"_s}, {"CustStart", u"100001"_s}, {"shippingVisible", 1}});
        addRow(u"Customers"_s, customer(u"CUS100001"_s, u"Taken"_s));
        addRow(u"Customers"_s, customer(u"cus100002"_s, u"Taken"_s));
        frmCustomer list;
        ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
            [&] { QCOMPARE(child<QLineEdit>(w, u"custid_lbl"_s)->text(), u"CUS100003"_s); }();
            type(w, "FirstName_txt", u" Jo "_s);
            type(w, "Lastname_txt", u"Smith"_s);
            child<MemoBox>(w, u"address1"_s)->setPlainText(u"1 High St "_s);
            type(w, "address3", u"York"_s);
            type(w, "postcode_txt", u"YO1"_s);
            click(w, "copy_cmd");
            ui.expectBox(u"Saved"_s, Saved, vbOK, vbInformation);
            ui.expectBox(u"Add Invoice"_s, AddInvoice, vbNo);
            click(w, "Save_cmd");
            [&] { QVERIFY(child<QWidget>(w, u"inv_frame"_s)->isEnabled()); }();
            click(w, "exit_cmd"); // saved: no question
            return 0;
        });
        trigger(list, 2);
        // The new row stands last in a list never sorted.
        QCOMPARE(listRows(custList(list)).last(), u"CUS100003 | Smith, Jo |  | 1 High St,  York,  YO1"_s);
        QCOMPARE(settings.CustStart, u"100004"_s);
        QCOMPARE(columnValues(u"System"_s, u"CustStart"_s), QStringList{"100004"});
        // The row as stored: texts trimmed, today's date, the delivery copied.
        QStringList stored;
        for (const char* f : {"FirstName", "Address", "DelAddress1", "DelAddress5", "Date", "Discount"})
            stored << columnValues(u"Customers"_s, QLatin1String(f)).last();
        QCOMPARE(stored, (QStringList{"Jo", "1 High St", "1 High St", "YO1", "22/11/2026", "0"}));
        VERIFY_UI(ui);
    }

    void freeFormIdsAndClashes()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"FreeformCus", 1}, {"CustPrefix", u"CUS"_s}, {"CustStart", u"100001"_s}});
        addRow(u"Customers"_s, customer(u"ACME"_s, u"Taken"_s));
        auto save = [](const QString& id) {
            NewCustomerMode = 1;
            frmAddCust w;
            type(w, "custid_lbl", id);
            type(w, "FirstName_txt", u"Jo"_s);
            type(w, "Lastname_txt", u"Smith"_s);
            click(w, "Save_cmd");
        };
        // The same id: both checks show the box. An empty id: the other box, then the beep.
        ui.expectBox(InUseTitle, InUse, vbOK, vbExclamation);
        ui.expectBox(InUseTitle, InUse, vbOK, vbExclamation);
        save(u"ACME"_s);
        ui.expectBox(u"Enter Customer ID"_s, u" Please enter a Customer ID."_s, vbOK, vbExclamation);
        save(QString());
        QCOMPARE(ui.beeps, 1);
        QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), QStringList{"ACME"});
        // A free-form id is saved trimmed and leaves the next number alone.
        ui.expectBox(u"Saved"_s, Saved);
        ui.expectBox(u"Add Invoice"_s, AddInvoice, vbNo);
        save(u" Shop 7 "_s);
        QCOMPARE(settings.CustStart, u"100001"_s);
        // An id differing only in case passes the save's own test; the unique index refuses it.
        ui.expectBox(InUseTitle, InUse);
        ui.expectBox(u"Error Message"_s, errorMessageText(err::DuplicateKey, u"frmAddCust"_s, u"Save_cmd"_s,
                                                          standardErrorText(err::DuplicateKey)));
        QVERIFY(endsProgram([&] { save(u"acme"_s); }));
        QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), (QStringList{"ACME", "Shop 7"}));
        VERIFY_UI(ui);
    }

    void deleteRefusesCustomersWithInvoices()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        for (const char* id : {"ONE", "TWO", "NONE", "CASE"})
            addRow(u"Customers"_s, customer(QLatin1String(id), u"X"_s));
        int n = 0;
        for (const char* owner : {"ONE", "TWO", "TWO", "case"})
            addRow(u"Invoices"_s, {{"InvNo", u"I%1"_s.arg(++n)}, {"CustNo", QLatin1String(owner)}});
        frmCustomer w;
        const QString refusal = u"Customer %1 cannot be deleted, as it has %2 attached! Please delete %3 first before "
                                "deleting this customer."_s;
        // Row, answer, then the box that follows a Yes. Invoices naming it in another case do not count.
        const QStringList rows[] = {{"0", "Cannot Delete!", refusal.arg("ONE", "1 invoice", "this invoice")},
                                    {"1", "Cannot Delete!", refusal.arg("TWO", "2 invoices", "these invoices")},
                                    {"2", "", ""},
                                    {"3", "Customer Deleted!", "Customer CASE has been deleted!"}};
        for (const QStringList& r : rows) {
            custList(w)->setCurrentItem(custList(w)->topLevelItem(r[0].toInt()));
            ui.expectBox(u"Delete?"_s, u"Are you sure you want to delete this customer?"_s,
                         r[1].isEmpty() ? vbNo : vbYes, vbYesNo + vbQuestion);
            if (!r[1].isEmpty())
                ui.expectBox(r[1], r[2], vbOK, r[0] == "3" ? vbInformation : vbExclamation);
            trigger(w, 4);
        }
        QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), (QStringList{"ONE", "TWO", "NONE"}));
        QCOMPARE(listRows(custList(w)).size(), 3);
        QCOMPARE(custList(w)->currentItem()->text(0), u"NONE"_s);
        VERIFY_UI(ui);
    }

    // An existing customer: the invoice history, an invoice deleted from it, then the record changed.
    void existingCustomer()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow(u"Customers"_s, customer(u"CUS1"_s, u"Brown"_s));
        auto invoice = [](const char* no, const char* cust, int month, double total, double paid, const char* notes) {
            addRow(u"Invoices"_s, {{"InvNo", no},
                                   {"CustNo", cust},
                                   {"Date", QDate(2026, month, 1)},
                                   {"Total", total},
                                   {"Paid", paid},
                                   {"Balance", total - paid},
                                   {"Notes", notes}});
        };
        invoice("INV2", "CUS1", 3, 117.5, 17.5, "rush");
        invoice("INV1", "CUS1", 2, 10.0, 10.0, "");
        invoice("INV3", "CUS9", 2, 5.0, 0.0, "");
        for (const char* no : {"INV2", "INV2", "INV1", "INV3"})
            addRow(u"InvoiceD"_s, {{"InvNo", no}, {"Qty", 1}});
        NewCustomerMode = 0;
        SelectedCustID = u"CUS1"_s;
        frmAddCust w;
        auto* lst = child<QTreeWidget>(w, u"Inv_lst"_s);
        QCOMPARE(listRows(lst), (QStringList{"01/03/2026 | INV2 |     117.50 |      17.50 |     100.00 | rush",
                                             "01/02/2026 | INV1 |      10.00 |      10.00 |       0.00 | "}));
        QCOMPARE(child<QLabel>(w, u"Total_lbl"_s)->text(), u"    100.00"_s);
        lst->setCurrentItem(lst->topLevelItem(0));
        ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this invoice"_s, vbYes);
        click(w, "Delete_cmd");
        QCOMPARE(child<QLabel>(w, u"Total_lbl"_s)->text(), u"      0.00"_s);
        QCOMPARE(columnValues(u"Invoices"_s, u"InvNo"_s), (QStringList{"INV1", "INV3"}));
        QCOMPARE(columnValues(u"InvoiceD"_s, u"InvNo"_s), (QStringList{"INV1", "INV3"}));
        type(w, "Lastname_txt", u"Zulu"_s);
        ui.expectBox(u"Saved"_s, Saved);
        click(w, "Save_cmd");
        QCOMPARE(columnValues(u"Customers"_s, u"LastName"_s), QStringList{"Zulu"});
        QCOMPARE(CustomerChanged, qint16(1));
        VERIFY_UI(ui);
    }

    void customisationIsStoredOnOkOnly()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"FaxVisible", 1}, {"phoneVisible", 1}, {"ConfirmAll", 1}, {"CustStart", "1"}});
        NewCustomerMode = 1;
        frmAddCust w;
        w.show();
        auto customise = [&](const char* box, const char* button) {
            ui.onModal(u"frmCustomerSet"_s, [=](QDialog& d) {
                child<QCheckBox>(d, QLatin1String(box))->setChecked(false);
                click(d, button);
                return 0;
            });
            click(w, "Customize_cmd");
        };
        customise("fax_chk", "ok_cmd");
        QVERIFY(!child<QLineEdit>(w, u"Fax_txt"_s)->isVisible()); // at once
        QCOMPARE(columnValues(u"System"_s, u"FaxVisible"_s), QStringList{"0"});
        QCOMPARE(columnValues(u"System"_s, u"ConfirmAll"_s), QStringList{"1"});
        customise("phone_chk", "cancel_cmd");
        QCOMPARE(settings.phoneVisible, qint16(1));
        QCOMPARE(columnValues(u"System"_s, u"phoneVisible"_s), QStringList{"1"});
        VERIFY_UI(ui);
    }

    void onlyTypingIsAChange_data()
    {
        QTest::addColumn<bool>("newCustomer");
        QTest::addColumn<QString>("letters"); // typed after three Tabs from the first name
        QTest::addColumn<bool>("copy");
        QTest::addColumn<int>("answer"); // to "Do you wish to save changes?"; 0: not asked
        QTest::newRow("tab three times") << false << QString() << false << 0;
        QTest::newRow("one letter") << false << "x" << false << int(vbNo);
        QTest::newRow("the copy button alone") << true << QString() << true << 0;
        // A refused save on the way out: the window closes all the same.
        QTest::newRow("a refused save") << true << "x" << false << int(vbYes);
    }
    // Keys that move or command are no change: only a typed character makes Exit ask.
    void onlyTypingIsAChange()
    {
        QFETCH(bool, newCustomer);
        QFETCH(QString, letters);
        QFETCH(bool, copy);
        QFETCH(int, answer);
        TestUi ui;
        auto main = startProgram(ui, {{"CustStart", u"100001"_s}, {"CustPrefix", u"CUS"_s}});
        addRow(u"Customers"_s, customer(u"CUS1"_s, u"Brown"_s));
        NewCustomerMode = newCustomer ? 1 : 0;
        SelectedCustID = u"CUS1"_s;
        frmAddCust w;
        showUp(w);
        child<QLineEdit>(w, u"FirstName_txt"_s)->setFocus();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), letters);
        if (copy)
            click(w, "copy_cmd");
        if (answer)
            ui.expectBox(u"Save Changes"_s, SaveChanges, answer);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier); // "&Exit", pressed on screen
        QTRY_VERIFY(!w.isVisible());
        QCOMPARE(ui.beeps, answer == vbYes ? 1 : 0);
        QCOMPARE(columnValues(u"Customers"_s, u"FirstName"_s), QStringList{"Ann"});
        VERIFY_UI(ui);
    }

    // After a search and a customer opened and closed, Enter opens the customer again, not the search.
    void closedRecordGivesTheListTheFocus()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        for (const char* id : {"CUS1", "CUS2"})
            addRow(u"Customers"_s, customer(QLatin1String(id), u"X"_s));
        QStringList opened;
        auto record = [&](QDialog& w) {
            opened << child<QLineEdit>(w, u"custid_lbl"_s)->text();
            click(w, "exit_cmd");
            return 0;
        };
        frmCustomer list;
        showUp(list);
        activate(&list);
        auto* search = child<QLineEdit>(list, u"Search_txt"_s);
        search->setFocus();
        QTest::keyClicks(search, u"cus2"_s);
        QTest::keyClick(search, Qt::Key_Return); // Enter in the box searches
        ui.onModal(u"frmAddCust"_s, record);
        trigger(list, 6);
        ui.onModal(u"frmAddCust"_s, record);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(opened, (QStringList{"CUS2", "CUS2"}));
        VERIFY_UI(ui);
    }
};

VELK_TEST(CustomersTest)
#include "tst_customers.moc"
