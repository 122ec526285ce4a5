#pragma once
// A disk that fails on cue, under SQLite: every file the store opens goes through it once
// installed, and the Nth write or sync from the moment it is armed fails with the code
// chosen (SQLITE_FULL for a full disk, SQLITE_IOERR for a failing one). Writes are those
// to a database file itself, which a rollback journal defers to the commit; the journal's
// own writes go through.

namespace faulty
{

enum class Operation { Write, Sync };

// Makes it the default file system for every database opened from now on.
void install();
// The next `count`th operation of the kind (1: the very next) and every one after it fail.
void failFrom(Operation operation, int count, int code);
// Back to a sound disk; gives how many operations were failed since the last arming.
int heal();

} // namespace faulty
