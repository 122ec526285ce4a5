#include "OptionsTests.h"

#include "options/Numbering.h"
#include "shell/Globals.h"

namespace
{

struct SeriesFields {
    QString table, key, nextColumn;
    QString* prefix;
    QString* next;
    qint16* freeForm;
};

SeriesFields fields(Series s)
{
    switch (s) {
    case Series::Invoice:
        return {"Invoices", "InvNo", "Invstart", &settings.InvPrefix, &settings.Invstart, &settings.FreeformInv};
    case Series::Customer:
        return {"Customers", "CustID", "CustStart", &settings.CustPrefix, &settings.CustStart, &settings.freeformCus};
    case Series::Item:
        break;
    }
    return {"Parts", "ID", "PartStart", &settings.PartPrefix, &settings.PartStart, &settings.freeformPart};
}

// A data file whose settings row and record hold the series as given, and the numbers
// already taken.
void prepare(Series s, const QString& prefix, const QString& next, bool freeForm, const QStringList& taken)
{
    const SeriesFields f = fields(s);
    makeDataFile({{f.nextColumn, next}});
    *f.prefix = prefix;
    *f.next = next;
    *f.freeForm = freeForm ? 1 : 0;
    for (const QString& id : taken)
        addRow(f.table, {{f.key, id}});
}

} // namespace

Q_DECLARE_METATYPE(Series)

class NumberingTest : public QObject
{
    Q_OBJECT
private slots:
    void proposal_data()
    {
        QTest::addColumn<Series>("series");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("next");
        QTest::addColumn<bool>("freeForm");
        QTest::addColumn<QStringList>("taken");
        QTest::addColumn<QString>("number");

        auto row = [](const char* name, Series s, const char* prefix, const char* next, bool freeForm,
                      const QStringList& taken, const char* number) {
            QTest::newRow(name) << s << QString(prefix) << QString(next) << freeForm << taken << QString(number);
        };
        row("invoice: no look-up", Series::Invoice, "INV", "100001", false, {"INV100001"}, "INV100001");
        row("invoice: parts trimmed", Series::Invoice, " INV ", "0042 ", false, {}, "INV0042");
        row("invoice: free form", Series::Invoice, "INV", "100001", true, {}, "");
        row("customer: taken skipped", Series::Customer, "CUS", "100001", false,
            {"CUS100001", "CUS100002", "CUS100004"}, "CUS100003");
        row("customer: upper-cased", Series::Customer, "cus", "100001", false, {"CUS100001"}, "cus100002");
        row("customer: width kept", Series::Customer, "C", "0099", false, {"C0099"}, "C0100");
        row("customer: blank prefix", Series::Customer, "", "1000", false, {"1000"}, "1001");
        row("customer: free form", Series::Customer, "CUS", "100001", true, {"CUS100001"}, "");
        row("item: exact match skipped", Series::Item, "PRT", "100001", false, {"PRT100001"}, "PRT100002");
        row("item: other case not skipped", Series::Item, "PRT", "100001", false, {"prt100001"}, "PRT100001");
        row("item: free form", Series::Item, "PRT", "100001", true, {}, "");
    }
    void proposal()
    {
        QFETCH(Series, series);
        QFETCH(QString, prefix);
        QFETCH(QString, next);
        QFETCH(bool, freeForm);
        QFETCH(QStringList, taken);
        QFETCH(QString, number);
        TestUi ui;
        prepare(series, prefix, next, freeForm, taken);
        const Proposal p = Propose_number(series);
        QCOMPARE(p.number, number);
        QCOMPARE(p.enabled, freeForm);
        QCOMPARE(*fields(series).next, next); // proposing never moves the series
        VERIFY_UI(ui);
    }

    void advance_data()
    {
        QTest::addColumn<Series>("series");
        QTest::addColumn<QString>("next");
        QTest::addColumn<QString>("saved");
        QTest::addColumn<QString>("advanced");

        auto row = [](const char* name, Series s, const char* next, const char* saved, const char* advanced) {
            QTest::newRow(name) << s << QString(next) << QString(saved) << QString(advanced);
        };
        row("invoice", Series::Invoice, "100001", "INV100001", "100002");
        row("wraps at the width", Series::Invoice, "9999", "INV9999", "0000");
        row("leading zeros kept", Series::Invoice, "0042", "INV0042", "0043");
        row("short number edited by hand", Series::Invoice, "99", "INV99", "00");
        row("prefix digits cut off", Series::Customer, "100001", "A1100001", "100002");
        row("past a skipped proposal", Series::Customer, "100001", "CUS100003", "100004");
        row("blank prefix", Series::Item, "1000", "1000", "1001");
        row("wider saved number", Series::Item, "0001", "PRT123456", "3457");
    }
    void advance()
    {
        QFETCH(Series, series);
        QFETCH(QString, next);
        QFETCH(QString, saved);
        QFETCH(QString, advanced);
        TestUi ui;
        prepare(series, "X", next, false, {});
        Advance_number(series, saved);
        const SeriesFields f = fields(series);
        QCOMPARE(firstRowValue("System", f.nextColumn).toText(), advanced);
        QCOMPARE(*f.next, advanced);
        VERIFY_UI(ui);
    }

    void inUse_data()
    {
        QTest::addColumn<Series>("series");
        QTest::addColumn<QString>("taken");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("box");

        auto row = [](const char* name, Series s, const char* taken, const char* number, const char* what) {
            const QString box = QStringLiteral("%1 Number Already In Use: This %1 number has already been used. "
                                               "Please try again!");
            QTest::newRow(name) << s << QString(taken) << QString(number) << (*what ? box.arg(what) : QString());
        };
        row("invoice, other case", Series::Invoice, "INV100001", "inv100001", "Invoice");
        row("customer", Series::Customer, "CUS100001", "CUS100001", "Customer");
        row("item", Series::Item, "prt7", "PRT7", "Item\\Part");
        row("free: the next key differs", Series::Customer, "CUS100002", "CUS100001", "");
        row("free: a longer key follows", Series::Item, "PRT10", "PRT1", "");
    }
    void inUse()
    {
        QFETCH(Series, series);
        QFETCH(QString, taken);
        QFETCH(QString, number);
        QFETCH(QString, box);
        TestUi ui;
        prepare(series, "", "1000", false, {taken});
        if (!box.isEmpty())
            ui.expectBox(box.section(": ", 0, 0), box.section(": ", 1), platform::vbOK, platform::vbExclamation);
        QCOMPARE(Number_in_use(series, number), !box.isEmpty());
        VERIFY_UI(ui);
    }
};

QObject* newNumberingTest()
{
    return new NumberingTest;
}

#include "tst_numbering.moc"
