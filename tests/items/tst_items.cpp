// The item list and the item record, driven as a user would.

#include "TestUi.h"

#include "items/frm_AddPart.h"
#include "items/frm_Parts.h"
#include "platform/MemoBox.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"

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

void setText(QWidget& w, const char* name, const QString& text)
{
    QWidget* box = child<QWidget>(w, QLatin1String(name));
    if (auto* memo = qobject_cast<MemoBox*>(box))
        memo->setText(text);
    else
        static_cast<QLineEdit*>(box)->setText(text);
}

QStringList rows(QWidget& list)
{
    return listRows(child<QTreeWidget>(list, u"Parts_lst"_s), u"|"_s);
}

const QString Continue = u"Are you sure you want to update?"_s;

} // namespace

class ItemsTest : public QObject
{
    Q_OBJECT
private slots:
    void listShowsEveryItem()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow(u"Parts"_s, {{"ID", "P1"}, {"ShortDesc", "s1"}, {"Desc", "l1"}, {"Price", 100.0}, {"Taxable", 1}});
        addRow(u"Parts"_s, {{"ID", "P2"}, {"ShortDesc", "s2"}, {"Desc", "l2"}, {"Price", 9.5}, {"Taxable", 2}});
        addRow(u"Parts"_s, {{"ID", "P3"}, {"Desc", "no price"}, {"Price", Value()}});
        frm_Parts w;
        QCOMPARE(rows(w), (QStringList{"P1|s1|l1|       100.00|Yes", "P2|s2|l2|         9.50|No",
                                       "P3||no price|             |No"}));
        // A Null long description is a failure of the list.
        addRow(u"Parts"_s, {{"ID", "P4"}});
        ui.expectBox(u"Error Message"_s, errorMessageText(94, u"frm_Parts"_s, u"Load_list"_s, standardErrorText(94)));
        QVERIFY(endsProgram([] { frm_Parts w; }));
        VERIFY_UI(ui);
    }

    void newNumberedItem()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"PartPrefix", u"PRT"_s}, {"PartStart", u"100001"_s}});
        addRow(u"Parts"_s, {{"ID", "PRT100001"}, {"ShortDesc", "s"}, {"Desc", "l"}, {"Price", 1.0}});
        frm_Parts list;
        ui.onModal(u"frm_AddPart"_s, [&](QDialog& w) {
            [&] { QCOMPARE(child<QLineEdit>(w, u"Part_lbl"_s)->text(), u"PRT100002"_s); }();
            QTest::keyClicks(child<QLineEdit>(w, u"Short_txt"_s), u"Widget"_s);
            QTest::keyClicks(child<MemoBox>(w, u"long_txt"_s), QString(125, 'w')); // five too many
            [&] { QCOMPARE(child<QLabel>(w, u"count_lbl"_s)->text(), u"0"_s); }();
            QTest::keyClicks(child<QLineEdit>(w, u"Price_txt"_s), u"12.5"_s);
            child<QCheckBox>(w, u"tax_chk"_s)->setChecked(true);
            ui.expectBox(u"Continue?"_s, Continue, vbYes, vbYesNo + vbQuestion);
            child<QPushButton>(w, u"Update_cmd"_s)->click();
            return w.result();
        });
        trigger(list, 2);
        QCOMPARE(rows(list).last(), u"PRT100002|Widget|"_s + QString(120, 'w') + u"|        12.50|Yes"_s);
        QCOMPARE(columnValues(u"Parts"_s, u"Price"_s).last(), u"12.5"_s);
        QCOMPARE(columnValues(u"System"_s, u"PartStart"_s), QStringList{"100003"});
        VERIFY_UI(ui);
    }

    void freeFormItemsAndPrices()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"freeformPart", 1}, {"PartStart", u"100001"_s}});
        addRow(u"Parts"_s, {{"ID", "BOLT"}});
        NewItemMode = 1;
        auto w = std::make_unique<frm_AddPart>();
        auto update = [&](int answer) {
            ui.expectBox(u"Continue?"_s, Continue, answer);
            child<QPushButton>(*w, u"Update_cmd"_s)->click();
        };
        update(vbNo); // No is the end of it
        // An id in use in another case.
        setText(*w, "Part_lbl", u" bolt "_s);
        ui.expectBox(u"Continue?"_s, Continue, vbYes);
        ui.expectBox(u"Item\\Part Number Already In Use"_s,
                     u"This Item\\Part number has already been used. Please try again!"_s, vbOK, vbExclamation);
        child<QPushButton>(*w, u"Update_cmd"_s)->click();
        // Empty required fields only beep.
        setText(*w, "Part_lbl", u"NUT"_s);
        update(vbYes);
        setText(*w, "Short_txt", u"Nut"_s);
        setText(*w, "long_txt", u"M6 nut"_s);
        setText(*w, "Price_txt", u"   "_s);
        update(vbYes);
        QCOMPARE(ui.beeps, 2);
        QCOMPARE(columnValues(u"Parts"_s, u"ID"_s), QStringList{"BOLT"});
        // Typed prices are filtered, pasted ones read up to their number; the shown text and the stored value.
        const char* prices[][4] = {{"1a2.5.0x", "", "     12.50", "12.5"},
                                   {".", "", "         .", "0"},
                                   {"0", "", "      0.00", "0"},
                                   {"12abc", "paste", "     12abc", "12"},
                                   {"3.14159", "paste", "      3.14", "3.14"}};
        QStringList stored{"0"};
        for (auto& [typed, pasted, shown, value] : prices) {
            NewItemMode = 1;
            w = std::make_unique<frm_AddPart>();
            setText(*w, "Part_lbl", u"NUT"_s + typed);
            setText(*w, "Short_txt", u"Nut"_s);
            setText(*w, "long_txt", u"M6 nut"_s);
            auto* price = child<QLineEdit>(*w, u"Price_txt"_s);
            if (*pasted)
                price->setText(QLatin1String(typed));
            else
                QTest::keyClicks(price, QLatin1String(typed));
            QFocusEvent out(QEvent::FocusOut);
            QApplication::sendEvent(price, &out);
            QCOMPARE(price->text(), QLatin1String(shown));
            update(vbYes);
            stored << QLatin1String(value);
        }
        QCOMPARE(columnValues(u"Parts"_s, u"Price"_s), stored);
        QCOMPARE(columnValues(u"Parts"_s, u"Taxable"_s).last(), u"0"_s);
        QCOMPARE(settings.PartStart, u"100001"_s); // free form leaves the next number
        VERIFY_UI(ui);
    }

    void editAndDelete()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"ConfirmAll", 1}});
        addRow(u"Parts"_s, {{"ID", "A"}, {"ShortDesc", "sA"}, {"Desc", "lA"}, {"Price", 5.0}});
        addRow(u"Parts"_s, {{"ID", "B"}, {"ShortDesc", "sB"}, {"Desc", "lB"}, {"Price", 6.0}, {"Taxable", 1}});
        addRow(u"InvoiceD"_s, {{"InvNo", "INV1"}, {"PartID", "B"}});
        frm_Parts list;
        auto* lst = child<QTreeWidget>(list, u"Parts_lst"_s);
        lst->setCurrentItem(lst->topLevelItem(1));
        // Update writes, Exit drops what was typed.
        for (const char* button : {"Update_cmd", "Exit_cmd"}) {
            ui.onModal(u"frm_AddPart"_s, [&](QDialog& w) {
                [&] { QCOMPARE(child<QLineEdit>(w, u"Price_txt"_s)->text(), u"      6.00"_s); }();
                child<QCheckBox>(w, u"tax_chk"_s)->toggle();
                setText(w, "Short_txt", QLatin1String(button));
                child<QPushButton>(w, QLatin1String(button))->click();
                return w.result();
            });
            trigger(list, 6);
        }
        QCOMPARE(rows(list), (QStringList{"A|sA|lA|         5.00|No", "B|Update_cmd|lB|         6.00|No"}));
        QCOMPARE(columnValues(u"Parts"_s, u"ShortDesc"_s), (QStringList{"sA", "Update_cmd"}));
        // An item named by invoice lines can still be deleted; No keeps it.
        ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this item"_s, vbNo);
        trigger(list, 4);
        ui.expectBox(u"Confirm"_s, u"Are you sure you want to delete this item"_s, vbYes, vbYesNo + vbQuestion);
        trigger(list, 4);
        QCOMPARE(columnValues(u"Parts"_s, u"ID"_s), QStringList{"A"});
        QCOMPARE(rows(list).size(), 1);
        QCOMPARE(columnValues(u"InvoiceD"_s, u"PartID"_s), QStringList{"B"});
        VERIFY_UI(ui);
    }
};

VELK_TEST(ItemsTest)
#include "tst_items.moc"
