#include "store/Database.h"

#include "platform/Platform.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Numbers.h"
#include "store/Schema.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSaveFile>
#include <cstdio>
#include <sqlite3.h>

namespace
{

// Handles kept open between recordsets, so that opening a table costs no file open.
QMap<QString, std::shared_ptr<Database>>& pool()
{
    static QMap<QString, std::shared_ptr<Database>> p;
    return p;
}

int classicNumber(int code, const QString& message)
{
    switch (code & 0xff) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return err::UnrecognisedDatabase;
    case SQLITE_CANTOPEN:
        return err::CannotOpenFile;
    case SQLITE_FULL:
        return err::DiskFull;
    case SQLITE_IOERR:
        return err::DeviceIO;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_BUSY: // a file in use
    case SQLITE_LOCKED:
        return err::PermissionDenied;
    case SQLITE_CONSTRAINT:
        if ((code == SQLITE_CONSTRAINT_NOTNULL))
            return err::NullInRequired;
        return err::DuplicateKey;
    case SQLITE_ERROR:
        if (message.contains(QLatin1String("no such table")))
            return err::UnknownTable;
        if (message.contains(QLatin1String("no such column")))
            return err::ItemNotFound;
        return err::SqlSyntax;
    default:
        return err::DatabaseFailure;
    }
}

} // namespace

Database::Database(const QString& path) : path_(path) {}

Database::~Database()
{
    for (sqlite3_stmt* st : std::as_const(statements_))
        sqlite3_finalize(st);
    if (db_)
        sqlite3_close_v2(db_);
}

std::shared_ptr<Database> Database::open(const QString& path)
{
    const QString key = QFileInfo(path).absoluteFilePath();
    if (auto existing = pool().value(key))
        return existing;
    auto db = std::shared_ptr<Database>(new Database(key));
    // No create flag: a missing file is a failure, never a new empty file. The program
    // reads and writes on one thread only, so the handle takes no lock per call.
    const int rc =
        sqlite3_open_v2(key.toUtf8().constData(), &db->db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK)
        db->fail(rc, key);
    sqlite3_extended_result_codes(db->db_, 1);
    sqlite3_busy_timeout(db->db_, 5000);
    // Reading the catalogue proves the file is one of ours before anything is written;
    // a file a newer version wrote may hold what this one would spoil.
    db->exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (db->schemaVersion() > SchemaVersion)
        throw VbError(err::NewerDataFile);
    db->exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
    db->exec(QStringLiteral("PRAGMA synchronous=FULL"));
    // The read above rolled back a journal that held a cut-short transaction. One left by a
    // write killed before its first page is no such journal, and would stay; with the file
    // locked for this handle alone no one is writing, so it can go. Another program busy
    // with the file keeps its journal: the lock is then not had, and nothing is removed.
    const QString journal = key + QStringLiteral("-journal");
    if (QFileInfo::exists(journal) &&
        sqlite3_exec(db->db_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK) {
        QFile::remove(journal);
        db->exec(QStringLiteral("COMMIT"));
    }
    // A file of an older version gains what this one added, whole or not at all.
    if (db->schemaVersion() < SchemaVersion)
        upgradeToCurrent(*db);
    pool()[key] = db;
    return db;
}

std::shared_ptr<Database> Database::create(const QString& path)
{
    auto db = std::shared_ptr<Database>(new Database(QFileInfo(path).absoluteFilePath()));
    const int rc = sqlite3_open_v2(db->path_.toUtf8().constData(), &db->db_,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK)
        db->fail(rc, path);
    sqlite3_extended_result_codes(db->db_, 1);
    db->exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
    db->exec(QStringLiteral("PRAGMA synchronous=FULL"));
    return db;
}

std::shared_ptr<Database> Database::openToRead(const QString& path)
{
    auto db = std::shared_ptr<Database>(new Database(QFileInfo(path).absoluteFilePath()));
    const int rc =
        sqlite3_open_v2(db->path_.toUtf8().constData(), &db->db_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK)
        db->fail(rc, path);
    sqlite3_extended_result_codes(db->db_, 1);
    return db;
}

int Database::schemaVersion()
{
    return texts(QStringLiteral("PRAGMA user_version")).value(0).toInt();
}

bool Database::isSoundDataFile()
{
    try {
        if (texts(QStringLiteral("PRAGMA integrity_check")) != QStringList{QStringLiteral("ok")} ||
            schemaVersion() > SchemaVersion)
            return false;
        for (const TableDef& t : schemaTables()) {
            const QStringList columns =
                texts(QStringLiteral("SELECT lower(name) FROM pragma_table_info('%1')").arg(QLatin1String(t.name)));
            for (const ColumnDef& c : t.columns)
                if (!columns.contains(QString::fromLatin1(c.name).toLower()))
                    return false; // a missing table has no columns at all
        }
        return true;
    } catch (const VbError&) {
        return false; // not a database at all, or cut short
    }
}

void Database::setSchemaVersion(int version)
{
    exec(QStringLiteral("PRAGMA user_version = %1").arg(version));
}

void Database::closeAll()
{
    pool().clear();
}

sqlite3_stmt* Database::prepare(const QString& sql)
{
    if (sqlite3_stmt* st = statements_.value(sql)) {
        sqlite3_reset(st);
        sqlite3_clear_bindings(st);
        return st;
    }
    sqlite3_stmt* st = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v3(db_, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &st, nullptr);
    if (rc != SQLITE_OK)
        fail(rc, sql);
    statements_.insert(sql, st);
    return st;
}

void Database::exec(const QString& sql)
{
    char* message = nullptr;
    const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &message);
    sqlite3_free(message);
    if (rc != SQLITE_OK)
        fail(rc, sql);
}

QStringList Database::texts(const QString& sql)
{
    sqlite3_stmt* st = prepare(sql);
    StatementScope scope(st);
    QStringList out;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        out << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    if (rc != SQLITE_DONE)
        fail(rc, sql);
    return out;
}

void Database::copyInto(Database& target)
{
    sqlite3_backup* backup = sqlite3_backup_init(target.db_, "main", db_, "main");
    if (!backup)
        target.fail(sqlite3_errcode(target.db_), path_);
    const int step = sqlite3_backup_step(backup, -1);
    const int finish = sqlite3_backup_finish(backup);
    if (step != SQLITE_DONE)
        target.fail(step, path_);
    if (finish != SQLITE_OK)
        target.fail(finish, path_);
    target.touched();
}

namespace
{

// The temporary files being written, listed in the program's folder until they are in
// place or gone, so that a run cut short has them removed at the next start.
QString unfinishedList()
{
    return platform::programFile(QStringLiteral(".unfinished-writes"));
}

QStringList unfinished()
{
    QFile list(unfinishedList());
    if (!list.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(list.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void setUnfinished(const QStringList& paths)
{
    if (paths.isEmpty()) {
        QFile::remove(unfinishedList());
        return;
    }
    QSaveFile list(unfinishedList());
    if (list.open(QIODevice::WriteOnly)) {
        list.write(paths.join(QLatin1Char('\n')).toUtf8() + '\n');
        list.commit();
    }
}

} // namespace

void writeThenRename(const QString& path, const std::function<void(const QString& temporary)>& write)
{
    const QString temporary = QFileInfo(path + QStringLiteral(".new")).absoluteFilePath();
    QFile::remove(temporary);
    setUnfinished(unfinished() << temporary);
    const auto done = [&] {
        QFile::remove(temporary);
        QFile::remove(temporary + QStringLiteral("-journal"));
        QStringList rest = unfinished();
        rest.removeAll(temporary);
        setUnfinished(rest);
    };
    try {
        write(temporary);
        if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0)
            throw VbError(err::PathFileAccess);
    } catch (...) {
        done();
        throw;
    }
    done();
}

void Remove_unfinished_writes()
{
    for (const QString& temporary : unfinished()) {
        QFile::remove(temporary);
        QFile::remove(temporary + QStringLiteral("-journal"));
    }
    setUnfinished({});
}

void Database::fail(int code, const QString& context) const
{
    const QString message = db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QString::fromUtf8(sqlite3_errstr(code));
    const int number = classicNumber(code, message);
    QString text = standardErrorText(number);
    if (number == err::UnrecognisedDatabase)
        text = QStringLiteral("Unrecognized database format '%1'.").arg(path_);
    else if (number == err::UnknownTable || number == err::SqlSyntax || number == err::DatabaseFailure)
        text += QStringLiteral(" (%1%2)").arg(message, context.isEmpty() ? QString() : QStringLiteral(": ") + context);
    throw VbError(number, text);
}

void Database::bind(sqlite3_stmt* st, int i, const Value& v)
{
    switch (v.type()) {
    case Value::Type::Null:
        sqlite3_bind_null(st, i);
        break;
    case Value::Type::Long:
        sqlite3_bind_int64(st, i, v.toLong());
        break;
    case Value::Type::Double:
        sqlite3_bind_double(st, i, v.toDouble());
        break;
    case Value::Type::Currency:
        sqlite3_bind_int64(st, i, v.toCurrency().ticks());
        break;
    case Value::Type::Text: {
        const QByteArray utf8 = v.text()->toUtf8();
        sqlite3_bind_text(st, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        break;
    }
    case Value::Type::Date: {
        const QByteArray utf8 = isoDateText(v.toDate()).toUtf8();
        sqlite3_bind_text(st, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        break;
    }
    }
}

Value Database::column(sqlite3_stmt* st, int i, int columnType)
{
    const int kind = sqlite3_column_type(st, i);
    switch (kind) {
    case SQLITE_NULL:
        return Value();
    case SQLITE_INTEGER:
        return decode(kind, sqlite3_column_int64(st, i), 0, nullptr, 0, columnType);
    case SQLITE_FLOAT:
        return decode(kind, 0, sqlite3_column_double(st, i), nullptr, 0, columnType);
    default: {
        const char* text = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
        return decode(SQLITE_TEXT, 0, 0, text, sqlite3_column_bytes(st, i), columnType);
    }
    }
}

Value Database::decode(int kind, qint64 integer, double real, const char* text, int length, int columnType)
{
    if (kind == SQLITE_NULL)
        return Value();
    switch (ColumnType(columnType)) {
    case ColumnType::Long:
        if (kind == SQLITE_INTEGER)
            return Value(integer);
        break;
    case ColumnType::Currency:
        // Money is kept in ten-thousandths.
        if (kind == SQLITE_INTEGER)
            return Value(Currency::fromTicks(integer));
        if (kind == SQLITE_FLOAT)
            return Value(Currency::fromDouble(real));
        break;
    case ColumnType::Double:
        if (kind == SQLITE_FLOAT)
            return Value(real);
        if (kind == SQLITE_INTEGER)
            return Value(double(integer));
        break;
    case ColumnType::Date:
        if (kind == SQLITE_TEXT) {
            const QDateTime d = parseIsoDate(QString::fromUtf8(text, length));
            if (d.isValid())
                return Value(d);
        }
        break;
    case ColumnType::Text:
        if (kind == SQLITE_TEXT)
            return Value(QString::fromUtf8(text, length));
        break;
    }
    // A value of another kind than its column (a file written by hand): take it as stored.
    switch (kind) {
    case SQLITE_INTEGER:
        return Value(integer);
    case SQLITE_FLOAT:
        return Value(real);
    default:
        return Value(QString::fromUtf8(text, length));
    }
}

StatementScope::~StatementScope()
{
    sqlite3_reset(st_);
}

void Write_batch(const std::shared_ptr<Database>& db, const std::function<void()>& writes)
{
    db->exec(QStringLiteral("BEGIN IMMEDIATE"));
    const auto commit = [&] {
        db->touched(); // writes made through prepared statements leave recordsets' rows stale
        // A failed write may have ended the transaction already: nothing is left to commit.
        if (sqlite3_get_autocommit(db->handle()))
            return;
        try {
            db->exec(QStringLiteral("COMMIT"));
        } catch (const VbError&) {
            // Leave no transaction open behind the failure that is reported.
            if (!sqlite3_get_autocommit(db->handle()))
                sqlite3_exec(db->handle(), "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    };
    try {
        writes();
    } catch (...) {
        commit();
        throw;
    }
    commit();
}
