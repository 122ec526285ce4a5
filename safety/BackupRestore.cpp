#include "safety/BackupRestore.h"

#include "platform/Platform.h"
#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace platform;

namespace safety
{

namespace
{

// Ends a command in silence, as its trap does for a cancel or a failed copy.
struct Silent {
};

QString liveFile()
{
    return programFile(QStringLiteral("data.mdb"));
}

FileDialogRequest dialogRequest(const QString& fileName)
{
    FileDialogRequest r;
    r.filter = QStringLiteral("Access Database(*.mdb)|*.mdb");
    r.filterIndex = 1;
    r.fileName = fileName;
    return r;
}

// Copies one open database into another, whole, in the destination's own transaction.
void copyDatabase(sqlite3* from, sqlite3* to)
{
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup)
        throw Silent{};
    const int rc = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (rc != SQLITE_DONE)
        throw Silent{};
}

// Writes a consistent copy of the open data file beside the target and renames it into
// place only when it is complete, so a failed copy leaves no half file behind.
void writeBackup(const QString& target)
{
    const auto live = Database::open(liveFile());
    const QString building = target + QStringLiteral(".part");
    QFile::remove(building);
    sqlite3* dest = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(building).constData(), &dest, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                        nullptr) != SQLITE_OK) {
        sqlite3_close(dest);
        throw Silent{};
    }
    try {
        copyDatabase(live->handle(), dest);
    } catch (const Silent&) {
        sqlite3_close(dest);
        QFile::remove(building);
        throw;
    }
    sqlite3_close(dest);
    if (std::rename(QFile::encodeName(building).constData(), QFile::encodeName(target).constData()) != 0) {
        QFile::remove(building);
        throw Silent{};
    }
}

// A restore source must be a sound data file of this program.
bool soundDataFile(const QString& path)
{
    sqlite3* db = nullptr;
    bool ok = sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    auto single = [&](const char* sql, QStringList* out) {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK)
            return false;
        int rc;
        while ((rc = sqlite3_step(st)) == SQLITE_ROW)
            *out << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0))).toLower();
        sqlite3_finalize(st);
        return rc == SQLITE_DONE;
    };
    QStringList check, tables;
    ok = ok && single("PRAGMA integrity_check", &check) && check == QStringList{QStringLiteral("ok")};
    ok = ok && single("SELECT name FROM sqlite_master WHERE type = 'table'", &tables);
    for (const TableDef& t : schemaTables())
        ok = ok && tables.contains(QString::fromLatin1(t.name).toLower());
    sqlite3_close(db);
    return ok;
}

void restoreFrom(const QString& source)
{
    if (sameFile(source, liveFile()) || !soundDataFile(source))
        throw Silent{};
    const auto live = Database::open(liveFile());
    sqlite3* src = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(source).constData(), &src, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(src);
        throw Silent{};
    }
    // The copy runs in the live file's own transaction: all of it lands, or none.
    try {
        copyDatabase(src, live->handle());
    } catch (const Silent&) {
        sqlite3_close(src);
        throw;
    }
    sqlite3_close(src);
    live->touched();
    // Reopen the connections so that every window reads the restored file afresh.
    Database::closeAll();
    const QString shape = ShapeConnection.connectionString();
    PlainConnection.close();
    ShapeConnection.close();
    if (!ConnectionString.isEmpty())
        PlainConnection.open(ConnectionString);
    if (!shape.isEmpty())
        ShapeConnection.open(shape);
}

// The name of a file as it is stored on disk, or empty when there is none.
QString storedName(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QString();
    const QDir dir = info.absoluteDir();
    for (const QString& entry : dir.entryList(QDir::Files | QDir::Hidden | QDir::System))
        if (entry.compare(info.fileName(), Qt::CaseInsensitive) == 0 && sameFile(dir.filePath(entry), path))
            return entry;
    return info.fileName();
}

} // namespace

bool sameFile(const QString& a, const QString& b)
{
    struct stat sa, sb;
    if (::stat(QFile::encodeName(a).constData(), &sa) != 0 || ::stat(QFile::encodeName(b).constData(), &sb) != 0)
        return false;
    return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

void MnuSave()
{
    try {
        const auto chosen = ShowSave(dialogRequest(QStringLiteral("Data.mdb")));
        if (!chosen)
            throw Silent{};
        const QString target = *chosen;
        // Besides the name check, whatever spelling reaches the live file is refused too.
        if (target == programDir() + QStringLiteral("/Data.mdb") || sameFile(target, liveFile())) {
            MsgBox(QStringLiteral("Cannot overwrite original database"), vbExclamation,
                   QStringLiteral("Please Try Again"));
            return;
        }
        if (QFileInfo::exists(target)) {
            if (MsgBox(QStringLiteral("Do u wish to overwrite this file?"), vbYesNo + vbExclamation,
                       QStringLiteral("Overwite File")) != vbYes)
                return;
        }
        writeBackup(target);
        MsgBox(QStringLiteral("Save was Successful"), vbInformation, QStringLiteral("Successful"));
        BackupDone = 1;
    } catch (const Silent&) {
    } catch (const std::exception&) {
    }
}

void mnurestore()
{
    try {
        const auto chosen = ShowOpen(dialogRequest(QString()));
        if (!chosen)
            throw Silent{};
        const QString source = *chosen;
        if (storedName(source) != QLatin1String("Data.mdb")) {
            MsgBox(QStringLiteral("Database must be called Data.mdb"), vbExclamation,
                   QStringLiteral("Please Try Again"));
            return;
        }
        if (MsgBox(QStringLiteral(
                       "Are you very sure you want to restore this backup? This will overwrite your current data."),
                   vbYesNo + vbQuestion, QStringLiteral("Confirm")) != vbYes)
            return;
        restoreFrom(source);
        MsgBox(QStringLiteral("Restore has been Successful"), vbInformation, QStringLiteral("Successful"));
    } catch (const Silent&) {
    } catch (const std::exception&) {
    }
}

} // namespace safety
