// The data file and its recordsets, report sources, the one way a failure ends, the
// shared routines with money and numbers, and the rules every list window shares.

#include "TestUi.h"

#include "customers/frmCustomer.h"
#include "items/frm_Parts.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace
{

// The number of the error a call ends with, or 0.
int failure(const std::function<void()>& f)
{
    try {
        f();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

QStringList walk(Recordset& rs, const char* column)
{
    QStringList out;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        out << rs.field(column).toText();
    return out;
}

} // namespace

// One step on an open recordset, as a row of a table of cases.
using RecordsetStep = std::function<void(Recordset&)>;
Q_DECLARE_METATYPE(RecordsetStep)

class StoreTest : public QObject
{
    Q_OBJECT
private slots:
    void schemaAsBuilt()
    {
        TestUi ui;
        frmMain w;
        w.MDIForm_Load(); // builds an empty data file
        const auto db = Database::openToRead(ui.file("data.mdb"));
        // Each table by its column count, then a sample of each kind of column: type, required, default.
        QCOMPARE(db->texts("SELECT m.name || ' | ' || count(*) FROM sqlite_master m, pragma_table_info(m.name) "
                           "WHERE m.type = 'table' GROUP BY m.name ORDER BY m.rowid"),
                 (QStringList{"Customers | 20", "InvoiceD | 7", "Invoices | 23", "Letters | 24", "Parts | 5",
                              "System | 64", "EInvoiceSettings | 2", "EInvoiceCustomers | 3"}));
        for (const char* spot :
             {"System.Address=VARCHAR(151) | 0 | NULL", "System.TaxAmount=DOUBLE | 1 | 0",
              "System.Text3Name=VARCHAR(50) | 1 | NULL", "System.Debtorstart=VARCHAR(50) | 0 | NULL",
              "Letters.Address=VARCHAR(200) | 0 | NULL", "Invoices.DiscountPercentage=DOUBLE | 0 | 0",
              "Invoices.Notes=VARCHAR(150) | 0 | NULL", "Customers.Date=DATETIME | 0 | NULL",
              "InvoiceD.Amount=CURRENCY | 0 | 0", "Parts.Desc=VARCHAR(200) | 0 | NULL"}) {
            const QStringList parts = QString::fromLatin1(spot).split(QRegularExpression("[.=]"));
            const QStringList found =
                db->texts(QString("SELECT type || ' | ' || \"notnull\" || ' | ' || ifnull(dflt_value, 'NULL') "
                                  "FROM pragma_table_info('%1') WHERE name = '%2'")
                              .arg(parts[0], parts[1]));
            QCOMPARE(parts[0] + '.' + parts[1] + '=' + found.join(" / "), QString::fromLatin1(spot));
        }
        // Named indexes: their column and whether unique. Invoices' PrimaryKey is no key of its own.
        QCOMPARE(
            db->texts("SELECT l.name || ' | ' || i.name || ' | ' || l.\"unique\" FROM sqlite_master m, "
                      "pragma_index_list(m.name) l, pragma_index_info(l.name) i WHERE l.origin = 'c' "
                      "ORDER BY m.rowid, l.seq DESC"),
            (QStringList{"Customers.CustID | CustID | 1", "Customers.PrimaryKey | CustID | 1",
                         "InvoiceD.InvNo | InvNo | 0", "InvoiceD.PartID | PartID | 0", "Invoices.InvNo | InvNo | 1",
                         "Invoices.PrimaryKey | InvNo | 1", "Invoices.CustNo | CustNo | 0", "Letters.Paid | Paid | 0",
                         "Parts.PrimaryKey | ID | 1", "Parts.ID | ID | 0"}));
        QCOMPARE(db->texts("SELECT m.name || ' | ' || c.name FROM sqlite_master m, pragma_table_info(m.name) c "
                           "WHERE c.pk > 0"),
                 (QStringList{"Customers | CustID", "Parts | ID"}));
        QCOMPARE(db->texts("PRAGMA journal_mode"), QStringList{"delete"});
        VERIFY_UI(ui);
    }

    void recordsetWalksAndSeeks()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        Recordset rs;
        rs.open("customers", ConnectionString, Recordset::adLockPessimistic);
        QVERIFY(rs.eof());
        for (const char* id : {"CUS100003", "cus100001", "CUS100005", "A1"}) {
            rs.addNew();
            rs.setField("custid", QLatin1String(id));
            rs.setField("LastName", "Name " + QLatin1String(id));
            rs.update();
        }
        QCOMPARE(rs.recordCount(), 4);
        QCOMPARE(walk(rs, "CUSTID"), (QStringList{"CUS100003", "cus100001", "CUS100005", "A1"})); // order of adding
        rs.setIndex("custid");
        QCOMPARE(walk(rs, "CustID"), (QStringList{"A1", "cus100001", "CUS100003", "CUS100005"})); // without case
        auto seek = [&](const char* key, int option = Recordset::adSeekAfterEQ) {
            rs.seek(QLatin1String(key), option);
            return rs.eof() ? QString() : rs.field("CustID").toText();
        };
        // At-or-after: equal (any case), between, past the end; then an equal key only.
        QCOMPARE(
            (QStringList{seek("CUS100001"), seek("cus100004"), seek("CUS100006"),
                         seek("CUS100002", Recordset::adSeekFirstEQ), seek("cus100005", Recordset::adSeekFirstEQ)}),
            (QStringList{"cus100001", "CUS100005", "", "", "CUS100005"}));
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(seek("B"), "cus100001");
        rs.moveNext(); // the walk goes on from a seek in index order
        QCOMPARE(rs.field("CustID").toText(), "CUS100003");
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

    void recordsetRefusals_data()
    {
        QTest::addColumn<RecordsetStep>("step");
        QTest::addColumn<int>("number");
        const auto add = [](const char* column, const Value& value) {
            return RecordsetStep([=](Recordset& rs) {
                rs.addNew();
                rs.setField(column, value);
                rs.update();
            });
        };
        QTest::newRow("text longer than its column") << add("FirstName", QString(51, 'x')) << int(err::FieldTooSmall);
        QTest::newRow("duplicate key in another case") << add("CustID", "cus1") << int(err::DuplicateKey);
        QTest::newRow("Null in a required column") << add("LastName", "x") << int(err::NullInRequired);
        QTest::newRow("text into a number column")
            << RecordsetStep([](Recordset& rs) { rs.setField("Discount", "ten"); }) << int(err::TypeMismatch);
        QTest::newRow("number out of range")
            << RecordsetStep([](Recordset& rs) { rs.setField("Discount", 3e10); }) << int(err::Overflow);
        QTest::newRow("unknown field") << RecordsetStep([](Recordset& rs) { rs.field("Nope"); })
                                       << int(err::ItemNotFound);
        QTest::newRow("unknown index") << RecordsetStep([](Recordset& rs) { rs.setIndex("Nope"); })
                                       << int(err::ItemNotFound);
        QTest::newRow("sought past the end") << RecordsetStep([](Recordset& rs) {
            rs.setIndex("CUSTID");
            rs.seek("ZZZ");
            rs.field("CustID");
        }) << int(err::NoCurrentRecord);
    }

    void recordsetRefusals()
    {
        QFETCH(RecordsetStep, step);
        QFETCH(int, number);
        TestUi ui;
        auto main = startProgram(ui, {});
        addRow("Customers", {{"CustID", "CUS1"}});
        Recordset rs;
        rs.open("Customers", ConnectionString, Recordset::adLockPessimistic);
        QCOMPARE(failure([&] { step(rs); }), number);
        // Nothing refused reached the file.
        rs.cancelUpdate();
        rs.moveFirst();
        QCOMPARE(rs.recordCount(), 1);
        QCOMPARE(rs.field("CustID").toText(), "CUS1");
        QVERIFY(rs.field("FirstName").isNull());
        VERIFY_UI(ui);
    }

    void recordsetWritesAndDeletes()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
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
        rs.addNew(); // an empty text is stored in a required column
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
        Recordset ro;
        ro.open("INVOICES", ConnectionString, Recordset::adLockReadOnly);
        QCOMPARE(failure([&] { ro.setField("Notes", "x"); }), int(err::NotSupported));
        QCOMPARE(failure([&] { ro.open("Nothing", ConnectionString, Recordset::adLockReadOnly); }),
                 int(err::UnknownTable));
    }

    void shapeSources()
    {
        TestUi ui;
        std::shared_ptr<ShapeRecordset> rs;
        // Without the shape connection nothing is opened.
        QVERIFY(!Open_shape("SHAPE {SELECT * FROM invoices} as details", rs));
        auto main = startProgram(ui, {});
        for (const auto& [no, date, balance, lines] : {std::tuple{"INV1", QDate(2026, 1, 1), 10.0, 2},
                                                       {"INV2", QDate(2026, 1, 31), 0.0, 0},
                                                       {"inv3", QDate(2026, 2, 1), 5.5, 1}}) {
            addRow("Invoices", {{"InvNo", QLatin1String(no)}, {"Date", date}, {"Balance", balance}});
            for (int l = 0; l < lines; ++l)
                addRow("InvoiceD", {{"InvNo", QString::fromLatin1(no).toUpper()}, {"Qty", l + 1}});
        }
        // Date range with both ends included.
        QVERIFY(Open_shape("SHAPE {SELECT * FROM invoices where Date BETWEEN #01/01/2026# and #01/31/2026#} as details",
                           rs));
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
        // Narrowed to the fields a reader binds: those alone, the relating keys kept, values as before.
        QVERIFY(Open_shape("SHAPE {SELECT * FROM invoices} as main "
                           "APPEND ({SELECT * FROM invoiceD} as Details RELATE 'invno' TO 'invno')",
                           rs, {"Balance", "qty", "Nothing", "BALANCE"}));
        QCOMPARE(rs->fieldCount(), 2);
        QStringList narrowed;
        for (rs->moveFirst(); !rs->eof(); rs->moveNext()) {
            auto lines = rs->chapter("Details");
            QCOMPARE(lines->fieldCount(), 2);
            QString row = rs->field("invno").toText() + '=' + rs->field("Balance").toCurrency().toString();
            for (lines->moveFirst(); !lines->eof(); lines->moveNext())
                row += ' ' + lines->field("Qty").toText();
            narrowed << row;
        }
        QCOMPARE(narrowed, (QStringList{"INV1=10 1 2", "INV2=0", "inv3=5.5 1"}));
        QCOMPARE(narrowedSelect("SELECT InvNo FROM invoices", {"Balance"}), "SELECT InvNo FROM invoices");
        QCOMPARE(narrowedSelect("SELECT * FROM invoices where x", {"Nothing"}), "SELECT * FROM invoices where x");
        // The number put in as it stands: an apostrophe breaks the command, silently.
        QVERIFY(!Open_shape("SHAPE {SELECT * FROM invoices where invno = 'O'Brien'} ", rs));
        QVERIFY(!rs);
        // Past the count a 16-bit integer holds: false, with every row still there.
        Database::open(ui.file("data.mdb"))
            ->exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32765) "
                   "INSERT INTO Parts (ID) SELECT 'P' || i FROM n");
        QVERIFY(Open_shape("SHAPE {SELECT * FROM parts} as details", rs));
        QCOMPARE(rs->recordCount(), 32765);
        Database::open(ui.file("data.mdb"))->exec("INSERT INTO Parts (ID) VALUES ('Q1'), ('Q2'), ('Q3')");
        QVERIFY(!Open_shape("SHAPE {SELECT * FROM parts} as details", rs));
        QCOMPARE(rs->recordCount(), 32768);
        VERIFY_UI(ui);
    }

    void busyAndReportError()
    {
        TestUi ui;
        QList<int> pointers; // busy nests: only the outermost pair shows, and an off at zero stays at zero
        platform::hooks().setPointer = [&](int p) { pointers << p; };
        for (bool on : {false, true, true, false, false})
            on ? Busy_on() : Busy_off();
        QCOMPARE(pointers, (QList<int>{platform::vbDefault, platform::vbHourglass, platform::vbDefault}));
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
        QCOMPARE(fileBytes(ui.file("Logs/20261122103015.log")), (expected + "\r\n").toUtf8());
        QCOMPARE(QDir(ui.file("Logs")).entryList(QDir::Files).size(), 1);
        // A long provider number shows its last six characters; a description given is kept.
        ui.expectBox("Error Message", errorMessageText(-2147467259, "frmMain", "Load", "Own text"));
        QVERIFY(endsProgram([] { Report_error(-2147467259, "frmMain", "Load", "Own text"); }));
        QVERIFY(ui.shownBoxes.last().contains("Error Code \t: 467259\r\n"));
        QVERIFY(ui.shownBoxes.last().contains("Error Description \t: Own text\r\n"));
        VERIFY_UI(ui);
    }

    void moneyAndNumbers()
    {
        QStringList shown; // half away from zero on 15 digits; a wider value silently loses its left end, sign and all
        for (double value : {-1.5, 1.005, -2.675, 9.999, -0.001, 12345678.0, -1234567.89, -123456.78})
            shown << Format_amount(value, 7, 2);
        QCOMPARE(shown, (QStringList{"     -1.50", "      1.01", "     -2.68", "     10.00", "      0.00", "2345678.00",
                                     "1234567.89", "-123456.78"}));
        QCOMPARE(
            (QStringList{Format_amount(1234567.891, 10, 2), Format_amount(2.5, 3, 0),
                         Format_amount(Currency::fromTicks(10050), 7, 2), Format_amount(Currency::fromTicks(49), 7, 2),
                         Format_amount(Currency::fromText("922337203685477.5807"), 7, 2)}),
            (QStringList{"   1234567.89", "  3", "      1.01", "      0.00", "3685477.58"}));
        // Money takes a whole-number route of its own: it must print as the same double does.
        for (qint64 ticks : {-15000, -10050, -49, -5, 0, 5, 49, 50, 12345, 99995, 123456789})
            for (int places = 0; places <= 4; ++places)
                QCOMPARE(Format_amount(Currency::fromTicks(ticks), 7, places),
                         Format_amount(ticks / 10000.0, 7, places));
        QCOMPARE(dateText(QDate(987, 3, 4)) + ' ' + dateText(QDate(2026, 12, 31)), "04/03/0987 31/12/2026");
        // Zero_pad wraps a full width as a counter does.
        QCOMPARE((QStringList{Zero_pad(42, 6), Zero_pad(1234567, 6), Zero_pad(" 10000 ", 4),
                              Right_align("-2147467259", 6), Right_align(QString(), 2)}),
                 (QStringList{"000042", "234567", "0000", "467259", "  "}));
        const QString line = "\"x,y\",, b"; // fields of a line: no quoting, no trimming, empty beyond the last
        QCOMPARE((QStringList{Csv_field(line, 1), Csv_field(line, 2), Csv_field(line, 3), Csv_field(line, 4),
                              Csv_field(line, 5), Csv_field(QString(), 1)}),
                 (QStringList{"\"x", "y\"", "", " b", "", ""}));
        QList<qint64> ticks; // four decimals from a double, half to even
        for (double value : {17.123456, 0.00025, 0.00035, -0.00025, 1234567890.1234})
            ticks << Currency::fromDouble(value).ticks();
        QCOMPARE(ticks, (QList<qint64>{171235, 2, 4, -2, 12345678901234LL}));
        QCOMPARE(failure([] { Currency::fromDouble(922337203685478.0); }), int(err::Overflow));
        QCOMPARE(failure([] { Currency::fromDouble(std::nan("")); }), int(err::Overflow));
        const Currency top = Currency::fromText("922337203685477.5807");
        QCOMPARE(top.ticks(), std::numeric_limits<qint64>::max());
        QCOMPARE(failure([&] { top + Currency::fromTicks(1); }), int(err::Overflow));
        QCOMPARE(Currency::fromText("-922337203685477.5808").toString(), "-922337203685477.5808");
        // From text an exact half goes to even too.
        QCOMPARE((QList<qint64>{Currency::fromText(" 1.00005 ").ticks(), Currency::fromText("1.00015").ticks(),
                                Currency::fromText("1.000051").ticks(), Currency::fromText("1e3").ticks(),
                                Null_to_zero(Value()).ticks(), Null_to_zero(Value(17.123456)).ticks(),
                                Null_to_zero(Value("1")).ticks()}),
                 (QList<qint64>{10000, 10002, 10001, 10000000, 0, 171235, 10000}));
        for (const auto& bad : std::initializer_list<std::function<void()>>{[] { Currency::fromText("."); },
                                                                            [] { Currency::fromText("12abc"); },
                                                                            [] { Null_to_zero(Value("yes")); }})
            QCOMPARE(failure(bad), int(err::TypeMismatch));
        QCOMPARE(Currency::fromTicks(-2500).toString() + ' ' + Currency().toString(), "-0.25 0");
        QList<double> read; // the lenient reading takes what leads, skipping blanks
        for (const char* text : {"", "abc", "12.5abc", " 1 2 . 5", "     -1.50", ".", "1.2.3", "1e3", "1,234"})
            read << Val(QLatin1String(text));
        QCOMPARE(read, (QList<double>{0, 0, 12.5, 12.5, -1.5, 0, 1.2, 1000, 1}));
        QCOMPARE((QList<double>{strictNumber("  17.5 "), strictNumber("-.5")}), (QList<double>{17.5, -0.5}));
        for (const char* bad : {"", ".", "1.2.3", "12abc", "1 2", "-"})
            QVERIFY2(failure([&] { strictNumber(QLatin1String(bad)); }) == err::TypeMismatch, bad);
        QCOMPARE((QStringList{numberText(0.1 + 0.2), numberText(1e20), Null_to_text(Value()),
                              Null_to_text(Value(QDate(2026, 3, 4)))}),
                 (QStringList{"0.3", "1E+20", "", "04/03/2026"}));
        QCOMPARE((QList<qint16>{toInt16(2.5), toInt16(3.5)}), (QList<qint16>{2, 4})); // half to even
        QCOMPARE(failure([] { Value().toInt16(); }), int(err::InvalidUseOfNull));
    }

    // A list far longer than the rows it reads at a time: the rows, the sort and the search
    // are those of a list held whole.
    void longList()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        // Each last name three times, in an order of their own; a few beyond ASCII.
        Database::open(dataSourceOf(ConnectionString))
            ->exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                   "INSERT INTO Customers (CustID, LastName, FirstName, Address, Address2, City, address4, Postcode) "
                   "SELECT printf('C%04d', i), printf('L%d', i * 7919 % 1000), 'F', '', '', '', '', '' FROM n");
        for (const char* name : {"émile", "Emile", "zoë", "Zoe", "straße", "STRASSE", "Åsa", "l5"})
            addRow("Customers", {{"CustID", QString::fromUtf8(name)},
                                 {"LastName", QString::fromUtf8(name)},
                                 {"FirstName", "F"},
                                 {"Address", ""},
                                 {"Address2", ""},
                                 {"City", ""},
                                 {"address4", ""},
                                 {"Postcode", ""}});
        frmCustomer w;
        auto* list = child<ListView>(w, "Cust_lst");
        const auto ids = [&] { return listRows(list, "|").replaceInStrings(QRegularExpression("\\|.*"), ""); };
        QCOMPARE(ids(), columnValues("Customers", "CustID"));
        // Sorted by name: as a stable sort of the shown rows by the lists' comparison.
        QStringList expected = listRows(list, "|");
        std::stable_sort(expected.begin(), expected.end(), [](const QString& a, const QString& b) {
            return compareListText(a.section('|', 1, 1), b.section('|', 1, 1)) < 0;
        });
        expected.replaceInStrings(QRegularExpression("\\|.*"), "");
        w.rules()->columnClick(1);
        w.rules()->columnClick(1);
        QCOMPARE(ids(), expected);
        // Found far past the rows read near the start, then again from the top.
        for (const char* id : {"C2999", "C0002", "C2999"}) {
            w.rules()->Find(QLatin1String(id));
            QCOMPARE(list->text(list->selectedRow(), 0), QLatin1String(id));
        }
        QCOMPARE(w.rules()->SearchPos, expected.indexOf("C2999") + 2);
        VERIFY_UI(ui);
    }

    void listRules()
    {
        TestUi ui;
        ListView list({"", ""}, nullptr), names({"", ""}, nullptr), parts({"", ""}, nullptr);
        ListRules rules(&list, {}, "frmInvoice");
        for (double amount : {100.0, 9.0, -5.0})
            rules.addRow({Format_amount(amount, 7, 2), QString()});
        rules.columnClick(0);
        // By text: leading blanks order positive amounts; a minus sorts after a blank.
        QCOMPARE(listRows(&list, ""), (QStringList{"    100.00", "     -5.00", "      9.00"}));
        ListRules nameRules(&names, {}, "frmCustomer");
        for (const char* id : {"M", "B", "X", "A"})
            nameRules.addRow({QLatin1String(id), QString()});
        QCOMPARE(listRows(&names, ""), (QStringList{"M", "B", "X", "A"})); // never sorted: last
        names.selectRow(3);
        nameRules.removeSelected();
        QCOMPARE(names.text(names.currentIndex().row(), 0), "X");
        // A whole reload of a sorted list: the order of one row at a time, equal keys in the order read.
        nameRules.columnClick(0); // descending
        nameRules.reload([&] {
            for (const char* row : {"b 1", "M 2", "B 3", "x 4", "b 5"})
                nameRules.addRow(QString::fromLatin1(row).split(' '));
        });
        QCOMPARE(listRows(&names), (QStringList{"x | 4", "M | 2", "b | 1", "b | 5", "B | 3"}));
        // Find moves on from the current row.
        QLabel found;
        ListConfig config;
        config.foundLabel = &found;
        ListRules partRules(&parts, config, "frm_Parts");
        for (const char* id : {"P1", "P2"})
            partRules.addRow({QLatin1String(id), QString()});
        auto find = [&](const QString& text) {
            partRules.Find(text);
            return parts.currentIndex().isValid() ? parts.text(parts.currentIndex().row(), 0) : QString();
        };
        QCOMPARE(find("x"), QString());
        QCOMPARE(found.text(), "Not Found");
        QCOMPARE(find(QString()), "P1"); // an empty text is in every row
        QCOMPARE(find(QString()), "P2");
        QCOMPARE(found.text(), QString());
        // Tabbing back into the search box: the customer list selects its text, the item list not.
        auto main = startProgram(ui, {});
        frmCustomer customers;
        frm_Parts items;
        for (QDialog* w : {static_cast<QDialog*>(&customers), static_cast<QDialog*>(&items)}) {
            showUp(*w);
            auto* search = child<QLineEdit>(*w, w == &items ? "search_txt" : "Search_txt");
            search->setText("bolt");
            child<QWidget>(*w, "search_cmd")->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(QApplication::focusWidget(), search);
            QCoreApplication::processEvents();
            QCOMPARE(search->selectedText(), w == &items ? "" : "bolt");
        }
        VERIFY_UI(ui);
    }
};

VELK_TEST(StoreTest)
#include "tst_store.moc"
