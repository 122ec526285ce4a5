// Start-up, the settings record, the main window's commands and the exit.

#include "TestUi.h"

#include "platform/Activation.h"
#include "shell/Globals.h"
#include "shell/SettingsTable.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QtTest>

using namespace platform;
using namespace Qt::StringLiterals;

namespace
{

// Makes a data file with System rows, as a previous run would have left it.
void makeDataFile(TestUi& ui, const QList<QMap<QString, Value>>& rows)
{
    {
        frmMain first;
        first.MDIForm_Load();
        Recordset rs;
        rs.open(u"System"_s, ConnectionString, Recordset::adLockPessimistic);
        for (const auto& row : rows) {
            rs.addNew();
            rs.setField(u"TaxAmount"_s, 0.0);
            rs.setField(u"Text3Name"_s, QString());
            rs.setField(u"Text4Name"_s, QString());
            for (auto it = row.begin(); it != row.end(); ++it)
                rs.setField(it.key(), it.value());
            rs.update();
        }
        first.close();
    }
    Database::closeAll();
    resetGlobals();
    ui.clearProblems();
}

QMap<QString, Value> numbered()
{
    return {{"FreeFormInv", 0}, {"FreeformCus", 0}, {"FreeformPart", 0}, {"FreeFormCrd", 0}};
}

QString errorBox(int number, const QString& procedure, const QString& description)
{
    return errorMessageText(number, u"frmMain"_s, procedure, description);
}

} // namespace

class ShellTest : public QObject
{
    Q_OBJECT
private slots:
    void firstStartBuildsTheFileAndTheWindow();
    void laterStart_data();
    void laterStart();
    void settingsLoadWithTheirWidthsAndConversions();
    void settingsTableMatchesTheRow();
    void badSettingsEndTheProgram_data();
    void badSettingsEndTheProgram();
    void foreignFileIsLeftUntouched_data();
    void foreignFileIsLeftUntouched();
    void buildFailureOffersAbortRetryIgnore();
    void toolbarCommands();
    void exitAsksForABackup();
    void autoInvoicePlaceholder();
};

void ShellTest::firstStartBuildsTheFileAndTheWindow()
{
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    QVERIFY(QFileInfo(ui.file(u"data.mdb"_s)).isFile());
    QVERIFY(!QFile::exists(ui.file(u"data.mdb.new"_s)));
    QCOMPARE(SetupDone, qint16(0));
    QVERIFY(PlainConnection.isOpen());
    QVERIFY(ShapeConnection.isOpen());
    QCOMPARE(busyCount(), qint16(0));
    QCOMPARE(w.windowTitle(), u"Velk Invoice"_s);

    QStringList menus;
    for (QAction* a : w.menuBar()->actions()) {
        QStringList entries;
        for (QAction* e : a->menu()->actions())
            entries << e->objectName() + '=' + (e->isSeparator() ? u"-"_s : e->text()) +
                           (e->isEnabled() ? QString() : u" (off)"_s);
        menus << a->menu()->objectName() + '=' + a->text() + ": " + entries.join(", ");
    }
    QCOMPARE(menus,
             (QStringList{
                 "mnuFile=File: mnuExport=&Export, mnusep=-, MnuSave=&Save, mnurestore=&Restore, mn=-, mnuExit=&Exit",
                 "mnuTools=Tools: mnuOptions=&Options, mnuWeb=&Web, mnuImport=Import (off)"}));

    QStringList buttons;
    for (QAction* a : w.findChild<QToolBar*>(u"Toolbar1"_s)->actions())
        buttons << a->objectName() + '=' + (a->isSeparator() ? u"-"_s : a->text());
    QCOMPARE(buttons.join(", "),
             QStringLiteral("Toolbar1(1)=Customers, Toolbar1(2)=-, Toolbar1(3)=Invoices, Toolbar1(4)=-, "
                            "Toolbar1(5)=Add Invoice, Toolbar1(6)=-, Toolbar1(7)=Reports, Toolbar1(8)=-, "
                            "Toolbar1(9)=Debtors, Toolbar1(10)=-, Toolbar1(11)=Items, Toolbar1(12)=-, "
                            "Toolbar1(13)=Help, Toolbar1(14)=-, Toolbar1(15)=Exit"));

    const QStringList panels{"Version 1.1", ProductWebSite, "\"Auto invoice routine available in November\""};
    for (int i = 0; i < 3; ++i) {
        auto* panel = child<QLabel>(w, u"Panel(%1)"_s.arg(i + 1));
        QCOMPARE(panel->text(), panels[i]);
        QCOMPARE(panel->toolTip(), panels[i]);
    }
    // A first run opens the setup wizard; cancelling it ends the program.
    ui.onModal(u"frm_setup"_s, [](QDialog&) { return 0; });
    platform::activate(&w);
    QCOMPARE(FrontCount, 1);
    QVERIFY(w.unloaded());
    VERIFY_UI(ui);
}

void ShellTest::laterStart_data()
{
    QTest::addColumn<bool>("settingsRow");
    QTest::newRow("settings kept") << true;
    QTest::newRow("empty System table") << false;
}

// A later start changes nothing in the file; with no settings row it is a first run.
void ShellTest::laterStart()
{
    QFETCH(bool, settingsRow);
    TestUi ui;
    makeDataFile(ui, settingsRow ? QList<QMap<QString, Value>>{numbered()} : QList<QMap<QString, Value>>{});
    const QByteArray before = fileBytes(ui.file(u"data.mdb"_s));
    {
        frmMain w;
        w.MDIForm_Load();
        QCOMPARE(SetupDone, qint16(settingsRow));
        QCOMPARE(settings.BusinessName.text(), QString(30, ' '));
        if (settingsRow) {
            platform::activate(&w);
            w.close();
            QVERIFY(w.unloaded());
        }
    }
    Database::closeAll();
    if (settingsRow)
        QCOMPARE(fileBytes(ui.file(u"data.mdb"_s)), before);
    VERIFY_UI(ui);
}

void ShellTest::settingsLoadWithTheirWidthsAndConversions()
{
    TestUi ui;
    auto first = numbered();
    first.insert({{"BusinessName", QString(35, 'B')},
                  {"Address", u"1 High Street\r\nTown"_s},
                  {"Currency", u"abc"_s},
                  {"TaxAmount", 17.123456},
                  {"TaxEnabled", 1},
                  {"Debtorstart", 1},
                  {"Invstart", u"000042"_s},
                  {"FreeFormCrd", 1},
                  {"ConfirmBackup", 1},
                  {"Text1Name", u"  Sales Person  "_s},
                  {"Text3Name", u"Sales No"_s},
                  {"InvoiceType", u"3"_s},
                  {"logopath", u"/tmp/logo.jpg"_s}});
    auto second = numbered();
    second.insert(u"BusinessName"_s, u"Second"_s);
    makeDataFile(ui, {first, second});

    frmMain w;
    w.MDIForm_Load();
    QCOMPARE(SetupDone, qint16(1));
    QCOMPARE(settings.BusinessName.text(), QString(30, 'B'));
    QCOMPARE(settings.Address, u"1 High Street\r\nTown"_s);
    QCOMPARE(settings.Currency.text(), u"a"_s);
    QCOMPARE(settings.TaxAmount, 17.1235);
    QCOMPARE(settings.TaxEnabled, qint16(1));
    QCOMPARE(settings.Debtorstart, qint16(1)); // read from its text column
    QCOMPARE(settings.Invstart, u"000042"_s);
    QCOMPARE(settings.FreeformCrd, qint16(1));
    QCOMPARE(settings.ConfirmBackup, qint16(1));
    QCOMPARE(settings.text1Name.text(), u"Sales Person"_s.leftJustified(30));
    QCOMPARE(settings.text3Name.trimmed(), u"Sales No"_s);
    QCOMPARE(settings.Phone.text(), QString(30, ' ')); // Null reads as empty
    QCOMPARE(settings.InvoiceType, u"3"_s);
    QCOMPARE(settings.Logopath, u"/tmp/logo.jpg"_s);
    // The debtor list opens at the first coming to the front only; the count goes up each time.
    ui.onModal(u"frmDebtor"_s, [](QDialog&) { return 0; });
    platform::activate(&w);
    platform::activate(&w);
    QCOMPARE(FrontCount, 2);
    VERIFY_UI(ui);
}

// Every column the settings table names is in the row, once, and no fixed field is wider
// than its column; a copy into the record cuts to the field's width.
void ShellTest::settingsTableMatchesTheRow()
{
    const TableDef* system = schemaTable(u"System"_s);
    QSet<QString> seen;
    for (const SettingsColumn& c : settingsColumns()) {
        const ColumnDef* column = system->column(QLatin1String(c.column));
        QVERIFY2(column, c.column);
        QVERIFY2(!seen.contains(QString::fromLatin1(c.column).toLower()), c.column);
        seen.insert(QString::fromLatin1(c.column).toLower());
        if (c.width > 0)
            QVERIFY2(column->size >= c.width, c.column);
    }
    QCOMPARE(seen.size(), 54);
    resetGlobals();
    copySettings({{"text2name", QString(35, 'n')}, {"TAXAMOUNT", 17.5}, {"present", 1}});
    QCOMPARE(settings.text2Name.text(), QString(30, 'n'));
    QCOMPARE(settings.TaxAmount, 17.5);
    QCOMPARE(settings.Present, qint16(1));
    resetGlobals();
}

void ShellTest::badSettingsEndTheProgram_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<Value>("value");
    QTest::addColumn<int>("number");
    QTest::newRow("Null in a free-form column") << "FreeFormInv" << Value() << 94;
    QTest::newRow("Null in another free-form column") << "FreeformPart" << Value() << 94;
    QTest::newRow("Debtorstart not a number") << "Debtorstart" << Value(u"yes"_s) << 13;
    QTest::newRow("flag out of range") << "Present" << Value(qint64(70000)) << 6;
}

void ShellTest::badSettingsEndTheProgram()
{
    QFETCH(QString, column);
    QFETCH(Value, value);
    QFETCH(int, number);
    TestUi ui;
    auto row = numbered();
    row.insert(column, value);
    makeDataFile(ui, {row});
    frmMain w;
    ui.expectBox(u"Error Message"_s, errorBox(number, u"Load_settings"_s, standardErrorText(number)), vbOK,
                 vbExclamation);
    QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
    QCOMPARE(busyCount(), qint16(0));
    QCOMPARE(QDir(ui.file(u"Logs"_s)).entryList(QDir::Files), QStringList{"20261122103015.log"});
    VERIFY_UI(ui);
}

void ShellTest::foreignFileIsLeftUntouched_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text file") << QByteArray("Dear customer,\nthis is not a database.\n");
    QTest::newRow("another program's file") << QByteArray("\x89PNG\r\n\x1a\n").append(QByteArray(4096, '\x07'));
    QTest::newRow("empty-looking header") << QByteArray("SQLite format 3").append(QByteArray(200, '\0'));
}

void ShellTest::foreignFileIsLeftUntouched()
{
    QFETCH(QByteArray, content);
    TestUi ui;
    const QString path = ui.file(u"data.mdb"_s);
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    frmMain w;
    ui.expectBox(u"Error Message"_s,
                 errorBox(err::UnrecognisedDatabase, u"Load"_s, standardErrorText(err::UnrecognisedDatabase)));
    QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
    QCOMPARE(fileBytes(path), content);
    QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), QStringList{"data.mdb"});
    QVERIFY(ui.shownBoxes.last().contains(u"Error Code \t: 467259\r\n"_s));
    VERIFY_UI(ui);
}

void ShellTest::buildFailureOffersAbortRetryIgnore()
{
    TestUi ui;
    // A folder where the file should be: it is no data file, and it cannot be replaced.
    QVERIFY(QDir(ui.dir()).mkdir(u"data.mdb"_s));
    const QString box = standardErrorText(err::PathFileAccess) + u"    Error No. 75 \r\n"_s;
    ui.expectBox(u"Code Gen Error"_s, box, vbRetry, vbAbortRetryIgnore + vbCritical);
    ui.expectBox(u"Code Gen Error"_s, box, vbAbort, vbAbortRetryIgnore + vbCritical);
    ui.expectBox(u"Error Message"_s, errorBox(err::CannotOpenFile, u"Load"_s, standardErrorText(err::CannotOpenFile)));
    frmMain w;
    QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
    QVERIFY(QFileInfo(ui.file(u"data.mdb"_s)).isDir());
    VERIFY_UI(ui);
}

void ShellTest::toolbarCommands()
{
    TestUi ui;
    auto main = startProgram(ui, {{"CustPrefix", u"CUS"_s}, {"CustStart", u"100001"_s}});
    frmMain& w = *main;
    auto button = [&](int index) { return w.findChild<QAction*>(u"Toolbar1(%1)"_s.arg(index)); };
    const QString title = u"Add to New Customer"_s;
    const QString question = u"Do you want to add this invoice to a new customer"_s;
    ui.expectBox(title, question, vbCancel, vbYesNoCancel + vbQuestion);
    button(5)->trigger();
    QCOMPARE(NewCustomerMode, qint16(0));
    ui.expectBox(title, question, vbYes, vbYesNoCancel + vbQuestion);
    int busyInWindow = -1;
    ui.onModal(u"frmAddCust"_s, [&](QDialog&) {
        busyInWindow = busyCount();
        return 0;
    });
    button(5)->trigger();
    QCOMPARE(NewCustomerMode, qint16(1));
    QCOMPARE(busyInWindow, 0); // no hourglass over a window
    for (auto [window, place] : {std::pair{"frmCustomer", 1}, {"frmInvoice", 3}, {"frm_Parts", 11}}) {
        ui.onModal(QString::fromLatin1(window), [](QDialog&) { return 0; });
        button(place)->trigger();
    }
    QCOMPARE(FrontCount, 5); // at the start, and again after each of the four windows
    ui.onModal(u"Help_frm"_s, [](QDialog&) { return 0; });
    button(13)->trigger();
    QCOMPARE(HelpTopic.trimmed(), u"help.htm"_s);
    ui.onModal(u"frmReports"_s, [](QDialog&) { return 0; });
    ui.onModal(u"frmDebtor"_s, [](QDialog&) { return 0; });
    for (int i : {2, 7, 9})
        w.Toolbar1_ButtonClick(i);
    QCOMPARE(busyCount(), qint16(0));
    QVERIFY(!w.unloaded());
    button(15)->trigger();
    QVERIFY(w.unloaded());
    QVERIFY(!PlainConnection.isOpen());
    QVERIFY(!ShapeConnection.isOpen());
    VERIFY_UI(ui);
}

void ShellTest::exitAsksForABackup()
{
    TestUi ui;
    auto row = numbered();
    row.insert(u"ConfirmBackup"_s, 1);
    makeDataFile(ui, {row});
    const QString title = u"Backup?"_s;
    const QString question = u"Do you wish to backup before exiting?"_s;
    {
        // Yes, then Cancel in the save dialog: no further box, and the exit goes on.
        frmMain w;
        w.MDIForm_Load();
        ui.expectBox(title, question, vbYes, vbYesNo + vbQuestion);
        ui.expectSave(std::nullopt);
        w.findChild<QAction*>(u"mnuExit"_s)->trigger();
        QVERIFY(w.unloaded());
        QCOMPARE(BackupDone, qint16(0));
        QCOMPARE(ui.dialogs.last().fileName, u"Data.mdb"_s);
    }
    {
        frmMain w;
        w.MDIForm_Load();
        ui.expectBox(title, question, vbNo, vbYesNo + vbQuestion);
        w.close();
        QVERIFY(w.unloaded());
        QCOMPARE(BackupDone, qint16(1));
    }
    {
        // Yes with a target: the backup is made before the program ends.
        frmMain w;
        w.MDIForm_Load();
        const QString target = ui.file(u"copy.mdb"_s);
        ui.expectBox(title, question, vbYes, vbYesNo + vbQuestion);
        ui.expectSave(target);
        ui.expectBox(u"Successful"_s, u"Save was Successful"_s, vbOK, vbInformation);
        w.close();
        QVERIFY(QFile::exists(target));
    }
    VERIFY_UI(ui);
}

void ShellTest::autoInvoicePlaceholder()
{
    frm_AutoInv w;
    QCOMPARE(w.windowTitle(), u"Auto Invoice"_s);
    QStringList buttons;
    for (QAction* a : w.findChild<QToolBar*>(u"Toolbar1"_s)->actions())
        buttons << a->text();
    QCOMPARE(buttons, (QStringList{"Add", "Delete", "Edit", "Help"}));
    auto* exit = w.findChild<QPushButton*>(u"exit_cmd"_s);
    QCOMPARE(exit->text(), u"&Exit"_s);
    w.show();
    exit->click();
    QVERIFY(!w.isVisible());
}

VELK_TEST(ShellTest)
#include "tst_shell.moc"
