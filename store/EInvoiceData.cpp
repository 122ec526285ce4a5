#include "store/EInvoiceData.h"

#include "store/Database.h"
#include "store/Schema.h"

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

QStringList eInvoiceTableStatements()
{
    return {QStringLiteral("CREATE TABLE IF NOT EXISTS EInvoiceSettings (Name TEXT NOT NULL UNIQUE, Value TEXT)"),
            QStringLiteral("CREATE TABLE IF NOT EXISTS EInvoiceCustomers "
                           "(CustID TEXT NOT NULL, Name TEXT NOT NULL, Value TEXT, UNIQUE (CustID, Name))")};
}

void upgradeToCurrent(Database& db)
{
    db.exec(QStringLiteral("BEGIN IMMEDIATE"));
    try {
        for (const QString& sql : eInvoiceTableStatements())
            db.exec(sql);
        db.setSchemaVersion(SchemaVersion);
        db.exec(QStringLiteral("COMMIT"));
    } catch (...) {
        if (!sqlite3_get_autocommit(db.handle()))
            sqlite3_exec(db.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
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
