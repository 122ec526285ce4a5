// The item list and the item record, driven as a user would.

#include "TestUi.h"

#include "items/frm_AddPart.h"
#include "items/frm_Parts.h"
#include "platform/MemoBox.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListView.h"

#include <QAction>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace platform;
using namespace Qt::StringLiterals;

namespace
{

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
    return listRows(child<ListView>(list, "Parts_lst"), "|");
}

const QString Continue = "Are you sure you want to update?";

} // namespace

class ItemsTest : public QObject
{
    Q_OBJECT
private slots:
    void freeFormItemsAndPrices()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"freeformPart", 1}, {"PartStart", "100001"}});
        addRow("Parts", {{"ID", "BOLT"}});
        NewItemMode = 1;
        auto w = std::make_unique<frm_AddPart>();
        auto update = [&](int answer, bool inUse = false) {
            ui.expectBox("Continue?", Continue, answer);
            if (inUse)
                ui.expectBox("Item\\Part Number Already In Use",
                             "This Item\\Part number has already been used. Please try again!", vbOK, vbExclamation);
            click(*w, "Update_cmd");
        };
        update(vbNo);                      // No is the end of it
        setText(*w, "Part_lbl", " bolt "); // an id in use in another case
        update(vbYes, true);
        // Empty required fields only beep.
        setText(*w, "Part_lbl", "NUT");
        update(vbYes);
        setText(*w, "Short_txt", "Nut");
        setText(*w, "long_txt", "M6 nut");
        setText(*w, "Price_txt", "   ");
        update(vbYes);
        QCOMPARE(ui.beeps, 2);
        QCOMPARE(columnValues("Parts", "ID"), QStringList{"BOLT"});
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
            setText(*w, "Part_lbl", QLatin1String("NUT") + typed);
            setText(*w, "Short_txt", "Nut");
            setText(*w, "long_txt", "M6 nut");
            auto* price = child<QLineEdit>(*w, "Price_txt");
            *pasted ? price->setText(QLatin1String(typed)) : QTest::keyClicks(price, QLatin1String(typed));
            QFocusEvent out(QEvent::FocusOut);
            QApplication::sendEvent(price, &out);
            QCOMPARE(price->text(), QLatin1String(shown));
            update(vbYes);
            stored << QLatin1String(value);
        }
        QCOMPARE(columnValues("Parts", "Price"), stored);
        QCOMPARE(columnValues("Parts", "Taxable").last(), "0");
        QCOMPARE(settings.PartStart, "100001"); // free form leaves the next number
        VERIFY_UI(ui);
    }

    void listAddEditAndDelete()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"ConfirmAll", 1}, {"PartPrefix", "PRT"}, {"PartStart", "100001"}});
        addRow("Parts", {{"ID", "A"}, {"ShortDesc", "sA"}, {"Desc", "lA"}, {"Price", 100.0}, {"Taxable", 2}});
        addRow("Parts", {{"ID", "B"}, {"ShortDesc", "sB"}, {"Desc", "lB"}, {"Price", 6.0}, {"Taxable", 1}});
        addRow("Parts", {{"ID", "C"}, {"Desc", "no price"}, {"Price", Value()}});
        addRow("InvoiceD", {{"InvNo", "INV1"}, {"PartID", "B"}});
        frm_Parts list;
        auto* lst = child<ListView>(list, "Parts_lst");
        QCOMPARE(rows(list), (QStringList{"A|sA|lA|       100.00|No", "B|sB|lB|         6.00|Yes",
                                          "C||no price|             |No"}));
        // A new item: numbered, its long text cut to 120 characters, and added at the end.
        ui.onModal("frm_AddPart", [&](QDialog& w) {
            [&] { QCOMPARE(child<QLineEdit>(w, "Part_lbl")->text(), "PRT100001"); }();
            QTest::keyClicks(child<QLineEdit>(w, "Short_txt"), "Widget");
            QTest::keyClicks(child<MemoBox>(w, "long_txt"), QString(125, 'w'));
            [&] { QCOMPARE(child<QLabel>(w, "count_lbl")->text(), "0"); }();
            QTest::keyClicks(child<QLineEdit>(w, "Price_txt"), "12.5");
            click(w, "Update_cmd");
            return w.result();
        });
        trigger(list, 2);
        QCOMPARE(rows(list).last(), "PRT100001|Widget|" + QString(120, 'w') + "|        12.50|No");
        QCOMPARE(columnValues("System", "PartStart"), QStringList{"100002"});
        lst->selectRow(1);
        // Update writes, Exit drops what was typed.
        for (const char* button : {"Update_cmd", "Exit_cmd"}) {
            ui.onModal("frm_AddPart", [&](QDialog& w) {
                [&] { QCOMPARE(child<QLineEdit>(w, "Price_txt")->text(), "      6.00"); }();
                child<QCheckBox>(w, "tax_chk")->toggle();
                setText(w, "Short_txt", QLatin1String(button));
                child<QPushButton>(w, QLatin1String(button))->click();
                return w.result();
            });
            trigger(list, 6);
        }
        QCOMPARE(rows(list)[1], "B|Update_cmd|lB|         6.00|No");
        QCOMPARE(columnValues("Parts", "ShortDesc"), (QStringList{"sA", "Update_cmd", "", "Widget"}));
        // An item named by invoice lines can still be deleted; No keeps it.
        ui.expectBox("Confirm", "Are you sure you want to delete this item", vbNo);
        trigger(list, 4);
        ui.expectBox("Confirm", "Are you sure you want to delete this item", vbYes, vbYesNo + vbQuestion);
        trigger(list, 4);
        QCOMPARE(columnValues("Parts", "ID"), (QStringList{"A", "C", "PRT100001"}));
        QCOMPARE(rows(list).size(), 3);
        QCOMPARE(columnValues("InvoiceD", "PartID"), QStringList{"B"});
        addRow("Parts", {{"ID", "D"}}); // a Null long description is a failure of the list
        ui.expectBox("Error Message", errorMessageText(94, "frm_Parts", "Load_list", standardErrorText(94)));
        QVERIFY(endsProgram([] { frm_Parts w; }));
        VERIFY_UI(ui);
    }
};

VELK_TEST(ItemsTest)
#include "tst_items.moc"
