#include "OptionsTests.h"

#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Recordset.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>

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

QMap<QString, Value> rowOf(const QStringList& pairs)
{
    QMap<QString, Value> row;
    for (const QString& p : pairs)
        row.insert(p.section('=', 0, 0), p.section('=', 1));
    return row;
}

void compareSystemRow(const QStringList& pairs)
{
    for (const QString& p : pairs)
        QCOMPARE(p.section('=', 0, 0) + '=' + Null_to_text(firstRowValue("System", p.section('=', 0, 0))), p);
}

void click(QDialog& d, const char* name)
{
    child<QAbstractButton>(d, QLatin1String(name))->click();
}

QLineEdit* box(QDialog& d, const char* name)
{
    return child<QLineEdit>(d, QLatin1String(name));
}

static const bool registered =
    (registerTest("NumberingTest", newNumberingTest), registerTest("SetupTest", newSetupTest),
     registerTest("OptionsTest", newOptionsTest), true);
