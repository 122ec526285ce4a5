// Backup and restore of the data file through the File menu.

#include "TestUi.h"

#include "safety/BackupRestore.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <QAction>
#include <QDir>
#include <QtTest>

using namespace platform;

namespace
{

void addCustomer(const QString& id)
{
    Recordset rs;
    rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockPessimistic);
    rs.addNew();
    rs.setField(QStringLiteral("CustID"), id);
    rs.update();
}

QStringList customers()
{
    Recordset rs;
    rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
    QStringList ids;
    for (; !rs.eof(); rs.moveNext())
        ids << rs.field(QStringLiteral("CustID")).toText();
    return ids;
}

const QString SaveOk = QStringLiteral("Save was Successful");
const QString RestoreOk = QStringLiteral("Restore has been Successful");
const QString RestoreQuestion =
    QStringLiteral("Are you very sure you want to restore this backup? This will overwrite your current data.");

} // namespace

class BackupTest : public QObject
{
    Q_OBJECT
private slots:
    void backupMakesACompleteCopy();
    void backupNeverTouchesTheLiveFile_data();
    void backupNeverTouchesTheLiveFile();
    void backupOverAnExistingFile();
    void restoreNameRules_data();
    void restoreNameRules();
    void restoreBringsBackTheData();
    void restoreRefusesWhatIsNotOurs_data();
    void restoreRefusesWhatIsNotOurs();
};

void BackupTest::backupMakesACompleteCopy()
{
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("CUS1"));
    QDir(ui.dir()).mkdir(QStringLiteral("usb"));
    const QString target = ui.file(QStringLiteral("usb/Data.mdb"));
    ui.expectSave(target);
    ui.expectBox(QStringLiteral("Successful"), SaveOk, vbOK, vbInformation);
    w.findChild<QAction*>(QStringLiteral("MnuSave"))->trigger();
    QCOMPARE(BackupDone, qint16(1));
    QCOMPARE(ui.dialogs.last().filter, QStringLiteral("Access Database(*.mdb)|*.mdb"));
    QCOMPARE(ui.dialogs.last().filterIndex, 1);
    QCOMPARE(QDir(ui.file(QStringLiteral("usb"))).entryList(QDir::Files), QStringList{"Data.mdb"});
    // The copy is a whole data file of its own.
    auto copy = Database::open(target);
    Recordset rs;
    rs.open(QStringLiteral("Customers"), QStringLiteral("Data Source='%1';").arg(target), Recordset::adLockReadOnly);
    QCOMPARE(rs.field(QStringLiteral("CustID")).toText(), QStringLiteral("CUS1"));
    // Cancel in the dialog ends the command without a word.
    BackupDone = 0;
    ui.expectSave(std::nullopt);
    w.MnuSave_Click();
    QCOMPARE(BackupDone, qint16(0));
    VERIFY_UI(ui);
}

void BackupTest::backupNeverTouchesTheLiveFile_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("the exact name") << "Data.mdb";
    QTest::newRow("the live file's own name") << "data.mdb";
    QTest::newRow("another path form") << "./sub/../data.mdb";
    QTest::newRow("a link to it") << "link.mdb";
}

void BackupTest::backupNeverTouchesTheLiveFile()
{
    QFETCH(QString, target);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("CUS1"));
    QDir(ui.dir()).mkdir(QStringLiteral("sub"));
    QFile::link(ui.file(QStringLiteral("data.mdb")), ui.file(QStringLiteral("link.mdb")));
    const QByteArray before = fileBytes(ui.file(QStringLiteral("data.mdb")));
    ui.expectSave(ui.dir() + '/' + target);
    ui.expectBox(QStringLiteral("Please Try Again"), QStringLiteral("Cannot overwrite original database"), vbOK,
                 vbExclamation);
    w.MnuSave_Click();
    QCOMPARE(fileBytes(ui.file(QStringLiteral("data.mdb"))), before);
    QCOMPARE(customers(), QStringList{"CUS1"});
    QCOMPARE(BackupDone, qint16(0));
    VERIFY_UI(ui);
}

void BackupTest::backupOverAnExistingFile()
{
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    const QString target = ui.file(QStringLiteral("old backup.mdb"));
    {
        QFile f(target);
        f.open(QIODevice::WriteOnly);
        f.write("previous backup");
    }
    ui.expectSave(target);
    ui.expectBox(QStringLiteral("Overwite File"), QStringLiteral("Do u wish to overwrite this file?"), vbNo,
                 vbYesNo + vbExclamation);
    w.MnuSave_Click();
    QCOMPARE(fileBytes(target), QByteArray("previous backup"));
    QCOMPARE(BackupDone, qint16(0));

    ui.expectSave(target);
    ui.expectBox(QStringLiteral("Overwite File"), QStringLiteral("Do u wish to overwrite this file?"), vbYes);
    ui.expectBox(QStringLiteral("Successful"), SaveOk);
    w.MnuSave_Click();
    QVERIFY(fileBytes(target).startsWith("SQLite format 3"));
    QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), (QStringList{"data.mdb", "old backup.mdb"}));
    VERIFY_UI(ui);
}

void BackupTest::restoreNameRules_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("another name") << "backup.mdb";
    QTest::newRow("lower case") << "data.mdb";
    QTest::newRow("upper case") << "DATA.MDB";
    QTest::newRow("missing file") << "missing/Data.mdb";
}

void BackupTest::restoreNameRules()
{
    QFETCH(QString, name);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    QDir(ui.dir()).mkdir(QStringLiteral("usb"));
    const QString source = ui.file(QStringLiteral("usb/") + name);
    if (!name.startsWith(QLatin1String("missing")))
        QFile::copy(ui.file(QStringLiteral("data.mdb")), source);
    ui.expectOpen(source);
    ui.expectBox(QStringLiteral("Please Try Again"), QStringLiteral("Database must be called Data.mdb"), vbOK,
                 vbExclamation);
    w.findChild<QAction*>(QStringLiteral("mnurestore"))->trigger();
    QCOMPARE(ui.dialogs.last().fileName, QString());
    VERIFY_UI(ui);
}

void BackupTest::restoreBringsBackTheData()
{
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("KEPT"));
    QDir(ui.dir()).mkdir(QStringLiteral("usb"));
    const QString backup = ui.file(QStringLiteral("usb/Data.mdb"));
    ui.expectSave(backup);
    ui.expectBox(QStringLiteral("Successful"), SaveOk);
    w.MnuSave_Click();
    addCustomer(QStringLiteral("LATER"));
    settings.BusinessName = QStringLiteral("In memory");

    // No keeps the current data.
    ui.expectOpen(backup);
    ui.expectBox(QStringLiteral("Confirm"), RestoreQuestion, vbNo, vbYesNo + vbQuestion);
    w.mnurestore_Click();
    QCOMPARE(customers(), (QStringList{"KEPT", "LATER"}));

    ui.expectOpen(backup);
    ui.expectBox(QStringLiteral("Confirm"), RestoreQuestion, vbYes, vbYesNo + vbQuestion);
    ui.expectBox(QStringLiteral("Successful"), RestoreOk, vbOK, vbInformation);
    w.mnurestore_Click();
    // Windows see the restored tables at their next open; the settings record stays.
    QCOMPARE(customers(), QStringList{"KEPT"});
    QVERIFY(PlainConnection.isOpen());
    QVERIFY(ShapeConnection.isOpen());
    QCOMPARE(settings.BusinessName.trimmed(), QStringLiteral("In memory"));
    addCustomer(QStringLiteral("AFTER"));
    QCOMPARE(customers(), (QStringList{"KEPT", "AFTER"}));
    // Cancel in the dialog: silence.
    ui.expectOpen(std::nullopt);
    w.mnurestore_Click();
    VERIFY_UI(ui);
}

void BackupTest::restoreRefusesWhatIsNotOurs_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("not a database") << "text";
    QTest::newRow("cut short") << "truncated";
    QTest::newRow("another program's database") << "foreign";
    QTest::newRow("the live file itself") << "live";
}

void BackupTest::restoreRefusesWhatIsNotOurs()
{
    QFETCH(QString, kind);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("CUS1"));
    QDir(ui.dir()).mkdir(QStringLiteral("usb"));
    const QString source = ui.file(QStringLiteral("usb/Data.mdb"));
    if (kind == QLatin1String("text")) {
        QFile f(source);
        f.open(QIODevice::WriteOnly);
        f.write("just some notes\n");
    } else if (kind == QLatin1String("truncated")) {
        for (int i = 0; i < 200; ++i)
            addCustomer(QStringLiteral("FILL%1").arg(i));
        QFile::copy(ui.file(QStringLiteral("data.mdb")), source);
        QFile f(source);
        f.resize(f.size() / 2);
    } else if (kind == QLatin1String("foreign")) {
        Database::create(source)->exec(QStringLiteral("CREATE TABLE Customers (x); CREATE TABLE Notes (y)"));
    } else {
        QFile::link(ui.file(QStringLiteral("data.mdb")), source);
    }
    Database::closeAll();
    PlainConnection.open(ConnectionString);
    const QByteArray before = fileBytes(ui.file(QStringLiteral("data.mdb")));
    ui.expectOpen(source);
    ui.expectBox(QStringLiteral("Confirm"), RestoreQuestion, vbYes);
    w.mnurestore_Click();
    QCOMPARE(fileBytes(ui.file(QStringLiteral("data.mdb"))), before);
    QCOMPARE(customers().first(), QStringLiteral("CUS1"));
    VERIFY_UI(ui);
}

VELK_TEST(BackupTest)
#include "tst_backup.moc"
