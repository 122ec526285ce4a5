#include "OptionsTests.h"

#include "options/frmOptions.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabBar>

using namespace platform;

namespace
{

// A settings row as a user may have it after some use of the program.
QMap<QString, Value> usedRow()
{
    return rowOf({"BusinessName=Velk Ltd",
                  "Address=1 High St",
                  "Phone=0123",
                  "Mobile=07",
                  "Email=a@b.c",
                  "Web=velk.example",
                  "InvPrefix=INV",
                  "CrdPrefix=CN",
                  "CustPrefix=CUS",
                  "PartPrefix=PRT",
                  "CustStart=100001",
                  "Invstart=100001",
                  "CrdStart=300001",
                  "PartStart=100001",
                  "Currency=\u20ac",
                  "TaxName=VAT",
                  "TaxNo=GB1",
                  "TaxAmount=20",
                  "TaxEnabled=1",
                  "DefaultEnd=31/12/2026",
                  "Debtorstart=0",
                  "Reminder1=Pay",
                  "Reminder2=Pay now",
                  "Reminder3=Last",
                  "includeshipping=0",
                  "includeterms=1",
                  "includestatement=1",
                  "Statement=Thanks",
                  "terms1=30 days",
                  "ConfirmExit=1",
                  "ConfirmBackup=0",
                  "ConfirmAll=1",
                  "FaxVisible=1",
                  "webVisible=1",
                  "Text1Name=Sales Person",
                  "Text1Visible=1",
                  "Text2Name=Order",
                  "present=1",
                  "InvoiceType=7",
                  "logopath="});
}

// Starts the program on that row and opens Tools > Options with the handler driving it.
std::unique_ptr<frmMain> openOptions(TestUi& ui, const QMap<QString, Value>& row,
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

bool shown(QDialog& d, const QString& name)
{
    return !child<QWidget>(d, name)->isHidden();
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT
private slots:
    // The row comes up in the controls with its particulars, and OK writes it back with
    // the designed credit series over the one stored.
    void loadAndSave()
    {
        TestUi ui;
        auto w = openOptions(ui, usedRow(), [&](QDialog& d) {
            QCOMPARE(box(d, "Name_txt")->text(), "Velk Ltd");
            QCOMPARE(box(d, "currency_txt")->text(), "\u20ac");
            QVERIFY(child<QRadioButton>(d, "Option3")->isChecked());
            QCOMPARE(box(d, "TaxAmount_txt")->text(), "20");
            QVERIFY(shown(d, "TaxName_txt"));
            QCOMPARE(box(d, "CrdPrefix_txt")->text(), "CRD");
            QCOMPARE(box(d, "CrdStart_txt")->text(), "200001");
            QCOMPARE(child<QLabel>(d, "CrdExample_lbl")->text(), "CRD200001");
            QCOMPARE(child<QLabel>(d, "PrtExample_lbl")->text(), "PRT100001");
            QCOMPARE(child<QDateEdit>(d, "DTPicker1")->date(), QDate(2005, 1, 1));
            QCOMPARE(child<QDateEdit>(d, "DTPicker2")->date(), QDate(2026, 12, 31));
            QVERIFY(child<QCheckBox>(d, "Present_chk")->isChecked());
            QVERIFY(!child<QDateEdit>(d, "DTPicker2")->isEnabled());
            for (int i = 1; i <= 6; ++i)
                QVERIFY(!child<QRadioButton>(d, QStringLiteral("Opt%1").arg(i))->isChecked());
            QVERIFY(!shown(d, "shipping1") && shown(d, "terms2"));
            QCOMPARE(child<QCheckBox>(d, "chk1")->text(), "Include Sales Person");
            QCOMPARE(child<QCheckBox>(d, "chk3")->text(), "Include ");
            QVERIFY(child<QCheckBox>(d, "fax_chk")->isChecked() && !child<QCheckBox>(d, "phone_chk")->isChecked());
            QVERIFY(shown(d, "Frame1(0)") && !shown(d, "Frame1(1)"));
            QCOMPARE(settings.CrdPrefix, "CRD"); // the record follows the controls at opening

            box(d, "Name_txt")->setText("  New Name  ");
            box(d, "TaxAmount_txt")->setText("12abc"); // pasted: no key rule
            box(d, "TaxName_txt")->clear();            // refused by nothing, tax or not
            QTest::keyClicks(box(d, "Text3"), "Van");
            QCOMPARE(child<QCheckBox>(d, "chk3")->text(), "Include Van");
            click(d, "Shipping_chk");
            QVERIFY(shown(d, "shipping1") && shown(d, "shipping2"));
            click(d, "Present_chk");
            QVERIFY(child<QDateEdit>(d, "DTPicker2")->isEnabled());
            click(d, "cmdOK");
        });
        VERIFY_UI(ui);
        compareSystemRow({"BusinessName=New Name", "TaxAmount=12", "Currency=\u20ac", "CrdPrefix=CRD",
                          "CrdStart=200001", "InvoiceType=7", "DefaultStart=01/01/2005", "DefaultEnd=31/12/2026",
                          "present=0", "includeshipping=1", "Text3Name=Van", "Text3Visible=0", "ConfirmExit=1",
                          "webVisible=1", "ConfirmAll=1", "Reminder2=Pay now", "logopath=", "TaxEnabled=1"});
        QCOMPARE(settings.BusinessName.trimmed(), "New Name");
        QCOMPARE(settings.TaxAmount, 12.0);
        QCOMPARE(settings.text3Name.trimmed(), "Van");
        QCOMPARE(settings.IncludeShipping, 1);
        QCOMPARE(settings.Present, 0);
        QCOMPARE(settings.ConfirmExit, 1); // loaded at start, never written
    }

    void cancelAfterApply()
    {
        TestUi ui;
        auto w = openOptions(ui, usedRow(), [&](QDialog& d) {
            box(d, "Name_txt")->setText("Applied");
            click(d, "Opt2");
            ui.expectBox("Are You Sure?", "Are you sure you want to restore default reminders", vbNo,
                         vbYesNo + vbQuestion);
            click(d, "RestoreReminders_cmd");
            QCOMPARE(child<QPlainTextEdit>(d, "Reminder1")->toPlainText(), "Pay");
            ui.expectBox("Are You Sure?", "Are you sure you want to restore default reminders", vbYes);
            click(d, "RestoreReminders_cmd");
            click(d, "cmdApply");
            QCOMPARE(firstRowValue("System", "BusinessName").toText(), "Applied");
            box(d, "Phone_txt")->setText("999");
            child<QPlainTextEdit>(d, "Reminder2")->setPlainText("Changed");
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
        compareSystemRow({"BusinessName=Applied", "InvoiceType=2", "Phone=0123"});
        QCOMPARE(settings.BusinessName.trimmed(), "Applied");
        QCOMPARE(settings.Phone.trimmed(), "0123");
        QCOMPARE(firstRowValue("System", "Reminder1").toText(),
                 "We have not been able to register payment for the invoice listed above and assume there has been "
                 "an oversight.We would appreciate payment in the coming days.");
        QCOMPARE(settings.Reminder2, firstRowValue("System", "Reminder2").toText());
        QVERIFY(settings.Reminder2.startsWith("The invoice listed above has not been paid"));
    }

    // Apply, OK and "Check Prefix Numbers" begin with the length and in-use checks; a
    // failure shows the Prefixes page under the tab that was selected, and saves nothing.
    void checks_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("startBox");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("freeForm");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");

        auto row = [](const char* name, const char* command, const char* startBox, const char* start,
                      const char* freeForm, const QString& title, const QString& text) {
            QTest::newRow(name) << QString(command) << QString(startBox) << QString(start) << QString(freeForm) << title
                                << text;
        };
        const QString shortText = "Please enter a number 4 or more numbers long!";
        const QString inUse = "This %1 number has already been used. Please try again!";
        row("apply: invoice too short", "cmdApply", "InvStart_txt", "  12", "", "Invoice Number", shortText);
        row("ok: item too short", "cmdOK", "PrtStart_txt", "123", "", "Item Number", shortText);
        row("ok: invoice in use, other case", "cmdOK", "InvStart_txt", "100007", "", "Invoice Number Already In Use",
            inUse.arg("Invoice"));
        row("apply: customer in use", "cmdApply", "CusStart_txt", "100007", "", "Customer Number Already In Use",
            inUse.arg("Customer"));
        row("check: item in use", "CheckRanges_cmd", "PrtStart_txt", "100007", "", "Item\\Part Number Already In Use",
            inUse.arg("Item\\Part"));
        row("check: free form passes", "CheckRanges_cmd", "CusStart_txt", "12", "Cus_chk", "All OK",
            "All prefix numbers are OK");
        row("check: credit never checked", "CheckRanges_cmd", "CrdStart_txt", "1", "", "All OK",
            "All prefix numbers are OK");
    }
    void checks()
    {
        QFETCH(QString, command);
        QFETCH(QString, startBox);
        QFETCH(QString, start);
        QFETCH(QString, freeForm);
        QFETCH(QString, title);
        QFETCH(QString, text);
        TestUi ui;
        QMap<QString, Value> row = usedRow();
        row.insert("InvPrefix", "inv");
        makeDataFile(row);
        addRow("Invoices", {{"InvNo", "INV100007"}});
        addRow("Customers", {{"CustID", "CUS100007"}});
        addRow("Parts", {{"ID", "PRT100007"}});
        const bool refused = title != "All OK";
        auto w = openOptions(ui, {}, [&](QDialog& d) {
            d.show();
            QApplication::setActiveWindow(&d);
            QVERIFY(QTest::qWaitForWindowActive(&d));
            auto* tabs = child<QTabBar>(d, "tbsOptions");
            tabs->setCurrentIndex(6);
            if (!freeForm.isEmpty())
                click(d, qPrintable(freeForm));
            child<QLineEdit>(d, startBox)->setText(start);
            box(d, "Name_txt")->setText("Changed");
            ui.expectBox(title, text, vbOK, refused ? vbExclamation : vbInformation);
            click(d, qPrintable(command));
            if (refused) {
                QVERIFY(d.isVisible());
                QVERIFY(shown(d, "Frame1(2)") && !shown(d, "Frame1(6)"));
                QCOMPARE(tabs->currentIndex(), 6);
                QCOMPARE(QApplication::focusWidget(), child<QWidget>(d, startBox));
            }
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
        QCOMPARE(firstRowValue("System", "BusinessName").toText(), "Velk Ltd");
    }

    void logo_data()
    {
        QTest::addColumn<QStringList>("choices"); // "-" for a cancelled dialog
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("tooLong");
        const QString longest = "/" + QString(199, 'p');
        QTest::newRow("200 characters") << QStringList{longest} << longest << false;
        QTest::newRow("201 characters") << QStringList{longest + "x"} << "" << true;
        QTest::newRow("cancel at first") << QStringList{"-"} << "" << false;
        QTest::newRow("cancel after a choice") << QStringList{"/pics/a.jpg", "-"} << "/pics/a.jpg" << false;
    }
    void logo()
    {
        QFETCH(QStringList, choices);
        QFETCH(QString, path);
        QFETCH(bool, tooLong);
        TestUi ui;
        auto w = openOptions(ui, usedRow(), [&](QDialog& d) {
            for (const QString& choice : choices) {
                ui.expectOpen(choice == "-" ? std::nullopt : std::optional<QString>(choice));
                if (tooLong)
                    ui.expectBox("Path too Long", "Path too long. Move the picture to another location and try again.",
                                 vbOK, vbExclamation);
                click(d, "Select_cmd");
            }
            QCOMPARE(child<QLabel>(d, "path_lbl")->text(), path);
            click(d, "cmdOK");
        });
        VERIFY_UI(ui);
        QCOMPARE(ui.dialogs.first().filter, "Picture File (*.jpg,*.bmp)|*.bmp;*.jpg");
        QCOMPARE(firstRowValue("System", "logopath").toText(), path);
        QCOMPARE(settings.Logopath, path);
    }

    // With no settings row the window starts from the defaults and OK adds the row.
    void noSettingsRow()
    {
        TestUi ui;
        makeDataFile();
        auto w = openOptions(ui, {}, [&](QDialog& d) {
            QVERIFY(child<QCheckBox>(d, "Terms_Chk")->isChecked() && child<QCheckBox>(d, "Shipping_chk")->isChecked() &&
                    child<QCheckBox>(d, "Statement_chk")->isChecked());
            QCOMPARE(child<QPlainTextEdit>(d, "Reminder3")->toPlainText().left(27), "This is the last (third) an");
            QCOMPARE(box(d, "currency_txt")->text(), ""); // no currency: "Other" was clicked
            box(d, "TaxName_txt")->setText("GST");
            click(d, "Option1"); // over what was typed
            QCOMPARE(box(d, "TaxName_txt")->text(), "Tax");
            click(d, "cmdOK");
        });
        VERIFY_UI(ui);
        QCOMPARE(rowCount("System"), 1);
        compareSystemRow({"Currency=$", "includeterms=1", "InvPrefix=INV", "PartPrefix=PRT", "DefaultEnd=22/11/2026"});
    }

    // Boxes of several lines take no more than their limit, typed or pasted.
    void multiLineLimits_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("limit");
        QTest::newRow("address") << "Address_txt" << 150;
        QTest::newRow("statement") << "statement_txt" << 100;
        QTest::newRow("terms") << "terms_txt" << 200;
        QTest::newRow("reminder") << "Reminder3" << 250;
    }
    void multiLineLimits()
    {
        QFETCH(QString, name);
        QFETCH(int, limit);
        TestUi ui;
        auto w = openOptions(ui, usedRow(), [&](QDialog& d) {
            auto* box = child<QPlainTextEdit>(d, name);
            box->setPlainText(QString(limit - 1, 'a'));
            box->moveCursor(QTextCursor::End);
            QTest::keyClicks(box, "xyz");
            QCOMPARE(box->toPlainText(), QString(limit - 1, 'a') + "x");
            box->setPlainText(QString(limit + 40, 'b'));
            QCOMPARE(box->toPlainText().size(), limit);
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
    }

    // Ctrl+Tab moves to the next tab from any control, and from the last to the first.
    void ctrlTab()
    {
        TestUi ui;
        auto w = openOptions(ui, usedRow(), [&](QDialog& d) {
            auto* tabs = child<QTabBar>(d, "tbsOptions");
            QTest::keyClick(box(d, "Name_txt"), Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), 1);
            QVERIFY(shown(d, "Frame1(1)") && !shown(d, "Frame1(0)"));
            tabs->setCurrentIndex(7);
            QTest::keyClick(child<QWidget>(d, "Reminder2"), Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), 0);
            QVERIFY(shown(d, "Frame1(0)") && !shown(d, "Frame1(7)"));
            QCOMPARE(tabs->tabText(4), "Invoice 1");
            QCOMPARE(tabs->tabToolTip(0), "Set Name & Address");
            QCOMPARE(child<QGroupBox>(d, "Frame1(5)")->title(), "Invoice 2  Layout");
            click(d, "cmdCancel");
        });
        VERIFY_UI(ui);
    }
};

QObject* newOptionsTest()
{
    return new OptionsTest;
}

#include "tst_frmOptions.moc"
