// The item list and the item record, driven as a user would.

#include "TestUi.h"

#include "items/frm_AddPart.h"
#include "items/frm_Parts.h"
#include "platform/MemoBox.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"

#include <QAction>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace platform;

namespace
{

void trigger(QWidget& w, int place)
{
    child<QAction>(w, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

// Leaving a box, as the focus moving on would.
void leave(QWidget* box)
{
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(box, &out);
}

QMap<QString, Value> item(const QString& id, double price, int taxable = 1)
{
    return {{"ID", id},
            {"ShortDesc", QStringLiteral("Short ") + id},
            {"Desc", QStringLiteral("Long ") + id},
            {"Price", price},
            {"Taxable", taxable}};
}

const QString Continue = QStringLiteral("Are you sure you want to update?");

} // namespace

class ItemsTest : public QObject
{
    Q_OBJECT
private slots:
    void listShowsEveryItem();
    void newNumberedItem_data();
    void newNumberedItem();
    void priceEntry_data();
    void priceEntry();
    void freeFormAndRefusals();
    void editAndDelete();
};

void ItemsTest::listShowsEveryItem()
{
    TestUi ui;
    auto main = startProgram(ui, {{"PartStart", QStringLiteral("1001")}});
    addRow(QStringLiteral("Parts"), item(QStringLiteral("P1"), 100.0));
    addRow(QStringLiteral("Parts"), item(QStringLiteral("P2"), 9.5, 2));
    addRow(QStringLiteral("Parts"),
           {{"ID", QStringLiteral("P3")}, {"Desc", QStringLiteral("no price")}, {"Price", Value()}});
    ui.onModal(QStringLiteral("frm_Parts"), [&](QDialog& w) {
        auto* list = child<QTreeWidget>(w, QStringLiteral("Parts_lst"));
        [&] {
            QCOMPARE(w.windowTitle(), QStringLiteral("Items"));
            QCOMPARE(list->headerItem()->text(1), QStringLiteral("Short Descriprtion"));
            QCOMPARE(listRows(list, QStringLiteral("|")),
                     (QStringList{"P1|Short P1|Long P1|       100.00|Yes", "P2|Short P2|Long P2|         9.50|No",
                                  "P3||no price|             |No"}));
        }();
        // The price text is searched, "Taxable" is not.
        QTest::keyClicks(child<QLineEdit>(w, QStringLiteral("search_txt")), QStringLiteral("9.5"));
        child<QPushButton>(w, QStringLiteral("search_cmd"))->click();
        [&] { QCOMPARE(list->currentItem()->text(0), QStringLiteral("P2")); }();
        child<QLineEdit>(w, QStringLiteral("search_txt"))->setText(QStringLiteral("Yes"));
        child<QPushButton>(w, QStringLiteral("search_cmd"))->click();
        [&] { QCOMPARE(child<QLabel>(w, QStringLiteral("Found_lbl"))->text(), QStringLiteral("Not Found")); }();
        return 0;
    });
    child<QAction>(*main, QStringLiteral("Toolbar1(11)"))->trigger();
    // A Null long description is a failure of the list.
    addRow(QStringLiteral("Parts"), {{"ID", QStringLiteral("P4")}});
    ui.expectBox(QStringLiteral("Error Message"),
                 errorMessageText(94, QStringLiteral("frm_Parts"), QStringLiteral("Load_list"), standardErrorText(94)));
    QVERIFY(endsProgram([] { frm_Parts w; }));
    VERIFY_UI(ui);
}

void ItemsTest::newNumberedItem_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("proposal");
    QTest::addColumn<QString>("next");
    QTest::newRow("nothing taken") << QStringList{} << "PRT100001"
                                   << "100002";
    QTest::newRow("skips exact ids") << QStringList{"PRT100001", "PRT100002"} << "PRT100003"
                                     << "100004";
}

void ItemsTest::newNumberedItem()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, proposal);
    QFETCH(QString, next);
    TestUi ui;
    auto main = startProgram(ui, {{"PartPrefix", QStringLiteral("PRT")}, {"PartStart", QStringLiteral("100001")}});
    for (const QString& id : taken)
        addRow(QStringLiteral("Parts"), item(id, 1.0));
    frm_Parts list;
    ui.onModal(QStringLiteral("frm_AddPart"), [&](QDialog& w) {
        [&] {
            QCOMPARE(w.windowTitle(), QStringLiteral("Add Item"));
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("Part_lbl"))->text(), proposal);
            QVERIFY(!child<QLineEdit>(w, QStringLiteral("Part_lbl"))->isEnabled());
            QCOMPARE(child<QLabel>(w, QStringLiteral("count_lbl"))->text(), QStringLiteral("120"));
        }();
        QTest::keyClicks(child<QLineEdit>(w, QStringLiteral("Short_txt")), QStringLiteral("Widget"));
        auto* longText = child<MemoBox>(w, QStringLiteral("long_txt"));
        QTest::keyClicks(longText, QString(120, 'w'));
        [&] {
            QCOMPARE(child<QLabel>(w, QStringLiteral("count_lbl"))->text(), QStringLiteral("0"));
            QCOMPARE(longText->text().size(), 120);
        }();
        QTest::keyClicks(child<QLineEdit>(w, QStringLiteral("Price_txt")), QStringLiteral("12.5"));
        child<QCheckBox>(w, QStringLiteral("tax_chk"))->setChecked(true);
        ui.expectBox(QStringLiteral("Continue?"), Continue, vbYes, vbYesNo + vbQuestion);
        child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
        return w.result();
    });
    trigger(list, 2);
    QCOMPARE(ItemSaved, qint16(1));
    QCOMPARE(LastItemID.trimmed(), proposal);
    QCOMPARE(settings.PartStart, next);
    QCOMPARE(columnValues(QStringLiteral("System"), QStringLiteral("PartStart")), QStringList{next});
    auto* lst = child<QTreeWidget>(list, QStringLiteral("Parts_lst"));
    QCOMPARE(listRows(lst, QStringLiteral("|")).last(),
             proposal + QStringLiteral("|Widget|") + QString(120, 'w') + QStringLiteral("|        12.50|Yes"));
    QCOMPARE(lst->currentItem()->text(0), proposal);
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("Price")).last(), QStringLiteral("12.5"));
    VERIFY_UI(ui);
}

void ItemsTest::priceEntry_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("stored");
    QTest::newRow("keys filtered") << "1a2.5.0x" << false << "     12.50"
                                   << "12.5";
    QTest::newRow("point alone") << "." << false << "         ."
                                 << "0";
    QTest::newRow("zero") << "0" << false << "      0.00"
                          << "0";
    QTest::newRow("pasted text read up to its number") << "12abc" << true << "     12abc"
                                                       << "12";
    QTest::newRow("pasted amount rounded") << "3.14159" << true << "      3.14"
                                           << "3.14";
}

void ItemsTest::priceEntry()
{
    QFETCH(QString, typed);
    QFETCH(bool, pasted);
    QFETCH(QString, shown);
    QFETCH(QString, stored);
    TestUi ui;
    auto main = startProgram(ui, {{"freeformPart", 1}, {"ConfirmAll", 1}});
    NewItemMode = 1;
    frm_AddPart w;
    child<QLineEdit>(w, QStringLiteral("Part_lbl"))->setText(QStringLiteral("X1"));
    child<QLineEdit>(w, QStringLiteral("Short_txt"))->setText(QStringLiteral("s"));
    child<MemoBox>(w, QStringLiteral("long_txt"))->setText(QStringLiteral("l"));
    auto* price = child<QLineEdit>(w, QStringLiteral("Price_txt"));
    if (pasted)
        price->setText(typed);
    else
        QTest::keyClicks(price, typed);
    leave(price);
    QCOMPARE(price->text(), shown);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click(); // no question with ConfirmAll
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("Price")), QStringList{stored});
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("Taxable")), QStringList{"0"});
    VERIFY_UI(ui);
}

void ItemsTest::freeFormAndRefusals()
{
    TestUi ui;
    auto main = startProgram(ui, {{"freeformPart", 1}, {"PartStart", QStringLiteral("100001")}});
    addRow(QStringLiteral("Parts"), item(QStringLiteral("BOLT"), 1.0));
    NewItemMode = 1;
    frm_AddPart w;
    auto* id = child<QLineEdit>(w, QStringLiteral("Part_lbl"));
    QVERIFY(id->isEnabled());
    QCOMPARE(id->text(), QString());
    // No is the end of it.
    ui.expectBox(QStringLiteral("Continue?"), Continue, vbNo);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
    // An id in use in another case.
    id->setText(QStringLiteral(" bolt "));
    ui.expectBox(QStringLiteral("Continue?"), Continue, vbYes);
    ui.expectBox(QStringLiteral("Item\\Part Number Already In Use"),
                 QStringLiteral("This Item\\Part number has already been used. Please try again!"), vbOK,
                 vbExclamation);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
    // Required fields beep, with no message.
    id->setText(QStringLiteral("NUT"));
    ui.expectBox(QStringLiteral("Continue?"), Continue, vbYes);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
    QCOMPARE(ui.beeps, 1);
    child<QLineEdit>(w, QStringLiteral("Short_txt"))->setText(QStringLiteral("Nut"));
    child<MemoBox>(w, QStringLiteral("long_txt"))->setText(QStringLiteral("M6 nut"));
    child<QLineEdit>(w, QStringLiteral("Price_txt"))->setText(QStringLiteral("   "));
    ui.expectBox(QStringLiteral("Continue?"), Continue, vbYes);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
    QCOMPARE(ui.beeps, 2);
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("ID")), QStringList{"BOLT"});
    child<QLineEdit>(w, QStringLiteral("Price_txt"))->setText(QStringLiteral("0.2"));
    ui.expectBox(QStringLiteral("Continue?"), Continue, vbYes);
    child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("ID")), (QStringList{"BOLT", "NUT"}));
    QCOMPARE(settings.PartStart, QStringLiteral("100001")); // free form leaves the next number
    VERIFY_UI(ui);
}

void ItemsTest::editAndDelete()
{
    TestUi ui;
    auto main = startProgram(ui, {{"ConfirmAll", 1}, {"PartStart", QStringLiteral("1001")}});
    addRow(QStringLiteral("Parts"), item(QStringLiteral("A"), 5.0));
    addRow(QStringLiteral("Parts"), item(QStringLiteral("B"), 6.0));
    addRow(QStringLiteral("InvoiceD"), {{"InvNo", QStringLiteral("INV1")}, {"PartID", QStringLiteral("B")}});
    frm_Parts list;
    auto* lst = child<QTreeWidget>(list, QStringLiteral("Parts_lst"));
    lst->setCurrentItem(lst->topLevelItem(1));
    ui.onModal(QStringLiteral("frm_AddPart"), [&](QDialog& w) {
        [&] {
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("Part_lbl"))->text(), QStringLiteral("B"));
            QCOMPARE(child<QLineEdit>(w, QStringLiteral("Price_txt"))->text(), QStringLiteral("      6.00"));
            QVERIFY(child<QCheckBox>(w, QStringLiteral("tax_chk"))->isChecked());
            QCOMPARE(child<QLabel>(w, QStringLiteral("count_lbl"))->text(), QStringLiteral("114"));
        }();
        child<QCheckBox>(w, QStringLiteral("tax_chk"))->setChecked(false);
        child<QLineEdit>(w, QStringLiteral("Short_txt"))->setText(QStringLiteral("Changed"));
        child<QPushButton>(w, QStringLiteral("Update_cmd"))->click();
        return 1;
    });
    trigger(list, 6);
    QCOMPARE(listRows(lst, QStringLiteral("|")),
             (QStringList{"A|Short A|Long A|         5.00|Yes", "B|Changed|Long B|         6.00|No"}));
    // Exit drops what was typed and tells the list nothing was saved.
    ui.onModal(QStringLiteral("frm_AddPart"), [&](QDialog& w) {
        child<QLineEdit>(w, QStringLiteral("Short_txt"))->setText(QStringLiteral("Dropped"));
        child<QPushButton>(w, QStringLiteral("Exit_cmd"))->click();
        return 0;
    });
    trigger(list, 6);
    QCOMPARE(ItemSaved, qint16(0));
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("ShortDesc")), (QStringList{"Short A", "Changed"}));
    // An item named by invoice lines can still be deleted; No keeps it.
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to delete this item"), vbNo);
    trigger(list, 4);
    ui.expectBox(QStringLiteral("Confirm"), QStringLiteral("Are you sure you want to delete this item"), vbYes,
                 vbYesNo + vbQuestion);
    trigger(list, 4);
    QCOMPARE(columnValues(QStringLiteral("Parts"), QStringLiteral("ID")), QStringList{"A"});
    QCOMPARE(listRows(lst, QStringLiteral("|")).size(), 1);
    QCOMPARE(columnValues(QStringLiteral("InvoiceD"), QStringLiteral("PartID")), QStringList{"B"});
    VERIFY_UI(ui);
}

VELK_TEST(ItemsTest)
#include "tst_items.moc"
