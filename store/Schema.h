#pragma once
// The tables of the data file as one table of data: it creates the file and guides
// every conversion of a field.

#include <QString>
#include <vector>

enum class ColumnType { Text, Long, Currency, Double, Date };

struct ColumnDef {
    const char* name;
    ColumnType type;
    int size; // characters, for text; 0 otherwise
    bool nullable;
    const char* defaultValue; // nullptr for none
};

struct IndexDef {
    const char* name;
    const char* column;
    bool unique;
    bool primaryKey;
};

struct TableDef {
    const char* name;
    std::vector<ColumnDef> columns;
    std::vector<IndexDef> indexes;

    const ColumnDef* column(const QString& name) const; // without regard to case
    int columnIndex(const QString& name) const;         // -1 when absent
    const IndexDef* index(const QString& name) const;   // without regard to case
};

// The schema version a data file records (PRAGMA user_version). Files written before the
// version was recorded read 0 and hold the same tables as version 1; version 2 adds the
// e-invoicing side tables, on opening. A file of a higher version than this build knows
// is refused and left as it is.
constexpr int SchemaVersion = 2;

// The six tables, in the order in which the file is built.
const std::vector<TableDef>& schemaTables();
const TableDef* schemaTable(const QString& name); // without regard to case

// How the store spells a column type, and the name under which an index is kept
// (index names are per table for us, but one name space for the engine).
QString sqlTypeName(const ColumnDef& column);
QString storedIndexName(const TableDef& table, const IndexDef& index);
// The statements that build one table and its indexes.
QStringList createStatements(const TableDef& table);
