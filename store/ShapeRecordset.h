#pragma once
// The static, read-only rows of a report's source: a SELECT, or a SHAPE command whose
// parent rows each carry their child rows.

#include "store/Value.h"

#include <QStringList>
#include <deque>
#include <memory>
#include <vector>

class Database;

class ShapeRecordset
{
public:
    // Runs a source on the file and keeps every row. Fails with a classic number. With the
    // fields a reader uses given, a "SELECT *" reads those alone (and the keys that relate
    // its levels).
    static std::shared_ptr<ShapeRecordset> open(const QString& source, const std::shared_ptr<Database>& db,
                                                const QStringList& fields = {});

    const QString& name() const { return data_->name; } // the "as" name of the source
    bool eof() const { return pos_ >= rows_.size(); }
    void moveFirst() { pos_ = 0; }
    void moveNext();
    void moveLast() { pos_ = rows_.empty() ? 0 : rows_.size() - 1; }
    int recordCount() const { return int(rows_.size()); }
    int absolutePosition() const { return int(pos_) + 1; }
    void moveTo(int position) { pos_ = size_t(position); } // 0 for the first row

    int fieldCount() const { return int(data_->fields.size()); }
    QString fieldName(int i) const { return data_->fields.value(i); }
    int fieldIndex(const QString& name) const; // -1 when absent
    Value field(const QString& name) const;
    Value field(int i) const;

    // The child rows of the current row, under the child's "as" name; null when there is
    // no such child.
    std::shared_ptr<ShapeRecordset> chapter(const QString& name) const;
    QString chapterName() const; // the name of the child level, empty without one

private:
    // A stored value as read: a number, or where its text lies. Every row's cells stand in
    // one array and every text in one buffer, so a source of a million rows is not a
    // million allocations.
    struct Cell {
        // An integer's or a real's eight bytes, or a text's block and its place in that
        // block: kept as two words so that a cell takes 12 bytes, not 16.
        quint32 words[2] = {0, 0};
        qint32 length = 0; // a text's length in bytes, or one of the kinds below
    };
    static_assert(sizeof(Cell) == 12);
    enum : qint32 { NullCell = -1, IntegerCell = -2, RealCell = -3 };
    struct Data {
        QString name;
        QStringList fields;
        std::vector<int> types; // the type each field is read as
        std::deque<Cell> cells; // row after row, a cell a field
        // Both grow by blocks, never copied whole to grow: a large source's peak is its
        // size, not twice it.
        std::vector<QByteArray> texts;
        size_t rowCount() const { return fields.isEmpty() ? 0 : cells.size() / size_t(fields.size()); }
        Value value(size_t row, int field) const;
        // Child level: its data, and for each parent row the child rows that belong to it.
        std::shared_ptr<Data> child;
        // Parent row p's child rows are childRows[childStart[p]] up to childRows[childStart[p + 1]]:
        // two flat arrays, not a list per parent.
        std::vector<quint32> childStart;
        std::vector<quint32> childRows;
    };
    ShapeRecordset(std::shared_ptr<Data> data, std::vector<size_t> rows);
    static std::shared_ptr<Data> query(const QString& sql, const std::shared_ptr<Database>& db);
    size_t currentRow() const;

    std::shared_ptr<Data> data_;
    std::vector<size_t> rows_;
    size_t pos_ = 0;
};

struct sqlite3_stmt;
// The types a SELECT's columns are read as: each by the type the table gives it, so money
// comes back as money. Their names too, when asked for.
std::vector<int> selectColumnTypes(sqlite3_stmt* st, QStringList* names = nullptr);
// The SELECT of a source with no child level: the source itself, or the parent of its
// SHAPE command.
QString parentSelect(const QString& source);

// A "SELECT * FROM table ..." reading only the fields named that the table has; any
// other SELECT, or no field of the table named, as it is.
QString narrowedSelect(const QString& select, const QStringList& fields);

// Turns the old engine's SELECT into ours: #MM/DD/YYYY# date literals become ISO dates.
QString translateSelect(const QString& select);
