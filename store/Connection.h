#pragma once
// A connection to the data file, opened from its connection string and held from start
// to exit. Recordsets open their own tables from the same string.

#include <QString>
#include <memory>

class Database;

class Connection
{
public:
    void open(const QString& connectionString); // fails when the file is not ours
    void close();
    bool isOpen() const { return db_ != nullptr; }
    const QString& connectionString() const { return string_; }
    std::shared_ptr<Database> database() const { return db_; }

private:
    QString string_;
    std::shared_ptr<Database> db_;
};

// The two connections of the program, owned by the main window from start to exit:
// the plain one whose string every window opens its tables with, and the one that
// reports and printing read through.
extern Connection PlainConnection;
extern Connection ShapeConnection;
extern QString ConnectionString;
