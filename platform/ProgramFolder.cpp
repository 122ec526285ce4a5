#include "platform/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace platform
{

namespace
{

const QString Package = QStringLiteral("velk-invoice");

// An installed copy has its menu entry in the share folder beside bin/. Its bin/ is no
// place for data, even where the user may write there (a prefix in the home folder).
bool installedCopy(const QString& executableDir)
{
    return QFileInfo::exists(executableDir + QStringLiteral("/../share/applications/") + Package +
                             QStringLiteral(".desktop"));
}

// Root passes every access test, so a folder whose mode lets nobody write is read-only
// all the same.
bool writableFolder(const QString& dir)
{
    const QFileInfo info(dir);
    return info.isDir() && info.isWritable() &&
           (info.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
}

QString userDataDir()
{
    QString base = qEnvironmentVariable("XDG_DATA_HOME");
    if (!QDir::isAbsolutePath(base)) // a relative value is to be ignored
        base = QDir::homePath() + QStringLiteral("/.local/share");
    return QDir::cleanPath(base + '/' + Package);
}

} // namespace

QString programDirFor(const QString& executableDir)
{
    const QString exeDir = QDir::cleanPath(executableDir);
    if (!installedCopy(exeDir) && writableFolder(exeDir))
        return exeDir;
    const QString dir = userDataDir();
    // The user's books: a folder made here is the user's alone. A failure shows when the
    // data file cannot be made there.
    if (!QDir(dir).exists() && QDir().mkpath(dir))
        QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return dir;
}

QString shippedFileFor(const QString& executableDir, const QString& name)
{
    const QString beside = QDir::cleanPath(executableDir + '/' + name);
    const QString shared = QDir::cleanPath(executableDir + QStringLiteral("/../share/") + Package + '/' + name);
    const QString first = installedCopy(executableDir) ? shared : beside;
    const QString second = first == shared ? beside : shared;
    if (!QFileInfo::exists(first) && QFileInfo::exists(second))
        return second;
    return first;
}

} // namespace platform
