#include "store/Database.h"

#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Numbers.h"
#include "store/Schema.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
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
    // Reading the catalogue proves the file is one of ours before anything is written.
    db->exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    db->exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
    db->exec(QStringLiteral("PRAGMA synchronous=FULL"));
    ensureEInvoiceTables(*db);
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

void writeThenRename(const QString& path, const std::function<void(const QString& temporary)>& write)
{
    const QString temporary = path + QStringLiteral(".new");
    QFile::remove(temporary);
    try {
        write(temporary);
        if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0)
            throw VbError(err::PathFileAccess);
    } catch (...) {
        QFile::remove(temporary);
        throw;
    }
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

WriteBatch::WriteBatch(std::shared_ptr<Database> db) : db_(std::move(db))
{
    db_->exec(QStringLiteral("BEGIN IMMEDIATE"));
}

WriteBatch::~WriteBatch()
{
    if (!open_)
        return;
    db_->touched(); // writes made through prepared statements leave recordsets' rows stale
    try {
        db_->exec(QStringLiteral("COMMIT"));
    } catch (const VbError&) {
        // A failed write may have ended the transaction already; leave none open.
        try {
            db_->exec(QStringLiteral("ROLLBACK"));
        } catch (const VbError&) {
        }
    }
}

void WriteBatch::commit()
{
    open_ = false;
    db_->touched();
    db_->exec(QStringLiteral("COMMIT"));
}
