#include "store/Connection.h"

#include "store/Database.h"
#include "store/Recordset.h"

Connection PlainConnection;
Connection ShapeConnection;
QString ConnectionString;

void Connection::open(const QString& connectionString)
{
    db_ = Database::open(dataSourceOf(connectionString));
    string_ = connectionString;
}

void Connection::close()
{
    db_.reset();
}
