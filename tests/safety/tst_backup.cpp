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
    void backupRefusals_data();
    void backupRefusals();
    void restoreBringsBackTheData();
    void restoreRefusals_data();
    void restoreRefusals();
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
    // Over an existing file, on Yes.
    ui.expectSave(target);
    ui.expectBox(QStringLiteral("Overwite File"), QStringLiteral("Do u wish to overwrite this file?"), vbYes,
                 vbYesNo + vbExclamation);
    ui.expectBox(QStringLiteral("Successful"), SaveOk);
    w.MnuSave_Click();
    QCOMPARE(QDir(ui.file(QStringLiteral("usb"))).entryList(QDir::Files), QStringList{"Data.mdb"});
    VERIFY_UI(ui);
}

void BackupTest::backupRefusals_data()
{
    QTest::addColumn<QString>("target"); // empty: the dialog is cancelled
    QTest::addColumn<QString>("title");  // of the one box shown, if any
    QTest::addColumn<QString>("text");
    const QString again = QStringLiteral("Please Try Again");
    const QString original = QStringLiteral("Cannot overwrite original database");
    QTest::newRow("the exact name") << "Data.mdb" << again << original;
    QTest::newRow("the live file's own name") << "data.mdb" << again << original;
    QTest::newRow("another path form") << "./sub/../data.mdb" << again << original;
    QTest::newRow("a link to it") << "link.mdb" << again << original;
    QTest::newRow("an existing file kept") << "old.mdb"
                                           << "Overwite File"
                                           << "Do u wish to overwrite this file?";
    QTest::newRow("a folder that is not there") << "gone/Data.mdb" << QString() << QString();
    QTest::newRow("cancelled") << QString() << QString() << QString();
}

// Nothing is copied, the live file and any file in the way are left as they were, and
// only the named refusals say a word.
void BackupTest::backupRefusals()
{
    QFETCH(QString, target);
    QFETCH(QString, title);
    QFETCH(QString, text);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("CUS1"));
    QDir(ui.dir()).mkdir(QStringLiteral("sub"));
    QFile::link(ui.file(QStringLiteral("data.mdb")), ui.file(QStringLiteral("link.mdb")));
    {
        QFile old(ui.file(QStringLiteral("old.mdb")));
        old.open(QIODevice::WriteOnly);
        old.write("previous backup");
    }
    const QByteArray before = fileBytes(ui.file(QStringLiteral("data.mdb")));
    ui.expectSave(target.isEmpty() ? std::nullopt : std::optional<QString>(ui.dir() + '/' + target));
    if (!title.isEmpty())
        ui.expectBox(title, text, title == QLatin1String("Overwite File") ? vbNo : vbOK, -1);
    w.MnuSave_Click();
    QCOMPARE(fileBytes(ui.file(QStringLiteral("data.mdb"))), before);
    QCOMPARE(fileBytes(ui.file(QStringLiteral("old.mdb"))), QByteArray("previous backup"));
    QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), (QStringList{"data.mdb", "link.mdb", "old.mdb"}));
    QCOMPARE(customers(), QStringList{"CUS1"});
    QCOMPARE(BackupDone, qint16(0));
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
    VERIFY_UI(ui);
}

void BackupTest::restoreRefusals_data()
{
    QTest::addColumn<QString>("name"); // in the folder usb; empty: the dialog is cancelled
    QTest::addColumn<QString>("kind"); // what lies there
    const QString copy = QStringLiteral("a copy");
    // Refused by name, before the question.
    QTest::newRow("another name") << "backup.mdb" << copy;
    QTest::newRow("lower case") << "data.mdb" << copy;
    QTest::newRow("upper case") << "DATA.MDB" << copy;
    QTest::newRow("missing file") << "Data.mdb"
                                  << "nothing";
    // Asked, then refused in silence.
    QTest::newRow("not a database") << "Data.mdb"
                                    << "text";
    QTest::newRow("cut short") << "Data.mdb"
                               << "truncated";
    QTest::newRow("another program's database") << "Data.mdb"
                                                << "foreign";
    QTest::newRow("the live file itself") << "Data.mdb"
                                          << "live";
    QTest::newRow("cancelled") << QString() << QString();
}

// The live file stays as it was, whatever the source.
void BackupTest::restoreRefusals()
{
    QFETCH(QString, name);
    QFETCH(QString, kind);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(QStringLiteral("CUS1"));
    QDir(ui.dir()).mkdir(QStringLiteral("usb"));
    const QString source = ui.file(QStringLiteral("usb/") + name);
    if (kind == QLatin1String("a copy")) {
        QFile::copy(ui.file(QStringLiteral("data.mdb")), source);
    } else if (kind == QLatin1String("text")) {
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
    } else if (kind == QLatin1String("live")) {
        QFile::link(ui.file(QStringLiteral("data.mdb")), source);
    }
    Database::closeAll();
    PlainConnection.open(ConnectionString);
    const QByteArray before = fileBytes(ui.file(QStringLiteral("data.mdb")));
    ui.expectOpen(name.isEmpty() ? std::nullopt : std::optional<QString>(source));
    if (kind == QLatin1String("a copy") || kind == QLatin1String("nothing"))
        ui.expectBox(QStringLiteral("Please Try Again"), QStringLiteral("Database must be called Data.mdb"), vbOK,
                     vbExclamation);
    else if (!name.isEmpty())
        ui.expectBox(QStringLiteral("Confirm"), RestoreQuestion, vbYes);
    w.findChild<QAction*>(QStringLiteral("mnurestore"))->trigger();
    QCOMPARE(ui.dialogs.last().fileName, QString());
    QCOMPARE(fileBytes(ui.file(QStringLiteral("data.mdb"))), before);
    QCOMPARE(customers().first(), QStringLiteral("CUS1"));
    VERIFY_UI(ui);
}

VELK_TEST(BackupTest)
#include "tst_backup.moc"
