// The invoice list: its columns, sorting and search, and the rows corrected one by one
// after an invoice is added, changed or deleted.

#include "TestUi.h"

#include "invoices/frmInvoice.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/ListRules.h"
#include "store/Recordset.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

QMap<QString, Value> invoice(const QString& no, const QDate& date, const QString& cust, double total,
                             const QString& notes = QString())
{
    QMap<QString, Value> row{{"InvNo", no},
                             {"Date", date},
                             {"CustNo", cust},
                             {"CustomerName", "Name of " + cust},
                             {"Total", Currency::fromDouble(total)},
                             {"Balance", Currency::fromDouble(total / 2)}};
    if (!notes.isEmpty())
        row.insert("Notes", notes);
    return row;
}

void customer(const QString& id, const QString& last, const QString& first)
{
    addRow("Customers", {{"CustID", id}, {"LastName", last}, {"FirstName", first}});
}

void line(const QString& invNo, const QString& part)
{
    addRow("InvoiceD", {{"InvNo", invNo}, {"PartID", part}, {"Description", part}});
}

// Three invoices in table order; customer C2 is on file.
void threeInvoices()
{
    addRow("Invoices", invoice("INV1002", QDate(2026, 3, 1), "C2", 100, "urgent"));
    addRow("Invoices", invoice("INV1001", QDate(2025, 12, 24), "C1", 9));
    addRow("Invoices", invoice("INV1003", QDate(2026, 1, 15), "C3", 1234567.5));
    customer("C2", "Smith", "Jo");
}

void setInvoice(const QString& no, const QMap<QString, Value>& values)
{
    Recordset rs;
    rs.open("Invoices", ConnectionString, Recordset::adLockPessimistic);
    rs.setIndex("InvNo");
    rs.seek(no);
    for (auto it = values.begin(); it != values.end(); ++it)
        rs.setField(it.key(), it.value());
    rs.update();
}

QStringList column(QTreeWidget* list, int c)
{
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        out << list->topLevelItem(i)->text(c);
    return out;
}

void trigger(QWidget& w, int place)
{
    child<QAction>(w, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

// A new customer's number is proposed from these.
const QMap<QString, Value> Numbered{{"CustPrefix", "CUS"}, {"CustStart", "1001"}};

const QString AddQuestion = "Do you want to add this invoice to a new customer";

} // namespace

class InvoiceListTest : public QObject
{
    Q_OBJECT
private slots:
    void opensAndSortsByHeading();
    void search_data();
    void search();
    void addedRowJoinsItsPlace();
    void changedRowKeepsStaleCells();
    void deleteRemovesInvoiceAndLines();
};

void InvoiceListTest::opensAndSortsByHeading()
{
    TestUi ui;
    auto main = startProgram(ui, Numbered);
    threeInvoices();
    ui.onModal("frmInvoice", [&](QDialog& w) {
        auto* list = child<QTreeWidget>(w, "Inv_lst");
        QStringList headings;
        for (int i = 0; i < list->columnCount(); ++i)
            headings << list->headerItem()->text(i);
        [&] {
            QCOMPARE(headings, (QStringList{"Invoice No.", "Date", "Cust ID.", "Customer Name", "Amount", "Balance",
                                            "Notes", "Date2"}));
            QCOMPARE(list->columnWidth(7), 0);
            // Table order; amounts in ten places, so that a text sort orders them.
            QCOMPARE(
                listRows(list),
                (QStringList{"INV1002 | 01/03/2026 | C2 | Name of C2 |     100.00 |      50.00 | urgent | 20260301",
                             "INV1001 | 24/12/2025 | C1 | Name of C1 |       9.00 |       4.50 |  | 20251224",
                             "INV1003 | 15/01/2026 | C3 | Name of C3 | 1234567.50 |  617283.75 |  | 20260115"}));
            QCOMPARE(list->currentItem(), list->topLevelItem(0));
            list->header()->sectionClicked(1); // "Date": descending by the hidden YYYYMMDD
            QCOMPARE(column(list, 0), (QStringList{"INV1002", "INV1003", "INV1001"}));
            QCOMPARE(headingMark(list, 1), "key1");
            list->header()->sectionClicked(4); // the order flips on every click: ascending
            QCOMPARE(column(list, 0), (QStringList{"INV1001", "INV1002", "INV1003"}));
            QCOMPARE(headingMark(list, 4), "key2");
            QCOMPARE(headingMark(list, 1), QString());
        }();
        // An add with no number to show reads the list again, in the order chosen.
        InvoiceSaved = 1;
        LastInvoiceNo = QString();
        addRow("Invoices", invoice("INV0999", QDate(2026, 2, 2), "C1", 50));
        ui.expectBox("Add to New Customer", AddQuestion, vbYes, vbYesNoCancel + vbQuestion);
        ui.onModal("frmAddCust", [](QDialog&) { return 0; });
        trigger(w, 2);
        [&] { QCOMPARE(column(list, 0), (QStringList{"INV1001", "INV0999", "INV1002", "INV1003"})); }();
        return 0;
    });
    trigger(*main, 3);
    VERIFY_UI(ui);
}

void InvoiceListTest::search_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("start");
    QTest::addColumn<QString>("found"); // the row selected, or empty for "Not Found"
    QTest::newRow("number") << "inv1003" << 1 << "INV1003";
    QTest::newRow("date") << "24/12" << 1 << "INV1001";
    QTest::newRow("customer id") << "c3" << 1 << "INV1003";
    QTest::newRow("customer name") << "name of c2" << 1 << "INV1002";
    QTest::newRow("amount") << "1234567" << 1 << "INV1003";
    QTest::newRow("balance is not searched") << "617283" << 1 << "";
    QTest::newRow("notes are not searched") << "urgent" << 1 << "";
    QTest::newRow("above the start: second pass") << "INV1002" << 3 << "INV1002";
    QTest::newRow("next match after the start") << "INV" << 2 << "INV1001";
}

void InvoiceListTest::search()
{
    QFETCH(QString, text);
    QFETCH(int, start);
    QFETCH(QString, found);
    TestUi ui;
    auto main = startProgram(ui, {});
    threeInvoices();
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    auto* box = child<QLineEdit>(w, "Search_txt");
    box->setText(text);
    w.rules()->SearchPos = start;
    list->clearSelection();
    child<QPushButton>(w, "search_cmd")->click();
    const auto selected = list->selectedItems();
    QCOMPARE(child<QLabel>(w, "Found_lbl")->text(), found.isEmpty() ? "Not Found" : "");
    QCOMPARE(selected.isEmpty() ? QString() : selected.first()->text(0), found);
    VERIFY_UI(ui);
}

void InvoiceListTest::addedRowJoinsItsPlace()
{
    TestUi ui;
    auto main = startProgram(ui, Numbered);
    threeInvoices();
    customer("C9", "Young", "Al");
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    w.rules()->columnClick(4); // descending by amount
    auto saveFrom = [&](const char* window, const QString& no, const QString& cust) {
        ui.onModal(QLatin1String(window), [=](QDialog&) {
            addRow("Invoices", invoice(no, QDate(2026, 4, 1), cust, 500));
            InvoiceSaved = 1;
            LastInvoiceNo = no;
            return 0;
        });
    };
    ui.expectBox("Add to New Customer", AddQuestion, vbYes);
    saveFrom("frmAddCust", "INV2000", "C9");
    trigger(w, 2);
    // Only this row is added, the customer's name last name first, at its sort place.
    QCOMPARE(listRows(list)[1], QStringLiteral("INV2000 | 01/04/2026 | C9 | Young Al |     500.00 |     250.00 |  | "
                                               "20260401"));
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(1));
    QCOMPARE(LastInvoiceNo.trimmed(), QString());
    // Through the picker. A customer no longer on file leaves both customer cells empty;
    // an equal amount stands after the rows already there.
    ui.expectBox("Add to New Customer", AddQuestion, vbNo);
    saveFrom("frmsearchCust", "INV2001", "C8");
    trigger(w, 2);
    QCOMPARE(listRows(list)[2].left(36), "INV2001 | 01/04/2026 |  |  |     500");
    // Cancel: nothing opens, nothing changes.
    ui.expectBox("Add to New Customer", AddQuestion, vbCancel);
    trigger(w, 2);
    QCOMPARE(list->topLevelItemCount(), 5);
    VERIFY_UI(ui);
}

void InvoiceListTest::changedRowKeepsStaleCells()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    threeInvoices();
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    w.rules()->columnClick(1); // descending by date: INV1002, INV1003, INV1001
    w.rules()->select(list->topLevelItem(0));
    ui.onModal("frmAddInv", [&](QDialog&) {
        [&] {
            QCOMPARE(OpenInvoiceNo, "INV1002");
            QCOMPARE(EditInvoiceMode, qint16(1));
        }();
        setInvoice("INV1002", {{"Date", QDate(2020, 5, 6)},
                               {"Notes", QString()},
                               {"Total", Currency::fromDouble(7)},
                               {"Balance", Currency::fromDouble(0)}});
        InvoiceSaved = 1;
        return 0;
    });
    trigger(w, 6);
    // The emptied note and the old sort date stay; the row keeps its place.
    QCOMPARE(listRows(list)[0], "INV1002 | 06/05/2020 | C2 | Smith Jo |       7.00 |       0.00 | urgent | 20260301");
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(0));
    // Saved nothing: the row stands as it was.
    ui.onModal("frmAddInv", [&](QDialog&) {
        setInvoice("INV1002", {{"Notes", "later"}});
        InvoiceSaved = 0;
        return 0;
    });
    emit list->itemDoubleClicked(list->topLevelItem(0), 0);
    QVERIFY(listRows(list)[0].contains("| urgent |"));
    VERIFY_UI(ui);
}

void InvoiceListTest::deleteRemovesInvoiceAndLines()
{
    TestUi ui;
    auto main = startProgram(ui, {});
    threeInvoices();
    for (const char* no : {"INV1001", "INV1002", "INV1002", "INV10020", "INV1003"})
        line(QLatin1String(no), QStringLiteral("P-") + QLatin1String(no));
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    const QString confirm = "Are you sure you want to delete this invoice";
    ui.expectBox("Confirm", confirm, vbNo, vbYesNo + vbQuestion);
    trigger(w, 4);
    QCOMPARE(list->topLevelItemCount(), 3);
    ui.expectBox("Confirm", confirm, vbYes);
    trigger(w, 4);
    QCOMPARE(column(list, 0), (QStringList{"INV1001", "INV1003"}));
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(0));
    QCOMPARE(columnValues("Invoices", "InvNo"), (QStringList{"INV1001", "INV1003"}));
    QCOMPARE(columnValues("InvoiceD", "InvNo"), (QStringList{"INV1001", "INV10020", "INV1003"}));
    // Deleting the last rows leaves no row and no selection; then Edit does nothing and
    // Delete says so.
    for (int i = 0; i < 2; ++i) {
        ui.expectBox("Confirm", confirm, vbYes);
        trigger(w, 4);
    }
    QCOMPARE(list->topLevelItemCount(), 0);
    QVERIFY(list->selectedItems().isEmpty());
    trigger(w, 6);
    ui.expectBox("Please try again", "No row selected. Please try again.", vbOK, vbExclamation);
    trigger(w, 4);
    ui.onModal("Help_frm", [](QDialog&) { return 0; });
    trigger(w, 8);
    QCOMPARE(HelpTopic.trimmed(), "Invoice.htm");
    VERIFY_UI(ui);
}

VELK_TEST(InvoiceListTest)
#include "tst_invoice_list.moc"
