// The export: the six files byte for byte against expected files, the refusals, the
// empty sources, the stale line of "Debtors", a failure half-way and the code page.

#include "SampleRows.h"

#include "reports/FrmExport.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QAction>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

using namespace platform;

namespace
{

void pick(FrmExport& w, int index)
{
    auto* list = child<QListWidget>(w, "list1");
    list->setCurrentRow(index);
    emit list->itemClicked(list->currentItem());
}

void exportNow(FrmExport& w)
{
    child<QPushButton>(w, "Export_cmd")->click();
}

QByteArray golden(const QString& name)
{
    return fileBytes(QFINDTESTDATA("golden/" + name));
}

void expectSuccess(TestUi& ui)
{
    ui.expectBox("Successful", "Export successfully completed.", vbOK, vbInformation);
}

void expectNoRecords(TestUi& ui)
{
    ui.expectBox("No Records", "No records to Export", vbOK, vbExclamation);
}

} // namespace

class ExportTest : public QObject
{
    Q_OBJECT
private slots:
    void files_data();
    void files();
    void refusals();
    void emptySources();
    void nullNotesStopsHalfWay();
    void folderChooser();
    void codePage_data();
    void codePage();
};

void ExportTest::files_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::newRow("Customers - Summary") << 0 << "SumCustomers";
    QTest::newRow("Customers - Detailed") << 1 << "DetailCustomers";
    QTest::newRow("Invoices - Summary") << 2 << "SumInvoices";
    QTest::newRow("Invoices and Invoice Details") << 3 << "DetailInvoices";
    QTest::newRow("Items") << 4 << "Items";
    QTest::newRow("Debtors") << 5 << "Debtors";
}

void ExportTest::files()
{
    QFETCH(int, index);
    QFETCH(QString, name);
    TestUi ui;
    auto main = startWithRange(ui);
    addSampleRows();
    ui.onModal("FrmExport", [&](QDialog& d) {
        auto& w = static_cast<FrmExport&>(d);
        [&] {
            QCOMPARE(w.windowTitle(), "Export to Excel");
            QCOMPARE(child<QLineEdit>(w, "Path_txt")->text(), ui.dir());
            QCOMPARE(child<QLineEdit>(w, "Filename_txt")->text(), "SumCustomers");
            child<QLineEdit>(w, "Filename_txt")->setText("typed");
            pick(w, index);
            QCOMPARE(child<QLineEdit>(w, "Filename_txt")->text(), name);
            expectSuccess(ui);
            exportNow(w);
            QCOMPARE(fileBytes(ui.file(name + ".csv")), golden(name + ".csv"));
            // Once more over the same file: the overwrite question, and the same bytes.
            ui.expectBox("Overwrite?", "File already exists! Do wish to overwrite?", vbYes, vbYesNo + vbQuestion);
            expectSuccess(ui);
            exportNow(w);
            // "Debtors" builds its header onto its own last row of the first time.
            const QByteArray stale = index == 5 ? golden("Debtors.csv").split('\r').at(3).mid(1) : "";
            QCOMPARE(fileBytes(ui.file(name + ".csv")), stale + golden(name + ".csv"));
        }();
        return 0;
    });
    child<QAction>(*main, "mnuExport")->trigger();
    VERIFY_UI(ui);
}

void ExportTest::refusals()
{
    TestUi ui;
    auto main = startWithRange(ui);
    addSampleRows();
    FrmExport w(main.get());
    auto* name = child<QLineEdit>(w, "Filename_txt");
    auto* path = child<QLineEdit>(w, "Path_txt");
    name->setText("   ");
    ui.expectBox("Invalid Filename", "Please enter a filename", vbOK, vbExclamation);
    exportNow(w);
    QCOMPARE(QDir(ui.dir()).entryList({"*.csv"}), QStringList());

    name->setText("out");
    path->setText(ui.file("missing"));
    ui.expectBox("Invalid Path", "Folder does not exist please try again!", vbOK, vbExclamation);
    exportNow(w);

    QFile old(ui.file("out.csv"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("keep");
    old.close();
    path->setText(ui.dir());
    ui.expectBox("Overwrite?", "File already exists! Do wish to overwrite?", vbNo);
    exportNow(w);
    QCOMPARE(fileBytes(old.fileName()), QByteArray("keep"));

    // Only the test trims: the name keeps its blanks.
    name->setText("  a");
    expectSuccess(ui);
    exportNow(w);
    QCOMPARE(fileBytes(ui.file("  a.csv")), golden("SumCustomers.csv"));
    // "Debtors" next builds its header onto the last row the customers left.
    pick(w, 5);
    expectSuccess(ui);
    exportNow(w);
    QCOMPARE(fileBytes(ui.file("Debtors.csv")),
             toWindows1252("30/06/2026,CUS2,Bo,Café, Ltd,,,,,,") + golden("Debtors.csv"));

    // The name takes no point, slash or ampersand; a key released in the list names the file again.
    name->clear();
    QTest::keyClicks(name, "a.b/c\\d&e-f g");
    QCOMPARE(name->text(), "abcde-f g");
    auto* list = child<QListWidget>(w, "list1");
    list->setCurrentRow(4);
    QTest::keyRelease(list, Qt::Key_Down);
    QCOMPARE(name->text(), "Items");
    VERIFY_UI(ui);
}

void ExportTest::emptySources()
{
    TestUi ui;
    auto main = startWithRange(ui);
    addRow("Invoices", {{"InvNo", "PAID"}, {"Date", QDate(2026, 2, 1)}, {"Balance", 0.0}});
    FrmExport w(main.get());
    child<QDateEdit>(w, "DTPicker1")->setDate(QDate(2026, 3, 1));
    // A range with no invoices leaves a file of 0 bytes.
    pick(w, 2);
    expectNoRecords(ui);
    exportNow(w);
    QVERIFY(QFile::exists(ui.file("SumInvoices.csv")));
    QCOMPARE(fileBytes(ui.file("SumInvoices.csv")), QByteArray());
    // No debtors: no file at all.
    pick(w, 5);
    expectNoRecords(ui);
    exportNow(w);
    QVERIFY(!QFile::exists(ui.file("Debtors.csv")));
    VERIFY_UI(ui);
}

void ExportTest::nullNotesStopsHalfWay()
{
    TestUi ui;
    auto main = startWithRange(ui);
    addSampleRows();
    FrmExport w(main.get());
    child<QDateEdit>(w, "DTPicker1")->setDate(QDate(2025, 11, 1)); // takes in INV003
    pick(w, 2);
    ui.expectBox("Error Message", errorMessageText(err::InvalidUseOfNull, "FrmExport", "Invoices",
                                                   standardErrorText(err::InvalidUseOfNull)));
    QVERIFY(endsProgram([&] { exportNow(w); }));
    // The rows before the invoice with no notes stay written.
    QCOMPARE(fileBytes(ui.file("SumInvoices.csv")), golden("SumInvoices.csv"));
    VERIFY_UI(ui);
}

void ExportTest::folderChooser()
{
    TestUi ui;
    auto main = startWithRange(ui);
    QVERIFY(QDir(ui.dir()).mkdir("sub"));
    FrmExport w(main.get());
    auto* frame = child<QGroupBox>(w, "Frame1");
    auto* path1 = child<QLineEdit>(w, "path1_txt");
    QVERIFY(frame->isHidden());
    QCOMPARE(path1->text(), ui.dir());
    child<QPushButton>(w, "Command2")->click();
    QVERIFY(!frame->isHidden());
    auto* dir = child<QTreeView>(w, "Dir1");
    auto* model = static_cast<QFileSystemModel*>(dir->model());
    dir->setCurrentIndex(model->index(ui.file("sub")));
    QCOMPARE(path1->text(), ui.file("sub"));
    child<QPushButton>(w, "Command3")->click();
    QVERIFY(frame->isHidden());
    QCOMPARE(child<QLineEdit>(w, "Path_txt")->text(), ui.dir());
    child<QPushButton>(w, "Command2")->click();
    child<QPushButton>(w, "Command1")->click();
    QVERIFY(frame->isHidden());
    QCOMPARE(child<QLineEdit>(w, "Path_txt")->text(), ui.file("sub"));
    VERIFY_UI(ui);
}

void ExportTest::codePage_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << "a,b" << QByteArray("a,b");
    QTest::newRow("Latin-1 letters") << "Café ÿ" << QByteArray("Caf\xe9 \xff");
    QTest::newRow("the 0x80 row") << "€ ‘x’ Ÿ" << QByteArray("\x80 \x91x\x92 \x9f");
    QTest::newRow("outside the page") << "Ω 日" << QByteArray("? ?");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("a\xf0\x9f\x98\x80z") << QByteArray("a?z");
}

void ExportTest::codePage()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(toWindows1252(text), bytes);
}

VELK_TEST(ExportTest)
#include "tst_export.moc"
