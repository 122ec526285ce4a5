#pragma once
// One open data file. Every recordset on the same file shares one handle: the file is
// opened once, not once per table, and every write is committed when it is made.

#include "store/Value.h"

#include <QHash>
#include <QString>
#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

class Database
{
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // The shared handle for a file, opened when first asked for. A file that is not a
    // data file of ours fails here with the provider's number, and is left as it was.
    static std::shared_ptr<Database> open(const QString& path);
    // A new, empty file at the path (not shared), for building the tables.
    static std::shared_ptr<Database> create(const QString& path);
    // Another file opened for reading only (not shared), such as a backup to restore.
    static std::shared_ptr<Database> openToRead(const QString& path);
    // Drop every cached handle, so that the next open reads the file afresh.
    static void closeAll();

    const QString& path() const { return path_; }
    sqlite3* handle() const { return db_; }

    // A prepared statement, kept for reuse; reset before it is handed out.
    sqlite3_stmt* prepare(const QString& sql);
    void exec(const QString& sql);
    // The schema version the file records.
    int schemaVersion();
    // A sound file of ours that this version can read: it passes the integrity check,
    // records no newer schema, and holds every table and column the program uses.
    bool isSoundDataFile();
    void setSchemaVersion(int version);
    // The first column of every row a statement answers, as text.
    QStringList texts(const QString& sql);
    // Copies this whole database over another, consistently, in the other's own
    // transaction: all of it lands, or none.
    void copyInto(Database& target);
    // Raises the failure that the last call on this handle left, as a classic number.
    [[noreturn]] void fail(int code, const QString& context = QString()) const;

    // Bumped by every write, so that recordsets know when their cached rows are stale.
    quint64 version() const { return version_; }
    void touched() { ++version_; }

    // Binding and reading of values as the store keeps them.
    static void bind(sqlite3_stmt* st, int index, const Value& value);
    static Value column(sqlite3_stmt* st, int index, int columnType);
    // A stored value (SQLite's kind, with its number or text) as a value of the column's type.
    static Value decode(int kind, qint64 integer, double real, const char* text, int length, int columnType);

private:
    explicit Database(const QString& path);
    QString path_;
    sqlite3* db_ = nullptr;
    QHash<QString, sqlite3_stmt*> statements_;
    quint64 version_ = 0;
};

// Writes a file under a temporary name beside its place and renames it into place only
// when the writer has finished, so that no one ever finds half a file there. A failure
// of the writer or the rename removes the temporary file and goes on to the caller.
void writeThenRename(const QString& path, const std::function<void(const QString& temporary)>& write);
// Removes the temporary files of writes that a run cut short (a kill, a power cut) left
// behind; run at the start.
void Remove_unfinished_writes();

// Resets a statement when it goes out of scope, so that no read stays open.
class StatementScope
{
public:
    explicit StatementScope(sqlite3_stmt* st) : st_(st) {}
    ~StatementScope();
    sqlite3_stmt* get() const { return st_; }

private:
    sqlite3_stmt* st_;
};

// Runs a routine's writes in one transaction: one disk sync instead of one a row. It is
// committed however the routine ends, so what was written before a failure stands as it
// would had each write been committed alone. A commit that fails (a full disk, a failing
// disk) is the routine's failure and goes on to its caller; when the routine failed too,
// the commit's failure, which lost its writes, is the one that goes on.
void Write_batch(const std::shared_ptr<Database>& db, const std::function<void()>& writes);
