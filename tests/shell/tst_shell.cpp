// Start-up, the settings record, the main window's commands and the exit.

#include "TestUi.h"

#include "platform/Activation.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Schema.h"
#include "store/SettingsTable.h"

#include <QAction>
#include <QtTest>

using namespace platform;

namespace
{

QString errorBox(int number, const QString& procedure)
{
    return errorMessageText(number, "frmMain", procedure, standardErrorText(number));
}

} // namespace

Q_DECLARE_METATYPE(Value)

class ShellTest : public QObject
{
    Q_OBJECT
private slots:
    // A first start builds the file whole and runs the wizard, whose cancel ends the
    // program; so does a start on a file with no settings row. A later start changes
    // nothing in the file.
    void startUp_data()
    {
        QTest::addColumn<int>("rows"); // -1: no data file yet
        QTest::newRow("first start") << -1;
        QTest::newRow("empty System table") << 0;
        QTest::newRow("later start") << 1;
    }
    void startUp()
    {
        QFETCH(int, rows);
        TestUi ui;
        if (rows >= 0)
            makeDataFile(ui, QList<QMap<QString, Value>>(rows));
        const QByteArray before = fileBytes(ui.file("data.mdb"));
        {
            frmMain w;
            w.MDIForm_Load();
            QVERIFY(QFileInfo(ui.file("data.mdb")).isFile());
            QVERIFY(!QFile::exists(ui.file("data.mdb.new")));
            QVERIFY(PlainConnection.isOpen());
            QVERIFY(ShapeConnection.isOpen());
            QCOMPARE(busyCount(), 0);
            QCOMPARE(SetupDone, rows > 0 ? 1 : 0);
            if (rows <= 0)
                ui.onModal("frm_setup", [](QDialog&) { return 0; });
            platform::activate(&w);
            QCOMPARE(w.unloaded(), rows <= 0);
            QCOMPARE(FrontCount, 1);
            w.close();
            QVERIFY(!PlainConnection.isOpen());
            QVERIFY(!ShapeConnection.isOpen());
        }
        Database::closeAll();
        if (rows > 0)
            QCOMPARE(fileBytes(ui.file("data.mdb")), before);
        VERIFY_UI(ui);
    }

    // Every column the settings table names is in the row, once, and no fixed field is wider
    // than its column; a copy into the record cuts to the field's width. The first row
    // counts, read into fields of their own widths and kinds.
    void settingsLoad()
    {
        const TableDef* system = schemaTable("System");
        QSet<QString> seen;
        for (const SettingsColumn& c : settingsColumns()) {
            const ColumnDef* column = system->column(QLatin1String(c.column));
            QVERIFY2(column, c.column);
            QVERIFY2(!seen.contains(QString(c.column).toLower()), c.column);
            QVERIFY2(c.width <= 0 || column->size >= c.width, c.column);
            seen.insert(QString(c.column).toLower());
        }
        QCOMPARE(seen.size(), 54);
        resetGlobals();
        copySettings({{"text2name", QString(35, 'n')}, {"TAXAMOUNT", 17.5}, {"present", 1}});
        QCOMPARE(settings.text2Name.text(), QString(30, 'n'));
        QCOMPARE(settings.TaxAmount, 17.5);
        QCOMPARE(settings.Present, qint16(1));
        TestUi ui;
        makeDataFile(ui, {{{"BusinessName", QString(35, 'B')},
                           {"Address", "1 High Street\r\nTown"},
                           {"Currency", "abc"},
                           {"TaxAmount", 17.123456},
                           {"Debtorstart", 1},
                           {"Invstart", "000042"},
                           {"FreeFormCrd", 1},
                           {"Text1Name", "  Sales Person  "},
                           {"InvoiceType", "3"}},
                          {{"BusinessName", "Second"}}});
        frmMain w;
        w.MDIForm_Load();
        QCOMPARE(SetupDone, 1);
        const SettingsRecord& s = settings;
        QCOMPARE((QStringList{s.BusinessName.text(), s.Address, s.Currency.text(), s.Invstart, s.text1Name.text(),
                              s.Phone.text(), s.InvoiceType}),
                 (QStringList{QString(30, 'B'), "1 High Street\r\nTown", "a", "000042",
                              "Sales Person" + QString(18, ' '), QString(30, ' '), "3"})); // a Null reads as empty
        QCOMPARE(s.TaxAmount, 17.1235);
        QCOMPARE(s.Debtorstart, qint16(1));
        QCOMPARE(s.FreeformCrd, qint16(1)); // the first from its text column
        // The debtor list opens at the first coming to the front only.
        ui.onModal("frmDebtor", [](QDialog&) { return 0; });
        platform::activate(&w);
        platform::activate(&w);
        QCOMPARE(FrontCount, 2);
        VERIFY_UI(ui);
    }

    // Failures at start-up end the program. A settings row the record cannot take: the error
    // box and a log.
    void badSettingsRow_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Value>("value");
        QTest::addColumn<int>("number");
        QTest::newRow("Null") << "FreeFormInv" << Value() << 94;
        QTest::newRow("text for a number") << "Debtorstart" << Value("yes") << 13;
        QTest::newRow("too large") << "Present" << Value(qint64(70000)) << 6;
    }

    void badSettingsRow()
    {
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        TestUi ui;
        makeDataFile(ui, {{{column, value}}});
        frmMain w;
        ui.expectBox("Error Message", errorBox(number, "Load_settings"), vbOK, vbExclamation);
        QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
        QCOMPARE(busyCount(), 0);
        QCOMPARE(QDir(ui.file("Logs")).entryList(QDir::Files), QStringList{"20261122103015.log"});
        VERIFY_UI(ui);
    }

    // A data file that is no database of ours is neither opened nor replaced.
    void foreignDataFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("a letter") << QByteArray("Dear customer,\nthis is not a database.\n");
        QTest::newRow("a bare header") << QByteArray("SQLite format 3").append(QByteArray(200, '\0'));
    }

    void foreignDataFile()
    {
        QFETCH(QByteArray, content);
        TestUi ui;
        const QString path = ui.file("data.mdb");
        writeFile(path, content);
        frmMain w;
        ui.expectBox("Error Message", errorBox(err::UnrecognisedDatabase, "Load"));
        QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
        QCOMPARE(fileBytes(path), content);
        QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), QStringList{"data.mdb"});
        QVERIFY(ui.shownBoxes.last().contains("Error Code \t: 467259\r\n"));
        VERIFY_UI(ui);
    }

    void dataFileIsAFolder()
    {
        // A folder where the file should be: it is no data file, it cannot be replaced, and
        // building it fails with Abort, Retry and Ignore offered.
        TestUi ui;
        QVERIFY(QDir(ui.dir()).mkdir("data.mdb"));
        const QString box = standardErrorText(err::PathFileAccess) + "    Error No. 75 \r\n";
        ui.expectBox("Code Gen Error", box, vbRetry, vbAbortRetryIgnore + vbCritical);
        ui.expectBox("Code Gen Error", box, vbAbort, vbAbortRetryIgnore + vbCritical);
        ui.expectBox("Error Message", errorBox(err::CannotOpenFile, "Load"));
        frmMain w;
        QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
        QVERIFY(QFileInfo(ui.file("data.mdb")).isDir());
        VERIFY_UI(ui);
    }

    // A new file records the schema version; files of earlier versions (0: every file
    // written before it was recorded) open and are raised to it, the current one opens
    // untouched, a newer one is refused untouched.
    void schemaVersion_data()
    {
        QTest::addColumn<int>("version");
        QTest::newRow("before versions were recorded") << 0;
        QTest::newRow("this version") << SchemaVersion;
        QTest::newRow("a newer version") << SchemaVersion + 1;
    }
    void schemaVersion()
    {
        QFETCH(int, version);
        TestUi ui;
        makeDataFile(ui, {{{"BusinessName", "Shop"}}});
        const QString path = ui.file("data.mdb");
        QCOMPARE(Database::openToRead(path)->schemaVersion(), SchemaVersion);
        Database::create(path)->setSchemaVersion(version);
        const QByteArray before = fileBytes(path);
        frmMain w;
        if (version > SchemaVersion) {
            ui.expectBox("Error Message", errorBox(err::NewerDataFile, "Load"));
            QVERIFY(endsProgram([&] { w.MDIForm_Load(); }));
            QVERIFY(ui.shownBoxes.last().contains("written by a newer version of Velk Invoice"));
        } else {
            w.MDIForm_Load();
            QCOMPARE(SetupDone, 1);
            QCOMPARE(settings.BusinessName.trimmed(), QStringLiteral("Shop"));
            w.close();
        }
        Database::closeAll();
        if (version < SchemaVersion)
            QCOMPARE(Database::openToRead(path)->schemaVersion(), SchemaVersion);
        else
            QCOMPARE(fileBytes(path), before);
        VERIFY_UI(ui);
    }

    // Each button opens its own window with no hourglass over it; the main window comes
    // to the front again after each.
    void toolbarCommands()
    {
        TestUi ui;
        auto w = startProgram(ui, {});
        ui.expectBox("Add to New Customer", "Do you want to add this invoice to a new customer", vbCancel,
                     vbYesNoCancel + vbQuestion);
        trigger(*w, 5);
        const char* windows[] = {"frmCustomer", "frmInvoice", "", "frmReports", "frmDebtor", "frm_Parts", "Help_frm"};
        for (int place = 1; place <= 13; place += 2) {
            const char* window = windows[place / 2];
            if (!*window)
                continue; // Add Invoice, cancelled above
            int busy = -1;
            ui.onModal(window, [&](QDialog&) {
                busy = busyCount();
                return 0;
            });
            child<QAction>(*w, QString("Toolbar1(%1)").arg(place))->trigger();
            QCOMPARE(QString(window) + ' ' + QString::number(busy), QString(window) + " 0"); // no hourglass
        }
        QCOMPARE(HelpTopic.trimmed(), "help.htm");
        QCOMPARE(FrontCount, 7);
        QCOMPARE(busyCount(), 0);
        trigger(*w, 15);
        QVERIFY(w->unloaded());
        QVERIFY(!PlainConnection.isOpen());
        QVERIFY(!ShapeConnection.isOpen());
        VERIFY_UI(ui);
    }

    void exitAsksForABackup()
    {
        TestUi ui;
        makeDataFile(ui, {{{"ConfirmBackup", 1}}});
        const QString target = ui.file("copy.mdb");
        // Yes then Cancel in the save dialog; No; Yes with a target, saved before the end.
        for (const QString answer : {"cancel", "no", "save"}) {
            frmMain w;
            w.MDIForm_Load();
            ui.expectBox("Backup?", "Do you wish to backup before exiting?", answer == "no" ? vbNo : vbYes,
                         vbYesNo + vbQuestion);
            if (answer != "no")
                ui.expectSave(answer == "save" ? std::optional<QString>(target) : std::nullopt);
            if (answer == "save")
                ui.expectBox("Successful", "Save was Successful", vbOK, vbInformation);
            w.findChild<QAction*>("mnuExit")->trigger();
            QVERIFY2(w.unloaded(), qPrintable(answer));
            QCOMPARE(answer + ": " + QString::number(BackupDone), answer + (answer == "cancel" ? ": 0" : ": 1"));
            VERIFY_UI(ui);
        }
        QCOMPARE(ui.dialogs.first().fileName, "Data.mdb");
        QVERIFY(QFile::exists(target));
    }
};

VELK_TEST(ShellTest)
#include "tst_shell.moc"
