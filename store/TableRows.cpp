#include "store/TableRows.h"

#include "store/Database.h"
#include "store/Errors.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <sqlite3.h>

namespace
{

// Ids asked for in one statement; a longer list is read in several.
constexpr int IdsPerRead = 256;

// The row a statement stands on, its fields by the table's column names. A list asks for
// the same few names, written once in its code, row after row: each such name is looked
// up once and then known by where its text lies.
class StatementRecord : public Record
{
public:
    StatementRecord(sqlite3_stmt* st, const TableDef* table, const std::vector<int>& columns)
        : st_(st), table_(table), columns_(columns)
    {
    }
    Value field(const QString& name) const override
    {
        int at = -1;
        for (const auto& [text, place] : known_)
            if (text == name.constData()) {
                at = place;
                break;
            }
        if (at < 0) {
            const int column = table_->columnIndex(name);
            for (size_t i = 0; i < columns_.size(); ++i)
                if (columns_[i] == column)
                    at = int(i);
            if (at < 0)
                throw VbError(err::ItemNotFound);
            // Only a text written in the code stays where it lies; another could be freed
            // and its place taken by a different name.
            if (!name.data_ptr().isMutable())
                known_.emplace_back(name.constData(), at);
        }
        return Database::column(st_, at + 1, int(table_->columns[size_t(columns_[size_t(at)])].type));
    }

private:
    sqlite3_stmt* st_;
    const TableDef* table_;
    const std::vector<int>& columns_;
    mutable std::vector<std::pair<const QChar*, int>> known_;
};

QString quoted(const char* name)
{
    return QStringLiteral("\"%1\"").arg(QLatin1String(name));
}

} // namespace

TableRows::TableRows(const QString& connectionString, const QString& table, const QStringList& columns)
    : table_(schemaTable(table))
{
    if (!table_)
        throw VbError(err::UnknownTable);
    for (const QString& name : columns) {
        const int column = table_->columnIndex(name);
        if (column < 0)
            throw VbError(err::ItemNotFound);
        columns_.push_back(column);
    }
    db_ = Database::open(dataSourceOf(connectionString));
}

void TableRows::walk(void* statement, const Visit& visit) const
{
    auto* st = static_cast<sqlite3_stmt*>(statement);
    const StatementRecord record(st, table_, columns_);
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        visit(sqlite3_column_int64(st, 0), record);
    if (rc != SQLITE_DONE)
        db_->fail(rc);
}

void TableRows::read(const std::vector<qint64>& rowids, const Visit& visit) const
{
    QString select = QStringLiteral("SELECT rowid");
    for (int column : columns_)
        select += QStringLiteral(", ") + quoted(table_->columns[size_t(column)].name);
    QStringList marks;
    for (int i = 1; i <= IdsPerRead; ++i)
        marks << QStringLiteral("?%1").arg(i);
    // One statement of a fixed shape, so that it is prepared once; ids short of a full
    // read are bound as Null, which matches no row.
    sqlite3_stmt* st =
        db_->prepare(select + QStringLiteral(" FROM ") + quoted(table_->name) + QStringLiteral(" WHERE rowid IN (") +
                     marks.join(QLatin1Char(',')) + QStringLiteral(") ORDER BY rowid"));
    for (size_t from = 0; from < rowids.size(); from += IdsPerRead) {
        StatementScope scope(st);
        for (int i = 0; i < IdsPerRead; ++i) {
            if (from + size_t(i) < rowids.size())
                sqlite3_bind_int64(st, i + 1, rowids[from + size_t(i)]);
            else
                sqlite3_bind_null(st, i + 1);
        }
        walk(st, visit);
    }
}

void TableRows::scan(const Visit& visit) const
{
    QString select = QStringLiteral("SELECT rowid");
    for (int column : columns_)
        select += QStringLiteral(", ") + quoted(table_->columns[size_t(column)].name);
    sqlite3_stmt* st =
        db_->prepare(select + QStringLiteral(" FROM ") + quoted(table_->name) + QStringLiteral(" ORDER BY rowid"));
    StatementScope scope(st);
    walk(st, visit);
}

std::vector<qint64> TableRows::ids() const
{
    sqlite3_stmt* st =
        db_->prepare(QStringLiteral("SELECT rowid FROM ") + quoted(table_->name) + QStringLiteral(" ORDER BY rowid"));
    StatementScope scope(st);
    std::vector<qint64> ids;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        ids.push_back(sqlite3_column_int64(st, 0));
    if (rc != SQLITE_DONE)
        db_->fail(rc);
    return ids;
}

qint64 TableRows::firstNull(const QStringList& columns) const
{
    if (columns.isEmpty())
        return 0;
    QStringList tests;
    for (const QString& name : columns) {
        const int column = table_->columnIndex(name);
        if (column < 0)
            throw VbError(err::ItemNotFound);
        tests << quoted(table_->columns[size_t(column)].name) + QStringLiteral(" IS NULL");
    }
    sqlite3_stmt* st = db_->prepare(QStringLiteral("SELECT min(rowid) FROM ") + quoted(table_->name) +
                                    QStringLiteral(" WHERE ") + tests.join(QStringLiteral(" OR ")));
    StatementScope scope(st);
    const int rc = sqlite3_step(st);
    if (rc != SQLITE_ROW)
        db_->fail(rc);
    return sqlite3_column_int64(st, 0);
}
