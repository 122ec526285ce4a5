#pragma once
// The rows of a source read one at a time and kept by no one: an export writes each row
// as it comes, where a report's source keeps them all.

#include "store/Value.h"

#include <QStringList>
#include <memory>
#include <vector>

class Database;
struct sqlite3_stmt;

class SelectWalk
{
public:
    // A SELECT, or a SHAPE command with no child level; a "SELECT *" reads only the
    // fields named, if any are. Fails with a classic number.
    SelectWalk(const QString& source, const std::shared_ptr<Database>& db, const QStringList& fields = {});
    ~SelectWalk();
    SelectWalk(const SelectWalk&) = delete;
    SelectWalk& operator=(const SelectWalk&) = delete;

    int fieldIndex(const QString& name) const; // -1 when absent
    // Moves to the next row (the first, at the start); false past the last.
    bool next();
    Value field(int i) const;

private:
    std::shared_ptr<Database> db_;
    sqlite3_stmt* st_ = nullptr;
    QString sql_;
    QStringList names_;
    std::vector<int> types_;
};
