#include "safety/BackupRestore.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Schema.h"

#include <QDir>
#include <QFileInfo>
#include <functional>
#include <sys/stat.h>

using namespace platform;

namespace safety
{

namespace
{

const QString Module = QStringLiteral("frmMain");

// Ends a command in silence: a cancelled dialog or a source that is not ours.
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

// The failures that end a backup or restore without a word: a file in use, a full
// disk, a folder or file that is not there. Anything else is a fault and is reported.
bool endsSilently(const VbError& e)
{
    switch (e.number()) {
    case err::PermissionDenied:
    case err::DiskFull:
    case err::PathFileAccess:
    case err::PathNotFound:
    case err::FileNotFound:
    case err::CannotOpenFile:
        return true;
    default:
        return false;
    }
}

// The command's one trap.
void Command(const char* procedure, const std::function<void()>& body)
{
    try {
        body();
    } catch (const Silent&) {
    } catch (const VbError& e) {
        if (!endsSilently(e))
            Report_error(e.number(), Module, QLatin1String(procedure), e.description());
    }
}

// A consistent copy of the open data file, put in place only when complete.
void writeBackup(const QString& target)
{
    const auto live = Database::open(liveFile());
    writeThenRename(target, [&](const QString& temporary) {
        live->copyInto(*Database::create(temporary));
        // The copy is as private as the books it copies.
        QFile::setPermissions(temporary, QFile::permissions(liveFile()));
    });
}

void restoreFrom(const QString& source)
{
    if (sameFile(source, liveFile()))
        throw Silent{};
    const auto from = Database::openToRead(source);
    if (!from->isSoundDataFile())
        throw Silent{};
    // The copy runs in the live file's own transaction: all of it lands, or none.
    from->copyInto(*Database::open(liveFile()));
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
    Command("MnuSave", [] {
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
    });
}

void mnurestore()
{
    Command("mnurestore", [] {
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
    });
}

} // namespace safety
