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

struct ProposalCase {
    const char* name;
    Series series;
    QString prefix, next;
    bool freeForm;
    QStringList taken;
    QString number;
};
struct AdvanceCase {
    const char* name;
    Series series;
    QString next, saved, advanced;
};
struct InUseCase {
    const char* name;
    Series series;
    QString taken, number, what;
};

} // namespace

Q_DECLARE_METATYPE(ProposalCase)
Q_DECLARE_METATYPE(AdvanceCase)
Q_DECLARE_METATYPE(InUseCase)

class NumberingTest : public QObject
{
    Q_OBJECT
private slots:
    // Invoices take prefix and next number as they are; customers and items skip taken ones.
    void proposal_data()
    {
        const ProposalCase rows[] = {
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

        addCases(rows);
    }

    void proposal()
    {
        QFETCH(ProposalCase, row);
        TestUi ui;
        prepare(row.series, row.prefix, row.next, row.freeForm, row.taken);
        const Proposal p = Propose_number(row.series);
        QCOMPARE((p.enabled ? "(open)" : "") + p.number, row.number);
        QCOMPARE(*fields(row.series).next, row.next); // proposing never moves the series
        VERIFY_UI(ui);
    }

    // The digits of the saved number plus one, at the width of the current next number.
    void advance_data()
    {
        const AdvanceCase rows[] = {// next number, number saved, next number after
                                    {"invoice", Series::Invoice, "100001", "INV100001", "100002"},
                                    {"wraps at the width", Series::Invoice, "9999", "INV9999", "0000"},
                                    {"leading zeros kept", Series::Invoice, "0042", "INV0042", "0043"},
                                    {"short number edited by hand", Series::Invoice, "99", "INV99", "00"},
                                    {"prefix digits cut off", Series::Customer, "100001", "A1100001", "100002"},
                                    {"past a skipped proposal", Series::Customer, "100001", "CUS100003", "100004"},
                                    {"blank prefix", Series::Item, "1000", "1000", "1001"},
                                    {"wider saved number", Series::Item, "0001", "PRT123456", "3457"}};

        addCases(rows);
    }

    void advance()
    {
        QFETCH(AdvanceCase, row);
        TestUi ui;
        prepare(row.series, "X", row.next, false, {});
        Advance_number(row.series, row.saved);
        const SeriesFields f = fields(row.series);
        QCOMPARE(columnValues("System", f.nextColumn), QStringList{row.advanced});
        QCOMPARE(*f.next, row.advanced);
        VERIFY_UI(ui);
    }

    // Compared upper-cased; a taken number is told with the series' own box.
    void inUse_data()
    {
        const InUseCase rows[] = {// number taken, number asked, the series in the box (none: free)
                                  {"invoice, other case", Series::Invoice, "INV100001", "inv100001", "Invoice"},
                                  {"customer", Series::Customer, "CUS100001", "CUS100001", "Customer"},
                                  {"item", Series::Item, "prt7", "PRT7", "Item\\Part"},
                                  {"free: the next key differs", Series::Customer, "CUS100002", "CUS100001", ""},
                                  {"free: a longer key follows", Series::Item, "PRT10", "PRT1", ""}};

        addCases(rows);
    }

    void inUse()
    {
        QFETCH(InUseCase, row);
        TestUi ui;
        prepare(row.series, "", "1000", false, {row.taken});
        const QString& what = row.what;
        if (!what.isEmpty())
            ui.expectBox(what + " Number Already In Use",
                         "This " + what + " number has already been used. Please try again!", vbOK, vbExclamation);
        QCOMPARE(Number_in_use(row.series, row.number), !what.isEmpty());
        VERIFY_UI(ui);
    }
};

VELK_TEST(NumberingTest)
#include "tst_numbering.moc"
