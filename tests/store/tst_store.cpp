// The data file: its tables as built, the recordset's rules and refusals, report
// sources, and the one way a failure ends.

#include "TestUi.h"

#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QDir>
#include <QtTest>
#include <sqlite3.h>

int failure(const std::function<void()>& f)
{
    try {
        f();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

namespace
{

// The values of a column, walking from the first row.
QStringList walk(Recordset& rs, const char* column)
{
    QStringList out;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        out << rs.field(column).toText();
    return out;
}

// Rows of a query on the data file, each as one text with " | " between the columns.
QStringList query(const QString& path, const QString& sql)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* st = nullptr;
    QStringList rows;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) == SQLITE_OK) {
        while (sqlite3_step(st) == SQLITE_ROW) {
            QStringList cols;
            for (int i = 0; i < sqlite3_column_count(st); ++i)
                cols << (sqlite3_column_type(st, i) == SQLITE_NULL
                             ? "NULL"
                             : QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, i))));
            rows << cols.join(" | ");
        }
    }
    sqlite3_finalize(st);
    sqlite3_close(db);
    return rows;
}

} // namespace

class StoreTest : public QObject
{
    Q_OBJECT
private slots:
    void schemaRoundTrip();
    void recordsetWalksAndSeeks();
    void recordsetRefusals_data();
    void recordsetRefusals();
    void recordsetWritesAndDeletes();
    void shapeSources();
    void reportError();

private:
    // Starts the program in the test's folder, which builds an empty data file.
    void start(TestUi& ui, frmMain& w)
    {
        w.MDIForm_Load();
        QVERIFY(QFile::exists(ui.file("data.mdb")));
    }
};

void StoreTest::schemaRoundTrip()
{
    TestUi ui;
    frmMain w;
    start(ui, w);
    const QString path = ui.file("data.mdb");
    QStringList expectedTables;
    for (const TableDef& t : schemaTables()) {
        expectedTables << QLatin1String(t.name);
        // Columns: name, declared type with size, required flag and default, in order.
        QStringList expected;
        for (const ColumnDef& c : t.columns) {
            static const char* types[] = {"VARCHAR", "INTEGER", "CURRENCY", "DOUBLE", "DATETIME"};
            QString type = QLatin1String(types[int(c.type)]);
            if (c.type == ColumnType::Text)
                type += QStringLiteral("(%1)").arg(c.size);
            expected << QStringLiteral("%1 | %2 | %3 | %4")
                            .arg(QLatin1String(c.name), type, c.nullable ? "0" : "1",
                                 c.defaultValue ? QLatin1String(c.defaultValue) : QLatin1String("NULL"));
        }
        QCOMPARE(query(path, QStringLiteral("SELECT name, type, \"notnull\", dflt_value FROM pragma_table_info('%1')")
                                 .arg(QLatin1String(t.name))),
                 expected);
        // Named indexes: name, column, unique; primary keys are the table's own key.
        QStringList indexes;
        for (const IndexDef& i : t.indexes)
            indexes << QStringLiteral("%1.%2 | %3 | %4")
                           .arg(QLatin1String(t.name), QLatin1String(i.name), QLatin1String(i.column))
                           .arg(i.unique ? 1 : 0);
        QCOMPARE(query(path, QStringLiteral("SELECT l.name, i.name, l.\"unique\" FROM pragma_index_list('%1') l, "
                                            "pragma_index_info(l.name) i WHERE l.origin = 'c' ORDER BY l.seq DESC")
                                 .arg(QLatin1String(t.name))),
                 indexes);
        QStringList keys;
        for (const IndexDef& i : t.indexes)
            if (i.primaryKey)
                keys << QLatin1String(i.column);
        QCOMPARE(
            query(path,
                  QStringLiteral("SELECT name FROM pragma_table_info('%1') WHERE pk > 0").arg(QLatin1String(t.name))),
            keys);
        QCOMPARE(query(path, QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QLatin1String(t.name))),
                 QStringList{"0"});
    }
    QCOMPARE(query(path, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY rowid"), expectedTables);
    // Checks against the tables as the program's documents give them, column counts first.
    QCOMPARE(
        query(path, "SELECT m.name, count(*) FROM sqlite_master m, pragma_table_info(m.name) "
                    "WHERE m.type = 'table' GROUP BY m.name ORDER BY m.rowid"),
        (QStringList{"Customers | 20", "InvoiceD | 7", "Invoices | 23", "Letters | 24", "Parts | 5", "System | 64"}));
    const QString spot = "SELECT type, \"notnull\", dflt_value FROM pragma_table_info('%1') WHERE name = '%2'";
    QCOMPARE(query(path, spot.arg("System", "Address")), QStringList{"VARCHAR(151) | 0 | NULL"});
    QCOMPARE(query(path, spot.arg("System", "TaxAmount")), QStringList{"DOUBLE | 1 | 0"});
    QCOMPARE(query(path, spot.arg("System", "Text3Name")), QStringList{"VARCHAR(50) | 1 | NULL"});
    QCOMPARE(query(path, spot.arg("System", "Debtorstart")), QStringList{"VARCHAR(50) | 0 | NULL"});
    QCOMPARE(query(path, spot.arg("Letters", "Address")), QStringList{"VARCHAR(200) | 0 | NULL"});
    QCOMPARE(query(path, spot.arg("Invoices", "DiscountPercentage")), QStringList{"DOUBLE | 0 | 0"});
    QCOMPARE(query(path, spot.arg("Invoices", "Notes")), QStringList{"VARCHAR(150) | 0 | NULL"});
    QCOMPARE(query(path, spot.arg("Customers", "Date")), QStringList{"DATETIME | 0 | NULL"});
    QCOMPARE(query(path, spot.arg("InvoiceD", "Amount")), QStringList{"CURRENCY | 0 | 0"});
    QCOMPARE(query(path, spot.arg("Parts", "Desc")), QStringList{"VARCHAR(200) | 0 | NULL"});
    // Invoices has a unique index called PrimaryKey but no key of its own.
    QCOMPARE(query(path, "SELECT count(*) FROM pragma_table_info('Invoices') WHERE pk > 0"), QStringList{"0"});
    QCOMPARE(query(path, "PRAGMA journal_mode"), QStringList{"delete"});
    VERIFY_UI(ui);
}

void StoreTest::recordsetWalksAndSeeks()
{
    TestUi ui;
    frmMain w;
    start(ui, w);
    Recordset rs;
    rs.open("customers", ConnectionString, Recordset::adLockPessimistic);
    QVERIFY(rs.eof());
    QCOMPARE(rs.recordCount(), 0);
    for (const char* id : {"CUS100003", "cus100001", "CUS100005", "A1"}) {
        rs.addNew();
        rs.setField("custid", QLatin1String(id));
        rs.setField("LastName", "Name " + QLatin1String(id));
        rs.update();
    }
    QCOMPARE(rs.recordCount(), 4);
    // Table order is the order of adding.
    QCOMPARE(walk(rs, "CUSTID"), (QStringList{"CUS100003", "cus100001", "CUS100005", "A1"}));
    // Index order compares without regard to case.
    rs.setIndex("custid");
    QCOMPARE(walk(rs, "CustID"), (QStringList{"A1", "cus100001", "CUS100003", "CUS100005"}));
    // At-or-after: equal (any case), between, past the end.
    rs.seek("CUS100001");
    QCOMPARE(rs.field("CustID").toText(), "cus100001");
    rs.seek("cus100004");
    QCOMPARE(rs.field("CustID").toText(), "CUS100005");
    rs.moveNext();
    QVERIFY(rs.eof());
    rs.seek("CUS100006");
    QVERIFY(rs.eof());
    // The walk goes on from a seek in index order.
    rs.seek("B");
    rs.moveNext();
    QCOMPARE(rs.field("CustID").toText(), "CUS100003");
    // The equal seek finds only an equal key.
    rs.seek("CUS100002", Recordset::adSeekFirstEQ);
    QVERIFY(rs.eof());
    rs.seek("cus100005", Recordset::adSeekFirstEQ);
    QCOMPARE(rs.field("LastName").toText(), "Name CUS100005");
    rs.moveLast();
    QCOMPARE(rs.field("CustID").toText(), "CUS100005");
    // A page of rows read ahead is not stale after another recordset writes.
    Recordset other;
    other.open("Customers", ConnectionString, Recordset::adLockPessimistic);
    rs.moveFirst();
    other.setIndex("CUSTID");
    other.seek("CUS100003");
    other.setField("LastName", "Changed");
    other.update();
    rs.moveNext();
    rs.moveNext();
    QCOMPARE(rs.field("LastName").toText(), "Changed");
    VERIFY_UI(ui);
}

void StoreTest::recordsetRefusals_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<std::function<void(Recordset&)>>("action");
    using F = std::function<void(Recordset&)>;
    QTest::newRow("text longer than its column") << int(err::FieldTooSmall) << F([](Recordset& rs) {
        rs.addNew();
        rs.setField("FirstName", QString(51, 'x'));
    });
    QTest::newRow("duplicate key in another case") << int(err::DuplicateKey) << F([](Recordset& rs) {
        rs.addNew();
        rs.setField("CustID", "cus1");
        rs.update();
    });
    QTest::newRow("Null in a required column") << int(err::NullInRequired) << F([](Recordset& rs) {
        rs.addNew();
        rs.setField("LastName", "x");
        rs.update();
    });
    QTest::newRow("text into a number column")
        << int(err::TypeMismatch) << F([](Recordset& rs) { rs.setField("Discount", "ten"); });
    QTest::newRow("field with no current record") << int(err::NoCurrentRecord) << F([](Recordset& rs) {
        rs.setIndex("CUSTID");
        rs.seek("ZZZ");
        rs.field("CustID");
    });
    QTest::newRow("unknown field") << int(err::ItemNotFound) << F([](Recordset& rs) { rs.field("Nope"); });
    QTest::newRow("unknown index") << int(err::ItemNotFound) << F([](Recordset& rs) { rs.setIndex("Nope"); });
    QTest::newRow("number out of range") << int(err::Overflow)
                                         << F([](Recordset& rs) { rs.setField("Discount", 3e10); });
}

void StoreTest::recordsetRefusals()
{
    QFETCH(int, number);
    QFETCH(std::function<void(Recordset&)>, action);
    TestUi ui;
    frmMain w;
    start(ui, w);
    Recordset rs;
    rs.open("Customers", ConnectionString, Recordset::adLockPessimistic);
    rs.addNew();
    rs.setField("CustID", "CUS1");
    rs.update();
    QCOMPARE(failure([&] { action(rs); }), number);
    // Nothing refused reached the file.
    rs.cancelUpdate();
    QCOMPARE(rs.recordCount(), 1);
    rs.moveFirst();
    QCOMPARE(rs.field("CustID").toText(), "CUS1");
    QVERIFY(rs.field("FirstName").isNull());
}

void StoreTest::recordsetWritesAndDeletes()
{
    TestUi ui;
    frmMain w;
    start(ui, w);
    Recordset rs;
    rs.open("invoices", ConnectionString, Recordset::adLockPessimistic);
    for (int i = 1; i <= 5; ++i) {
        rs.addNew();
        rs.setField("InvNo", QStringLiteral("INV%1").arg(i));
        rs.setField("Date", QDate(2026, 11, i));
        rs.setField("Total", 10.005 * i);
        rs.setField("TaxPer", "17.5");
        rs.update();
    }
    // The values come back in their types: money exact, dates as dates, defaults in place.
    rs.setIndex("INVNO");
    rs.seek("INV3");
    QCOMPARE(rs.field("Total").toCurrency().ticks(), qint64(300150));
    QCOMPARE(rs.field("Date").toDate().date(), QDate(2026, 11, 3));
    QCOMPARE(rs.field("TaxPer").toDouble(), 17.5);
    QCOMPARE(rs.field("Balance").toCurrency(), Currency());
    QVERIFY(rs.field("Notes").isNull());
    // An empty text is stored in a required column; the key compares without regard to case.
    rs.addNew();
    rs.setField("InvNo", QString());
    rs.update();
    QCOMPARE(rs.recordCount(), 6);
    // Delete every other invoice while walking: the walk goes on past each deleted row.
    bool odd = true;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext(), odd = !odd)
        if (odd)
            rs.deleteRecord();
    QCOMPARE(walk(rs, "InvNo"), (QStringList{"INV1", "INV3", "INV5"}));
    QCOMPARE(failure([&] {
                 rs.seek("INV3");
                 rs.deleteRecord();
                 rs.field("InvNo");
             }),
             int(err::RecordDeleted));
    // A read-only recordset refuses changes.
    Recordset ro;
    ro.open("INVOICES", ConnectionString, Recordset::adLockReadOnly);
    QCOMPARE(failure([&] { ro.setField("Notes", "x"); }), int(err::NotSupported));
    QCOMPARE(failure([&] { ro.open("Nothing", ConnectionString, Recordset::adLockReadOnly); }), int(err::UnknownTable));
}

void StoreTest::shapeSources()
{
    TestUi ui;
    std::shared_ptr<ShapeRecordset> rs;
    // Without the shape connection nothing is opened and the reference is left alone.
    QVERIFY(!Open_shape("SHAPE {SELECT * FROM invoices} as details", rs));
    frmMain w;
    start(ui, w);
    Recordset inv;
    inv.open("Invoices", ConnectionString, Recordset::adLockPessimistic);
    Recordset lines;
    lines.open("InvoiceD", ConnectionString, Recordset::adLockPessimistic);
    const struct {
        const char* no;
        QDate date;
        double balance;
        int lines;
    } invoices[] = {{"INV1", {2026, 1, 1}, 10, 2}, {"INV2", {2026, 1, 31}, 0, 0}, {"inv3", {2026, 2, 1}, 5.5, 1}};
    for (const auto& i : invoices) {
        inv.addNew();
        inv.setField("InvNo", QLatin1String(i.no));
        inv.setField("Date", i.date);
        inv.setField("Balance", i.balance);
        inv.update();
        for (int l = 0; l < i.lines; ++l) {
            lines.addNew();
            lines.setField("InvNo", QString::fromLatin1(i.no).toUpper());
            lines.setField("Qty", l + 1);
            lines.update();
        }
    }
    // Date range with both ends included.
    QVERIFY(
        Open_shape("SHAPE {SELECT * FROM invoices where Date BETWEEN #01/01/2026# and #01/31/2026#} as details", rs));
    QCOMPARE(rs->recordCount(), 2);
    QCOMPARE(rs->name(), "details");
    QVERIFY(Open_shape("SHAPE {SELECT * FROM invoices where balance > 0} as details", rs));
    QStringList owing;
    for (rs->moveFirst(); !rs->eof(); rs->moveNext())
        owing << rs->field("INVNO").toText() + '=' + rs->field("Balance").toCurrency().toString();
    QCOMPARE(owing, (QStringList{"INV1=10", "inv3=5.5"}));
    // Child rows, related without regard to case.
    QVERIFY(Open_shape("SHAPE {SELECT * FROM invoices where Date BETWEEN #01/01/2026# and #12/31/2026#} as main "
                       "APPEND ({SELECT * FROM invoiceD} as Details RELATE 'invno' TO 'invno')  ",
                       rs));
    QList<int> childCounts;
    for (rs->moveFirst(); !rs->eof(); rs->moveNext())
        childCounts << rs->chapter("details")->recordCount();
    QCOMPARE(childCounts, (QList<int>{2, 0, 1}));
    QCOMPARE(rs->chapterName(), "Details");
    // The number put in as it stands: an apostrophe breaks the command, silently.
    auto kept = rs;
    QVERIFY(!Open_shape("SHAPE {SELECT * FROM invoices where invno = 'O'Brien'} ", rs));
    QVERIFY(!rs);
    // Past the count a 16-bit integer holds: false, with every row still there.
    {
        auto db = Database::open(ui.file("data.mdb"));
        db->exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32765) "
                 "INSERT INTO Parts (ID) SELECT 'P' || i FROM n");
    }
    QVERIFY(Open_shape("SHAPE {SELECT * FROM parts} as details", rs));
    QCOMPARE(rs->recordCount(), 32765);
    Database::open(ui.file("data.mdb"))->exec("INSERT INTO Parts (ID) VALUES ('Q1'), ('Q2'), ('Q3')");
    QVERIFY(!Open_shape("SHAPE {SELECT * FROM parts} as details", rs));
    QCOMPARE(rs->recordCount(), 32768);
    VERIFY_UI(ui);
}

void StoreTest::reportError()
{
    TestUi ui;
    const QString expected =
        "The following error has occurred.\r\n\r\nError Code \t: 5\r\n\r\n"
        "Error Description \t: Invalid procedure call or argument\r\n\r\nModule \t\t: frmCustomer\r\n\r\n"
        "Procedure \t: Find\r\n\r\nPlease log this error on the website noting the above details.";
    ui.expectBox("Error Message", expected, platform::vbOK, platform::vbExclamation);
    bool after = false;
    QVERIFY(endsProgram([&] {
        BusyTrap("frmCustomer", "Find", [] { throw VbError(err::InvalidArgument); });
        after = true;
    }));
    QVERIFY(!after);
    QCOMPARE(busyCount(), qint16(0));
    // The log is named by the time of the OK, in a folder made for it.
    QFile log(ui.file("Logs/20261122103015.log"));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(log.readAll()), expected + "\r\n");
    QCOMPARE(QDir(ui.file("Logs")).entryList(QDir::Files).size(), 1);
    // A long provider number shows its last six characters; a description given is kept.
    ui.expectBox("Error Message", errorMessageText(-2147467259, "frmMain", "Load", "Own text"));
    QVERIFY(endsProgram([] { Report_error(-2147467259, "frmMain", "Load", "Own text"); }));
    QVERIFY(ui.shownBoxes.last().contains("Error Code \t: 467259\r\n"));
    QVERIFY(ui.shownBoxes.last().contains("Error Description \t: Own text\r\n"));
    VERIFY_UI(ui);
}

VELK_TEST(StoreTest)
#include "tst_store.moc"
