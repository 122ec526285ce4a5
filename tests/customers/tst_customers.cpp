// The customer list and the customer record, driven as a user would.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
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
#include <QDateEdit>
#include <QFocusEvent>
#include <QGroupBox>
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

QMap<QString, Value> customer(const QString& id, const QString& last, const QString& first = u"Ann"_s)
{
    return {{"CustID", id},       {"LastName", last},      {"FirstName", first},
            {"Phone", u"0123"_s}, {"Address", QString()},  {"Address2", QString()},
            {"City", QString()},  {"address4", QString()}, {"Postcode", QString()}};
}

void type(QWidget& w, const char* name, const QString& text)
{
    auto* box = child<QLineEdit>(w, QLatin1String(name));
    box->clear();
    QTest::keyClicks(box, text);
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

} // namespace

class CustomersTest : public QObject
{
    Q_OBJECT
private slots:
    void listShowsEveryCustomer_data();
    void listShowsEveryCustomer();
    void searchAndSort();
    void newNumberedCustomer_data();
    void newNumberedCustomer();
    void newFreeFormCustomerAndClashes();
    void existingCustomerChangesInPlace();
    void deleteRefusesCustomersWithInvoices();
    void invoiceHistory();
    void customisationShowsAtOnce();
    void statusPrompts_data();
    void statusPrompts();
    void onlyTypingIsAChange_data();
    void onlyTypingIsAChange();
    void closedRecordGivesTheListTheFocus();
};

void CustomersTest::listShowsEveryCustomer_data()
{
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("cell");
    QTest::newRow("all five") << QStringList{"1 High St", "Hill", "York", "Yorks", "YO1"}
                              << "1 High St,  Hill,  York,  Yorks,  YO1";
    QTest::newRow("street, city, postcode")
        << QStringList{"1 High St", "", "York", "", "YO1"} << "1 High St,  York,  YO1";
    QTest::newRow("empty postcode leaves a separator")
        << QStringList{"1 High St", "", "York", "", ""} << "1 High St,  York,  ";
    QTest::newRow("blank part joined untrimmed")
        << QStringList{"1 High St ", "  ", "York", "", "YO1"} << "1 High St ,    York,  YO1";
    QTest::newRow("nothing") << QStringList{"", "", "", "", ""} << "";
}

void CustomersTest::listShowsEveryCustomer()
{
    QFETCH(QStringList, parts);
    QFETCH(QString, cell);
    TestUi ui;
    auto main = startProgram(ui, {});
    addRow(u"Customers"_s, customer(u"CUS2"_s, u"Zed"_s));
    auto c = customer(u"CUS1"_s, u"Smith"_s, u"Jo"_s);
    const char* columns[] = {"Address", "Address2", "City", "address4", "Postcode"};
    for (int i = 0; i < 5; ++i)
        c.insert(QLatin1String(columns[i]), parts[i]);
    c.remove(u"Phone"_s);
    addRow(u"Customers"_s, c);
    ui.onModal(u"frmCustomer"_s, [&](QDialog& w) {
        auto* list = custList(w);
        QStringList headings;
        for (int i = 0; i < list->columnCount(); ++i)
            headings << list->headerItem()->text(i);
        // Table order, the first row selected; a Null phone shows empty.
        [&] {
            QCOMPARE(headings, (QStringList{"Cust ID", "Customer Name", "Phone", "Address"}));
            QCOMPARE(listRows(list), (QStringList{"CUS2 | Zed, Ann | 0123 | ", "CUS1 | Smith, Jo |  | " + cell}));
            QCOMPARE(list->currentItem(), list->topLevelItem(0));
        }();
        return 0;
    });
    trigger(*main, 1);
    VERIFY_UI(ui);
}

void CustomersTest::searchAndSort()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    const QStringList last{"Brown", "adams", "Clark", "Brownlow", "Young"};
    for (int i = 0; i < last.size(); ++i)
        addRow(u"Customers"_s, customer(u"CUS%1"_s.arg(i + 1), last[i]));
    frmCustomer w;
    auto* list = custList(w);
    auto* found = child<QLabel>(w, u"Found_lbl"_s);
    auto search = [&](const QString& text) {
        type(w, "Search_txt", text);
        child<QPushButton>(w, u"search_cmd"_s)->click();
        return list->currentItem() ? list->currentItem()->text(0) : QString();
    };
    // From the top, then on to the next match, then round again.
    QCOMPARE(search(u"brown"_s), u"CUS1"_s);
    QCOMPARE(search(u"brown"_s), u"CUS4"_s);
    QCOMPARE(search(u"brown"_s), u"CUS1"_s);
    QCOMPARE(found->text(), QString());
    // Found only above the starting row: the second pass finds it.
    QCOMPARE(search(u"ADAMS"_s), u"CUS2"_s);
    QCOMPARE(search(u"Young"_s), u"CUS5"_s);
    QCOMPARE(search(u"Clark"_s), u"CUS3"_s);
    QCOMPARE(search(u"nobody"_s), u"CUS3"_s);
    QCOMPARE(found->text(), u"Not Found"_s);
    // The address column is searched too (sub-item 3): every row has "0123" in the phone.
    w.rules()->SearchPos = 1;
    QCOMPARE(search(u"0123"_s), u"CUS1"_s);

    // The first click sorts descending and marks key1; each click flips, on any column.
    list->header()->sectionClicked(1);
    QCOMPARE(list->topLevelItem(0)->text(1), u"Young, Ann"_s);
    QCOMPARE(headingMark(list, 1), u"key1"_s);
    list->header()->sectionClicked(0);
    QCOMPARE(list->topLevelItem(0)->text(0), u"CUS1"_s);
    QCOMPARE(headingMark(list, 0), u"key2"_s);
    QCOMPARE(headingMark(list, 1), QString());
    list->header()->sectionClicked(1);
    QCOMPARE(listRows(list).first(), u"CUS5 | Young, Ann | 0123 | "_s);
    QCOMPARE(list->topLevelItem(4)->text(1), u"adams, Ann"_s); // text order ignores case
    // A Null in a listed part is a failure of the list.
    addRow(u"Customers"_s, {{"CustID", u"CUS9"_s}, {"LastName", u"Smith"_s}});
    ui.expectBox(u"Error Message"_s, errorMessageText(94, u"frmCustomer"_s, u"Load_list"_s, standardErrorText(94)));
    QVERIFY(endsProgram([] { frmCustomer w; }));
    VERIFY_UI(ui);
}

void CustomersTest::newNumberedCustomer_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("proposal");
    QTest::addColumn<QString>("next");
    auto row = [](const char* name, const char* prefix, const char* start, const QStringList& taken,
                  const char* proposal, const char* next) {
        QTest::newRow(name) << QString(prefix) << QString(start) << taken << QString(proposal) << QString(next);
    };
    row("skips taken numbers", "CUS", "100001", {"CUS100001", "cus100002"}, "CUS100003", "100004");
    row("digit in the prefix", "A1", "100001", {}, "A1100001", "100002");
    row("width wraps", "C", "9999", {}, "C9999", "0000");
    row("blank prefix", "", "0042", {"0042"}, "0043", "0044");
}

void CustomersTest::newNumberedCustomer()
{
    QFETCH(QString, prefix);
    QFETCH(QString, start);
    QFETCH(QStringList, taken);
    QFETCH(QString, proposal);
    QFETCH(QString, next);
    TestUi ui;
    auto main = startProgram(ui, {{"CustPrefix", prefix}, {"CustStart", start}, {"shippingVisible", 1}});
    for (const QString& id : taken)
        addRow(u"Customers"_s, customer(id, u"Taken"_s));
    ui.onModal(u"frmCustomer"_s, [&](QDialog& list) {
        ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
            [&] {
                QCOMPARE(w.windowTitle(), u"Customer"_s);
                QCOMPARE(child<QLineEdit>(w, u"custid_lbl"_s)->text(), proposal);
                QVERIFY(!child<QWidget>(w, u"custid_lbl"_s)->isEnabled());
                QVERIFY(!child<QWidget>(w, u"inv_frame"_s)->isEnabled());
                QCOMPARE(child<QDateEdit>(w, u"DTPicker1"_s)->date(), QDate(2026, 11, 22));
            }();
            type(w, "FirstName_txt", u" Jo "_s);
            type(w, "Lastname_txt", u"Smith"_s);
            child<MemoBox>(w, u"address1"_s)->setPlainText(u"1 High St "_s);
            type(w, "address3", u"York"_s);
            type(w, "postcode_txt", u"YO1"_s);
            child<QPushButton>(w, u"copy_cmd"_s)->click();
            ui.expectBox(u"Saved"_s, Saved, vbOK, vbInformation);
            ui.expectBox(u"Add Invoice"_s, AddInvoice, vbNo);
            child<QPushButton>(w, u"Save_cmd"_s)->click();
            [&] {
                QVERIFY(child<QWidget>(w, u"inv_frame"_s)->isEnabled());
                QVERIFY(!static_cast<frmAddCust&>(w).changed());
            }();
            child<QPushButton>(w, u"exit_cmd"_s)->click(); // saved: no question
            return 0;
        });
        trigger(list, 2);
        // The new row stands last in a list never sorted.
        [&] { QCOMPARE(listRows(custList(list)).last(), proposal + u" | Smith, Jo |  | 1 High St,  York,  YO1"_s); }();
        return 0;
    });
    trigger(*main, 1);
    QCOMPARE(LastCustID.trimmed(), proposal);
    QCOMPARE(settings.CustStart, next);
    QCOMPARE(columnValues(u"System"_s, u"CustStart"_s), QStringList{next});
    // The row as stored: texts trimmed, the date of the picker, the delivery copied.
    Recordset rs;
    rs.open(u"customers"_s, ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(u"CUSTID"_s);
    rs.seek(proposal, Recordset::adSeekFirstEQ);
    QCOMPARE(rs.field(u"FirstName"_s).toText(), u"Jo"_s);
    QCOMPARE(rs.field(u"Address"_s).toText(), u"1 High St"_s);
    QCOMPARE(rs.field(u"DelAddress1"_s).toText(), u"1 High St"_s);
    QCOMPARE(rs.field(u"DelAddress5"_s).toText(), u"YO1"_s);
    QCOMPARE(rs.field(u"Date"_s).toDate().date(), QDate(2026, 11, 22));
    QVERIFY(rs.field(u"Discount"_s) == Value(qint64(0)));
    VERIFY_UI(ui);
}

void CustomersTest::newFreeFormCustomerAndClashes()
{
    TestUi ui;
    auto main = startProgram(ui, {{"FreeformCus", 1}, {"CustPrefix", u"CUS"_s}, {"CustStart", u"100001"_s}});
    addRow(u"Customers"_s, customer(u"ACME"_s, u"Taken"_s));
    frmCustomer list;
    auto fill = [&](QDialog& w, const QString& id) {
        type(w, "custid_lbl", id);
        type(w, "FirstName_txt", u"Jo"_s);
        type(w, "Lastname_txt", u"Smith"_s);
    };
    // The same id: both checks show the box; the window stays, the list hears of the id.
    ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
        [&] {
            QVERIFY(child<QWidget>(w, u"custid_lbl"_s)->isEnabled());
            QCOMPARE(child<QLineEdit>(w, u"custid_lbl"_s)->text(), QString());
        }();
        fill(w, u"ACME"_s);
        ui.expectBox(u"Customer Number Already In Use"_s, InUse, vbOK, vbExclamation);
        ui.expectBox(u"Customer Number Already In Use"_s, InUse, vbOK, vbExclamation);
        child<QPushButton>(w, u"Save_cmd"_s)->click();
        [&] { QCOMPARE(CustomerChanged, qint16(1)); }();
        // An empty id: the other box, then the beep of the required field.
        type(w, "custid_lbl", QString());
        ui.expectBox(u"Enter Customer ID"_s, u" Please enter a Customer ID."_s, vbOK, vbExclamation);
        child<QPushButton>(w, u"Save_cmd"_s)->click();
        [&] { QCOMPARE(ui.beeps, 1); }();
        type(w, "custid_lbl", u"ACME"_s);
        ui.expectBox(u"Save Changes"_s, u"Do you wish to save changes?"_s, vbNo);
        child<QPushButton>(w, u"exit_cmd"_s)->click();
        return 0;
    });
    trigger(list, 2);
    QCOMPARE(LastCustID.trimmed(), u"ACME"_s);
    QCOMPARE(listRows(custList(list)).size(), 2); // the clashing id is listed again
    QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), QStringList{"ACME"});

    // A new free-form id is saved as typed and leaves the next number alone.
    ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
        fill(w, u" Shop 7 "_s);
        ui.expectBox(u"Saved"_s, Saved);
        ui.expectBox(u"Add Invoice"_s, AddInvoice, vbNo);
        child<QPushButton>(w, u"Save_cmd"_s)->click();
        child<QPushButton>(w, u"exit_cmd"_s)->click();
        return 0;
    });
    trigger(list, 2);
    QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), (QStringList{"ACME", "Shop 7"}));
    QCOMPARE(settings.CustStart, u"100001"_s);

    // An id differing only in case passes the save's own test; the unique index refuses it.
    ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
        fill(w, u"acme"_s);
        ui.expectBox(u"Customer Number Already In Use"_s, InUse);
        ui.expectBox(u"Error Message"_s, errorMessageText(err::DuplicateKey, u"frmAddCust"_s, u"Save_cmd"_s,
                                                          standardErrorText(err::DuplicateKey)));
        child<QPushButton>(w, u"Save_cmd"_s)->click();
        return 0;
    });
    QVERIFY(endsProgram([&] { trigger(list, 2); }));
    QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), (QStringList{"ACME", "Shop 7"}));
    VERIFY_UI(ui);
}

void CustomersTest::existingCustomerChangesInPlace()
{
    TestUi ui;
    auto main = startProgram(ui, {{"CustStart", u"100001"_s}, {"CustPrefix", u"CUS"_s}});
    addRow(u"Customers"_s, customer(u"CUS1"_s, u"Brown"_s));
    addRow(u"Customers"_s, customer(u"CUS2"_s, u"Adams"_s));
    frmCustomer list;
    auto* lst = custList(list);
    lst->header()->sectionClicked(1); // sorted descending by name: Brown above Adams
    lst->setCurrentItem(lst->topLevelItem(1));
    ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
        [&] {
            QCOMPARE(child<QLineEdit>(w, u"custid_lbl"_s)->text(), u"CUS2"_s);
            QVERIFY(!child<QWidget>(w, u"custid_lbl"_s)->isEnabled());
            QCOMPARE(child<QLineEdit>(w, u"Lastname_txt"_s)->text(), u"Adams"_s);
            QCOMPARE(child<QLineEdit>(w, u"Phone_txt"_s)->text(), u"0123"_s);
        }();
        type(w, "Lastname_txt", u"Zulu"_s);
        ui.expectBox(u"Saved"_s, Saved);
        child<QPushButton>(w, u"Save_cmd"_s)->click();
        child<QPushButton>(w, u"exit_cmd"_s)->click();
        return 0;
    });
    trigger(list, 6);
    // Rewritten where it stands, although the name now sorts first.
    QCOMPARE(listRows(lst), (QStringList{"CUS1 | Brown, Ann | 0123 | ", "CUS2 | Zulu, Ann | 0123 | "}));
    QCOMPARE(columnValues(u"Customers"_s, u"LastName"_s), (QStringList{"Brown", "Zulu"}));
    // View and Exit without a change leaves the row alone.
    ui.onModal(u"frmAddCust"_s, [&](QDialog& w) {
        child<QPushButton>(w, u"exit_cmd"_s)->click();
        return 0;
    });
    list.OpenRow();
    QCOMPARE(CustomerChanged, qint16(0));
    VERIFY_UI(ui);
}

void CustomersTest::deleteRefusesCustomersWithInvoices()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    frmCustomer empty;
    // An empty list still asks, then ends.
    ui.expectBox(u"Delete?"_s, u"Are you sure you want to delete this customer?"_s, vbYes);
    trigger(empty, 4);
    for (const char* id : {"ONE", "TWO", "NONE", "CASE"})
        addRow(u"Customers"_s, customer(QLatin1String(id), u"X"_s));
    int invoiceCount = 0;
    for (const char* owner : {"ONE", "TWO", "TWO", "case"})
        addRow(u"Invoices"_s, {{"InvNo", u"I%1"_s.arg(++invoiceCount)}, {"CustNo", QLatin1String(owner)}});
    frmCustomer w;
    auto* lst = custList(w);
    auto remove = [&](int row, int answer) {
        lst->setCurrentItem(lst->topLevelItem(row));
        ui.expectBox(u"Delete?"_s, u"Are you sure you want to delete this customer?"_s, answer, vbYesNo + vbQuestion);
    };
    remove(0, vbYes);
    ui.expectBox(
        u"Cannot Delete!"_s,
        QStringLiteral("Customer ONE cannot be deleted, as it has 1 invoice attached! Please delete this invoice "
                       "first before deleting this customer."),
        vbOK, vbExclamation);
    trigger(w, 4);
    remove(1, vbYes);
    ui.expectBox(u"Cannot Delete!"_s,
                 QStringLiteral("Customer TWO cannot be deleted, as it has 2 invoices attached! Please delete these "
                                "invoices first before deleting this customer."),
                 vbOK, vbExclamation);
    trigger(w, 4);
    remove(2, vbNo);
    trigger(w, 4);
    QCOMPARE(lst->topLevelItemCount(), 4);
    remove(3, vbYes); // its invoice names it in another case: the count compares exactly
    ui.expectBox(u"Customer Deleted!"_s, u"Customer CASE has been deleted!"_s, vbOK, vbInformation);
    trigger(w, 4);
    QCOMPARE(columnValues(u"Customers"_s, u"CustID"_s), (QStringList{"ONE", "TWO", "NONE"}));
    QCOMPARE(listRows(lst).size(), 3);
    QCOMPARE(lst->currentItem()->text(0), u"NONE"_s);
    VERIFY_UI(ui);
}

void CustomersTest::invoiceHistory()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addRow(u"Customers"_s, customer(u"CUS1"_s, u"Brown"_s));
    addRow(u"Invoices"_s, {{"InvNo", u"INV2"_s},
                           {"CustNo", u"CUS1"_s},
                           {"Date", QDate(2026, 3, 1)},
                           {"Total", 117.5},
                           {"Paid", 17.5},
                           {"Balance", 100.0},
                           {"Notes", u"rush"_s}});
    addRow(u"Invoices"_s, {{"InvNo", u"INV1"_s},
                           {"CustNo", u"CUS1"_s},
                           {"Date", QDate(2026, 2, 1)},
                           {"Total", 10.0},
                           {"Paid", 10.0},
                           {"Balance", 0.0}});
    addRow(u"Invoices"_s, {{"InvNo", u"INV3"_s}, {"CustNo", u"CUS9"_s}, {"Balance", 5.0}});
    for (const char* no : {"INV2", "INV2", "INV1", "INV3"})
        addRow(u"InvoiceD"_s, {{"InvNo", QLatin1String(no)}, {"Qty", 1}});
    NewCustomerMode = 0;
    SelectedCustID = u"CUS1"_s;
    frmAddCust w;
    auto* lst = child<QTreeWidget>(w, u"Inv_lst"_s);
    // In the order of the customer index: the customer's invoices in the order they were added.
    QCOMPARE(listRows(lst), (QStringList{"01/03/2026 | INV2 |     117.50 |      17.50 |     100.00 | rush",
                                         "01/02/2026 | INV1 |      10.00 |      10.00 |       0.00 | "}));
    QCOMPARE(child<QLabel>(w, u"Total_lbl"_s)->text(), u"    100.00"_s);
    // The amounts line up by their last digit; the notes do not.
    for (int column : {2, 3, 4})
        QCOMPARE(lst->topLevelItem(0)->data(column, Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask,
                 int(Qt::AlignRight));
    QVERIFY(!(lst->topLevelItem(0)->data(5, Qt::TextAlignmentRole).toInt() & Qt::AlignRight));
    lst->setCurrentItem(lst->topLevelItem(0));
    ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this invoice"_s, vbYes);
    child<QPushButton>(w, u"Delete_cmd"_s)->click();
    QCOMPARE(child<QLabel>(w, u"Total_lbl"_s)->text(), u"      0.00"_s);
    QCOMPARE(listRows(lst).size(), 1);
    QCOMPARE(columnValues(u"Invoices"_s, u"InvNo"_s), (QStringList{"INV1", "INV3"}));
    QCOMPARE(columnValues(u"InvoiceD"_s, u"InvNo"_s), (QStringList{"INV1", "INV3"}));
    VERIFY_UI(ui);
}

void CustomersTest::customisationShowsAtOnce()
{
    TestUi ui;
    auto main = startProgram(ui, {{"FaxVisible", 1}, {"phoneVisible", 1}, {"ConfirmAll", 1}, {"CustStart", u"1001"_s}});
    NewCustomerMode = 1;
    frmAddCust w;
    w.show();
    QVERIFY(child<QLineEdit>(w, u"Fax_txt"_s)->isVisible());
    QVERIFY(!child<QLineEdit>(w, u"mobile_txt"_s)->isVisible());
    QVERIFY(!child<QPushButton>(w, u"copy_cmd"_s)->isVisible());
    ui.onModal(u"frmCustomerSet"_s, [&](QDialog& d) {
        [&] {
            QCOMPARE(d.windowTitle(), u"Customize Customer Screen"_s);
            QVERIFY(child<QCheckBox>(d, u"fax_chk"_s)->isChecked());
            QVERIFY(!child<QCheckBox>(d, u"mobile_chk"_s)->isChecked());
            QCOMPARE(child<QLabel>(d, u"Label1"_s)->text(), u"Untick any check box to make text boxes invisble"_s);
        }();
        child<QCheckBox>(d, u"fax_chk"_s)->setChecked(false);
        child<QCheckBox>(d, u"mobile_chk"_s)->setChecked(true);
        child<QCheckBox>(d, u"Shipping1_chk"_s)->setChecked(true);
        child<QPushButton>(d, u"ok_cmd"_s)->click();
        return 1;
    });
    child<QPushButton>(w, u"Customize_cmd"_s)->click();
    QVERIFY(!child<QLineEdit>(w, u"Fax_txt"_s)->isVisible());
    QVERIFY(child<QLineEdit>(w, u"mobile_txt"_s)->isVisible());
    QVERIFY(child<QLineEdit>(w, u"delpostcode"_s)->isVisible());
    QCOMPARE(settings.FaxVisible, qint16(0));
    QCOMPARE(settings.mobileVisible, qint16(1));
    QCOMPARE(columnValues(u"System"_s, u"FaxVisible"_s), QStringList{"0"});
    QCOMPARE(columnValues(u"System"_s, u"shippingVisible"_s), QStringList{"1"});
    QCOMPARE(columnValues(u"System"_s, u"ConfirmAll"_s), QStringList{"1"}); // untouched
    // Cancel saves nothing.
    ui.onModal(u"frmCustomerSet"_s, [&](QDialog& d) {
        child<QCheckBox>(d, u"phone_chk"_s)->setChecked(false);
        child<QPushButton>(d, u"cancel_cmd"_s)->click();
        return 0;
    });
    child<QPushButton>(w, u"Customize_cmd"_s)->click();
    QCOMPARE(settings.phoneVisible, qint16(1));
    VERIFY_UI(ui);
}

void CustomersTest::statusPrompts_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("prompt");
    // The street's prompt has no full stop.
    const char* rows[][2] = {
        {"FirstName_txt", "Please enter first name."}, {"Phone_txt", "Please enter phone number."},
        {"address1", "Please enter address"},          {"address4", "Please enter County."},
        {"delpostcode", "Please enter address."},      {"Notes_txt", "Please enter any notes here."}};
    for (auto& [control, prompt] : rows)
        QTest::newRow(control) << QString(control) << QString(prompt);
}

void CustomersTest::statusPrompts()
{
    QFETCH(QString, control);
    QFETCH(QString, prompt);
    TestUi ui;
    auto main = startProgram(ui, {{"CustStart", u"1001"_s}});
    NewCustomerMode = 1;
    frmAddCust w;
    QFocusEvent in(QEvent::FocusIn);
    QApplication::sendEvent(child<QWidget>(w, control), &in);
    QCOMPARE(child<QLabel>(w, u"help_lbl"_s)->text(), prompt);
    QVERIFY(child<QPushButton>(w, u"Save_cmd"_s)->isDefault());
    QCOMPARE(child<QLineEdit>(w, u"FirstName_txt"_s)->maxLength(), 20);
    QCOMPARE(child<MemoBox>(w, u"Notes_txt"_s)->maxLength(), 200);
    VERIFY_UI(ui);
}

void CustomersTest::onlyTypingIsAChange_data()
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
void CustomersTest::onlyTypingIsAChange()
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
        child<QPushButton>(w, u"copy_cmd"_s)->click();
    if (answer)
        ui.expectBox(u"Save Changes"_s, u"Do you wish to save changes?"_s, answer);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier); // "&Exit", pressed on screen
    QTRY_VERIFY(!w.isVisible());
    QCOMPARE(ui.beeps, answer == vbYes ? 1 : 0);
    QCOMPARE(columnValues(u"Customers"_s, u"FirstName"_s), QStringList{"Ann"});
    VERIFY_UI(ui);
}

// Searching, then a customer opened and closed: Enter opens the selected customer again,
// not the search.
void CustomersTest::closedRecordGivesTheListTheFocus()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    for (const char* id : {"CUS1", "CUS2"})
        addRow(u"Customers"_s, customer(QLatin1String(id), u"Name "_s + QLatin1String(id)));
    QStringList opened;
    auto record = [&](QDialog& w) {
        opened << child<QLineEdit>(w, u"custid_lbl"_s)->text();
        child<QPushButton>(w, u"exit_cmd"_s)->click();
        return 0;
    };
    ui.onModal(u"frmCustomer"_s, [&](QDialog& list) {
        showUp(list);
        auto* lst = custList(list);
        [&] { QCOMPARE(QApplication::focusWidget(), lst); }();
        auto* search = child<QLineEdit>(list, u"Search_txt"_s);
        auto* find = child<QPushButton>(list, u"search_cmd"_s);
        search->setFocus();
        [&] { QVERIFY(find->isDefault()); }();
        QTest::keyClicks(search, u"cus2"_s);
        QTest::keyClick(search, Qt::Key_Return); // Enter in the box searches
        ui.onModal(u"frmAddCust"_s, record);
        trigger(list, 6);
        [&] { QVERIFY(!find->isDefault()); }();
        ui.onModal(u"frmAddCust"_s, record);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        return 0;
    });
    trigger(*main, 1);
    QCOMPARE(opened, (QStringList{"CUS2", "CUS2"}));
    VERIFY_UI(ui);
}

VELK_TEST(CustomersTest)
#include "tst_customers.moc"
