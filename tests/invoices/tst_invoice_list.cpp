// The invoice list: sorting, search, and the rows corrected one by one after an invoice
// is added, changed or deleted.

#include "TestUi.h"

#include "invoices/frmInvoice.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/ListRules.h"
#include "store/Recordset.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

QMap<QString, Value> invoice(const QString& no, const QDate& date, const QString& cust, double total)
{
    return {{"InvNo", no},
            {"Date", date},
            {"CustNo", cust},
            {"CustomerName", "Name of " + cust},
            {"Total", Currency::fromDouble(total)},
            {"Balance", Currency::fromDouble(total / 2)}};
}

// Three invoices in table order; of their customers only C2 is on file.
std::unique_ptr<frmMain> threeInvoices(TestUi& ui)
{
    auto main = startProgram(ui, {{"CustPrefix", "CUS"}, {"CustStart", "1001"}});
    auto first = invoice("INV1002", QDate(2026, 3, 1), "C2", 100);
    first.insert("Notes", "urgent");
    addRow("Invoices", first);
    addRow("Invoices", invoice("INV1001", QDate(2025, 12, 24), "C1", 9));
    addRow("Invoices", invoice("INV1003", QDate(2026, 1, 15), "C3", 1234567.5));
    addRow("Customers", {{"CustID", "C2"}, {"LastName", "Smith"}, {"FirstName", "Jo"}});
    return main;
}

QStringList numbers(QTreeWidget* list)
{
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        out << list->topLevelItem(i)->text(0);
    return out;
}

void trigger(QWidget& w, int place)
{
    child<QAction>(w, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

const QString AddQuestion = "Do you want to add this invoice to a new customer";
const QString DeleteQuestion = "Are you sure you want to delete this invoice";

} // namespace

class InvoiceListTest : public QObject
{
    Q_OBJECT
private slots:
    void sortsAndAdds();
    void search_data();
    void search();
    void changeAndDelete();
};

void InvoiceListTest::sortsAndAdds()
{
    TestUi ui;
    auto main = threeInvoices(ui);
    addRow("Customers", {{"CustID", "C9"}, {"LastName", "Young"}, {"FirstName", "Al"}});
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    // Amounts in ten places, so that a text sort orders them; a hidden YYYYMMDD sorts dates.
    QCOMPARE(listRows(list),
             (QStringList{"INV1002 | 01/03/2026 | C2 | Name of C2 |     100.00 |      50.00 | urgent | 20260301",
                          "INV1001 | 24/12/2025 | C1 | Name of C1 |       9.00 |       4.50 |  | 20251224",
                          "INV1003 | 15/01/2026 | C3 | Name of C3 | 1234567.50 |  617283.75 |  | 20260115"}));
    w.rules()->columnClick(1);
    QCOMPARE(numbers(list), (QStringList{"INV1002", "INV1003", "INV1001"}));
    w.rules()->columnClick(4); // the order flips on every click
    QCOMPARE(numbers(list), (QStringList{"INV1001", "INV1002", "INV1003"}));
    w.rules()->columnClick(4);
    auto saveFrom = [&](const char* window, const QString& no, const QString& cust, bool shown = true) {
        ui.onModal(QLatin1String(window), [=](QDialog&) {
            addRow("Invoices", invoice(no, QDate(2026, 4, 1), cust, shown ? 500 : 50));
            InvoiceSaved = 1;
            LastInvoiceNo = shown ? no : QString();
            return 0;
        });
    };
    // Only the new row is added, at its sort place, the customer's name last name first.
    ui.expectBox("Add to New Customer", AddQuestion, vbYes, vbYesNoCancel + vbQuestion);
    saveFrom("frmAddCust", "INV2000", "C9");
    trigger(w, 2);
    QCOMPARE(listRows(list)[1], "INV2000 | 01/04/2026 | C9 | Young Al |     500.00 |     250.00 |  | 20260401");
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(1));
    QCOMPARE(LastInvoiceNo.trimmed(), QString());
    // A customer not on file leaves both cells empty; an equal amount goes after.
    ui.expectBox("Add to New Customer", AddQuestion, vbNo);
    saveFrom("frmsearchCust", "INV2001", "C8");
    trigger(w, 2);
    QCOMPARE(listRows(list)[2].left(36), "INV2001 | 01/04/2026 |  |  |     500");
    ui.expectBox("Add to New Customer", AddQuestion, vbCancel);
    trigger(w, 2);
    QCOMPARE(list->topLevelItemCount(), 5);
    // With no number to show, the list is read again in the order chosen.
    ui.expectBox("Add to New Customer", AddQuestion, vbYes);
    saveFrom("frmAddCust", "INV0999", "C1", false);
    trigger(w, 2);
    QCOMPARE(numbers(list), (QStringList{"INV1003", "INV2000", "INV2001", "INV1002", "INV0999", "INV1001"}));
    VERIFY_UI(ui);
}

void InvoiceListTest::search_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("start");
    QTest::addColumn<QString>("found"); // the row selected, or empty for "Not Found"
    for (const QString row : {"number|inv1003|1|INV1003", "date|24/12|1|INV1001", "customer id|c3|1|INV1003",
                              "customer name|name of c2|1|INV1002", "amount|1234567|1|INV1003",
                              "balance is not searched|617283|1|", "notes are not searched|urgent|1|",
                              "above the start: second pass|INV1002|3|INV1002", "next after the start|INV|2|INV1001"}) {
        const QStringList f = row.split('|');
        QTest::newRow(qPrintable(f[0])) << f[1] << f[2].toInt() << f[3];
    }
}

void InvoiceListTest::search()
{
    QFETCH(QString, text);
    QFETCH(int, start);
    QFETCH(QString, found);
    TestUi ui;
    auto main = threeInvoices(ui);
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    child<QLineEdit>(w, "Search_txt")->setText(text);
    w.rules()->SearchPos = start;
    list->clearSelection();
    child<QPushButton>(w, "search_cmd")->click();
    QCOMPARE(child<QLabel>(w, "Found_lbl")->text(), found.isEmpty() ? "Not Found" : "");
    QCOMPARE(list->selectedItems().isEmpty() ? QString() : list->selectedItems().first()->text(0), found);
    VERIFY_UI(ui);
}

void InvoiceListTest::changeAndDelete()
{
    TestUi ui;
    auto main = threeInvoices(ui);
    for (const char* no : {"INV1001", "INV1002", "INV1002", "INV10020", "INV1003"})
        addRow("InvoiceD", {{"InvNo", QLatin1String(no)}, {"PartID", "P"}});
    frmInvoice w;
    auto* list = child<QTreeWidget>(w, "Inv_lst");
    w.rules()->columnClick(1); // descending by date: INV1002, INV1003, INV1001
    w.rules()->select(list->topLevelItem(0));
    auto change = [&](const QMap<QString, Value>& values, int saved) {
        ui.onModal("frmAddInv", [&, values, saved](QDialog&) {
            [&] { QCOMPARE(OpenInvoiceNo + QString::number(EditInvoiceMode), "INV10021"); }();
            Recordset rs;
            rs.open("Invoices", ConnectionString, Recordset::adLockPessimistic);
            rs.setIndex("InvNo");
            rs.seek("INV1002");
            for (auto it = values.begin(); it != values.end(); ++it)
                rs.setField(it.key(), it.value());
            rs.update();
            InvoiceSaved = saved;
            return 0;
        });
    };
    change({{"Date", QDate(2020, 5, 6)}, {"Notes", QString()}, {"Total", Currency::fromDouble(7)}}, 1);
    trigger(w, 6);
    // The emptied note and the old sort date stay; the row keeps its place.
    QCOMPARE(listRows(list)[0], "INV1002 | 06/05/2020 | C2 | Smith Jo |       7.00 |      50.00 | urgent | 20260301");
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(0));
    // Saved nothing: the row stands as it was.
    change({{"Total", Currency::fromDouble(8)}}, 0);
    emit list->itemDoubleClicked(list->topLevelItem(0), 0);
    QVERIFY(listRows(list)[0].contains("|       7.00 |"));
    // Deleting takes the invoice and its own lines only, and selects the first row.
    ui.expectBox("Confirm", DeleteQuestion, vbNo, vbYesNo + vbQuestion);
    trigger(w, 4);
    ui.expectBox("Confirm", DeleteQuestion, vbYes);
    trigger(w, 4);
    QCOMPARE(numbers(list), (QStringList{"INV1003", "INV1001"}));
    QCOMPARE(list->selectedItems().value(0), list->topLevelItem(0));
    QCOMPARE(columnValues("Invoices", "InvNo"), (QStringList{"INV1001", "INV1003"}));
    QCOMPARE(columnValues("InvoiceD", "InvNo"), (QStringList{"INV1001", "INV10020", "INV1003"}));
    // With the last rows gone Edit does nothing and Delete says so.
    for (int i = 0; i < 2; ++i) {
        ui.expectBox("Confirm", DeleteQuestion, vbYes);
        trigger(w, 4);
    }
    QVERIFY(list->topLevelItemCount() == 0 && list->selectedItems().isEmpty());
    trigger(w, 6);
    ui.expectBox("Please try again", "No row selected. Please try again.", vbOK, vbExclamation);
    trigger(w, 4);
    VERIFY_UI(ui);
}

VELK_TEST(InvoiceListTest)
#include "tst_invoice_list.moc"
