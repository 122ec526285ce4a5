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

namespace
{

QMap<QString, Value> customer(const QString& id, const QString& last, const QString& first = QStringLiteral("Ann"))
{
    return {{"CustID", id},         {"LastName", last},      {"FirstName", first}, {"Phone", QStringLiteral("0123")},
            {"Address", QString()}, {"Address2", QString()}, {"City", QString()},  {"address4", QString()},
            {"Postcode", QString()}};
}

void type(QWidget& w, const char* name, const QString& text)
{
    auto* box = child<QLineEdit>(w, QLatin1String(name));
    box->clear();
    QTest::keyClicks(box, text);
}

void trigger(QWidget& w, int place)
{
    child<QAction>(w, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

const QString Saved = QStringLiteral("Customer details have been saved.");
const QString AddInvoice = QStringLiteral("Do you want to add an invoice to this customer?");
const QString InUse = QStringLiteral("This Customer number has already been used. Please try again!");

} // namespace

class CustomersTest : public QObject
{
    Q_OBJECT
private slots:
    void listShowsEveryCustomer_data();
    void listShowsEveryCustomer();
    void nullInAListedPartEndsTheProgram();
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
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS2"), QStringLiteral("Zed")));
    auto c = customer(QStringLiteral("CUS1"), QStringLiteral("Smith"), QStringLiteral("Jo"));
    const char* columns[] = {"Address", "Address2", "City", "address4", "Postcode"};
    for (int i = 0; i < 5; ++i)
        c.insert(QLatin1String(columns[i]), parts[i]);
    c.remove(QStringLiteral("Phone"));
    addRow(QStringLiteral("Customers"), c);
    ui.onModal(QStringLiteral("frmCustomer"), [&](QDialog& w) {
        [&] { QCOMPARE(w.windowTitle(), QStringLiteral("Customers")); }();
        auto* list = child<QTreeWidget>(w, QStringLiteral("Cust_lst"));
        QStringList headings;
        for (int i = 0; i < list->columnCount(); ++i)
            headings << list->headerItem()->text(i);
        [&] { QCOMPARE(headings, (QStringList{"Cust ID", "Customer Name", "Phone", "Address"})); }();
        // Table order, the first row selected; a Null phone shows empty.
        [&] {
            QCOMPARE(listRows(list), (QStringList{"CUS2 | Zed, Ann | 0123 | ", "CUS1 | Smith, Jo |  | " + cell}));
        }();
        [&] { QCOMPARE(list->currentItem(), list->topLevelItem(0)); }();
        return 0;
    });
    trigger(*main, 1);
    VERIFY_UI(ui);
}

void CustomersTest::nullInAListedPartEndsTheProgram()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addRow(QStringLiteral("Customers"), {{"CustID", QStringLiteral("CUS1")}, {"LastName", QStringLiteral("Smith")}});
    ui.expectBox(QStringLiteral("Error Message"), errorMessageText(94, QStringLiteral("frmCustomer"),
                                                                   QStringLiteral("Load_list"), standardErrorText(94)));
    QVERIFY(endsProgram([] { frmCustomer w; }));
    VERIFY_UI(ui);
}

void CustomersTest::searchAndSort()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    const QStringList last{"Brown", "adams", "Clark", "Brownlow", "Young"};
    for (int i = 0; i < last.size(); ++i)
        addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS%1").arg(i + 1), last[i]));
    frmCustomer w;
    auto* list = child<QTreeWidget>(w, QStringLiteral("Cust_lst"));
    auto* found = child<QLabel>(w, QStringLiteral("Found_lbl"));
    auto search = [&](const QString& text) {
        type(w, "Search_txt", text);
        child<QPushButton>(w, QStringLiteral("search_cmd"))->click();
        return list->currentItem() ? list->currentItem()->text(0) : QString();
    };
    // From the top, then on to the next match, then round again.
    QCOMPARE(search(QStringLiteral("brown")), QStringLiteral("CUS1"));
    QCOMPARE(search(QStringLiteral("brown")), QStringLiteral("CUS4"));
    QCOMPARE(search(QStringLiteral("brown")), QStringLiteral("CUS1"));
    QCOMPARE(found->text(), QString());
    // Found only above the starting row: the second pass finds it.
    QCOMPARE(search(QStringLiteral("ADAMS")), QStringLiteral("CUS2"));
    QCOMPARE(search(QStringLiteral("Young")), QStringLiteral("CUS5"));
    QCOMPARE(search(QStringLiteral("Clark")), QStringLiteral("CUS3"));
    QCOMPARE(found->text(), QString());
    QCOMPARE(search(QStringLiteral("nobody")), QStringLiteral("CUS3"));
    QCOMPARE(found->text(), QStringLiteral("Not Found"));
    // The address column is searched too (sub-item 3): every row has "0123" in the phone.
    w.rules()->SearchPos = 1;
    QCOMPARE(search(QStringLiteral("0123")), QStringLiteral("CUS1"));

    // The first click sorts descending and marks key1; each click flips, on any column.
    list->header()->sectionClicked(1);
    QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("Young, Ann"));
    QCOMPARE(headingMark(list, 1), QStringLiteral("key1"));
    list->header()->sectionClicked(0);
    QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("CUS1"));
    QCOMPARE(headingMark(list, 0), QStringLiteral("key2"));
    QCOMPARE(headingMark(list, 1), QString());
    list->header()->sectionClicked(1);
    QCOMPARE(listRows(list).first(), QStringLiteral("CUS5 | Young, Ann | 0123 | "));
    QCOMPARE(list->topLevelItem(4)->text(1), QStringLiteral("adams, Ann")); // text order ignores case
    VERIFY_UI(ui);
}

void CustomersTest::newNumberedCustomer_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("proposal");
    QTest::addColumn<QString>("next");
    QTest::newRow("skips taken numbers") << "CUS"
                                         << "100001" << QStringList{"CUS100001", "cus100002"} << "CUS100003"
                                         << "100004";
    QTest::newRow("digit in the prefix") << "A1"
                                         << "100001" << QStringList{} << "A1100001"
                                         << "100002";
    QTest::newRow("width wraps") << "C"
                                 << "9999" << QStringList{} << "C9999"
                                 << "0000";
    QTest::newRow("blank prefix") << ""
                                  << "0042" << QStringList{"0042"} << "0043"
                                  << "0044";
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
        addRow(QStringLiteral("Customers"), customer(id, QStringLiteral("Taken")));
    ui.onModal(QStringLiteral("frmCustomer"), [&](QDialog& list) {
        ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
            [&] {
                QCOMPARE(w.windowTitle(), QStringLiteral("Customer"));
                QCOMPARE(child<QLineEdit>(w, QStringLiteral("custid_lbl"))->text(), proposal);
                QVERIFY(!child<QLineEdit>(w, QStringLiteral("custid_lbl"))->isEnabled());
                QVERIFY(!child<QGroupBox>(w, QStringLiteral("inv_frame"))->isEnabled());
                QCOMPARE(child<QDateEdit>(w, QStringLiteral("DTPicker1"))->date(), QDate(2026, 11, 22));
            }();
            type(w, "FirstName_txt", QStringLiteral(" Jo "));
            type(w, "Lastname_txt", QStringLiteral("Smith"));
            child<MemoBox>(w, QStringLiteral("address1"))->setPlainText(QStringLiteral("1 High St "));
            type(w, "address3", QStringLiteral("York"));
            type(w, "postcode_txt", QStringLiteral("YO1"));
            child<QPushButton>(w, QStringLiteral("copy_cmd"))->click();
            ui.expectBox(QStringLiteral("Saved"), Saved, vbOK, vbInformation);
            ui.expectBox(QStringLiteral("Add Invoice"), AddInvoice, vbNo);
            child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
            [&] {
                QVERIFY(child<QGroupBox>(w, QStringLiteral("inv_frame"))->isEnabled());
                QVERIFY(!static_cast<frmAddCust&>(w).changed());
            }();
            child<QPushButton>(w, QStringLiteral("exit_cmd"))->click(); // saved: no question
            return 0;
        });
        trigger(list, 2);
        // The new row stands last in a list never sorted.
        [&] {
            QCOMPARE(listRows(child<QTreeWidget>(list, QStringLiteral("Cust_lst"))).last(),
                     proposal + QStringLiteral(" | Smith, Jo |  | 1 High St,  York,  YO1"));
        }();
        return 0;
    });
    trigger(*main, 1);
    QCOMPARE(LastCustID.trimmed(), proposal);
    QCOMPARE(settings.CustStart, next);
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("CustStart")), QStringList{next});
    // The row as stored: texts trimmed, the date of the picker, the delivery copied.
    Recordset rs;
    rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(QStringLiteral("CUSTID"));
    rs.seek(proposal, Recordset::adSeekFirstEQ);
    QCOMPARE(rs.field(QStringLiteral("FirstName")).toText(), QStringLiteral("Jo"));
    QCOMPARE(rs.field(QStringLiteral("Address")).toText(), QStringLiteral("1 High St"));
    QCOMPARE(rs.field(QStringLiteral("DelAddress1")).toText(), QStringLiteral("1 High St"));
    QCOMPARE(rs.field(QStringLiteral("DelAddress5")).toText(), QStringLiteral("YO1"));
    QCOMPARE(rs.field(QStringLiteral("Mobile")).toText(), QString());
    QCOMPARE(rs.field(QStringLiteral("Date")).toDate().date(), QDate(2026, 11, 22));
    QVERIFY(rs.field(QStringLiteral("Discount")) == Value(qint64(0)));
    VERIFY_UI(ui);
}

void CustomersTest::newFreeFormCustomerAndClashes()
{
    TestUi ui;
    auto main = startProgram(
        ui, {{"FreeformCus", 1}, {"CustPrefix", QStringLiteral("CUS")}, {"CustStart", QStringLiteral("100001")}});
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("ACME"), QStringLiteral("Taken")));
    frmCustomer list;
    auto fill = [&](QDialog& w, const QString& id) {
        type(w, "custid_lbl", id);
        type(w, "FirstName_txt", QStringLiteral("Jo"));
        type(w, "Lastname_txt", QStringLiteral("Smith"));
    };
    // The same id: both checks show the box; the window stays, the list hears of the id.
    ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
        [&] {
            QVERIFY(child<QLineEdit>(w, QStringLiteral("custid_lbl"))->isEnabled());
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("custid_lbl"))->text(), QString());
        }();
        fill(w, QStringLiteral("ACME"));
        ui.expectBox(QStringLiteral("Customer Number Already In Use"), InUse, vbOK, vbExclamation);
        ui.expectBox(QStringLiteral("Customer Number Already In Use"), InUse, vbOK, vbExclamation);
        child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
        [&] { QCOMPARE(CustomerChanged, qint16(1)); }();
        // An empty id: the other box, then the beep of the required field.
        type(w, "custid_lbl", QString());
        ui.expectBox(QStringLiteral("Enter Customer ID"), QStringLiteral(" Please enter a Customer ID."), vbOK,
                     vbExclamation);
        child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
        [&] { QCOMPARE(ui.beeps, 1); }();
        type(w, "custid_lbl", QStringLiteral("ACME"));
        ui.expectBox(QStringLiteral("Save Changes"), QStringLiteral("Do you wish to save changes?"), vbNo);
        child<QPushButton>(w, QStringLiteral("exit_cmd"))->click();
        return 0;
    });
    trigger(list, 2);
    QCOMPARE(LastCustID.trimmed(), QStringLiteral("ACME"));
    QCOMPARE(listRows(child<QTreeWidget>(list, QStringLiteral("Cust_lst"))).size(),
             2); // the clashing id is listed again
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("CustID")), QStringList{"ACME"});

    // A new free-form id is saved as typed and leaves the next number alone.
    ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
        fill(w, QStringLiteral(" Shop 7 "));
        ui.expectBox(QStringLiteral("Saved"), Saved);
        ui.expectBox(QStringLiteral("Add Invoice"), AddInvoice, vbNo);
        child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
        child<QPushButton>(w, QStringLiteral("exit_cmd"))->click();
        return 0;
    });
    trigger(list, 2);
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("CustID")), (QStringList{"ACME", "Shop 7"}));
    QCOMPARE(settings.CustStart, QStringLiteral("100001"));

    // An id differing only in case passes the save's own test; the unique index refuses it.
    ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
        fill(w, QStringLiteral("acme"));
        ui.expectBox(QStringLiteral("Customer Number Already In Use"), InUse);
        ui.expectBox(QStringLiteral("Error Message"),
                     errorMessageText(err::DuplicateKey, QStringLiteral("frmAddCust"), QStringLiteral("Save_cmd"),
                                      standardErrorText(err::DuplicateKey)));
        child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
        return 0;
    });
    QVERIFY(endsProgram([&] { trigger(list, 2); }));
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("CustID")), (QStringList{"ACME", "Shop 7"}));
    VERIFY_UI(ui);
}

void CustomersTest::existingCustomerChangesInPlace()
{
    TestUi ui;
    auto main = startProgram(ui, {{"CustStart", QStringLiteral("100001")}, {"CustPrefix", QStringLiteral("CUS")}});
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS1"), QStringLiteral("Brown")));
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS2"), QStringLiteral("Adams")));
    frmCustomer list;
    auto* lst = child<QTreeWidget>(list, QStringLiteral("Cust_lst"));
    lst->header()->sectionClicked(1); // sorted descending by name: Brown above Adams
    lst->setCurrentItem(lst->topLevelItem(1));
    ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
        [&] {
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("custid_lbl"))->text(), QStringLiteral("CUS2"));
            QVERIFY(!child<QLineEdit>(w, QStringLiteral("custid_lbl"))->isEnabled());
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("Lastname_txt"))->text(), QStringLiteral("Adams"));
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("Phone_txt"))->text(), QStringLiteral("0123"));
        }();
        type(w, "Lastname_txt", QStringLiteral("Zulu"));
        ui.expectBox(QStringLiteral("Saved"), Saved);
        child<QPushButton>(w, QStringLiteral("Save_cmd"))->click();
        child<QPushButton>(w, QStringLiteral("exit_cmd"))->click();
        return 0;
    });
    trigger(list, 6);
    // Rewritten where it stands, although the name now sorts first.
    QCOMPARE(listRows(lst), (QStringList{"CUS1 | Brown, Ann | 0123 | ", "CUS2 | Zulu, Ann | 0123 | "}));
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("LastName")), (QStringList{"Brown", "Zulu"}));
    QCOMPARE(settings.CustStart, QStringLiteral("100001"));
    // View and Exit without a change leaves the row alone.
    ui.onModal(QStringLiteral("frmAddCust"), [&](QDialog& w) {
        child<QPushButton>(w, QStringLiteral("exit_cmd"))->click();
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
    ui.expectBox(QStringLiteral("Delete?"), QStringLiteral("Are you sure you want to delete this customer?"), vbYes);
    trigger(empty, 4);
    for (const char* id : {"ONE", "TWO", "NONE", "CASE"})
        addRow(QStringLiteral("Customers"), customer(QLatin1String(id), QStringLiteral("X")));
    int invoiceCount = 0;
    for (const char* owner : {"ONE", "TWO", "TWO", "case"})
        addRow(QStringLiteral("Invoices"),
               {{"InvNo", QStringLiteral("I%1").arg(++invoiceCount)}, {"CustNo", QLatin1String(owner)}});
    frmCustomer w;
    auto* lst = child<QTreeWidget>(w, QStringLiteral("Cust_lst"));
    auto remove = [&](int row, int answer) {
        lst->setCurrentItem(lst->topLevelItem(row));
        ui.expectBox(QStringLiteral("Delete?"), QStringLiteral("Are you sure you want to delete this customer?"),
                     answer, vbYesNo + vbQuestion);
    };
    remove(0, vbYes);
    ui.expectBox(
        QStringLiteral("Cannot Delete!"),
        QStringLiteral("Customer ONE cannot be deleted, as it has 1 invoice attached! Please delete this invoice "
                       "first before deleting this customer."),
        vbOK, vbExclamation);
    trigger(w, 4);
    remove(1, vbYes);
    ui.expectBox(QStringLiteral("Cannot Delete!"),
                 QStringLiteral("Customer TWO cannot be deleted, as it has 2 invoices attached! Please delete these "
                                "invoices first before deleting this customer."),
                 vbOK, vbExclamation);
    trigger(w, 4);
    remove(2, vbNo);
    trigger(w, 4);
    QCOMPARE(lst->topLevelItemCount(), 4);
    remove(3, vbYes); // its invoice names it in another case: the count compares exactly
    ui.expectBox(QStringLiteral("Customer Deleted!"), QStringLiteral("Customer CASE has been deleted!"), vbOK,
                 vbInformation);
    trigger(w, 4);
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("CustID")), (QStringList{"ONE", "TWO", "NONE"}));
    QCOMPARE(listRows(lst).size(), 3);
    QCOMPARE(lst->currentItem()->text(0), QStringLiteral("NONE"));
    VERIFY_UI(ui);
}

void CustomersTest::invoiceHistory()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS1"), QStringLiteral("Brown")));
    addRow(QStringLiteral("Invoices"), {{"InvNo", QStringLiteral("INV2")},
                                        {"CustNo", QStringLiteral("CUS1")},
                                        {"Date", QDate(2026, 3, 1)},
                                        {"Total", 117.5},
                                        {"Paid", 17.5},
                                        {"Balance", 100.0},
                                        {"Notes", QStringLiteral("rush")}});
    addRow(QStringLiteral("Invoices"), {{"InvNo", QStringLiteral("INV1")},
                                        {"CustNo", QStringLiteral("CUS1")},
                                        {"Date", QDate(2026, 2, 1)},
                                        {"Total", 10.0},
                                        {"Paid", 10.0},
                                        {"Balance", 0.0}});
    addRow(QStringLiteral("Invoices"),
           {{"InvNo", QStringLiteral("INV3")}, {"CustNo", QStringLiteral("CUS9")}, {"Balance", 5.0}});
    for (const char* no : {"INV2", "INV2", "INV1", "INV3"})
        addRow(QStringLiteral("InvoiceD"), {{"InvNo", QLatin1String(no)}, {"Qty", 1}});
    NewCustomerMode = 0;
    SelectedCustID = QStringLiteral("CUS1");
    frmAddCust w;
    auto* lst = child<QTreeWidget>(w, QStringLiteral("Inv_lst"));
    // In the order of the customer index: the customer's invoices in the order they were added.
    QCOMPARE(listRows(lst), (QStringList{"01/03/2026 | INV2 |     117.50 |      17.50 |     100.00 | rush",
                                         "01/02/2026 | INV1 |      10.00 |      10.00 |       0.00 | "}));
    QCOMPARE(child<QLabel>(w, QStringLiteral("Total_lbl"))->text(), QStringLiteral("    100.00"));
    // The amounts line up by their last digit; the notes do not.
    for (int column : {2, 3, 4})
        QCOMPARE(lst->topLevelItem(0)->data(column, Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask,
                 int(Qt::AlignRight));
    QVERIFY(!(lst->topLevelItem(0)->data(5, Qt::TextAlignmentRole).toInt() & Qt::AlignRight));
    QVERIFY(child<QPushButton>(w, QStringLiteral("Edit_cmd"))->isEnabled());
    lst->setCurrentItem(lst->topLevelItem(0));
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to delete this invoice"), vbYes);
    child<QPushButton>(w, QStringLiteral("Delete_cmd"))->click();
    QCOMPARE(child<QLabel>(w, QStringLiteral("Total_lbl"))->text(), QStringLiteral("      0.00"));
    QCOMPARE(listRows(lst).size(), 1);
    QCOMPARE(columnValues(QStringLiteral("Invoices"), QStringLiteral("InvNo")), (QStringList{"INV1", "INV3"}));
    QCOMPARE(columnValues(QStringLiteral("InvoiceD"), QStringLiteral("InvNo")), (QStringList{"INV1", "INV3"}));
    VERIFY_UI(ui);
}

void CustomersTest::customisationShowsAtOnce()
{
    TestUi ui;
    auto main = startProgram(
        ui, {{"FaxVisible", 1}, {"phoneVisible", 1}, {"ConfirmAll", 1}, {"CustStart", QStringLiteral("1001")}});
    NewCustomerMode = 1;
    frmAddCust w;
    w.show();
    QVERIFY(child<QLineEdit>(w, QStringLiteral("Fax_txt"))->isVisible());
    QVERIFY(!child<QLineEdit>(w, QStringLiteral("mobile_txt"))->isVisible());
    QVERIFY(!child<QPushButton>(w, QStringLiteral("copy_cmd"))->isVisible());
    ui.onModal(QStringLiteral("frmCustomerSet"), [&](QDialog& d) {
        [&] {
            QCOMPARE(d.windowTitle(), QStringLiteral("Customize Customer Screen"));
            QVERIFY(child<QCheckBox>(d, QStringLiteral("fax_chk"))->isChecked());
            QVERIFY(!child<QCheckBox>(d, QStringLiteral("mobile_chk"))->isChecked());
            QCOMPARE(child<QLabel>(d, QStringLiteral("Label1"))->text(),
                     QStringLiteral("Untick any check box to make text boxes invisble"));
        }();
        child<QCheckBox>(d, QStringLiteral("fax_chk"))->setChecked(false);
        child<QCheckBox>(d, QStringLiteral("mobile_chk"))->setChecked(true);
        child<QCheckBox>(d, QStringLiteral("Shipping1_chk"))->setChecked(true);
        child<QPushButton>(d, QStringLiteral("ok_cmd"))->click();
        return 1;
    });
    child<QPushButton>(w, QStringLiteral("Customize_cmd"))->click();
    QVERIFY(!child<QLineEdit>(w, QStringLiteral("Fax_txt"))->isVisible());
    QVERIFY(child<QLineEdit>(w, QStringLiteral("mobile_txt"))->isVisible());
    QVERIFY(child<QLineEdit>(w, QStringLiteral("delpostcode"))->isVisible());
    QCOMPARE(settings.FaxVisible, qint16(0));
    QCOMPARE(settings.mobileVisible, qint16(1));
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("FaxVisible")), QStringList{"0"});
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("shippingVisible")), QStringList{"1"});
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("ConfirmAll")), QStringList{"1"}); // untouched
    // Cancel saves nothing.
    ui.onModal(QStringLiteral("frmCustomerSet"), [&](QDialog& d) {
        child<QCheckBox>(d, QStringLiteral("phone_chk"))->setChecked(false);
        child<QPushButton>(d, QStringLiteral("cancel_cmd"))->click();
        return 0;
    });
    child<QPushButton>(w, QStringLiteral("Customize_cmd"))->click();
    QCOMPARE(settings.phoneVisible, qint16(1));
    VERIFY_UI(ui);
}

void CustomersTest::statusPrompts_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("prompt");
    QTest::newRow("first name") << "FirstName_txt"
                                << "Please enter first name.";
    QTest::newRow("phone") << "Phone_txt"
                           << "Please enter phone number.";
    QTest::newRow("street, no full stop") << "address1"
                                          << "Please enter address";
    QTest::newRow("county") << "address4"
                            << "Please enter County.";
    QTest::newRow("delivery postcode") << "delpostcode"
                                       << "Please enter address.";
    QTest::newRow("notes") << "Notes_txt"
                           << "Please enter any notes here.";
}

void CustomersTest::statusPrompts()
{
    QFETCH(QString, control);
    QFETCH(QString, prompt);
    TestUi ui;
    auto main = startProgram(ui, {{"CustStart", QStringLiteral("1001")}});
    NewCustomerMode = 1;
    frmAddCust w;
    QFocusEvent in(QEvent::FocusIn);
    QApplication::sendEvent(child<QWidget>(w, control), &in);
    QCOMPARE(child<QLabel>(w, QStringLiteral("help_lbl"))->text(), prompt);
    QVERIFY(child<QPushButton>(w, QStringLiteral("Save_cmd"))->isDefault());
    QCOMPARE(child<QLineEdit>(w, QStringLiteral("FirstName_txt"))->maxLength(), 20);
    QCOMPARE(child<MemoBox>(w, QStringLiteral("Notes_txt"))->maxLength(), 200);
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
    auto main = startProgram(ui, {{"CustStart", QStringLiteral("100001")}, {"CustPrefix", QStringLiteral("CUS")}});
    addRow(QStringLiteral("Customers"), customer(QStringLiteral("CUS1"), QStringLiteral("Brown")));
    NewCustomerMode = newCustomer ? 1 : 0;
    SelectedCustID = QStringLiteral("CUS1");
    frmAddCust w;
    showUp(w);
    child<QLineEdit>(w, QStringLiteral("FirstName_txt"))->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), letters);
    if (copy)
        child<QPushButton>(w, QStringLiteral("copy_cmd"))->click();
    if (answer)
        ui.expectBox(QStringLiteral("Save Changes"), QStringLiteral("Do you wish to save changes?"), answer);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier); // "&Exit", pressed on screen
    QTRY_VERIFY(!w.isVisible());
    QCOMPARE(ui.beeps, answer == vbYes ? 1 : 0);
    QCOMPARE(columnValues(QStringLiteral("Customers"), QStringLiteral("FirstName")), QStringList{"Ann"});
    VERIFY_UI(ui);
}

// Searching, then a customer opened and closed: Enter opens the selected customer again,
// not the search.
void CustomersTest::closedRecordGivesTheListTheFocus()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    for (const char* id : {"CUS1", "CUS2"})
        addRow(QStringLiteral("Customers"), customer(QLatin1String(id), QStringLiteral("Name ") + QLatin1String(id)));
    QStringList opened;
    auto record = [&](QDialog& w) {
        opened << child<QLineEdit>(w, QStringLiteral("custid_lbl"))->text();
        child<QPushButton>(w, QStringLiteral("exit_cmd"))->click();
        return 0;
    };
    ui.onModal(QStringLiteral("frmCustomer"), [&](QDialog& list) {
        showUp(list);
        auto* lst = child<QTreeWidget>(list, QStringLiteral("Cust_lst"));
        [&] { QCOMPARE(QApplication::focusWidget(), lst); }();
        auto* search = child<QLineEdit>(list, QStringLiteral("Search_txt"));
        auto* find = child<QPushButton>(list, QStringLiteral("search_cmd"));
        search->setFocus();
        [&] { QVERIFY(find->isDefault()); }();
        QTest::keyClicks(search, QStringLiteral("cus2"));
        QTest::keyClick(search, Qt::Key_Return); // Enter in the box searches
        ui.onModal(QStringLiteral("frmAddCust"), record);
        trigger(list, 6);
        [&] { QVERIFY(!find->isDefault()); }();
        ui.onModal(QStringLiteral("frmAddCust"), record);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        return 0;
    });
    trigger(*main, 1);
    QCOMPARE(opened, (QStringList{"CUS2", "CUS2"}));
    VERIFY_UI(ui);
}

VELK_TEST(CustomersTest)
#include "tst_customers.moc"
