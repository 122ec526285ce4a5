// The rules shared by every list window, on a bare list.

#include "TestUi.h"

#include "customers/frmCustomer.h"
#include "items/frm_Parts.h"
#include "shell/frmMain.h"
#include "store/Functions.h"
#include "store/ListRules.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

namespace
{
QStringList column(QTreeWidget& list, int c)
{
    QStringList out;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        out << list.topLevelItem(i)->text(c).trimmed();
    return out;
}
} // namespace

class ListRulesTest : public QObject
{
    Q_OBJECT
private slots:
    void amountsAndDatesSortAsText();
    void rowsJoinTheirPlace();
    void searchPasses();
    void searchBoxOnTab_data();
    void searchBoxOnTab();
};

void ListRulesTest::amountsAndDatesSortAsText()
{
    TestUi ui;
    QTreeWidget list;
    list.setColumnCount(4);
    ListConfig config;
    config.replacedColumn = 1; // "Date" sorts by the hidden "YYYYMMDD" column
    config.replacementColumn = 3;
    ListRules rules(&list, config, "frmInvoice");
    rules.addRow({"A", "02/01/2026", Format_amount(100.0, 7, 2), "20260102"});
    rules.addRow({"B", "01/02/2026", Format_amount(9.0, 7, 2), "20260201"});
    rules.addRow({"C", "31/12/2025", Format_amount(-5.0, 7, 2), "20251231"});
    rules.columnClick(2);
    // By text: the leading blanks order positive amounts by value; a minus sign sorts
    // after a blank, so a negative amount stands between them.
    QCOMPARE(column(list, 2), (QStringList{"100.00", "-5.00", "9.00"}));
    rules.columnClick(2);
    QCOMPARE(column(list, 2), (QStringList{"9.00", "-5.00", "100.00"}));
    rules.columnClick(1);
    QCOMPARE(column(list, 0), (QStringList{"B", "A", "C"})); // by the hidden date, descending
    QCOMPARE(headingMark(&list, 1), "key1");
    QCOMPARE(headingMark(&list, 3), QString());
    ListConfig plain;
    plain.sortMarks = false;
    QTreeWidget picker;
    picker.setColumnCount(1);
    ListRules pickerRules(&picker, plain, "frmsearchCust");
    pickerRules.columnClick(0);
    QCOMPARE(headingMark(&picker, 0), QString());
}

void ListRulesTest::rowsJoinTheirPlace()
{
    TestUi ui;
    QTreeWidget list;
    list.setColumnCount(2);
    ListRules rules(&list, {}, "frmCustomer");
    for (const char* id : {"M", "B", "X"})
        rules.addRow({QLatin1String(id), QString()});
    rules.addRow({"A", QString()});
    QCOMPARE(column(list, 0), (QStringList{"M", "B", "X", "A"})); // never sorted: last
    rules.columnClick(0);                                         // descending
    rules.addRow({"c", QString()});
    QCOMPARE(column(list, 0), (QStringList{"X", "M", "c", "B", "A"}));
    // A row changed in place keeps its position until the next click.
    ListRules::setRow(list.topLevelItem(0), {"AA", QString()});
    QCOMPARE(column(list, 0).first(), "AA");
    list.setCurrentItem(list.topLevelItem(4));
    rules.removeSelected();
    QCOMPARE(list.currentItem()->text(0), "B");
    // A whole reload of the sorted list: the order of one row at a time, equal keys in
    // the order read.
    rules.reload([&] {
        for (const char* row : {"b 1", "M 2", "B 3", "x 4", "b 5"})
            rules.addRow(QString::fromLatin1(row).split(' '));
    });
    QCOMPARE(column(list, 0), (QStringList{"x", "M", "b", "b", "B"}));
    QCOMPARE(column(list, 1), (QStringList{"4", "2", "1", "5", "3"}));
}

void ListRulesTest::searchPasses()
{
    TestUi ui;
    QTreeWidget list;
    list.setColumnCount(4);
    QLabel found;
    ListConfig config;
    config.furtherColumns = 2;
    config.foundLabel = &found;
    ListRules rules(&list, config, "frm_Parts");
    rules.addRow({"P1", "bolt", "steel", "zinc"});
    rules.addRow({"P2", "nut", "brass", "zinc"});
    rules.addRow({"P3", "washer", "Steel", "zinc"});
    auto find = [&](const QString& text) {
        rules.Find(text);
        return list.currentItem() ? list.currentItem()->text(0) : QString();
    };
    QCOMPARE(find("STEEL"), "P1");
    QCOMPARE(find("steel"), "P3");
    QCOMPARE(find("steel"), "P1"); // past the end: round again
    QCOMPARE(find("zinc"), "P1");  // a column beyond those searched
    QCOMPARE(found.text(), "Not Found");
    QCOMPARE(find(QString()), "P1"); // an empty text is in every row
    QCOMPARE(find(QString()), "P2");
    QCOMPARE(found.text(), QString());
}

void ListRulesTest::searchBoxOnTab_data()
{
    QTest::addColumn<bool>("items");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("selected");
    QTest::newRow("customer list selects its text") << false << "Search_txt"
                                                    << "bolt";
    QTest::newRow("item list does not") << true << "search_txt"
                                        << "";
}

// Tabbing into the search box, as a user leaves the list for it; the item list also
// shows its prices by their last digit.
void ListRulesTest::searchBoxOnTab()
{
    QFETCH(bool, items);
    QFETCH(QString, box);
    QFETCH(QString, selected);
    TestUi ui;
    auto main = startProgram(ui, {});
    addRow("Parts", {{"ID", "P1"}, {"ShortDesc", "bolt"}, {"Desc", "steel"}, {"Price", 9.5}});
    std::unique_ptr<QDialog> w;
    if (items)
        w = std::make_unique<frm_Parts>();
    else
        w = std::make_unique<frmCustomer>();
    showUp(*w);
    auto* search = child<QLineEdit>(*w, box);
    search->setText("bolt");
    child<QWidget>(*w, "search_cmd")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), search);
    QCoreApplication::processEvents();
    QCOMPARE(search->selectedText(), selected);
    if (items) {
        QTreeWidgetItem* row = child<QTreeWidget>(*w, "Parts_lst")->topLevelItem(0);
        QCOMPARE(row->data(3, Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask, int(Qt::AlignRight));
        QVERIFY(!(row->data(2, Qt::TextAlignmentRole).toInt() & Qt::AlignRight));
    }
    VERIFY_UI(ui);
}

VELK_TEST(ListRulesTest)
#include "tst_listrules.moc"
