// Faults of the disk and of the figures: a full or failing disk at the moment a routine
// commits is reported as what it is and loses nothing acknowledged before; money past the
// range of its count is an overflow, never a wrap; files the program makes are the user's.

#include "FaultyDisk.h"
#include "TestUi.h"

#include "safety/BackupRestore.h"
#include "safety/Import.h"
#include "shell/frmMain.h"
#include "store/Ageing.h"
#include "store/Connection.h"
#include "store/Currency.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"

#include <QRandomGenerator>
#include <QThread>
#include <QtTest>
#include <csignal>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// What the next start finds once the program has ended: whether the data file is whole
// (a journal left by the failure rolled back), and the invoices in it.
QString afterwards(std::unique_ptr<frmMain>& main, const QString& path)
{
    main.reset();
    PlainConnection.close();
    ShapeConnection.close();
    Database::closeAll();
    const auto disk = Database::create(path);
    return disk->texts("PRAGMA integrity_check").join(',') + '|' +
           disk->texts("SELECT group_concat(InvNo) FROM Invoices").join(',');
}

} // namespace

class FaultsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { faulty::install(); }
    void cleanup() { faulty::heal(); }

    // The import's one transaction fails at its commit: the program ends through the
    // failure box with the disk's own number, and the file keeps the invoice saved before.
    void importCommitFails_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("number");
        QTest::newRow("disk full on a write") << int(faulty::Operation::Write) << SQLITE_FULL << int(err::DiskFull);
        QTest::newRow("disk error on a write") << int(faulty::Operation::Write) << SQLITE_IOERR << int(err::DeviceIO);
        QTest::newRow("disk error on a sync") << int(faulty::Operation::Sync) << SQLITE_IOERR << int(err::DeviceIO);
    }
    void importCommitFails()
    {
        QFETCH(int, operation);
        QFETCH(int, code);
        QFETCH(int, number);
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow("Invoices", {{"InvNo", "KEPT"}});
        writeFile(ui.file("Invoices1.csv"), "C1,2026-03-01,I1,Anne,Smith,,,,,,10,One,10\r\n"
                                            "C2,2026-03-01,I2,Bob,Jones,,,,,,20,Two,20\r\n");
        ui.expectBox("Error Message", errorMessageText(number, "frmMain", "mnuImport_Click", standardErrorText(number)),
                     platform::vbOK, platform::vbExclamation);
        faulty::failFrom(faulty::Operation(operation), 1, code);
        QVERIFY(endsProgram([] { safety::mnuImport(); }));
        QVERIFY(faulty::heal() > 0);
        VERIFY_UI(ui);
        QCOMPARE(afterwards(main, ui.file("data.mdb")), QStringLiteral("ok|KEPT"));
    }

    // Ageing's batch fails at its commit: the caller hears of it.
    void ageingCommitFails()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow("Invoices", {{"InvNo", "OWED"}, {"Date", QDate(2026, 9, 1)}, {"Balance", 5.0}});
        faulty::failFrom(faulty::Operation::Write, 1, SQLITE_FULL);
        try {
            Age_invoices(reportAgeing);
            QFAIL("a failed commit went unreported");
        } catch (const VbError& e) {
            QCOMPARE(e.number(), int(err::DiskFull));
        }
        faulty::heal();
        QCOMPARE(afterwards(main, ui.file("data.mdb")), QStringLiteral("ok|OWED"));
        VERIFY_UI(ui);
    }

    // A backup onto a full disk ends without a word, leaves no half file where the
    // backup goes nor a temporary one beside it, and the data file as it was.
    void backupOntoAFullDisk()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow("Invoices", {{"InvNo", "KEPT"}});
        QDir(ui.dir()).mkdir("usb");
        const QByteArray before = fileBytes(ui.file("data.mdb"));
        ui.expectSave(ui.file("usb/Data.mdb"));
        faulty::failFrom(faulty::Operation::Write, 3, SQLITE_FULL);
        safety::MnuSave();
        QVERIFY(faulty::heal() > 0);
        QCOMPARE(QDir(ui.file("usb")).entryList(QDir::Files | QDir::Hidden), QStringList());
        QCOMPARE(fileBytes(ui.file("data.mdb")), before);
        QCOMPARE(BackupDone, qint16(0));
        VERIFY_UI(ui);
    }

    // The data file, a log and the folder's backups are the user's alone; a backup keeps
    // the mode its source has.
    void filesAreTheUsers()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        const auto mode = [](const QString& path) {
            struct stat st {
            };
            return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? int(st.st_mode & 0777) : -1;
        };
        QCOMPARE(mode(ui.file("data.mdb")), 0600);
        for (int source : {0600, 0640}) {
            QVERIFY(::chmod(QFile::encodeName(ui.file("data.mdb")).constData(), mode_t(source)) == 0);
            const QString target = ui.file(QStringLiteral("backup%1/Data.mdb").arg(source, 0, 8));
            QDir().mkpath(QFileInfo(target).path());
            ui.expectSave(target);
            ui.expectBox("Successful", "Save was Successful");
            safety::MnuSave();
            QCOMPARE(mode(target), source);
        }
        ui.expectBox("Error Message", errorMessageText(err::Overflow, "frmMain", "Load", standardErrorText(6)));
        QVERIFY(endsProgram([] { Report_error(err::Overflow, "frmMain", "Load"); }));
        QCOMPARE(mode(ui.file("Logs/20261122103015.log")), 0600);
        VERIFY_UI(ui);
    }

    // A backup, an import and a restore, killed at a random moment: the next start finds
    // the data file whole, as before the import or restore or after it, and no temporary
    // file anywhere.
    void killedHalfWay_data()
    {
        QTest::addColumn<QString>("work");
        for (int i = 0; i < 4; ++i) {
            QTest::newRow(qPrintable(QStringLiteral("backup %1").arg(i))) << "backup";
            QTest::newRow(qPrintable(QStringLiteral("import %1").arg(i))) << "import";
            QTest::newRow(qPrintable(QStringLiteral("restore %1").arg(i))) << "restore";
        }
    }
    void killedHalfWay()
    {
        QFETCH(QString, work);
        TestUi ui;
        auto main = startProgram(ui, {});
        QByteArray csv;
        for (int i = 0; i < 3000; ++i)
            csv += QStringLiteral("C%1,2026-03-01,I%1,Anne,Smith,,,,,,10,One,10\r\n").arg(i).toLatin1();
        writeFile(ui.file("Invoices1.csv"), csv);
        const QString live = ui.file("data.mdb"), target = ui.file("usb/Data.mdb");
        QDir().mkpath(ui.file("usb"));
        if (work == "restore") { // a backup holding 3,000 invoices the data file has not
            writeThenRename(target, [&](const QString& temporary) {
                Database::open(live)->copyInto(*Database::create(temporary));
            });
            Database::create(target)->exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                                           "3000) INSERT INTO Invoices (InvNo) SELECT 'R' || i FROM n");
        }
        // The program that is killed is the only one with the file open, as on a desktop.
        main.reset();
        PlainConnection.close();
        ShapeConnection.close();
        Database::closeAll();
        const pid_t child = fork();
        if (child == 0) {
            if (work == "restore")
                for (;;)
                    Database::openToRead(target)->copyInto(*Database::open(live));
            if (work == "backup")
                for (;;)
                    writeThenRename(target, [&](const QString& temporary) {
                        Database::open(live)->copyInto(*Database::create(temporary));
                    });
            safety::mnuImport();
            _exit(0);
        }
        QThread::msleep(QRandomGenerator::global()->bounded(5, 60));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        main = std::make_unique<frmMain>(); // the next start
        main->MDIForm_Load();
        const QStringList left =
            QDir(ui.dir()).entryList({"*.new*", "*-journal", ".unfinished*"}, QDir::Files | QDir::Hidden) +
            QDir(ui.file("usb")).entryList({"*.new*", "*-journal"}, QDir::Files | QDir::Hidden);
        QVERIFY2(left.isEmpty(), qPrintable(left.join(", ")));
        const auto disk = Database::open(live);
        QCOMPARE(disk->texts("PRAGMA integrity_check"), QStringList{"ok"});
        const int invoices = disk->texts("SELECT count(*) FROM Invoices").value(0).toInt();
        QVERIFY2(invoices == 0 || invoices == 3000, qPrintable(QString::number(invoices)));
        if (QFile::exists(target))
            QCOMPARE(Database::openToRead(target)->texts("PRAGMA integrity_check"), QStringList{"ok"});
    }

    // Money counts ten-thousandths in 64 bits: both ends are kept exactly, one step past
    // either is error 6, in reading and in arithmetic.
    void moneyAtItsLimits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("ticks"); // 0 with overflow set
        QTest::addColumn<bool>("overflow");
        const qint64 max = std::numeric_limits<qint64>::max(), min = std::numeric_limits<qint64>::min();
        QTest::newRow("largest") << "922337203685477.5807" << max << false;
        QTest::newRow("one past the largest") << "922337203685477.5808" << qint64(0) << true;
        QTest::newRow("rounded past the largest") << "922337203685477.58075" << qint64(0) << true;
        QTest::newRow("far past the largest") << "922337203685477.5809" << qint64(0) << true;
        QTest::newRow("smallest") << "-922337203685477.5808" << min << false;
        QTest::newRow("one past the smallest") << "-922337203685477.5809" << qint64(0) << true;
        QTest::newRow("sixteen digits") << "1922337203685477" << qint64(0) << true;
    }
    void moneyAtItsLimits()
    {
        QFETCH(QString, text);
        QFETCH(qint64, ticks);
        QFETCH(bool, overflow);
        try {
            QCOMPARE(Currency::fromText(text).ticks(), ticks);
            QVERIFY2(!overflow, "no overflow");
        } catch (const VbError& e) {
            QVERIFY2(overflow, qPrintable(e.description()));
            QCOMPARE(e.number(), int(err::Overflow));
        }
    }
    void moneyArithmeticAtItsLimits()
    {
        const Currency max = Currency::fromTicks(std::numeric_limits<qint64>::max());
        const Currency min = Currency::fromTicks(std::numeric_limits<qint64>::min());
        const Currency tick = Currency::fromTicks(1);
        QCOMPARE((max - tick + tick).ticks(), max.ticks());
        QCOMPARE((min + tick - tick).ticks(), min.ticks());
        for (const auto& overflows : std::initializer_list<std::function<Currency()>>{
                 [&] { return max + tick; }, [&] { return min - tick; }, [&] { return -min; },
                 [] { return Currency::fromDouble(1e15); }, [] { return Currency::fromDouble(-1e15); }}) {
            try {
                overflows();
                QFAIL("no overflow");
            } catch (const VbError& e) {
                QCOMPARE(e.number(), int(err::Overflow));
            }
        }
    }
};

VELK_TEST(FaultsTest)
#include "tst_faults.moc"
