// The setup wizard of a first start, the Options window and "Customize Options": what
// they load and save, their checks of the numbered series and the boxes they show.

#include "TestUi.h"

#include "options/frmInvoiceSet.h"
#include "options/frm_setup.h"
#include "platform/Activation.h"
#include "shell/frmMain.h"
#include "store/Globals.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>

using namespace platform;
using namespace Qt::StringLiterals;

namespace
{

const QString Reminder1 = "We have not been able to register payment for the invoice listed above and assume there "
                          "has been an oversight.We would appreciate payment in the coming days.";
const QString LongTerms = QString(230, 't') + " end";
const QString TooShort = "Please enter a number 4 or more numbers long!";
const QString Update = "Are you sure you want to update?";
const QString AllOk = "All OK|All prefix numbers are OK";

// A number typed into a start box, after the free-form tick if any, then Finish or a command;
// the box that tells the outcome ("title", or "title|text"; none: accepted).
struct LengthCase {
    const char* name;
    QString start, typed, freeForm, title;
};
struct NumberCheckCase {
    const char* name;
    QString command, start, typed, freeForm, message;
};

// A settings row as a user may have it after some use of the program, as "Column=text|...".
const QString UsedRow = "BusinessName=Velk Ltd|Address=1 High St|Phone=0123|Mobile=07|Email=a@b.c|Web=velk.example|"
                        "InvPrefix=INV|CrdPrefix=CN|CustPrefix=CUS|PartPrefix=PRT|CustStart=100001|Invstart=100001|"
                        "CrdStart=300001|PartStart=100001|Currency=\u20ac|TaxName=VAT|TaxNo=GB1|TaxAmount=20|"
                        "TaxEnabled=1|DefaultEnd=31/12/2026|Debtorstart=0|Reminder1=Pay|Reminder2=Pay now|"
                        "Reminder3=Last|includeshipping=0|includeterms=1|includestatement=1|Statement=Thanks|"
                        "terms1=30 days|ConfirmExit=1|ConfirmBackup=0|ConfirmAll=1|FaxVisible=1|webVisible=1|"
                        "Text1Name=Sales Person|Text1Visible=1|Text2Name=Order|present=1|InvoiceType=7|logopath=";

QString invoiceRow(const QString& type)
{
    return "BusinessName=Velk Ltd|Text1Visible=1|Text1Name=Sales Person|Text2Visible=0|Text2Name=Order|"
           "Text3Visible=1|Text4Name=Tracking|includeshipping=1|includeterms=0|includestatement=1|Statement=Thanks|"
           "logopath=/nowhere/logo.jpg|terms1=" +
           LongTerms + "|InvoiceType=" + type;
}

} // namespace

Q_DECLARE_METATYPE(LengthCase)
Q_DECLARE_METATYPE(NumberCheckCase)

class OptionsTest : public QObject
{
    Q_OBJECT

    // Makes the data file as a first start does; with a row given, the settings row gets it.
    static void makeDataFile(const QString& systemRow = {})
    {
        frmMain w;
        w.MDIForm_Load();
        QMap<QString, Value> row;
        for (const QString& p : systemRow.split('|', Qt::SkipEmptyParts))
            row.insert(p.section('=', 0, 0), p.section('=', 1));
        if (!row.isEmpty())
            addSettingsRow(row);
    }
    // Each "Column=text" of the pairs against the settings row.
    static void compareSystemRow(const QString& pairs)
    {
        for (const QString& p : pairs.split('|'))
            QCOMPARE(p.section('=', 0, 0) + '=' + columnValues("System", p.section('=', 0, 0)).value(0), p);
    }
    static int settingsRows() { return int(columnValues("System", "BusinessName").size()); }
    static QLineEdit* box(QWidget& w, const QString& name) { return child<QLineEdit>(w, name); }
    static bool shown(QWidget& w, const QString& name) { return !child<QWidget>(w, name)->isHidden(); }
    static QStringList ticked(QWidget& w, const QStringList& names)
    {
        QStringList out;
        for (const QString& name : names)
            if (child<QAbstractButton>(w, name)->isChecked())
                out << name;
        return out;
    }
    // Starts the program on that row (none: the file as it stands) and opens Tools > Options
    // with the handler driving it.
    static std::unique_ptr<frmMain> openOptions(TestUi& ui, const QString& row,
                                                const std::function<void(QDialog&)>& drive)
    {
        if (!row.isEmpty()) {
            makeDataFile(row);
            resetGlobals();
        }
        auto w = std::make_unique<frmMain>();
        w->MDIForm_Load();
        SetupDone = 1; // past the first run: these checks are of the Options window alone
        ui.onModal("frmOptions", [&](QDialog& d) {
            drive(d);
            return d.result();
        });
        w->findChild<QAction*>("mnuOptions")->trigger();
        return w;
    }

private slots:
    // A first start: the wizard's pages, and Finish writing the row and the record; the
    // user goes on in the same run.
    void wizardFinish()
    {
        TestUi ui;
        frmMain w;
        w.MDIForm_Load();
        // The page shown, and which buttons are offered.
        auto state = [](QDialog& d) {
            QString s;
            for (int i = 0; i < 3; ++i)
                s += shown(d, QString("Frame1(%1)").arg(i)) ? QString::number(i) : "";
            return s + (child<QWidget>(d, "Back_cmd")->isEnabled() ? " back" : "") +
                   (shown(d, "Next_cmd") ? " next" : "") + (shown(d, "Finish_cmd") ? " finish" : "");
        };
        ui.onModal("frm_setup", [&](QDialog& d) {
            [&] {
                showUp(d);
                QCOMPARE(state(d), "0 next");
                QCOMPARE(QApplication::focusWidget(), box(d, "Name_txt"));
                QTest::keyClicks(box(d, "Name_txt"), "  Velk Ltd  ");
                QTest::keyClicks(child<QPlainTextEdit>(d, "Address_txt"), " 1 High St");
                QTest::keyClicks(box(d, "Phone_txt"), " 0123 ");
                click(d, "Next_cmd");
                QCOMPARE(state(d), "1 back next");
                QVERIFY(!shown(d, "TaxName_txt"));
                click(d, "Option2");
                click(d, "TaxEnabled_chk");
                QVERIFY(shown(d, "TaxName_txt"));
                QTest::keyClicks(box(d, "TaxNumber_txt"), "GB 123");
                click(d, "Next_cmd");
                click(d, "Back_cmd");
                QCOMPARE(state(d), "1 back next");
                click(d, "Next_cmd");
                QCOMPARE(state(d), "2 back finish");
                box(d, "CrdPrefix_txt")->clear();
                QTest::keyClicks(box(d, "CrdPrefix_txt"), "CN");
                QCOMPARE(texts(d, {"PrtExample_lbl", "CrdExample_lbl"}), (QStringList{"ITE100001", "CN200001"}));
                click(d, "Part_chk");
                ui.expectBox("Update?", Update, vbYes, vbYesNo + vbQuestion);
                click(d, "Finish_cmd");
            }();
            return d.result();
        });
        platform::activate(&w);
        VERIFY_UI(ui);
        QCOMPARE(SetupDone, 1);
        QVERIFY(!w.unloaded());
        QCOMPARE(FrontCount, 1);
        QCOMPARE(settingsRows(), 1);
        // The credit prefix stays out of the row; it lasts for this run in the record.
        compareSystemRow("BusinessName=Velk Ltd|Address= 1 High St|Phone= 0123 |Currency=\u00a3|TaxName=Vat|"
                         "TaxAmount=17.5|TaxNo=GB 123|TaxEnabled=1|InvPrefix=INV|PartPrefix=ITE|CustPrefix=CUS|"
                         "CrdPrefix=|Invstart=100001|CrdStart=200001|FreeformPart=1|FreeformInv=0|"
                         "DefaultStart=01/01/2005|DefaultEnd=22/11/2026|Debtorstart=0|Reminder1=" +
                         Reminder1 +
                         "|includeshipping=0|includeterms=1|Statement=Thank you for your business|ConfirmBackup=1|"
                         "terms1=Terms & Conditions:\nTo edit terms & conditions goto Options on the main menu and "
                         "select the Invoice tab.|ConfirmExit=0|mobileVisible=1|text4Visible=1|text2Name=Shipping No|"
                         "text3Name=Sales No|present=1|InvoiceType=1");
        const SettingsRecord& s = settings;
        QCOMPARE((QStringList{s.BusinessName.text(), s.CrdPrefix, s.text1Name.trimmed()}),
                 (QStringList{QString("Velk Ltd").leftJustified(30), "CN", "Sales Person"}));
        QCOMPARE(s.TaxAmount, 17.5);
        QCOMPARE(s.freeformPart, 1);
    }

    // Cancel ends the program and leaves the file without a row; the next start asks again.
    void wizardCancel()
    {
        TestUi ui;
        for (int start = 0; start < 2; ++start) {
            frmMain w;
            w.MDIForm_Load();
            ui.onModal("frm_setup", [&](QDialog& d) {
                for (int answer : start == 0 ? QList<int>{vbNo, vbYes} : QList<int>{vbYes}) {
                    ui.expectBox("Cancel?", "Are you sure you want to cancel?", answer, vbYesNo + vbQuestion);
                    click(d, "Cancel_cmd");
                }
                return d.result();
            });
            platform::activate(&w);
            VERIFY_UI(ui);
            QCOMPARE(SetupDone, 0);
            QVERIFY(w.unloaded());
            QVERIFY(QFile::exists(ui.file("data.mdb")));
            QCOMPARE(settingsRows(), 0);
            resetGlobals();
        }
    }

    // Finish checks the length of the invoice, item and customer numbers, in that order.
    void wizardLengthCheck_data()
    {
        const LengthCase rows[] = {{"invoice too short", "InvStart_txt", "123", "", "Invoice Number"},
                                   {"invoice free form", "InvStart_txt", "123", "Inv_chk", ""},
                                   {"item too short", "PrtStart_txt", "999", "", "Item Number"},
                                   {"customer too short", "CusStart_txt", "12", "", "Customer Number"},
                                   {"credit not checked", "CrdStart_txt", "1", "", ""},
                                   {"four digits", "InvStart_txt", "0001", "", ""}};
        addCases(rows);
    }

    void wizardLengthCheck()
    {
        QFETCH(LengthCase, row);
        const auto& [name, start, typed, freeForm, title] = row;
        TestUi ui;
        makeDataFile();
        frm_setup d;
        showUp(d);
        click(d, "Next_cmd");
        click(d, "Next_cmd");
        if (!freeForm.isEmpty()) {
            // The tick closes its row's boxes and leaves their text and example alone.
            click(d, freeForm);
            QVERIFY(!box(d, "InvPrefix_txt")->isEnabled());
            QVERIFY(!box(d, "InvStart_txt")->isEnabled());
            QCOMPARE(texts(d, {"InvExample_lbl"}), QStringList{"INV100001"});
        }
        // A short customer number shows that later series wait their turn.
        const bool refused = !title.isEmpty();
        box(d, "CusStart_txt")->setText(refused ? "12" : "100001");
        box(d, start)->setText(typed);
        ui.expectBox(refused ? title : "Update?", refused ? TooShort : Update, refused ? vbOK : vbNo);
        click(d, "Finish_cmd");
        VERIFY_UI(ui);
        QVERIFY(d.isVisible());
        QCOMPARE(settingsRows(), 0);
        QCOMPARE(SetupDone, 0);
        if (refused)
            QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(box(d, start)));
    }

    // Which boxes take digits only, and the examples that follow what is typed.
    void wizardKeys()
    {
        // Box, typed, what it keeps and the example then.
        const char* const rows[][3] = {{"InvStart_txt", "12a-3 4.5", "12345 INV12345"},
                                       {"CusStart_txt", "1234567890", "12345678 CUS12345678"},
                                       {"CrdStart_txt", "2x", "2 CRD2"},
                                       {"PrtPrefix_txt", "a 1bX", "a 1b a 1b100001"},
                                       {"TaxAmount_txt", "17.5.x", "17.5"}};
        TestUi ui;
        makeDataFile();
        frm_setup d;
        for (const auto& [name, typed, kept] : rows) {
            box(d, name)->clear();
            QTest::keyClicks(box(d, name), typed);
            const QString example = QString(name).left(3) + "Example_lbl";
            QCOMPARE(QString(name) + ": " + box(d, name)->text() +
                         (d.findChild<QLabel*>(example) ? " " + texts(d, {example}).value(0) : QString()),
                     QString(name) + ": " + kept);
        }
        VERIFY_UI(ui);
    }

    // The row comes up in the controls, and OK writes it back with the designed credit
    // series over the one stored.
    void optionsLoadAndSave()
    {
        TestUi ui;
        auto w = openOptions(ui, UsedRow, [&](QDialog& d) {
            QCOMPARE(texts(d, {"Name_txt", "currency_txt", "TaxAmount_txt", "CrdPrefix_txt", "CrdStart_txt",
                               "CrdExample_lbl", "PrtExample_lbl", "chk1", "chk3"}),
                     (QStringList{"Velk Ltd", "\u20ac", "20", "CRD", "200001", "CRD200001", "PRT100001",
                                  "Include Sales Person", "Include "}));
            QCOMPARE(ticked(d, {"Option1", "Option2", "Option3", "Opt1", "Opt2", "Opt3", "Opt4", "Opt5", "Opt6",
                                "Present_chk", "fax_chk", "phone_chk"}),
                     (QStringList{"Option3", "Present_chk", "fax_chk"}));
            auto* end = child<QDateEdit>(d, "DTPicker2");
            QCOMPARE(child<QDateEdit>(d, "DTPicker1")->date(), QDate(2005, 1, 1));
            QVERIFY(!end->isEnabled());
            QCOMPARE(end->date(), QDate(2026, 12, 31));
            QVERIFY(shown(d, "TaxName_txt"));
            QVERIFY(!shown(d, "shipping1"));
            QVERIFY(shown(d, "terms2"));
            QCOMPARE(settings.CrdPrefix, "CRD"); // the record follows the controls at opening
            box(d, "Name_txt")->setText("  New Name  ");
            box(d, "TaxAmount_txt")->setText("12abc"); // pasted: no key rule
            box(d, "TaxName_txt")->clear();            // refused by nothing, tax or not
            QTest::keyClicks(box(d, "Text3"), "Van");
            QCOMPARE(texts(d, {"chk3"}), QStringList{"Include Van"});
            click(d, "Shipping_chk");
            QVERIFY(shown(d, "shipping1"));
            QVERIFY(shown(d, "shipping2"));
            click(d, "Present_chk");
            QVERIFY(end->isEnabled());
            click(d, "cmdOK");
        });
        VERIFY_UI(ui);
        compareSystemRow("BusinessName=New Name|TaxAmount=12|Currency=\u20ac|CrdPrefix=CRD|CrdStart=200001|"
                         "InvoiceType=7|DefaultStart=01/01/2005|DefaultEnd=31/12/2026|present=0|includeshipping=1|"
                         "Text3Name=Van|Text3Visible=0|ConfirmExit=1|webVisible=1|ConfirmAll=1|Reminder2=Pay now|"
                         "logopath=|TaxEnabled=1");
        const SettingsRecord& s = settings;
        QCOMPARE((QStringList{s.BusinessName.trimmed(), s.text3Name.trimmed()}), (QStringList{"New Name", "Van"}));
        QCOMPARE(s.TaxAmount, 12.0);
        QCOMPARE(s.IncludeShipping, 1);
        QCOMPARE(s.Present, 0);
        QCOMPARE(s.ConfirmExit, 1); // loaded at start, never written
    }

    // Apply saves at once; Cancel then drops only what came after. Boxes of several lines take
    // no more than their limit, typed or pasted; Ctrl+Tab moves to the next tab from any
    // control, and from the last to the first.
    void optionsApplyCancelLimitsAndTabs()
    {
        TestUi ui;
        auto w = openOptions(ui, UsedRow, [&](QDialog& d) {
            box(d, "Name_txt")->setText("Applied");
            click(d, "Opt2");
            for (int answer : {vbNo, vbYes}) {
                ui.expectBox("Are You Sure?", "Are you sure you want to restore default reminders", answer,
                             vbYesNo + vbQuestion);
                click(d, "RestoreReminders_cmd");
                QCOMPARE(texts(d, {"Reminder1"}), QStringList{answer == vbNo ? "Pay" : Reminder1});
            }
            click(d, "cmdApply");
            QCOMPARE(columnValues("System", "BusinessName"), QStringList{"Applied"});
            box(d, "Phone_txt")->setText("999");
            child<QPlainTextEdit>(d, "Reminder2")->setPlainText("Changed");
            for (auto [name, limit] :
                 {std::pair{"Address_txt", 150}, {"statement_txt", 100}, {"terms_txt", 200}, {"Reminder3", 250}}) {
                auto* b = child<QPlainTextEdit>(d, name);
                b->setPlainText(QString(limit - 1, 'a'));
                b->moveCursor(QTextCursor::End);
                QTest::keyClicks(b, "xyz");
                QVERIFY2(b->toPlainText() == QString(limit - 1, 'a') + "x", name);
                b->setPlainText(QString(limit + 40, 'b'));
                QVERIFY2(b->toPlainText().size() == limit, name);
            }
            auto* tabs = child<QTabBar>(d, "tbsOptions");
            QTest::keyClick(box(d, "Name_txt"), Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), 1);
            QVERIFY(shown(d, "Frame1(1)"));
            QVERIFY(!shown(d, "Frame1(0)"));
            tabs->setCurrentIndex(7);
            QTest::keyClick(child<QWidget>(d, "Reminder2"), Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), 0);
            QVERIFY(shown(d, "Frame1(0)"));
            QVERIFY(!shown(d, "Frame1(7)"));
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
        compareSystemRow("BusinessName=Applied|InvoiceType=2|Phone=0123|Address=1 High St|Reminder1=" + Reminder1);
        QCOMPARE((QStringList{settings.BusinessName.trimmed(), settings.Phone.trimmed()}),
                 (QStringList{"Applied", "0123"}));
        QCOMPARE(columnValues("System", "Reminder2"), QStringList{settings.Reminder2});
        QVERIFY(settings.Reminder2.startsWith("The invoice listed above has not been paid"));
    }

    // Apply, OK and "Check Prefix Numbers" begin with the length and in-use checks; a
    // failure shows the Prefixes page under the tab that was selected, and saves nothing.
    void optionsNumberChecks_data()
    {
        const QString inUse = " Number Already In Use|This %1 number has already been used. Please try again!";
        const NumberCheckCase rows[] = {
            {"Apply, invoice too short", "cmdApply", "InvStart_txt", "  12", "", "Invoice Number|" + TooShort},
            {"OK, item too short", "cmdOK", "PrtStart_txt", "123", "", "Item Number|" + TooShort},
            {"OK, invoice in use", "cmdOK", "InvStart_txt", "100007", "",
             "Invoice" + inUse.arg("Invoice")}, // stored as "inv"
            {"Apply, customer in use", "cmdApply", "CusStart_txt", "100007", "", "Customer" + inUse.arg("Customer")},
            {"check, item in use", "CheckRanges_cmd", "PrtStart_txt", "100007", "",
             "Item\\Part" + inUse.arg("Item\\Part")},
            {"check, customer free form", "CheckRanges_cmd", "CusStart_txt", "12", "Cus_chk", AllOk},
            {"check, credit never checked", "CheckRanges_cmd", "CrdStart_txt", "1", "", AllOk}};
        addCases(rows);
    }

    void optionsNumberChecks()
    {
        QFETCH(NumberCheckCase, row);
        const auto& [name, command, start, typed, freeForm, message] = row;
        TestUi ui;
        makeDataFile(UsedRow + "|InvPrefix=inv");
        addRow("Invoices", {{"InvNo", "INV100007"}});
        addRow("Customers", {{"CustID", "CUS100007"}});
        addRow("Parts", {{"ID", "PRT100007"}});
        const bool refused = message != AllOk;
        auto w = openOptions(ui, {}, [&](QDialog& d) {
            showUp(d);
            auto* tabs = child<QTabBar>(d, "tbsOptions");
            tabs->setCurrentIndex(6);
            if (!freeForm.isEmpty())
                click(d, freeForm);
            box(d, start)->setText(typed);
            box(d, "Name_txt")->setText("Changed");
            ui.expectBox(message.section('|', 0, 0), message.section('|', 1), vbOK,
                         refused ? vbExclamation : vbInformation);
            click(d, command);
            if (refused) {
                QVERIFY(d.isVisible());
                QVERIFY(shown(d, "Frame1(2)"));
                QVERIFY(!shown(d, "Frame1(6)"));
                QCOMPARE(tabs->currentIndex(), 6);
                QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(box(d, start)));
            }
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
        QCOMPARE(columnValues("System", "BusinessName"), QStringList{"Velk Ltd"});
    }

    // The logo's path: 200 characters at most, and a cancelled dialog keeps the last choice.
    void optionsLogo()
    {
        TestUi ui;
        const QString longest = "/" + QString(199, 'p'), pic = "/pics/a.jpg";
        auto w = openOptions(ui, UsedRow, [&](QDialog& d) {
            // Each choice ("-": the dialog cancelled), and the path shown after it.
            const QString choices[] = {"-", pic, "-", longest + "x", longest}, paths[] = {"", pic, pic, pic, longest};
            for (int i = 0; i < 5; ++i) {
                const QString& choice = choices[i];
                ui.expectOpen(choice == "-" ? std::nullopt : std::optional<QString>(choice));
                if (choice.size() > 200)
                    ui.expectBox("Path too Long", "Path too long. Move the picture to another location and try again.",
                                 vbOK, vbExclamation);
                click(d, "Select_cmd");
                QCOMPARE(texts(d, {"path_lbl"}), QStringList{paths[i]});
            }
            click(d, "cmdOK");
        });
        VERIFY_UI(ui);
        QCOMPARE(ui.dialogs.first().filter, "Picture File (*.jpg,*.bmp)|*.bmp;*.jpg");
        QCOMPARE(columnValues("System", "logopath") << settings.Logopath, (QStringList{longest, longest}));
    }

    // "Customize Options": every column it loads and saves, and what it leaves alone.
    void customizeLoadAndOk()
    {
        TestUi ui;
        makeDataFile(invoiceRow("7"));
        settings.BusinessName = QStringLiteral("Velk Ltd");
        frmInvoiceSet w;
        QCOMPARE(texts(w, {"chk1", "chk2", "chk3", "chk4", "statement_txt", "terms_txt", "path_lbl"}),
                 (QStringList{"Include Sales Person", "Include Order", "Include ", "Include Tracking", "Thanks",
                              LongTerms, "/nowhere/logo.jpg"})); // no limit to the terms here
        QCOMPARE(ticked(w, {"chk1", "chk2", "chk3", "chk4", "Shipping_chk", "Terms_Chk", "Statement_chk"}),
                 (QStringList{"chk1", "chk3", "Shipping_chk", "Statement_chk"}));
        // The sample follows the ticks; loading copies nothing into the record.
        auto* frame = child<QWidget>(w, "InvoiceFrame");
        QVERIFY(!child<QWidget>(w, "terms1")->isVisibleTo(frame));
        QVERIFY(child<QWidget>(w, "shipping2")->isVisibleTo(frame));
        QCOMPARE(settings.Statement, QString());
        click(w, "chk2");
        click(w, "chk1");
        box(w, "Text1")->clear();
        QTest::keyClicks(box(w, "Text1"), "  Rep ");
        QCOMPARE(texts(w, {"chk1"}), QStringList{"Include   Rep "}); // at each key
        click(w, "customize_cmd");
        click(w, "Shipping_chk");
        click(w, "Terms_Chk");
        child<QPlainTextEdit>(w, "statement_txt")->setPlainText("  With thanks  ");
        click(w, "Back_cmd");
        click(w, "Erase_cmd");
        ui.expectOpen(" /pics/logo.bmp");
        click(w, "Select_cmd");
        click(w, "ok_cmd");
        QCOMPARE(w.result(), int(QDialog::Accepted));
        // None selected: the type stays "7"; the terms longer than 200 are kept whole.
        compareSystemRow("text1Visible=0|text2Visible=1|text3Visible=1|text4Visible=0|text1Name=Rep|text2Name=Order|"
                         "text3Name=|text4Name=Tracking|InvoiceType=7|includeStatement=1|includeterms=1|"
                         "includeshipping=0|Statement=With thanks|logopath= /pics/logo.bmp|BusinessName=Velk Ltd|"
                         "terms1=" +
                         LongTerms);
        const SettingsRecord& s = settings;
        QCOMPARE(s.text1Visible, 0);
        QCOMPARE(s.text2Visible, 1);
        QCOMPARE(s.IncludeTerms, 1);
        QCOMPARE(s.IncludeShipping, 0);
        QCOMPARE((QStringList{s.text1Name.text(), s.Statement, s.terms1, s.Logopath}),
                 (QStringList{QString("Rep").leftJustified(30), "With thanks", LongTerms, " /pics/logo.bmp"}));
        VERIFY_UI(ui);
    }

    // An empty type selects the first; Cancel saves nothing, the logo's path included.
    void customizeCancel()
    {
        TestUi ui;
        makeDataFile(invoiceRow(""));
        settings.Logopath = QStringLiteral("/nowhere/logo.jpg");
        const QByteArray before = fileBytes(ui.file("data.mdb"));
        frmInvoiceSet w;
        QCOMPARE(ticked(w, {"Option1", "Option2", "Option3", "Option4", "Option5", "Option6"}), QStringList{"Option1"});
        click(w, "Option5");
        ui.expectOpen(QStringLiteral("/pics/other.jpg"));
        click(w, "Select_cmd");
        click(w, "cancel_cmd");
        QCOMPARE(fileBytes(ui.file("data.mdb")), before);
        QCOMPARE(settings.Logopath, QStringLiteral("/nowhere/logo.jpg"));
        QCOMPARE(settings.InvoiceType, QString());
        VERIFY_UI(ui);
    }
};

VELK_TEST(OptionsTest)
#include "tst_options.moc"
