// E-invoicing data kept beside the tables every file has.

#include "TestUi.h"

#include "einvoice/CommandLine.h"
#include "einvoice/EInvoice.h"
#include "shell/frmMain.h"
#include "store/Database.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QProcess>
#include <QtTest>

namespace
{

using namespace einvoice;

Invoice sample(int lines)
{
    Invoice inv;
    inv.number = "INV1001";
    inv.currency = "EUR";
    inv.issued = QDate(2026, 11, 22);
    inv.due = QDate(2026, 12, 22);
    inv.rateBasisPoints = 1900;
    inv.seller = {"Velk Test GmbH", "Hauptstr. 1", "Berlin",           "10115", "DE",
                  "DE123456789",    "HRB 1234",    "bill@velk.example"};
    inv.buyer = {"Kunde AG", "Ringstr. 5", "Hamburg", "20095", "DE", "", "", "ap@kunde.example"};
    inv.buyerReference = "04011000-12345-34";
    inv.iban = "DE89370400440532013000";
    for (int i = 0; i < lines; ++i)
        inv.lines.push_back({QString("Item %1").arg(i + 1), i + 1, 12345, (i + 1) * 123, true});
    return inv;
}

// Where every file the tests write is kept for a look afterwards.
QString keep(const QString& name, const QByteArray& bytes)
{
    const QString dir = QCoreApplication::applicationDirPath() + "/../einvoice-samples";
    QDir().mkpath(dir);
    QFile f(dir + "/" + name);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(f.fileName()));
    return f.fileName();
}

// The official checker's verdict; its output when it refuses.
QString validatorVerdict(const QString& file)
{
    const QString validator = QStringLiteral(VELK_SOURCE_DIR "/../shared/einvoice/validate");
    if (!QFileInfo(validator).isExecutable())
        return "validator missing: " + validator;
    QProcess p;
    p.start(validator, {file});
    if (!p.waitForFinished(120000))
        return "validator did not finish";
    return p.exitCode() == 0 ? QString() : QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError());
}

} // namespace

Q_DECLARE_METATYPE(einvoice::Invoice)

class EInvoiceTest : public QObject
{
    Q_OBJECT

    // A file with one of the existing tables, as an older program left it.
    static QString olderFile(TestUi& ui, int version)
    {
        const QString path = ui.file(QStringLiteral("velk.db"));
        auto db = Database::create(path);
        db->exec(QStringLiteral("CREATE TABLE Customers (CustID TEXT)"));
        db->exec(QStringLiteral("PRAGMA user_version=%1").arg(version));
        return path;
    }

private slots:
    void taxRoundsHalfUp_data()
    {
        QTest::addColumn<qint64>("base");
        QTest::addColumn<int>("rate");
        QTest::addColumn<qint64>("tax");
        QTest::newRow("exact half") << qint64(50) << 1000 << qint64(5);     // 0.50 at 10 %: 0.05
        QTest::newRow("half cent up") << qint64(250) << 1900 << qint64(48); // 2.50 at 19 %: 0.475
        QTest::newRow("below half") << qint64(1001) << 1900 << qint64(190); // 10.01: 1.9019
        QTest::newRow("negative half away") << qint64(-250) << 1900 << qint64(-48);
        QTest::newRow("rate zero") << qint64(99999) << 0 << qint64(0);
    }
    void taxRoundsHalfUp()
    {
        QFETCH(qint64, base);
        QFETCH(int, rate);
        QFETCH(qint64, tax);
        QCOMPARE(taxOf(base, rate), tax);
    }

    void conflictNamesRuleAndAmounts_data()
    {
        QTest::addColumn<qint64>("discount");
        QTest::addColumn<qint64>("printedTax");
        QTest::addColumn<QString>("conflict");
        // Two lines of 1.23 and 2.46 at 19 %: base 3.69, tax 0.7011 rounds to 0.70.
        QTest::newRow("same figures") << qint64(0) << qint64(70) << QString();
        QTest::newRow("line taxes summed")
            << qint64(0) << qint64(71)
            << "BR-CO-17: the tax on 3.69 at 19.00 %, rounded once, is 0.70; the invoice "
               "shows 0.71, the sum of its rounded line taxes.";
        QTest::newRow("discount not in tax")
            << qint64(69) << qint64(70)
            << "BR-S-08: the discount of 0.69 lowers the taxed base to 3.00, so the tax at 19.00 % is 0.57; the "
               "invoice shows tax of 0.70 on the amount before the discount.";
    }
    void conflictNamesRuleAndAmounts()
    {
        QFETCH(qint64, discount);
        QFETCH(qint64, printedTax);
        QFETCH(QString, conflict);
        Invoice inv = sample(2);
        inv.discountCents = discount;
        const Printed printed{369, discount, printedTax, 369 - discount + printedTax};
        QCOMPARE(conflictOf(inv, printed), conflict);
    }

    void ciiPassesValidator_data()
    {
        QTest::addColumn<Invoice>("invoice");
        QTest::newRow("one line") << sample(1);
        QTest::newRow("eight lines") << sample(8);
        Invoice mixed = sample(3);
        mixed.lines[1].taxed = false;
        mixed.untaxedCategory = "E";
        mixed.exemptionReason = "Exempt under local law";
        mixed.discountCents = 150;
        mixed.prepaidCents = 500;
        QTest::newRow("untaxed exempt, discount, part paid") << mixed;
        Invoice escaped = sample(1);
        escaped.buyer.name = QString::fromUtf8("Müller & Söhne <Œuvre> \"Straße\" ") + QString(40, QChar(0x00e9));
        escaped.lines[0].name = QString::fromUtf8("Ärger & <Ünfug> 'ß' €");
        QTest::newRow("escaping and non-ASCII") << escaped;
        Invoice credit = sample(2);
        credit.lines[0] = {"Returned item", -2, 12345, -2469, true};
        credit.lines[1] = {"Restocking fee", 1, 500, 5, true};
        QTest::newRow("credit-like negative quantity") << credit;
        Invoice zeroRate = sample(2);
        zeroRate.rateBasisPoints = 0;
        zeroRate.untaxedCategory = "Z";
        zeroRate.lines[1].taxed = false;
        zeroRate.discountCents = 100;
        QTest::newRow("rate zero") << zeroRate;
        Invoice paid = sample(1);
        paid.prepaidCents = totalsOf(paid).grandCents;
        QTest::newRow("paid") << paid;
    }
    void ciiPassesValidator()
    {
        QFETCH(Invoice, invoice);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const QString file =
            keep("cii-" + tag.toLower().replace(QRegularExpression("[^a-z0-9]+"), "-") + ".xml", toCii(invoice));
        QCOMPARE(validatorVerdict(file), QString());
    }

    // A saved invoice in a data file, written out by the command line form.
    void commandLineWritesSavedInvoice_data()
    {
        QTest::addColumn<qint64>("vat");
        QTest::addColumn<int>("status");
        QTest::newRow("printed figures hold") << qint64(7000) << 0;      // 0.70 on 3.69 at 19 %
        QTest::newRow("summed line taxes refused") << qint64(7100) << 1; // no file then
    }
    void commandLineWritesSavedInvoice()
    {
        QFETCH(qint64, vat);
        QFETCH(int, status);
        TestUi ui;
        const QString path = ui.file("data.mdb");
        frmMain w;
        w.MDIForm_Load(); // builds an empty data file with its settings row
        const QString cs = QStringLiteral("Data Source='%1';").arg(path);
        auto add = [&](const char* table, const QList<QPair<QString, Value>>& fields) {
            Recordset rs;
            rs.open(table, cs, Recordset::adLockPessimistic);
            rs.addNew();
            for (const auto& f : fields)
                rs.setField(f.first, f.second);
            rs.update();
        };
        {
            Recordset system;
            system.open("System", cs, Recordset::adLockPessimistic);
            system.addNew();
            // A new file has no settings row until the setup wizard writes one.
            for (const ColumnDef& c : schemaTable("System")->columns)
                if (!c.nullable && c.type == ColumnType::Text)
                    system.setField(c.name, QString());
            system.setField("BusinessName", "Velk Test GmbH");
            system.setField("Address", "Hauptstr. 1\nBerlin");
            system.update();
        }
        add("Customers", {{"CustID", "C1"}, {"Address", "Ringstr. 5"}, {"City", "Hamburg"}, {"Postcode", "20095"}});
        add("Invoices", {{"InvNo", "INV7"},
                         {"Date", QDate(2026, 11, 20)},
                         {"CustNo", "C1"},
                         {"CustomerName", QString::fromUtf8("Kunde & Söhne")},
                         {"Subtotal", Currency::fromTicks(36900)},
                         {"Vat", Currency::fromTicks(vat)},
                         {"Total", Currency::fromTicks(36900 + vat)},
                         {"TaxPer", 19.0}});
        add("InvoiceD", {{"InvNo", "INV7"},
                         {"Qty", 1},
                         {"Description", "Bolt"},
                         {"Amount", Currency::fromTicks(12300)},
                         {"Total", Currency::fromTicks(12300)},
                         {"Taxable", 1}});
        add("InvoiceD", {{"InvNo", "INV7"},
                         {"Qty", 0},
                         {"Description", "Nut"},
                         {"Amount", Currency::fromTicks(24600)},
                         {"Total", Currency::fromTicks(24600)},
                         {"Taxable", 1}});
        {
            auto db = Database::open(path);
            for (const auto& [name, value] : {std::pair{"Country", "DE"},
                                              {"VatId", "DE123456789"},
                                              {"Currency", "EUR"},
                                              {"IBAN", "DE89370400440532013000"},
                                              {"PaymentTerms", "30 days net"}})
                setEInvoiceSetting(*db, name, value);
            setEInvoiceCustomerValue(*db, "C1", "Country", "DE");
        }
        const QString out = ui.file("INV7.xml");
        QCOMPARE(
            einvoice::runEInvoiceCommand({"velk-invoice", "--einvoice", "INV7", "--format", "cii", "--out", out}, cs),
            status);
        QCOMPARE(QFileInfo::exists(out), status == 0);
        if (status == 0) {
            const QByteArray xml = fileBytes(out);
            QVERIFY(xml.contains("<ram:BilledQuantity unitCode=\"C62\">1</ram:BilledQuantity>"));
            QVERIFY(xml.contains("<udt:DateTimeString format=\"102\">20261120</udt:DateTimeString>"));
            QVERIFY(xml.contains("Kunde &amp; Söhne"));
            QCOMPARE(validatorVerdict(keep("cli-INV7.xml", xml)), QString());
        }
    }

    // A file from before the side tables gains them on opening, in one step, and keeps
    // its tables as they were; one of a newer version is refused untouched.
    void sideTablesOnOpen_data()
    {
        QTest::addColumn<int>("before");
        QTest::newRow("version never recorded") << 0;
        QTest::newRow("version 1") << 1;
        QTest::newRow("current") << SchemaVersion;
    }
    void sideTablesOnOpen()
    {
        QFETCH(int, before);
        TestUi ui;
        const QString path = olderFile(ui, before);
        auto db = Database::open(path);
        QCOMPARE(db->schemaVersion(), SchemaVersion);
        const QStringList tables = db->texts("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name");
        QCOMPARE(tables.contains("EInvoiceSettings"), before < SchemaVersion);
        QCOMPARE(tables.contains("EInvoiceCustomers"), before < SchemaVersion);
        QCOMPARE(db->texts("SELECT name FROM pragma_table_info('Customers')"), QStringList{"CustID"});
    }
    void newerFileRefused()
    {
        TestUi ui;
        const QString path = olderFile(ui, SchemaVersion + 1);
        const QByteArray before = fileBytes(path);
        try {
            Database::open(path);
            QFAIL("a newer file was opened");
        } catch (const VbError& e) {
            QCOMPARE(e.number(), int(err::NewerDataFile));
        }
        QCOMPARE(fileBytes(path), before);
    }

    void valuesSurviveReopen()
    {
        TestUi ui;
        const QString path = olderFile(ui, 0);
        {
            auto db = Database::open(path);
            QCOMPARE(eInvoiceSetting(*db, "IBAN"), QString());
            setEInvoiceSetting(*db, "IBAN", "DE02120300000000202051");
            setEInvoiceSetting(*db, "IBAN", "DE89370400440532013000"); // replaced, not added
            setEInvoiceCustomerValue(*db, "C1", "BuyerReference", QString::fromUtf8("04011000-12345-34 Ärztekammer"));
            setEInvoiceCustomerValue(*db, "C2", "BuyerReference", "X");
        }
        Database::closeAll();
        auto db = Database::open(path);
        QCOMPARE(eInvoiceSetting(*db, "IBAN"), QString("DE89370400440532013000"));
        QCOMPARE(db->texts("SELECT count(*) FROM EInvoiceSettings"), QStringList{"1"});
        QCOMPARE(eInvoiceCustomerValue(*db, "C1", "BuyerReference"),
                 QString::fromUtf8("04011000-12345-34 Ärztekammer"));
        QCOMPARE(eInvoiceCustomerValue(*db, "C2", "BuyerReference"), QString("X"));
        QCOMPARE(eInvoiceCustomerValue(*db, "C3", "BuyerReference"), QString());
    }
};

VELK_TEST(EInvoiceTest)
#include "tst_einvoice.moc"
