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
using namespace Qt::StringLiterals;

namespace
{

void addCustomer(const QString& id)
{
    Recordset rs;
    rs.open(u"customers"_s, ConnectionString, Recordset::adLockPessimistic);
    rs.addNew();
    rs.setField(u"CustID"_s, id);
    rs.update();
}

QStringList customers()
{
    Recordset rs;
    rs.open(u"customers"_s, ConnectionString, Recordset::adLockReadOnly);
    QStringList ids;
    for (; !rs.eof(); rs.moveNext())
        ids << rs.field(u"CustID"_s).toText();
    return ids;
}

const QString SaveOk = u"Save was Successful"_s;
const QString RestoreOk = u"Restore has been Successful"_s;
const QString RestoreQuestion =
    u"Are you very sure you want to restore this backup? This will overwrite your current data."_s;

} // namespace

class BackupTest : public QObject
{
    Q_OBJECT
private slots:
    void backupAndRestore();
    void backupRefusals_data();
    void backupRefusals();
    void restoreRefusals_data();
    void restoreRefusals();
};

void BackupTest::backupAndRestore()
{
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(u"CUS1"_s);
    QDir(ui.dir()).mkdir(u"usb"_s);
    const QString target = ui.file(u"usb/Data.mdb"_s);
    ui.expectSave(target);
    ui.expectBox(u"Successful"_s, SaveOk, vbOK, vbInformation);
    w.findChild<QAction*>(u"MnuSave"_s)->trigger();
    QCOMPARE(BackupDone, qint16(1));
    QCOMPARE(ui.dialogs.last().filter, u"Access Database(*.mdb)|*.mdb"_s);
    QCOMPARE(ui.dialogs.last().filterIndex, 1);
    QCOMPARE(QDir(ui.file(u"usb"_s)).entryList(QDir::Files), QStringList{"Data.mdb"});
    // The copy is a whole data file of its own.
    auto copy = Database::open(target);
    Recordset rs;
    rs.open(u"Customers"_s, u"Data Source='%1';"_s.arg(target), Recordset::adLockReadOnly);
    QCOMPARE(rs.field(u"CustID"_s).toText(), u"CUS1"_s);
    // Over an existing file, on Yes.
    ui.expectSave(target);
    ui.expectBox(u"Overwite File"_s, u"Do u wish to overwrite this file?"_s, vbYes, vbYesNo + vbExclamation);
    ui.expectBox(u"Successful"_s, SaveOk);
    w.MnuSave_Click();
    QCOMPARE(QDir(ui.file(u"usb"_s)).entryList(QDir::Files), QStringList{"Data.mdb"});
    rs.close();
    copy.reset();

    addCustomer(u"LATER"_s);
    settings.BusinessName = u"In memory"_s;
    // No keeps the current data.
    ui.expectOpen(target);
    ui.expectBox(u"Confirm"_s, RestoreQuestion, vbNo, vbYesNo + vbQuestion);
    w.mnurestore_Click();
    QCOMPARE(customers(), (QStringList{"CUS1", "LATER"}));
    ui.expectOpen(target);
    ui.expectBox(u"Confirm"_s, RestoreQuestion, vbYes, vbYesNo + vbQuestion);
    ui.expectBox(u"Successful"_s, RestoreOk, vbOK, vbInformation);
    w.mnurestore_Click();
    // Windows see the restored tables at their next open; the settings record stays.
    QCOMPARE(customers(), QStringList{"CUS1"});
    QVERIFY(PlainConnection.isOpen());
    QVERIFY(ShapeConnection.isOpen());
    QCOMPARE(settings.BusinessName.trimmed(), u"In memory"_s);
    addCustomer(u"AFTER"_s);
    QCOMPARE(customers(), (QStringList{"CUS1", "AFTER"}));
    VERIFY_UI(ui);
}

void BackupTest::backupRefusals_data()
{
    QTest::addColumn<QString>("target"); // empty: the dialog is cancelled
    QTest::addColumn<QString>("title");  // of the one box shown, if any
    QTest::addColumn<QString>("text");
    const char* again = "Please Try Again";
    const char* original = "Cannot overwrite original database";
    const char* rows[][4] = {{"the exact name", "Data.mdb", again, original},
                             {"the live file's own name", "data.mdb", again, original},
                             {"another path form", "./sub/../data.mdb", again, original},
                             {"a link to it", "link.mdb", again, original},
                             {"an existing file kept", "old.mdb", "Overwite File", "Do u wish to overwrite this file?"},
                             {"a folder that is not there", "gone/Data.mdb", "", ""},
                             {"cancelled", "", "", ""}};
    for (auto& [row, target, title, text] : rows)
        QTest::newRow(row) << QString(target) << QString(title) << QString(text);
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
    addCustomer(u"CUS1"_s);
    QDir(ui.dir()).mkdir(u"sub"_s);
    QFile::link(ui.file(u"data.mdb"_s), ui.file(u"link.mdb"_s));
    {
        QFile old(ui.file(u"old.mdb"_s));
        old.open(QIODevice::WriteOnly);
        old.write("previous backup");
    }
    const QByteArray before = fileBytes(ui.file(u"data.mdb"_s));
    ui.expectSave(target.isEmpty() ? std::nullopt : std::optional<QString>(ui.dir() + '/' + target));
    if (!title.isEmpty())
        ui.expectBox(title, text, title == u"Overwite File"_s ? vbNo : vbOK, -1);
    w.MnuSave_Click();
    QCOMPARE(fileBytes(ui.file(u"data.mdb"_s)), before);
    QCOMPARE(fileBytes(ui.file(u"old.mdb"_s)), QByteArray("previous backup"));
    QCOMPARE(QDir(ui.dir()).entryList(QDir::Files), (QStringList{"data.mdb", "link.mdb", "old.mdb"}));
    QCOMPARE(customers(), QStringList{"CUS1"});
    QCOMPARE(BackupDone, qint16(0));
    VERIFY_UI(ui);
}

void BackupTest::restoreRefusals_data()
{
    QTest::addColumn<QString>("name"); // in the folder usb; empty: the dialog is cancelled
    QTest::addColumn<QString>("kind"); // what lies there
    // Refused by name before the question, or asked and then refused in silence.
    const char* rows[][3] = {{"another name", "backup.mdb", "a copy"},
                             {"lower case", "data.mdb", "a copy"},
                             {"upper case", "DATA.MDB", "a copy"},
                             {"missing file", "Data.mdb", "nothing"},
                             {"not a database", "Data.mdb", "text"},
                             {"cut short", "Data.mdb", "truncated"},
                             {"another program's database", "Data.mdb", "foreign"},
                             {"the live file itself", "Data.mdb", "live"},
                             {"cancelled", "", ""}};
    for (auto& [row, name, kind] : rows)
        QTest::newRow(row) << QString(name) << QString(kind);
}

// The live file stays as it was, whatever the source.
void BackupTest::restoreRefusals()
{
    QFETCH(QString, name);
    QFETCH(QString, kind);
    TestUi ui;
    frmMain w;
    w.MDIForm_Load();
    addCustomer(u"CUS1"_s);
    QDir(ui.dir()).mkdir(u"usb"_s);
    const QString source = ui.file(u"usb/"_s + name);
    if (kind == u"a copy"_s) {
        QFile::copy(ui.file(u"data.mdb"_s), source);
    } else if (kind == u"text"_s) {
        QFile f(source);
        f.open(QIODevice::WriteOnly);
        f.write("just some notes\n");
    } else if (kind == u"truncated"_s) {
        for (int i = 0; i < 200; ++i)
            addCustomer(u"FILL%1"_s.arg(i));
        QFile::copy(ui.file(u"data.mdb"_s), source);
        QFile f(source);
        f.resize(f.size() / 2);
    } else if (kind == u"foreign"_s) {
        Database::create(source)->exec(u"CREATE TABLE Customers (x); CREATE TABLE Notes (y)"_s);
    } else if (kind == u"live"_s) {
        QFile::link(ui.file(u"data.mdb"_s), source);
    }
    Database::closeAll();
    PlainConnection.open(ConnectionString);
    const QByteArray before = fileBytes(ui.file(u"data.mdb"_s));
    ui.expectOpen(name.isEmpty() ? std::nullopt : std::optional<QString>(source));
    if (kind == u"a copy"_s || kind == u"nothing"_s)
        ui.expectBox(u"Please Try Again"_s, u"Database must be called Data.mdb"_s, vbOK, vbExclamation);
    else if (!name.isEmpty())
        ui.expectBox(u"Confirm"_s, RestoreQuestion, vbYes);
    w.findChild<QAction*>(u"mnurestore"_s)->trigger();
    QCOMPARE(ui.dialogs.last().fileName, QString());
    QCOMPARE(fileBytes(ui.file(u"data.mdb"_s)), before);
    QCOMPARE(customers().first(), u"CUS1"_s);
    VERIFY_UI(ui);
}

VELK_TEST(BackupTest)
#include "tst_backup.moc"
