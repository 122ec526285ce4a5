#include "OptionsTests.h"

#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <memory>

void makeDataFile(const QMap<QString, Value>& systemRow)
{
    frmMain w;
    w.MDIForm_Load();
    if (systemRow.isEmpty())
        return;
    QMap<QString, Value> row{{"FreeFormInv", 0}, {"FreeformCus", 0},       {"FreeformPart", 0},     {"FreeFormCrd", 0},
                             {"TaxAmount", 0.0}, {"Text3Name", QString()}, {"Text4Name", QString()}};
    for (auto it = systemRow.begin(); it != systemRow.end(); ++it)
        row.insert(it.key(), it.value());
    insertRow(QStringLiteral("System"), row);
}

void insertRow(const QString& table, const QMap<QString, Value>& values)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockPessimistic);
    rs.addNew();
    for (auto it = values.begin(); it != values.end(); ++it)
        rs.setField(it.key(), it.value());
    rs.update();
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

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    int failed = 0;
    for (auto make : {newNumberingTest, newSetupTest, newOptionsTest}) {
        std::unique_ptr<QObject> test(make());
        failed += QTest::qExec(test.get(), argc, argv);
    }
    return failed == 0 ? 0 : 1;
}
