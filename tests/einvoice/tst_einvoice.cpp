// E-invoicing data kept beside the tables every file has.

#include "TestUi.h"

#include "store/Database.h"
#include "store/EInvoiceData.h"

#include <QtTest>

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
    void sideTablesOnOpen_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::newRow("older file raised") << 0 << eInvoiceSchemaVersion;
        QTest::newRow("newer file kept") << eInvoiceSchemaVersion + 5 << eInvoiceSchemaVersion + 5;
    }
    void sideTablesOnOpen()
    {
        QFETCH(int, before);
        QFETCH(int, after);
        TestUi ui;
        const QString path = olderFile(ui, before);
        auto db = Database::open(path);
        QCOMPARE(db->texts("PRAGMA user_version").value(0).toInt(), after);
        QCOMPARE(db->texts("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"),
                 (QStringList{"Customers", "EInvoiceCustomers", "EInvoiceSettings"}));
        // The existing table keeps exactly its columns.
        QCOMPARE(db->texts("SELECT name FROM pragma_table_info('Customers')"), QStringList{"CustID"});
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
