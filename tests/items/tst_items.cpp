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
using namespace Qt::StringLiterals;

namespace
{

void trigger(QWidget& w, int place)
{
    child<QAction>(w, u"Toolbar1(%1)"_s.arg(place))->trigger();
}

// Leaving a box, as the focus moving on would.
void leave(QWidget* box)
{
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(box, &out);
}

QMap<QString, Value> item(const QString& id, double price, int taxable = 1)
{
    return {
        {"ID", id}, {"ShortDesc", u"Short "_s + id}, {"Desc", u"Long "_s + id}, {"Price", price}, {"Taxable", taxable}};
}

const QString Continue = u"Are you sure you want to update?"_s;

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
    auto main = startProgram(ui, {{"PartStart", u"1001"_s}});
    addRow(u"Parts"_s, item(u"P1"_s, 100.0));
    addRow(u"Parts"_s, item(u"P2"_s, 9.5, 2));
    addRow(u"Parts"_s, {{"ID", u"P3"_s}, {"Desc", u"no price"_s}, {"Price", Value()}});
    ui.onModal(u"frm_Parts"_s, [&](QDialog& w) {
        auto* list = child<QTreeWidget>(w, u"Parts_lst"_s);
        [&] {
            QCOMPARE(w.windowTitle(), u"Items"_s);
            QCOMPARE(list->headerItem()->text(1), u"Short Descriprtion"_s);
            QCOMPARE(listRows(list, u"|"_s),
                     (QStringList{"P1|Short P1|Long P1|       100.00|Yes", "P2|Short P2|Long P2|         9.50|No",
                                  "P3||no price|             |No"}));
        }();
        // The price text is searched, "Taxable" is not.
        QTest::keyClicks(child<QLineEdit>(w, u"search_txt"_s), u"9.5"_s);
        child<QPushButton>(w, u"search_cmd"_s)->click();
        [&] { QCOMPARE(list->currentItem()->text(0), u"P2"_s); }();
        child<QLineEdit>(w, u"search_txt"_s)->setText(u"Yes"_s);
        child<QPushButton>(w, u"search_cmd"_s)->click();
        [&] { QCOMPARE(child<QLabel>(w, u"Found_lbl"_s)->text(), u"Not Found"_s); }();
        return 0;
    });
    trigger(*main, 11);
    // A Null long description is a failure of the list.
    addRow(u"Parts"_s, {{"ID", u"P4"_s}});
    ui.expectBox(u"Error Message"_s, errorMessageText(94, u"frm_Parts"_s, u"Load_list"_s, standardErrorText(94)));
    QVERIFY(endsProgram([] { frm_Parts w; }));
    VERIFY_UI(ui);
}

void ItemsTest::newNumberedItem_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("proposal");
    QTest::addColumn<QString>("next");
    QTest::newRow("nothing taken") << QStringList{} << u"PRT100001"_s << u"100002"_s;
    QTest::newRow("skips exact ids") << QStringList{"PRT100001", "PRT100002"} << u"PRT100003"_s << u"100004"_s;
}

void ItemsTest::newNumberedItem()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, proposal);
    QFETCH(QString, next);
    TestUi ui;
    auto main = startProgram(ui, {{"PartPrefix", u"PRT"_s}, {"PartStart", u"100001"_s}});
    for (const QString& id : taken)
        addRow(u"Parts"_s, item(id, 1.0));
    frm_Parts list;
    ui.onModal(u"frm_AddPart"_s, [&](QDialog& w) {
        [&] {
            QCOMPARE(w.windowTitle(), u"Add Item"_s);
            QCOMPARE(child<QLineEdit>(w, u"Part_lbl"_s)->text(), proposal);
            QVERIFY(!child<QLineEdit>(w, u"Part_lbl"_s)->isEnabled());
            QCOMPARE(child<QLabel>(w, u"count_lbl"_s)->text(), u"120"_s);
        }();
        QTest::keyClicks(child<QLineEdit>(w, u"Short_txt"_s), u"Widget"_s);
        auto* longText = child<MemoBox>(w, u"long_txt"_s);
        QTest::keyClicks(longText, QString(120, 'w'));
        [&] {
            QCOMPARE(child<QLabel>(w, u"count_lbl"_s)->text(), u"0"_s);
            QCOMPARE(longText->text().size(), 120);
        }();
        QTest::keyClicks(child<QLineEdit>(w, u"Price_txt"_s), u"12.5"_s);
        child<QCheckBox>(w, u"tax_chk"_s)->setChecked(true);
        ui.expectBox(u"Continue?"_s, Continue, vbYes, vbYesNo + vbQuestion);
        child<QPushButton>(w, u"Update_cmd"_s)->click();
        return w.result();
    });
    trigger(list, 2);
    QCOMPARE(ItemSaved, qint16(1));
    QCOMPARE(LastItemID.trimmed(), proposal);
    QCOMPARE(settings.PartStart, next);
    QCOMPARE(columnValues(u"System"_s, u"PartStart"_s), QStringList{next});
    auto* lst = child<QTreeWidget>(list, u"Parts_lst"_s);
    QCOMPARE(listRows(lst, u"|"_s).last(), proposal + u"|Widget|"_s + QString(120, 'w') + u"|        12.50|Yes"_s);
    QCOMPARE(lst->currentItem()->text(0), proposal);
    QCOMPARE(columnValues(u"Parts"_s, u"Price"_s).last(), u"12.5"_s);
    VERIFY_UI(ui);
}

void ItemsTest::priceEntry_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("stored");
    auto row = [](const char* name, const char* typed, bool pasted, const char* shown, const char* stored) {
        QTest::newRow(name) << QString(typed) << pasted << QString(shown) << QString(stored);
    };
    row("keys filtered", "1a2.5.0x", false, "     12.50", "12.5");
    row("point alone", ".", false, "         .", "0");
    row("zero", "0", false, "      0.00", "0");
    row("pasted text read up to its number", "12abc", true, "     12abc", "12");
    row("pasted amount rounded", "3.14159", true, "      3.14", "3.14");
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
    child<QLineEdit>(w, u"Part_lbl"_s)->setText(u"X1"_s);
    child<QLineEdit>(w, u"Short_txt"_s)->setText(u"s"_s);
    child<MemoBox>(w, u"long_txt"_s)->setText(u"l"_s);
    auto* price = child<QLineEdit>(w, u"Price_txt"_s);
    if (pasted)
        price->setText(typed);
    else
        QTest::keyClicks(price, typed);
    leave(price);
    QCOMPARE(price->text(), shown);
    child<QPushButton>(w, u"Update_cmd"_s)->click(); // no question with ConfirmAll
    QCOMPARE(columnValues(u"Parts"_s, u"Price"_s), QStringList{stored});
    QCOMPARE(columnValues(u"Parts"_s, u"Taxable"_s), QStringList{"0"});
    VERIFY_UI(ui);
}

void ItemsTest::freeFormAndRefusals()
{
    TestUi ui;
    auto main = startProgram(ui, {{"freeformPart", 1}, {"PartStart", u"100001"_s}});
    addRow(u"Parts"_s, item(u"BOLT"_s, 1.0));
    NewItemMode = 1;
    frm_AddPart w;
    auto* id = child<QLineEdit>(w, u"Part_lbl"_s);
    QVERIFY(id->isEnabled());
    QCOMPARE(id->text(), QString());
    auto update = [&](int answer) {
        ui.expectBox(u"Continue?"_s, Continue, answer);
        child<QPushButton>(w, u"Update_cmd"_s)->click();
    };
    update(vbNo); // No is the end of it.
    // An id in use in another case.
    id->setText(u" bolt "_s);
    ui.expectBox(u"Continue?"_s, Continue, vbYes);
    ui.expectBox(u"Item\\Part Number Already In Use"_s,
                 u"This Item\\Part number has already been used. Please try again!"_s, vbOK, vbExclamation);
    child<QPushButton>(w, u"Update_cmd"_s)->click();
    // Required fields beep, with no message.
    id->setText(u"NUT"_s);
    update(vbYes);
    QCOMPARE(ui.beeps, 1);
    child<QLineEdit>(w, u"Short_txt"_s)->setText(u"Nut"_s);
    child<MemoBox>(w, u"long_txt"_s)->setText(u"M6 nut"_s);
    child<QLineEdit>(w, u"Price_txt"_s)->setText(u"   "_s);
    update(vbYes);
    QCOMPARE(ui.beeps, 2);
    QCOMPARE(columnValues(u"Parts"_s, u"ID"_s), QStringList{"BOLT"});
    child<QLineEdit>(w, u"Price_txt"_s)->setText(u"0.2"_s);
    update(vbYes);
    QCOMPARE(columnValues(u"Parts"_s, u"ID"_s), (QStringList{"BOLT", "NUT"}));
    QCOMPARE(settings.PartStart, u"100001"_s); // free form leaves the next number
    VERIFY_UI(ui);
}

void ItemsTest::editAndDelete()
{
    TestUi ui;
    auto main = startProgram(ui, {{"ConfirmAll", 1}, {"PartStart", u"1001"_s}});
    addRow(u"Parts"_s, item(u"A"_s, 5.0));
    addRow(u"Parts"_s, item(u"B"_s, 6.0));
    addRow(u"InvoiceD"_s, {{"InvNo", u"INV1"_s}, {"PartID", u"B"_s}});
    frm_Parts list;
    auto* lst = child<QTreeWidget>(list, u"Parts_lst"_s);
    lst->setCurrentItem(lst->topLevelItem(1));
    ui.onModal(u"frm_AddPart"_s, [&](QDialog& w) {
        [&] {
            QCOMPARE(child<QLineEdit>(w, u"Part_lbl"_s)->text(), u"B"_s);
            QCOMPARE(child<QLineEdit>(w, u"Price_txt"_s)->text(), u"      6.00"_s);
            QVERIFY(child<QCheckBox>(w, u"tax_chk"_s)->isChecked());
            QCOMPARE(child<QLabel>(w, u"count_lbl"_s)->text(), u"114"_s);
        }();
        child<QCheckBox>(w, u"tax_chk"_s)->setChecked(false);
        child<QLineEdit>(w, u"Short_txt"_s)->setText(u"Changed"_s);
        child<QPushButton>(w, u"Update_cmd"_s)->click();
        return 1;
    });
    trigger(list, 6);
    QCOMPARE(listRows(lst, u"|"_s),
             (QStringList{"A|Short A|Long A|         5.00|Yes", "B|Changed|Long B|         6.00|No"}));
    // Exit drops what was typed and tells the list nothing was saved.
    ui.onModal(u"frm_AddPart"_s, [&](QDialog& w) {
        child<QLineEdit>(w, u"Short_txt"_s)->setText(u"Dropped"_s);
        child<QPushButton>(w, u"Exit_cmd"_s)->click();
        return 0;
    });
    trigger(list, 6);
    QCOMPARE(ItemSaved, qint16(0));
    QCOMPARE(columnValues(u"Parts"_s, u"ShortDesc"_s), (QStringList{"Short A", "Changed"}));
    // An item named by invoice lines can still be deleted; No keeps it.
    ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this item"_s, vbNo);
    trigger(list, 4);
    ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this item"_s, vbYes, vbYesNo + vbQuestion);
    trigger(list, 4);
    QCOMPARE(columnValues(u"Parts"_s, u"ID"_s), QStringList{"A"});
    QCOMPARE(listRows(lst, u"|"_s).size(), 1);
    QCOMPARE(columnValues(u"InvoiceD"_s, u"PartID"_s), QStringList{"B"});
    VERIFY_UI(ui);
}

VELK_TEST(ItemsTest)
#include "tst_items.moc"
