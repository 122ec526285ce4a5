#include "FaultyDisk.h"

#include <sqlite3.h>

namespace faulty
{

namespace
{

sqlite3_vfs* real = nullptr;
sqlite3_vfs shim{};
Operation armed = Operation::Write;
int countdown = 0; // 0: sound
int failureCode = SQLITE_OK;
int failed = 0;

// A file of ours: SQLite's own file, followed by the methods it came with.
struct File {
    sqlite3_file base;
    const sqlite3_io_methods* realMethods;
    bool database;
    sqlite3_file* realFile() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* ours(sqlite3_file* f)
{
    return reinterpret_cast<File*>(f);
}

bool fails(Operation operation)
{
    if (countdown == 0 || operation != armed)
        return false;
    if (countdown > 1) {
        --countdown;
        return false;
    }
    ++failed;
    return true;
}

int xClose(sqlite3_file* f)
{
    return ours(f)->realMethods->xClose(ours(f)->realFile());
}
int xRead(sqlite3_file* f, void* buffer, int amount, sqlite3_int64 offset)
{
    return ours(f)->realMethods->xRead(ours(f)->realFile(), buffer, amount, offset);
}
int xWrite(sqlite3_file* f, const void* buffer, int amount, sqlite3_int64 offset)
{
    if (ours(f)->database && fails(Operation::Write))
        return failureCode;
    return ours(f)->realMethods->xWrite(ours(f)->realFile(), buffer, amount, offset);
}
int xTruncate(sqlite3_file* f, sqlite3_int64 size)
{
    return ours(f)->realMethods->xTruncate(ours(f)->realFile(), size);
}
int xSync(sqlite3_file* f, int flags)
{
    if (fails(Operation::Sync))
        return failureCode == SQLITE_FULL ? SQLITE_FULL : SQLITE_IOERR_FSYNC;
    return ours(f)->realMethods->xSync(ours(f)->realFile(), flags);
}
int xFileSize(sqlite3_file* f, sqlite3_int64* size)
{
    return ours(f)->realMethods->xFileSize(ours(f)->realFile(), size);
}
int xLock(sqlite3_file* f, int level)
{
    return ours(f)->realMethods->xLock(ours(f)->realFile(), level);
}
int xUnlock(sqlite3_file* f, int level)
{
    return ours(f)->realMethods->xUnlock(ours(f)->realFile(), level);
}
int xCheckReservedLock(sqlite3_file* f, int* out)
{
    return ours(f)->realMethods->xCheckReservedLock(ours(f)->realFile(), out);
}
int xFileControl(sqlite3_file* f, int op, void* arg)
{
    return ours(f)->realMethods->xFileControl(ours(f)->realFile(), op, arg);
}
int xSectorSize(sqlite3_file* f)
{
    return ours(f)->realMethods->xSectorSize(ours(f)->realFile());
}
int xDeviceCharacteristics(sqlite3_file* f)
{
    return ours(f)->realMethods->xDeviceCharacteristics(ours(f)->realFile());
}

// Version 1 methods only: no shared memory, which the rollback journal does not use.
const sqlite3_io_methods methods{1,
                                 xClose,
                                 xRead,
                                 xWrite,
                                 xTruncate,
                                 xSync,
                                 xFileSize,
                                 xLock,
                                 xUnlock,
                                 xCheckReservedLock,
                                 xFileControl,
                                 xSectorSize,
                                 xDeviceCharacteristics,
                                 nullptr,
                                 nullptr,
                                 nullptr,
                                 nullptr,
                                 nullptr,
                                 nullptr};

int xOpen(sqlite3_vfs*, const char* name, sqlite3_file* f, int flags, int* outFlags)
{
    File* file = ours(f);
    const int rc = real->xOpen(real, name, file->realFile(), flags, outFlags);
    file->realMethods = file->realFile()->pMethods;
    file->database = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    file->base.pMethods = rc == SQLITE_OK && file->realMethods ? &methods : nullptr;
    return rc;
}

} // namespace

void install()
{
    if (real)
        return;
    real = sqlite3_vfs_find(nullptr);
    shim = *real;
    shim.zName = "faulty";
    shim.szOsFile = int(sizeof(File)) + real->szOsFile;
    shim.xOpen = xOpen;
    sqlite3_vfs_register(&shim, 1);
}

void failFrom(Operation operation, int count, int code)
{
    armed = operation;
    countdown = count;
    failureCode = code;
    failed = 0;
}

int heal()
{
    countdown = 0;
    return failed;
}

} // namespace faulty
