// Tools > Import of Invoices1.csv: the rows it stores, the shapes of line it meets, and
// the ways it fails, which end the program and keep what was stored before.

#include "TestUi.h"

#include "safety/Import.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QtTest>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{

// The rows of a table, each as the named columns' texts joined by "|".
QStringList rows(const QString& table, const QStringList& columns)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockReadOnly);
    QStringList out;
    for (; !rs.eof(); rs.moveNext()) {
        QStringList cells;
        for (const QString& c : columns)
            cells << Null_to_text(rs.field(c));
        out << cells.join('|');
    }
    return out;
}

const QStringList CustomerColumns{
    "CustID",   "Date",        "FirstName",   "LastName",    "Phone",       "Address",     "Address2", "City",
    "Postcode", "DelAddress1", "DelAddress2", "DelAddress3", "DelAddress4", "DelAddress5", "address4", "notes"};
const QStringList InvoiceColumns{"InvNo", "Date", "CustNo",   "CustomerName", "Subtotal", "Total",
                                 "Paid",  "Vat",  "Discount", "Balance",      "Notes"};
const QStringList LineColumns{"InvNo", "PartID", "Qty", "Description", "Amount", "Total"};

void writeImportFile(const TestUi& ui, const QByteArray& bytes)
{
    QFile f(ui.file(u"Invoices1.csv"_s));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// What a fresh connection finds in the file on disk: its integrity and a count of rows.
QString onDisk(const QString& path, const QString& sql)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* st = nullptr;
    QString result;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        result = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    sqlite3_close(db);
    return result;
}

const QByteArray Line1 = "C1,2026-03-01,I1,Anne,Smith,0123,1 High St,Flat 2,Leeds,LS1 1AA,150.50,Repairs,100.25,"
                         "Parts,50.25,x,Del 1,Del 2,Del 3,Del 4,Del 5\r\n";
const QByteArray Line2 = "C2,15/04/2026,I2,Bob,Jones,0456,2 Low Rd,,York,YO1 2BB,20,Visit,20\r\n";

} // namespace

class ImportTest : public QObject
{
    Q_OBJECT
private slots:
    void storesEveryFieldAsTheFileSays();
    void lineShapes_data();
    void lineShapes();
    void failuresEndTheProgramKeepingEarlierLines_data();
    void failuresEndTheProgramKeepingEarlierLines();
    void menuOffersTheImportWhenTheFileIsThere();
};

void ImportTest::storesEveryFieldAsTheFileSays()
{
    TestUi ui;
    auto w = startProgram(ui, {{"Invstart", "0005"}, {"CustStart", "0007"}});
    // A Windows-1252 name: e acute and the euro sign.
    QByteArray line3 = "C3,2026-05-02,I3,Ren\xe9,\x80uro,,,,,,9.99,One,9.99,   ,7.00\n";
    writeImportFile(ui, Line1 + Line2 + line3);
    safety::mnuImport();
    VERIFY_UI(ui);
    QCOMPARE(
        rows("Customers", CustomerColumns),
        (QStringList{"C1|01/03/2026|Anne|Smith|0123|1 High St|Flat 2|Leeds|LS1 1AA|Del 1|Del 2|Del 3|Del 4|Del 5||",
                     "C2|15/04/2026|Bob|Jones|0456|2 Low Rd||York|YO1 2BB|||||||",
                     QString::fromUtf8("C3|02/05/2026|René|€uro||||||||||||")}));
    QCOMPARE(rows("Invoices", InvoiceColumns),
             (QStringList{"I1|01/03/2026|C1|Anne Smith|150.5|150.5|150.5|0|0|0|",
                          "I2|15/04/2026|C2|Bob Jones|20|20|20|0|0|0|",
                          QString::fromUtf8("I3|02/05/2026|C3|René €uro|9.99|9.99|9.99|0|0|0|")}));
    QCOMPARE(rows("InvoiceD", LineColumns), (QStringList{"I1||1|Repairs|100.25|100.25", "I1||1|Parts|50.25|50.25",
                                                         "I2||1|Visit|20|20", "I3||1|One|9.99|9.99"}));
    // Nothing is numbered by the import.
    QCOMPARE(rows("System", {"Invstart", "CustStart"}), QStringList{"0005|0007"});
    QCOMPARE(settings.Invstart, u"0005"_s);
}

void ImportTest::lineShapes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("delivery");
    QTest::newRow("empty file") << QByteArray() << QStringList() << QString();
    QTest::newRow("13 fields, no line end") << Line2.chopped(2) << QStringList{"I2|Visit|20"} << "";
    QTest::newRow("blank field 14") << QByteArray("C4,2026-01-01,I4,A,B,,,,,,5,Only,5,  ,3\n")
                                    << QStringList{"I4|Only|5"} << "";
    QTest::newRow("field 14 with text") << QByteArray("C4,2026-01-01,I4,A,B,,,,,,5,One,2,Two,3\r")
                                        << QStringList{"I4|One|2", "I4|Two|3"} << "";
    // Fields beyond the 21st are ignored.
    QByteArray wide = "C5,2026-01-01,I5,A,B,,,,,,5,One,5,,,,D1,D2,D3,D4,D5";
    for (int i = 22; i <= 40; ++i)
        wide += ",f" + QByteArray::number(i);
    QTest::newRow("40 fields") << wide << QStringList{"I5|One|5"} << "D1";
    // A quotation mark is text like any other.
    QTest::newRow("quotes kept") << QByteArray("C6,2026-01-01,I6,A,B,,,,,,5,\"Nuts\",5\n")
                                 << QStringList{"I6|\"Nuts\"|5"} << "";
}

void ImportTest::lineShapes()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, lines);
    QFETCH(QString, delivery);
    TestUi ui;
    auto w = startProgram(ui, {});
    writeImportFile(ui, file);
    safety::mnuImport();
    VERIFY_UI(ui);
    QCOMPARE(rows("InvoiceD", {"InvNo", "Description", "Amount"}), lines);
    QCOMPARE(rows("Customers", {"DelAddress1"}), lines.isEmpty() ? QStringList() : QStringList{delivery});
}

void ImportTest::failuresEndTheProgramKeepingEarlierLines_data()
{
    QTest::addColumn<QByteArray>("file"); // "missing" for no file at all
    QTest::addColumn<int>("number");
    QTest::addColumn<QStringList>("customers");
    QTest::addColumn<QStringList>("invoices");
    QTest::addColumn<int>("lines");
    auto row = [](const char* name, const QByteArray& file, int number, const QStringList& customers,
                  const QStringList& invoices,
                  int lines) { QTest::newRow(name) << file << number << customers << invoices << lines; };
    const QByteArray bad = Line1 + "C9,2026-01-01,I9,A,B,,,,,,";
    row("missing file", "missing", err::FileNotFound, {}, {}, 0);
    row("customer repeated", Line1 + Line2 + "C1,2026-01-01,I9,A,B,,,,,,5,One,5\r\n", err::DuplicateKey, {"C1", "C2"},
        {"I1", "I2"}, 3);
    // The customer of the failing line stays without its invoice.
    row("invoice repeated", Line1 + "C9,2026-01-01,I1,A,B,,,,,,5,One,5\r\n", err::DuplicateKey, {"C1", "C9"}, {"I1"},
        2);
    row("date the store can't read", Line1 + "C9,31/02/2026,I9,A,B,,,,,,5,One,5\r\n", err::TypeMismatch, {"C1"}, {"I1"},
        2);
    row("amount not a number", bad + "5x,One,5\r\n", err::TypeMismatch, {"C1", "C9"}, {"I1"}, 2);
    row("short line", Line1 + "C9,2026-01-01,I9\r\n", err::TypeMismatch, {"C1", "C9"}, {"I1"}, 2);
    row("name too long", Line1 + "C9,2026-01-01,I9," + QByteArray(51, 'a') + ",B,,,,,,5,One,5\r\n", err::FieldTooSmall,
        {"C1"}, {"I1"}, 2);
    // No quoting: the comma inside the quotes moves the amount onto " bolts\"".
    row("comma in quotes", bad + "5,\"Nuts, bolts\",5\r\n", err::TypeMismatch, {"C1", "C9"}, {"I1", "I9"}, 2);
    QByteArray junk;
    for (int i = 0; i < 4096; ++i)
        junk += char((i * 37) & 0xFF);
    row("binary junk", Line1 + junk, err::FieldTooSmall, {"C1"}, {"I1"}, 2);
}

void ImportTest::failuresEndTheProgramKeepingEarlierLines()
{
    QFETCH(QByteArray, file);
    QFETCH(int, number);
    QFETCH(QStringList, customers);
    QFETCH(QStringList, invoices);
    QFETCH(int, lines);
    TestUi ui;
    auto w = startProgram(ui, {});
    if (file != "missing")
        writeImportFile(ui, file);
    ui.expectBox(u"Error Message"_s,
                 errorMessageText(number, u"frmMain"_s, u"mnuImport_Click"_s, standardErrorText(number)),
                 platform::vbOK, platform::vbExclamation);
    QVERIFY(endsProgram([] { safety::mnuImport(); }));
    VERIFY_UI(ui);
    QCOMPARE(QDir(ui.file(u"Logs"_s)).entryList(QDir::Files), QStringList{"20261122103015.log"});
    QCOMPARE(busyCount(), qint16(0));
    // What a fresh look at the file finds: whole, with the rows stored before the failure.
    const QString data = ui.file(u"data.mdb"_s);
    QCOMPARE(onDisk(data, "PRAGMA integrity_check"), u"ok"_s);
    QCOMPARE(onDisk(data, "SELECT group_concat(CustID) FROM Customers"), customers.join(','));
    QCOMPARE(onDisk(data, "SELECT group_concat(InvNo) FROM Invoices"), invoices.join(','));
    QCOMPARE(onDisk(data, "SELECT count(*) FROM InvoiceD"), QString::number(lines));
}

void ImportTest::menuOffersTheImportWhenTheFileIsThere()
{
    TestUi ui;
    auto w = startProgram(ui, {});
    auto* tools = child<QMenu>(*w, u"mnuTools"_s);
    auto* import = child<QAction>(*w, u"mnuImport"_s);
    emit tools->aboutToShow();
    QVERIFY(!import->isEnabled());
    writeImportFile(ui, Line2);
    emit tools->aboutToShow();
    QVERIFY(import->isEnabled());
    import->trigger();
    QCOMPARE(rows("Invoices", {"InvNo"}), QStringList{"I2"});
    VERIFY_UI(ui);
}

VELK_TEST(ImportTest)
#include "tst_import.moc"
