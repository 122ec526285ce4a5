#pragma once
// Rows of one table read with only the columns a caller names: by their row ids (a page
// of a list as it comes into view) or the whole table in table order (a sort key, a
// search). A list of 300,000 invoices reads three columns, not all twenty-three.

#include "store/Record.h"

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

class Database;
struct TableDef;

class TableRows
{
public:
    // The table and the columns by name, without regard to case; an unknown one fails.
    TableRows(const QString& connectionString, const QString& table, const QStringList& columns);

    using Visit = std::function<void(qint64 rowid, const Record& record)>;
    // The rows with these ids that still exist, in table order.
    void read(const std::vector<qint64>& rowids, const Visit& visit) const;
    // Every row, in table order.
    void scan(const Visit& visit) const;
    // The ids of every row in table order.
    std::vector<qint64> ids() const;
    // The first row (in table order) where one of these columns is Null, or 0.
    qint64 firstNull(const QStringList& columns) const;

private:
    void walk(void* statement, const Visit& visit) const;

    std::shared_ptr<Database> db_;
    const TableDef* table_;
    std::vector<int> columns_; // the table's column numbers, in the order named
};
