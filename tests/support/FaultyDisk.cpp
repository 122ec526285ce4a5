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

// Every other call goes straight to the real file.
template <auto Method> struct Forward;
template <class R, class... A, R (*sqlite3_io_methods::*Method)(sqlite3_file*, A...)> struct Forward<Method> {
    static R call(sqlite3_file* f, A... a) { return (ours(f)->realMethods->*Method)(ours(f)->realFile(), a...); }
};

int xWrite(sqlite3_file* f, const void* buffer, int amount, sqlite3_int64 offset)
{
    if (ours(f)->database && fails(Operation::Write))
        return failureCode;
    return Forward<&sqlite3_io_methods::xWrite>::call(f, buffer, amount, offset);
}
int xSync(sqlite3_file* f, int flags)
{
    if (fails(Operation::Sync))
        return failureCode == SQLITE_FULL ? SQLITE_FULL : SQLITE_IOERR_FSYNC;
    return Forward<&sqlite3_io_methods::xSync>::call(f, flags);
}

// Version 1 methods only: no shared memory, which the rollback journal does not use.
const sqlite3_io_methods methods{1,
                                 Forward<&sqlite3_io_methods::xClose>::call,
                                 Forward<&sqlite3_io_methods::xRead>::call,
                                 xWrite,
                                 Forward<&sqlite3_io_methods::xTruncate>::call,
                                 xSync,
                                 Forward<&sqlite3_io_methods::xFileSize>::call,
                                 Forward<&sqlite3_io_methods::xLock>::call,
                                 Forward<&sqlite3_io_methods::xUnlock>::call,
                                 Forward<&sqlite3_io_methods::xCheckReservedLock>::call,
                                 Forward<&sqlite3_io_methods::xFileControl>::call,
                                 Forward<&sqlite3_io_methods::xSectorSize>::call,
                                 Forward<&sqlite3_io_methods::xDeviceCharacteristics>::call,
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
