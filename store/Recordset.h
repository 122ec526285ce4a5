#pragma once
// A recordset on one whole table, the way every window reads and writes records:
// table order or the order of a named index, the at-or-after seek, a walk to the end,
// fields by name without regard to case, add, change and delete.
//
// It is a cursor by key, not a copy of the table: it fetches rows a page at a time
// from its position, so opening a large table costs nothing and a seek reads one row.

#include "store/Record.h"
#include "store/Schema.h"
#include "store/Value.h"

#include <memory>
#include <vector>

class Database;

class Recordset : public Record
{
public:
    enum LockType { adLockReadOnly = 1, adLockPessimistic = 2 };
    enum SeekOption { adSeekFirstEQ = 1, adSeekAfterEQ = 4 };

    Recordset() = default;
    ~Recordset() override;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Opens the table named (without regard to case) on the file that the connection
    // string names; the cursor stands on the first record in table order.
    void open(const QString& table, const QString& connectionString, int lockType);
    void close();
    bool isOpen() const { return table_ != nullptr; }

    // Choosing an index by name orders the walk by its column; the empty name goes
    // back to table order.
    void setIndex(const QString& name);
    QString index() const;
    void seek(const Value& key, int option = adSeekAfterEQ);

    bool eof() const { return state_ == State::Eof; }
    void moveFirst();
    void moveNext();
    void moveLast();
    int recordCount() const;

    Value field(const QString& name) const override;
    Value operator[](const QString& name) const { return field(name); }
    void setField(const QString& name, const Value& value);
    int fieldCount() const;
    QString fieldName(int i) const;

    void addNew();
    void update();
    void deleteRecord(); // "Delete": the cursor stays where the record was
    void cancelUpdate();

    const TableDef* table() const { return table_; }

private:
    enum class State { Closed, OnRow, Eof };
    enum class Edit { None, Editing, Adding };
    // A row as stored: its cells are turned into values only when a field is read.
    struct Cell {
        int kind;
        qint64 integer;
        double real;
        int offset;
        int length;
    };
    struct Row {
        qint64 rowid = 0;
        std::vector<Cell> cells;
        QByteArray text;
    };

    void requireOpen() const;
    void requireCurrent() const;
    int columnOf(const QString& name) const;
    QString selectList() const;
    QString orderBy(bool descending) const;
    void fetchPage(bool fromCurrent, int limit);
    void readPage(void* statement);
    void fetchBoundary(bool last);
    void settle();
    void refreshCurrent() const;
    Row readRow(void* statement) const;
    Value cell(const Row& row, int column) const;
    Value coerce(const ColumnDef& column, const Value& value) const;

    std::shared_ptr<Database> db_;
    const TableDef* table_ = nullptr;
    bool readOnly_ = true;
    int orderColumn_ = -1; // -1: table order
    const IndexDef* index_ = nullptr;
    State state_ = State::Closed;

    mutable Row current_;
    mutable quint64 currentVersion_ = 0;
    mutable bool currentDeleted_ = false;
    std::vector<Row> ahead_; // rows after the current one, in order
    size_t aheadPos_ = 0;
    quint64 aheadVersion_ = 0;
    int pageSize_ = 1;

    Edit edit_ = Edit::None;
    std::vector<Value> editValues_;
    std::vector<bool> dirty_;
};

// The file a connection string names: "...Data Source='<path>';...".
QString dataSourceOf(const QString& connectionString);
