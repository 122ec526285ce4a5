#include "store/EInvoiceData.h"

#include "store/Database.h"

#include <sqlite3.h>

namespace
{

QString firstText(Database& db, sqlite3_stmt* st, const QString& context)
{
    StatementScope scope(st);
    const int rc = sqlite3_step(st);
    if (rc == SQLITE_ROW)
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    if (rc != SQLITE_DONE)
        db.fail(rc, context);
    return QString();
}

void run(Database& db, sqlite3_stmt* st, const QString& context)
{
    StatementScope scope(st);
    const int rc = sqlite3_step(st);
    if (rc != SQLITE_DONE)
        db.fail(rc, context);
    db.touched();
}

} // namespace

void ensureEInvoiceTables(Database& db)
{
    db.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS EInvoiceSettings (Name TEXT NOT NULL UNIQUE, Value TEXT)"));
    db.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS EInvoiceCustomers "
                           "(CustID TEXT NOT NULL, Name TEXT NOT NULL, Value TEXT, UNIQUE (CustID, Name))"));
    const QStringList version = db.texts(QStringLiteral("PRAGMA user_version"));
    // A newer file keeps its number: lowering it would hide what a later program added.
    if (version.value(0).toInt() < eInvoiceSchemaVersion)
        db.exec(QStringLiteral("PRAGMA user_version=%1").arg(eInvoiceSchemaVersion));
}

QString eInvoiceSetting(Database& db, const QString& name)
{
    const QString sql = QStringLiteral("SELECT Value FROM EInvoiceSettings WHERE Name=?");
    sqlite3_stmt* st = db.prepare(sql);
    Database::bind(st, 1, name);
    return firstText(db, st, sql);
}

void setEInvoiceSetting(Database& db, const QString& name, const QString& value)
{
    const QString sql = QStringLiteral("INSERT OR REPLACE INTO EInvoiceSettings (Name, Value) VALUES (?, ?)");
    sqlite3_stmt* st = db.prepare(sql);
    Database::bind(st, 1, name);
    Database::bind(st, 2, value);
    run(db, st, sql);
}

QString eInvoiceCustomerValue(Database& db, const QString& custId, const QString& name)
{
    const QString sql = QStringLiteral("SELECT Value FROM EInvoiceCustomers WHERE CustID=? AND Name=?");
    sqlite3_stmt* st = db.prepare(sql);
    Database::bind(st, 1, custId);
    Database::bind(st, 2, name);
    return firstText(db, st, sql);
}

void setEInvoiceCustomerValue(Database& db, const QString& custId, const QString& name, const QString& value)
{
    const QString sql =
        QStringLiteral("INSERT OR REPLACE INTO EInvoiceCustomers (CustID, Name, Value) VALUES (?, ?, ?)");
    sqlite3_stmt* st = db.prepare(sql);
    Database::bind(st, 1, custId);
    Database::bind(st, 2, name);
    Database::bind(st, 3, value);
    run(db, st, sql);
}
