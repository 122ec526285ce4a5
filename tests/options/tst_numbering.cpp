// Document numbers: the number a new record is offered, the next number after a save,
// and the check for a number in use.

#include "TestUi.h"

#include "shell/frmMain.h"
#include "store/Globals.h"
#include "store/Numbering.h"

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
    void proposal()
    {
        const std::tuple<const char*, Series, QString, QString, bool, QStringList, QString> rows[] = {
            // prefix, next number, free form, numbers taken, the proposal ("(open)": an empty box open for typing)
            {"invoice: no look-up", Series::Invoice, "INV", "100001", false, {"INV100001"}, "INV100001"},
            {"invoice: parts trimmed", Series::Invoice, " INV ", "0042 ", false, {}, "INV0042"},
            {"invoice: free form", Series::Invoice, "INV", "100001", true, {}, "(open)"},
            {"customer: skipped", Series::Customer, "CUS", "1001", false, {"CUS1001", "CUS1002", "CUS1004"}, "CUS1003"},
            {"customer: upper-cased", Series::Customer, "cus", "100001", false, {"CUS100001"}, "cus100002"},
            {"customer: width kept", Series::Customer, "C", "0099", false, {"C0099"}, "C0100"},
            {"customer: blank prefix", Series::Customer, "", "1000", false, {"1000"}, "1001"},
            {"customer: free form", Series::Customer, "CUS", "100001", true, {"CUS100001"}, "(open)"},
            {"item: exact match skipped", Series::Item, "PRT", "100001", false, {"PRT100001"}, "PRT100002"},
            {"item: other case not skipped", Series::Item, "PRT", "100001", false, {"prt100001"}, "PRT100001"},
            {"item: free form", Series::Item, "PRT", "100001", true, {}, "(open)"}};
        for (const auto& [name, s, prefix, next, freeForm, taken, number] : rows) {
            TestUi ui;
            prepare(s, prefix, next, freeForm, taken);
            const Proposal p = Propose_number(s);
            // Proposing never moves the series.
            QCOMPARE(QString(name) + ": " + (p.enabled ? "(open)" : "") + p.number + " next " + *fields(s).next,
                     QString(name) + ": " + number + " next " + next);
            VERIFY_UI(ui);
        }
    }

    // The digits of the saved number plus one, at the width of the current next number.
    void advance()
    {
        const std::tuple<const char*, Series, QString, QString, QString> rows[] = {
            // next number, number saved, next number after
            {"invoice", Series::Invoice, "100001", "INV100001", "100002"},
            {"wraps at the width", Series::Invoice, "9999", "INV9999", "0000"},
            {"leading zeros kept", Series::Invoice, "0042", "INV0042", "0043"},
            {"short number edited by hand", Series::Invoice, "99", "INV99", "00"},
            {"prefix digits cut off", Series::Customer, "100001", "A1100001", "100002"},
            {"past a skipped proposal", Series::Customer, "100001", "CUS100003", "100004"},
            {"blank prefix", Series::Item, "1000", "1000", "1001"},
            {"wider saved number", Series::Item, "0001", "PRT123456", "3457"}};
        for (const auto& [name, s, next, saved, advanced] : rows) {
            TestUi ui;
            prepare(s, "X", next, false, {});
            Advance_number(s, saved);
            const SeriesFields f = fields(s);
            QCOMPARE(QString(name) + ": " + columnValues("System", f.nextColumn).join(',') + '/' + *f.next,
                     QString(name) + ": " + advanced + '/' + advanced);
            VERIFY_UI(ui);
        }
    }

    // Compared upper-cased; a taken number is told with the series' own box.
    void inUse()
    {
        const std::tuple<const char*, Series, QString, QString, QString> rows[] = {
            // number taken, number asked, the series in the box (none: free)
            {"invoice, other case", Series::Invoice, "INV100001", "inv100001", "Invoice"},
            {"customer", Series::Customer, "CUS100001", "CUS100001", "Customer"},
            {"item", Series::Item, "prt7", "PRT7", "Item\\Part"},
            {"free: the next key differs", Series::Customer, "CUS100002", "CUS100001", ""},
            {"free: a longer key follows", Series::Item, "PRT10", "PRT1", ""}};
        for (const auto& [name, s, taken, number, what] : rows) {
            TestUi ui;
            prepare(s, "", "1000", false, {taken});
            if (!what.isEmpty())
                ui.expectBox(what + " Number Already In Use",
                             "This " + what + " number has already been used. Please try again!", vbOK, vbExclamation);
            QVERIFY2(Number_in_use(s, number) == !what.isEmpty(), name);
            VERIFY_UI(ui);
        }
    }
};

VELK_TEST(NumberingTest)
#include "tst_numbering.moc"
