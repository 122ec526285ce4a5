// Backup and restore of the data file, and the import of Invoices1.csv: the data file is
// never lost, and a failed import keeps what it stored before.

#include "TestUi.h"

#include "safety/Import.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Schema.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

using namespace platform;
using namespace Qt::StringLiterals;

namespace
{

const QString SaveOk = "Save was Successful";
const QString RestoreQuestion =
    "Are you very sure you want to restore this backup? This will overwrite your current data.";
const QByteArray Line1 = "C1,2026-03-01,I1,Anne,Smith,0123,1 High St,Flat 2,Leeds,LS1 1AA,150.50,Repairs,100.25,"
                         "Parts,50.25,x,Del 1,Del 2,Del 3,Del 4,Del 5\r\n";

} // namespace

class SafetyTest : public QObject
{
    Q_OBJECT
private slots:
    void backupAndRestore()
    {
        TestUi ui;
        frmMain w;
        w.MDIForm_Load();
        addRow("Customers", {{"CustID", "CUS1"}});
        QDir(ui.dir()).mkdir("usb");
        const QString target = ui.file("usb/Data.mdb");
        ui.expectSave(target);
        ui.expectBox("Successful", SaveOk, vbOK, vbInformation);
        w.findChild<QAction*>("MnuSave")->trigger();
        QCOMPARE(BackupDone, qint16(1));
        // Over an existing file, on Yes.
        ui.expectSave(target);
        ui.expectBox("Overwite File", "Do u wish to overwrite this file?", vbYes, vbYesNo + vbExclamation);
        ui.expectBox("Successful", SaveOk);
        w.MnuSave_Click();
        QCOMPARE(QDir(ui.file("usb")).entryList(QDir::Files), QStringList{"Data.mdb"});
        // A data file of its own.
        QCOMPARE(Database::openToRead(target)->texts("SELECT CustID FROM Customers"), QStringList{"CUS1"});
        addRow("Customers", {{"CustID", "LATER"}});
        settings.BusinessName = "In memory";
        for (int answer : {vbNo, vbYes}) {
            ui.expectOpen(target);
            ui.expectBox("Confirm", RestoreQuestion, answer, vbYesNo + vbQuestion);
            if (answer == vbYes)
                ui.expectBox("Successful", "Restore has been Successful", vbOK, vbInformation);
            w.mnurestore_Click();
            QCOMPARE(columnValues("Customers", "CustID"),
                     answer == vbNo ? (QStringList{"CUS1", "LATER"}) : QStringList{"CUS1"});
        }
        // Windows see the restored tables at their next open; the settings in memory stay.
        QCOMPARE(settings.BusinessName.trimmed(), "In memory");
        addRow("Customers", {{"CustID", "AFTER"}});
        QCOMPARE(columnValues("Customers", "CustID"), (QStringList{"CUS1", "AFTER"}));
        VERIFY_UI(ui);
    }

    void refusalsKeepTheDataFile_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("name");  // chosen in the dialog; empty: cancelled
        QTest::addColumn<QString>("lies");  // what lies there for a restore
        QTest::addColumn<QString>("title"); // of the one box shown, if any
        QTest::addColumn<QString>("text");
        const char *again = "Please Try Again", *original = "Cannot overwrite original database";
        const char *overwrite = "Do u wish to overwrite this file?", *name = "Database must be called Data.mdb";
        const char* rows[][6] = {
            {"backup: the exact name", "MnuSave", "Data.mdb", "", again, original},
            {"backup: the live file's own name", "MnuSave", "data.mdb", "", again, original},
            {"backup: another path form", "MnuSave", "./sub/../data.mdb", "", again, original},
            {"backup: a link to it", "MnuSave", "link.mdb", "", again, original},
            {"backup: an existing file kept", "MnuSave", "old.mdb", "", "Overwite File", overwrite},
            {"backup: no such folder", "MnuSave", "gone/Data.mdb", "", "", ""},
            {"backup: cancelled", "MnuSave", "", "", "", ""},
            // Refused by name before the question, or asked and then refused in silence.
            {"restore: another name", "mnurestore", "usb/backup.mdb", "copy", again, name},
            {"restore: lower case", "mnurestore", "usb/data.mdb", "copy", again, name},
            {"restore: upper case", "mnurestore", "usb/DATA.MDB", "copy", again, name},
            {"restore: missing file", "mnurestore", "usb/Data.mdb", "", again, name},
            {"restore: not a database", "mnurestore", "usb/Data.mdb", "text", "Confirm", ""},
            {"restore: cut short", "mnurestore", "usb/Data.mdb", "half", "Confirm", ""},
            {"restore: another program's", "mnurestore", "usb/Data.mdb", "foreign", "Confirm", ""},
            {"restore: a column missing", "mnurestore", "usb/Data.mdb", "no column", "Confirm", ""},
            {"restore: from a newer version", "mnurestore", "usb/Data.mdb", "newer", "Confirm", ""},
            {"restore: the live file", "mnurestore", "usb/Data.mdb", "link", "Confirm", ""},
            {"restore: cancelled", "mnurestore", "", "", "", ""}};
        for (auto& [row, command, file, lies, title, text] : rows)
            QTest::newRow(row) << QString(command) << QString(file) << QString(lies) << QString(title) << QString(text);
    }
    // Nothing is copied, and the live file and any file in the way are left as they were.
    void refusalsKeepTheDataFile()
    {
        QFETCH(QString, command);
        QFETCH(QString, name);
        QFETCH(QString, lies);
        QFETCH(QString, title);
        QFETCH(QString, text);
        TestUi ui;
        frmMain w;
        w.MDIForm_Load();
        addRow("Customers", {{"CustID", "CUS1"}});
        for (int i = 0; lies == "half" && i < 200; ++i) // enough rows for a file of several pages
            addRow("Customers", {{"CustID", QString::number(i)}});
        const QString data = ui.file("data.mdb"), source = ui.file(name);
        QDir(ui.dir()).mkdir("sub");
        QDir(ui.dir()).mkdir("usb");
        QFile::link(data, ui.file("link.mdb"));
        writeFile(ui.file("old.mdb"), "previous backup");
        if (lies == "copy" || lies == "half" || lies == "no column" || lies == "newer")
            writeFile(source, fileBytes(data).first(fileBytes(data).size() / (lies == "half" ? 2 : 1)));
        else if (lies == "text")
            writeFile(source, "just some notes\n");
        else if (lies == "foreign")
            Database::create(source)->exec("CREATE TABLE Customers (x); CREATE TABLE Notes (y)");
        else if (lies == "link")
            QFile::link(data, source);
        if (lies == "no column") // sound, but a table short of one column
            Database::create(source)->exec("ALTER TABLE Customers DROP COLUMN Notes");
        else if (lies == "newer")
            Database::create(source)->setSchemaVersion(SchemaVersion + 1);
        Database::closeAll();
        PlainConnection.open(ConnectionString);
        const QByteArray before = fileBytes(data);
        const auto chosen = name.isEmpty() ? std::nullopt : std::optional<QString>(source);
        command == "MnuSave" ? ui.expectSave(chosen) : ui.expectOpen(chosen);
        if (!title.isEmpty())
            ui.expectBox(title, title == "Confirm" ? RestoreQuestion : text,
                         title == "Confirm"         ? vbYes
                         : title == "Overwite File" ? vbNo
                                                    : vbOK);
        w.findChild<QAction*>(command)->trigger();
        QCOMPARE(fileBytes(data), before);
        QCOMPARE(fileBytes(ui.file("old.mdb")), QByteArray("previous backup"));
        QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), (QStringList{"data.mdb", "link.mdb", "old.mdb"}));
        QCOMPARE(columnValues("Customers", "CustID").first(), "CUS1");
        QCOMPARE(BackupDone, qint16(0));
        VERIFY_UI(ui);
    }

    // Every field where the file says, the shapes of line met, and no number taken.
    void importStoresEveryField()
    {
        TestUi ui;
        auto w = startProgram(ui, {{"Invstart", "0005"}, {"CustStart", "0007"}});
        auto* import = child<QAction>(*w, "mnuImport");
        emit child<QMenu>(*w, "mnuTools")->aboutToShow();
        QVERIFY(!import->isEnabled()); // offered only when the file is there
        writeFile(ui.file("Invoices1.csv"), {});
        emit child<QMenu>(*w, "mnuTools")->aboutToShow();
        import->trigger();
        QCOMPARE(columnValues("Customers", "CustID"), QStringList());
        QByteArray wide = "C5,2026-01-01,I5,A,B,,,,,,5,Wide,5,,,,D1,D2,D3,D4,D5"; // fields past the 21st ignored
        for (int i = 22; i <= 40; ++i)
            wide += ",f" + QByteArray::number(i);
        // A Windows-1252 name (e acute, the euro sign); a blank field 14; quotes as text; a lone CR; no last end.
        writeFile(ui.file("Invoices1.csv"), Line1 + "C3,2026-05-02,I3,Ren\xe9,\x80uro,,,,,,9.99,One,9.99,   ,7.00\n" +
                                                wide + "\nC6,2026-01-01,I6,A,B,,,,,,5,\"Nuts\",5\n" +
                                                "C4,2026-01-01,I4,A,B,,,,,,5,One,2,Two,3\r" +
                                                "C2,15/04/2026,I2,Bob,Jones,0456,2 Low Rd,,York,YO1 2BB,20,Visit,20");
        import->trigger();
        VERIFY_UI(ui);
        QCOMPARE(tableRows("Customers", {"CustID", "Date", "FirstName", "LastName", "Phone", "Address", "Address2",
                                         "City", "Postcode", "DelAddress1", "DelAddress2", "DelAddress3", "DelAddress4",
                                         "DelAddress5", "address4", "notes"}),
                 (QStringList{
                     "C1|01/03/2026|Anne|Smith|0123|1 High St|Flat 2|Leeds|LS1 1AA|Del 1|Del 2|Del 3|Del 4|Del 5||",
                     QString::fromUtf8("C3|02/05/2026|René|€uro||||||||||||"),
                     "C5|01/01/2026|A|B||||||D1|D2|D3|D4|D5||", "C6|01/01/2026|A|B||||||||||||",
                     "C4|01/01/2026|A|B||||||||||||", "C2|15/04/2026|Bob|Jones|0456|2 Low Rd||York|YO1 2BB|||||||"}));
        QCOMPARE(tableRows("Invoices", {"InvNo", "Date", "CustNo", "CustomerName", "Subtotal", "Total", "Paid", "Vat",
                                        "Discount", "Balance", "Notes"})
                     .mid(0, 2),
                 (QStringList{"I1|01/03/2026|C1|Anne Smith|150.5|150.5|150.5|0|0|0|",
                              QString::fromUtf8("I3|02/05/2026|C3|René €uro|9.99|9.99|9.99|0|0|0|")}));
        QCOMPARE(tableRows("InvoiceD", {"InvNo", "PartID", "Qty", "Description", "Amount", "Total"}),
                 (QStringList{"I1||1|Repairs|100.25|100.25", "I1||1|Parts|50.25|50.25", "I3||1|One|9.99|9.99",
                              "I5||1|Wide|5|5", "I6||1|\"Nuts\"|5|5", "I4||1|One|2|2", "I4||1|Two|3|3",
                              "I2||1|Visit|20|20"}));
        QCOMPARE(tableRows("System", {"Invstart", "CustStart"}), QStringList{"0005|0007"});
    }

    void importFailures_data()
    {
        QTest::addColumn<QByteArray>("file"); // "missing" for no file at all
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("stored"); // customers, invoices and the count of lines left in the file
        const QByteArray bad = Line1 + "C9,2026-01-01,I9,A,B,,,,,,";
        QByteArray junk;
        for (int i = 0; i < 4096; ++i)
            junk += char((i * 37) & 0xFF);
        auto row = [](const char* name, const QByteArray& file, int number, const char* stored) {
            QTest::newRow(name) << file << number << QString(stored);
        };
        row("missing file", "missing", err::FileNotFound, "||0");
        row("customer repeated", Line1 + "C2,2026-01-01,I2,A,B,,,,,,5,One,5\nC1,2026-01-01,I9,A,B,,,,,,5,One,5\r\n",
            err::DuplicateKey, "C1,C2|I1,I2|3");
        // The customer of the failing line stays without its invoice.
        row("invoice repeated", Line1 + "C9,2026-01-01,I1,A,B,,,,,,5,One,5\r\n", err::DuplicateKey, "C1,C9|I1|2");
        row("date the store can't read", Line1 + "C9,31/02/2026,I9,A,B,,,,,,5,One,5\r\n", err::TypeMismatch, "C1|I1|2");
        row("amount not a number", bad + "5x,One,5\r\n", err::TypeMismatch, "C1,C9|I1|2");
        row("short line", Line1 + "C9,2026-01-01,I9\r\n", err::TypeMismatch, "C1,C9|I1|2");
        row("name too long", Line1 + "C9,2026-01-01,I9," + QByteArray(51, 'a') + ",B,,,,,,5,One,5\r\n",
            err::FieldTooSmall, "C1|I1|2");
        // No quoting: the comma inside the quotes moves the amount onto " bolts\"".
        row("comma in quotes", bad + "5,\"Nuts, bolts\",5\r\n", err::TypeMismatch, "C1,C9|I1,I9|2");
        row("binary junk", Line1 + junk, err::FieldTooSmall, "C1|I1|2");
    }
    void importFailures()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, number);
        QFETCH(QString, stored);
        TestUi ui;
        auto w = startProgram(ui, {});
        if (file != "missing")
            writeFile(ui.file("Invoices1.csv"), file);
        ui.expectBox("Error Message", errorMessageText(number, "frmMain", "mnuImport_Click", standardErrorText(number)),
                     vbOK, vbExclamation);
        QVERIFY(endsProgram([] { safety::mnuImport(); }));
        VERIFY_UI(ui);
        QCOMPARE(QDir(ui.file("Logs")).entryList(QDir::Files), QStringList{"20261122103015.log"});
        QCOMPARE(busyCount(), qint16(0));
        // What a fresh look at the file finds: whole, with the rows stored before the failure.
        const auto disk = Database::openToRead(ui.file("data.mdb"));
        QCOMPARE(disk->texts("PRAGMA integrity_check"), QStringList{"ok"});
        QCOMPARE(disk->texts("SELECT group_concat(CustID) FROM Customers UNION ALL SELECT group_concat(InvNo) FROM "
                             "Invoices UNION ALL SELECT count(*) FROM InvoiceD")
                     .join('|'),
                 stored);
    }
};

VELK_TEST(SafetyTest)
#include "tst_safety.moc"
