#include "OptionsTests.h"

#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Recordset.h"

void makeDataFile(const QMap<QString, Value>& systemRow)
{
    frmMain w;
    w.MDIForm_Load();
    if (!systemRow.isEmpty())
        addSettingsRow(systemRow);
}

Value firstRowValue(const QString& table, const QString& column)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockReadOnly);
    return rs.eof() ? Value() : rs.field(column);
}

int rowCount(const QString& table)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockReadOnly);
    return rs.recordCount();
}

static const bool registered =
    (registerTest("NumberingTest", newNumberingTest), registerTest("SetupTest", newSetupTest),
     registerTest("OptionsTest", newOptionsTest), true);
