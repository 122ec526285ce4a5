#include "OptionsTests.h"

#include "options/SetupControls.h"
#include "options/frm_setup.h"
#include "platform/Activation.h"
#include "platform/Window.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

using namespace platform;

namespace
{

QString exampleText(QDialog& d, const char* name)
{
    return child<QLabel>(d, QLatin1String(name))->text();
}
bool pageShown(QDialog& d, int i)
{
    return child<QWidget>(d, QStringLiteral("Frame1(%1)").arg(i))->isVisible();
}

const QString Reminder1 = QStringLiteral(
    "We have not been able to register payment for the invoice listed above and assume there has been an "
    "oversight.We would appreciate payment in the coming days.");

} // namespace

class SetupTest : public QObject
{
    Q_OBJECT
private slots:
    // A first start with no data file: the wizard over the main window, its three pages,
    // and Finish writing the row and the record; the user goes on in the same run.
    void firstRunFinish()
    {
        TestUi ui;
        frmMain w;
        w.MDIForm_Load();
        ui.onModal("frm_setup", [&](QDialog& d) {
            [&] {
                showUp(d);
                QVERIFY(pageShown(d, 0) && !pageShown(d, 1) && !pageShown(d, 2));
                QVERIFY(!child<QPushButton>(d, "Back_cmd")->isEnabled());
                QVERIFY(!child<QPushButton>(d, "Finish_cmd")->isVisible());
                QCOMPARE(QApplication::focusWidget(), box(d, "Name_txt"));
                QTest::keyClicks(box(d, "Name_txt"), "  Velk Ltd  ");
                QTest::keyClicks(child<QPlainTextEdit>(d, "Address_txt"), " 1 High St");
                QTest::keyClicks(box(d, "Phone_txt"), " 0123 ");
                click(d, "Next_cmd");
                QVERIFY(!pageShown(d, 0) && pageShown(d, 1));
                QVERIFY(child<QRadioButton>(d, "Option1")->isChecked());
                QVERIFY(!box(d, "TaxName_txt")->isVisible());
                click(d, "Option2");
                click(d, "TaxEnabled_chk");
                QVERIFY(box(d, "TaxName_txt")->isVisible() && child<QLabel>(d, "tax7_lbl")->isVisible());
                QTest::keyClicks(box(d, "TaxNumber_txt"), "GB 123");
                click(d, "Next_cmd");
                QVERIFY(pageShown(d, 2));
                QVERIFY(!child<QPushButton>(d, "Next_cmd")->isVisible());
                QVERIFY(child<QPushButton>(d, "Finish_cmd")->isVisible());
                QCOMPARE(exampleText(d, "PrtExample_lbl"), "ITE100001");
                box(d, "CrdPrefix_txt")->clear();
                QTest::keyClicks(box(d, "CrdPrefix_txt"), "CN");
                QCOMPARE(exampleText(d, "CrdExample_lbl"), "CN200001");
                click(d, "Part_chk");
                ui.expectBox("Update?", "Are you sure you want to update?", vbYes, vbYesNo + vbQuestion);
                click(d, "Finish_cmd");
            }();
            return d.result();
        });
        platform::activate(&w);
        VERIFY_UI(ui);
        QCOMPARE(SetupDone, 1);
        QVERIFY(!w.unloaded());
        QCOMPARE(FrontCount, 1);

        QCOMPARE(rowCount("System"), 1);
        compareSystemRow({"BusinessName=Velk Ltd",
                          "Address= 1 High St",
                          "Phone= 0123 ",
                          "Currency=\u00a3",
                          "TaxName=Vat",
                          "TaxAmount=17.5",
                          "TaxNo=GB 123",
                          "TaxEnabled=1",
                          "InvPrefix=INV",
                          "PartPrefix=ITE",
                          "CustPrefix=CUS",
                          "Invstart=100001",
                          "CrdStart=200001",
                          "FreeformPart=1",
                          "FreeformInv=0",
                          "DefaultStart=01/01/2005",
                          "DefaultEnd=22/11/2026",
                          "Debtorstart=0",
                          "Reminder1=" + Reminder1,
                          "includeshipping=0",
                          "includeterms=1",
                          "Statement=Thank you for your business",
                          "terms1=Terms & Conditions:\nTo edit terms & conditions goto Options on the main menu and "
                          "select the Invoice tab.",
                          "ConfirmBackup=1",
                          "mobileVisible=1",
                          "text4Visible=1",
                          "text2Name=Shipping No",
                          "text3Name=Sales No",
                          "present=1",
                          "InvoiceType=1"});
        QVERIFY(firstRowValue("System", "CrdPrefix").isNull());
        QVERIFY(firstRowValue("System", "ConfirmExit") == Value(0));

        QCOMPARE(settings.BusinessName.text(), QString("Velk Ltd").leftJustified(30));
        QCOMPARE(settings.Phone.trimmed(), "0123");
        QCOMPARE(settings.CrdPrefix, "CN");
        QCOMPARE(settings.TaxAmount, 17.5);
        QCOMPARE(settings.freeformPart, 1);
        QCOMPARE(settings.text1Name.trimmed(), "Sales Person");
    }

    // Cancel ends the program and leaves the data file without a row; the next start
    // runs the wizard again.
    void firstRunCancel_data()
    {
        QTest::addColumn<bool>("fileExists");
        QTest::newRow("no data file") << false;
        QTest::newRow("data file without a settings row") << true;
    }
    void firstRunCancel()
    {
        QFETCH(bool, fileExists);
        TestUi ui;
        if (fileExists) {
            makeDataFile();
            resetGlobals();
        }
        frmMain w;
        w.MDIForm_Load();
        ui.onModal("frm_setup", [&](QDialog& d) {
            ui.expectBox("Cancel?", "Are you sure you want to cancel?", vbNo, vbYesNo + vbQuestion);
            click(d, "Cancel_cmd");
            ui.expectBox("Cancel?", "Are you sure you want to cancel?", vbYes, vbYesNo + vbQuestion);
            click(d, "Cancel_cmd");
            return d.result();
        });
        platform::activate(&w);
        VERIFY_UI(ui);
        QCOMPARE(SetupDone, 0);
        QVERIFY(w.unloaded());
        QVERIFY(QFile::exists(ui.file("data.mdb")));

        resetGlobals();
        frmMain again;
        again.MDIForm_Load();
        QCOMPARE(rowCount("System"), 0);
        ui.onModal("frm_setup", [&](QDialog& d) {
            ui.expectBox("Cancel?", "Are you sure you want to cancel?", vbYes);
            click(d, "Cancel_cmd");
            return d.result();
        });
        platform::activate(&again);
        VERIFY_UI(ui);
        QVERIFY(again.unloaded());
    }

    // Finish checks the three numbered series in the order invoice, item, customer.
    void finishLengthCheck_data()
    {
        QTest::addColumn<QString>("startBox");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("freeFormTick");
        QTest::addColumn<QString>("title");

        auto row = [](const char* name, const char* box, const char* typed, const char* tick, const char* title) {
            QTest::newRow(name) << QString(box) << QString(typed) << QString(tick) << QString(title);
        };
        row("invoice of 3", "InvStart_txt", "123", "", "Invoice Number");
        row("invoice of 3, free form", "InvStart_txt", "123", "Inv_chk", "");
        row("item of 3", "PrtStart_txt", "999", "", "Item Number");
        row("customer of 2", "CusStart_txt", "12", "", "Customer Number");
        row("credit of 1", "CrdStart_txt", "1", "", "");
        row("four is enough", "InvStart_txt", "0001", "", "");
    }
    void finishLengthCheck()
    {
        QFETCH(QString, startBox);
        QFETCH(QString, typed);
        QFETCH(QString, freeFormTick);
        QFETCH(QString, title);
        TestUi ui;
        makeDataFile();
        frm_setup d;
        showUp(d);
        click(d, "Next_cmd");
        click(d, "Next_cmd");
        if (!freeFormTick.isEmpty()) {
            // The tick closes its row's boxes and leaves their text and example alone.
            child<QCheckBox>(d, freeFormTick)->click();
            QVERIFY(!box(d, "InvPrefix_txt")->isEnabled() && !box(d, "InvStart_txt")->isEnabled());
            QVERIFY(box(d, "CusStart_txt")->isEnabled());
            QCOMPARE(exampleText(d, "InvExample_lbl"), "INV100001");
        }
        // A short customer number elsewhere shows that later series wait their turn.
        box(d, "CusStart_txt")->setText("12");
        QLineEdit* start = child<QLineEdit>(d, startBox);
        start->setText(typed);
        if (title.isEmpty()) {
            if (startBox != "CusStart_txt")
                box(d, "CusStart_txt")->setText("100001");
            ui.expectBox("Update?", "Are you sure you want to update?", vbNo);
        } else {
            ui.expectBox(title, "Please enter a number 4 or more numbers long!", vbOK, vbExclamation);
        }
        click(d, "Finish_cmd");
        VERIFY_UI(ui);
        if (!title.isEmpty())
            QCOMPARE(QApplication::focusWidget(), start);
        QVERIFY(d.isVisible());
        QCOMPARE(rowCount("System"), 0);
        QCOMPARE(SetupDone, 0);
    }

    // What the keys leave in the boxes, and the example that follows them.
    void keys_data()
    {
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("exampleName");
        QTest::addColumn<QString>("example");

        auto row = [](const char* name, const char* box, const char* typed, const char* text,
                      const char* exampleName = "", const char* example = "") {
            QTest::newRow(name) << QString(box) << QString(typed) << QString(text) << QString(exampleName)
                                << QString::fromUtf8(example);
        };
        row("start: digits only", "InvStart_txt", "12a-3 4.5", "12345", "InvExample_lbl", "INV12345");
        row("start: eight at most", "CusStart_txt", "1234567890", "12345678", "CusExample_lbl", "CUS12345678");
        row("credit start: digits only", "CrdStart_txt", "2x", "2", "CrdExample_lbl", "CRD2");
        row("prefix: anything, four at most", "PrtPrefix_txt", "a 1bX", "a 1b", "PrtExample_lbl", "a 1b100001");
        row("percent: one point", "TaxAmount_txt", "17.5.x", "17.5");
        row("percent: five at most", "TaxAmount_txt", "123456", "12345");
        row("currency: one character", "currency_txt", "EUR", "E");
        row("tax name: ten at most", "TaxName_txt", "GoodsAndServices", "GoodsAndSe");
    }
    void keys()
    {
        QFETCH(QString, boxName);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QFETCH(QString, exampleName);
        QFETCH(QString, example);
        TestUi ui;
        makeDataFile();
        frm_setup d;
        QLineEdit* b = child<QLineEdit>(d, boxName);
        b->clear();
        QTest::keyClicks(b, typed);
        QCOMPARE(b->text(), text);
        QTest::keyClick(b, Qt::Key_Backspace);
        QCOMPARE(b->text(), text.chopped(1));
        QTest::keyClicks(b, text.right(1));
        if (!exampleName.isEmpty())
            QCOMPARE(exampleText(d, qPrintable(exampleName)), example);
        VERIFY_UI(ui);
    }

    // The wizard stands in the middle of the screen, sized once for every page with the
    // tax rows shown, and each box shows as many characters as it takes.
    void sizedOnceAndCentred()
    {
        TestUi ui;
        makeDataFile();
        frm_setup d;
        showUp(d);
        const QSize size = d.size();
        QVERIFY((d.geometry().center() - d.screen()->availableGeometry().center()).manhattanLength() < 8);
        click(d, "Next_cmd");
        click(d, "TaxEnabled_chk");
        QVERIFY(box(d, "TaxName_txt")->isVisible());
        click(d, "Next_cmd");
        QCOMPARE(d.size(), size);
        const int fourCapitals = box(d, "InvPrefix_txt")->fontMetrics().horizontalAdvance(QStringLiteral("WWWW"));
        for (const char* name : {"InvPrefix_txt", "CrdPrefix_txt", "PrtPrefix_txt", "CusPrefix_txt"})
            QVERIFY2(box(d, name)->width() > fourCapitals, name);
        for (QLineEdit* b : d.findChildren<QLineEdit*>())
            QVERIFY2(b->width() >= fullLimitWidth(b), qPrintable(b->objectName()));
        VERIFY_UI(ui);
    }
};

QObject* newSetupTest()
{
    return new SetupTest;
}

#include "tst_setup.moc"
