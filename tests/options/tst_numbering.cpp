// Document numbers: the number a new record is offered, the next number after a save,
// and the check for a number in use.

#include "TestUi.h"

#include "options/Numbering.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

using namespace platform;

namespace
{

struct SeriesFields {
    QString table, key, nextColumn;
    QString *prefix, *next;
    qint16* freeForm;
};

SeriesFields fields(Series s)
{
    const SeriesFields all[] = {
        {"Invoices", "InvNo", "Invstart", &settings.InvPrefix, &settings.Invstart, &settings.FreeformInv},
        {"Customers", "CustID", "CustStart", &settings.CustPrefix, &settings.CustStart, &settings.freeformCus},
        {"Parts", "ID", "PartStart", &settings.PartPrefix, &settings.PartStart, &settings.freeformPart}};
    return all[int(s)];
}

// A data file whose settings row and record hold the series as given, and the numbers taken.
void prepare(Series s, const QString& prefix, const QString& next, bool freeForm, const QStringList& taken)
{
    const SeriesFields f = fields(s);
    frmMain w;
    w.MDIForm_Load();
    addSettingsRow({{f.nextColumn, next}});
    *f.prefix = prefix;
    *f.next = next;
    *f.freeForm = freeForm ? 1 : 0;
    for (const QString& id : taken)
        addRow(f.table, {{f.key, id}});
}

} // namespace

class NumberingTest : public QObject
{
    Q_OBJECT
private slots:
    // Invoices take prefix and next number as they are; customers and items skip taken ones.
    void proposal_data()
    {
        QTest::addColumn<int>("series");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("next");
        QTest::addColumn<bool>("freeForm");
        QTest::addColumn<QStringList>("taken");
        QTest::addColumn<QString>("number"); // "(open)": an empty box open for typing
        QTest::newRow("invoice: no look-up") << int(Series::Invoice) << "INV"
                                             << "100001" << false << QStringList{"INV100001"} << "INV100001";
        QTest::newRow("invoice: parts trimmed") << int(Series::Invoice) << " INV "
                                                << "0042 " << false << QStringList{} << "INV0042";
        QTest::newRow("invoice: free form") << int(Series::Invoice) << "INV"
                                            << "100001" << true << QStringList{} << "(open)";
        QTest::newRow("customer: skipped")
            << int(Series::Customer) << "CUS"
            << "1001" << false << QStringList{"CUS1001", "CUS1002", "CUS1004"} << "CUS1003";
        QTest::newRow("customer: upper-cased") << int(Series::Customer) << "cus"
                                               << "100001" << false << QStringList{"CUS100001"} << "cus100002";
        QTest::newRow("customer: width kept") << int(Series::Customer) << "C"
                                              << "0099" << false << QStringList{"C0099"} << "C0100";
        QTest::newRow("customer: blank prefix") << int(Series::Customer) << ""
                                                << "1000" << false << QStringList{"1000"} << "1001";
        QTest::newRow("customer: free form") << int(Series::Customer) << "CUS"
                                             << "100001" << true << QStringList{"CUS100001"} << "(open)";
        QTest::newRow("item: exact match skipped") << int(Series::Item) << "PRT"
                                                   << "100001" << false << QStringList{"PRT100001"} << "PRT100002";
        QTest::newRow("item: other case not skipped") << int(Series::Item) << "PRT"
                                                      << "100001" << false << QStringList{"prt100001"} << "PRT100001";
        QTest::newRow("item: free form") << int(Series::Item) << "PRT"
                                         << "100001" << true << QStringList{} << "(open)";
    }

    void proposal()
    {
        QFETCH(int, series);
        QFETCH(QString, prefix);
        QFETCH(QString, next);
        QFETCH(bool, freeForm);
        QFETCH(QStringList, taken);
        QFETCH(QString, number);
        TestUi ui;
        const Series s = Series(series);
        prepare(s, prefix, next, freeForm, taken);
        const Proposal p = Propose_number(s);
        QCOMPARE((p.enabled ? "(open)" : "") + p.number, number);
        QCOMPARE(*fields(s).next, next); // proposing never moves the series
        VERIFY_UI(ui);
    }

    // The digits of the saved number plus one, at the width of the current next number.
    void advance_data()
    {
        QTest::addColumn<int>("series");
        QTest::addColumn<QString>("next");
        QTest::addColumn<QString>("saved");
        QTest::addColumn<QString>("advanced");
        QTest::newRow("invoice") << int(Series::Invoice) << "100001"
                                 << "INV100001"
                                 << "100002";
        QTest::newRow("wraps at the width") << int(Series::Invoice) << "9999"
                                            << "INV9999"
                                            << "0000";
        QTest::newRow("leading zeros kept") << int(Series::Invoice) << "0042"
                                            << "INV0042"
                                            << "0043";
        QTest::newRow("short number edited by hand") << int(Series::Invoice) << "99"
                                                     << "INV99"
                                                     << "00";
        QTest::newRow("prefix digits cut off") << int(Series::Customer) << "100001"
                                               << "A1100001"
                                               << "100002";
        QTest::newRow("past a skipped proposal") << int(Series::Customer) << "100001"
                                                 << "CUS100003"
                                                 << "100004";
        QTest::newRow("blank prefix") << int(Series::Item) << "1000"
                                      << "1000"
                                      << "1001";
        QTest::newRow("wider saved number") << int(Series::Item) << "0001"
                                            << "PRT123456"
                                            << "3457";
    }

    void advance()
    {
        QFETCH(int, series);
        QFETCH(QString, next);
        QFETCH(QString, saved);
        QFETCH(QString, advanced);
        TestUi ui;
        const Series s = Series(series);
        prepare(s, "X", next, false, {});
        Advance_number(s, saved);
        const SeriesFields f = fields(s);
        QCOMPARE(columnValues("System", f.nextColumn), QStringList{advanced});
        QCOMPARE(*f.next, advanced);
        VERIFY_UI(ui);
    }

    // Compared upper-cased; a taken number is told with the series' own box.
    void inUse_data()
    {
        QTest::addColumn<int>("series");
        QTest::addColumn<QString>("taken");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("what"); // the series in the box; none: free
        QTest::newRow("invoice, other case") << int(Series::Invoice) << "INV100001"
                                             << "inv100001"
                                             << "Invoice";
        QTest::newRow("customer") << int(Series::Customer) << "CUS100001"
                                  << "CUS100001"
                                  << "Customer";
        QTest::newRow("item") << int(Series::Item) << "prt7"
                              << "PRT7"
                              << "Item\\Part";
        QTest::newRow("free: the next key differs") << int(Series::Customer) << "CUS100002"
                                                    << "CUS100001"
                                                    << "";
        QTest::newRow("free: a longer key follows") << int(Series::Item) << "PRT10"
                                                    << "PRT1"
                                                    << "";
    }

    void inUse()
    {
        QFETCH(int, series);
        QFETCH(QString, taken);
        QFETCH(QString, number);
        QFETCH(QString, what);
        TestUi ui;
        const Series s = Series(series);
        prepare(s, "", "1000", false, {taken});
        if (!what.isEmpty())
            ui.expectBox(what + " Number Already In Use",
                         "This " + what + " number has already been used. Please try again!", vbOK, vbExclamation);
        QCOMPARE(Number_in_use(s, number), !what.isEmpty());
        VERIFY_UI(ui);
    }
};

VELK_TEST(NumberingTest)
#include "tst_numbering.moc"
