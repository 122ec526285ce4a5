// "Customize Options": every column it loads and saves, and what it leaves alone.

#include "OptionsTests.h"

#include "options/frmInvoiceSet.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Functions.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace platform;

namespace
{

const QString LongTerms = QString(230, QLatin1Char('t')) + QStringLiteral(" end");

QMap<QString, Value> invoiceRow(const QString& type)
{
    return {{"BusinessName", "Velk Ltd"},  {"Text1Visible", 1},
            {"Text1Name", "Sales Person"}, {"Text2Visible", 0},
            {"Text2Name", "Order"},        {"Text3Visible", 1},
            {"Text4Name", "Tracking"},     {"InvoiceType", type},
            {"includeshipping", 1},        {"includeterms", 0},
            {"includestatement", 1},       {"Statement", "Thanks"},
            {"terms1", LongTerms},         {"logopath", "/nowhere/logo.jpg"}};
}

QStringList ticks(frmInvoiceSet& w)
{
    QStringList out;
    for (int i = 1; i <= 4; ++i) {
        auto* c = child<QCheckBox>(w, QStringLiteral("chk%1").arg(i));
        out << (c->isChecked() ? "[x] " : "[ ] ") + c->text();
    }
    return out;
}

QString checkedType(frmInvoiceSet& w)
{
    for (int i = 1; i <= 6; ++i)
        if (child<QRadioButton>(w, QStringLiteral("Option%1").arg(i))->isChecked())
            return QString::number(i);
    return QString();
}

QString text(frmInvoiceSet& w, const char* name)
{
    return child<QPlainTextEdit>(w, QLatin1String(name))->toPlainText();
}

} // namespace

class InvoiceSetTest : public QObject
{
    Q_OBJECT
private slots:
    void loadsEveryColumn_data();
    void loadsEveryColumn();
    void okWritesEveryColumn();
    void cancelSavesNothing();
};

void InvoiceSetTest::loadsEveryColumn_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("option");
    QTest::newRow("type 4") << "4"
                            << "4";
    QTest::newRow("empty selects the first") << ""
                                             << "1";
    QTest::newRow("7 selects none") << "7"
                                    << "";
}

void InvoiceSetTest::loadsEveryColumn()
{
    QFETCH(QString, stored);
    QFETCH(QString, option);
    TestUi ui;
    makeDataFile(invoiceRow(stored));
    frmInvoiceSet w;
    QCOMPARE(w.windowTitle(), QStringLiteral("Customize Options"));
    QCOMPARE(ticks(w),
             (QStringList{"[x] Include Sales Person", "[ ] Include Order", "[x] Include ", "[ ] Include Tracking"}));
    QCOMPARE(checkedType(w), option);
    QVERIFY(child<QCheckBox>(w, "Shipping_chk")->isChecked());
    QVERIFY(!child<QCheckBox>(w, "Terms_Chk")->isChecked());
    QVERIFY(child<QCheckBox>(w, "Statement_chk")->isChecked());
    QCOMPARE(text(w, "statement_txt"), QStringLiteral("Thanks"));
    QCOMPARE(text(w, "terms_txt"), LongTerms); // no limit here
    QCOMPARE(child<QLabel>(w, "path_lbl")->text(), QStringLiteral("/nowhere/logo.jpg"));
    // The sample follows the ticks.
    QVERIFY(!child<QWidget>(w, "terms1")->isVisibleTo(child<QWidget>(w, "InvoiceFrame")));
    QVERIFY(child<QWidget>(w, "shipping2")->isVisibleTo(child<QWidget>(w, "InvoiceFrame")));
    // Loading copies nothing into the settings record.
    QCOMPARE(settings.Statement, QString());
    VERIFY_UI(ui);
}

void InvoiceSetTest::okWritesEveryColumn()
{
    TestUi ui;
    makeDataFile(invoiceRow("7"));
    settings.BusinessName = QStringLiteral("Velk Ltd");
    frmInvoiceSet w;
    child<QCheckBox>(w, "chk2")->click();
    child<QCheckBox>(w, "chk1")->click();
    auto* name = child<QLineEdit>(w, "Text1");
    name->clear();
    QTest::keyClicks(name, "  Rep ");
    QCOMPARE(child<QCheckBox>(w, "chk1")->text(), QStringLiteral("Include   Rep ")); // at each key
    child<QPushButton>(w, "customize_cmd")->click();
    child<QCheckBox>(w, "Shipping_chk")->click();
    child<QCheckBox>(w, "Terms_Chk")->click();
    child<QPlainTextEdit>(w, "statement_txt")->setPlainText(QStringLiteral("  With thanks  "));
    child<QPushButton>(w, "Back_cmd")->click();
    child<QPushButton>(w, "Erase_cmd")->click();
    ui.expectOpen(QStringLiteral(" /pics/logo.bmp"));
    child<QPushButton>(w, "Select_cmd")->click();
    child<QPushButton>(w, "ok_cmd")->click();
    // None selected: the type stays "7"; the terms longer than 200 are kept whole.
    compareSystemRow({"text1Visible=0", "text2Visible=1", "text3Visible=1", "text4Visible=0", "text1Name=Rep",
                      "text2Name=Order", "text3Name=", "text4Name=Tracking", "InvoiceType=7", "includeStatement=1",
                      "includeterms=1", "includeshipping=0", "Statement=With thanks", "terms1=" + LongTerms,
                      "logopath= /pics/logo.bmp", "BusinessName=Velk Ltd"});
    QCOMPARE(w.result(), int(QDialog::Accepted));
    const SettingsRecord& s = settings;
    QCOMPARE((QList<int>{s.text1Visible, s.text2Visible, s.text3Visible, s.text4Visible, s.IncludeStatement,
                         s.IncludeTerms, s.IncludeShipping}),
             (QList<int>{0, 1, 1, 0, 1, 1, 0}));
    QCOMPARE(s.text1Name.text(), QStringLiteral("Rep").leftJustified(30));
    QCOMPARE(s.Statement, QStringLiteral("With thanks"));
    QCOMPARE(s.terms1, LongTerms);
    QCOMPARE(s.Logopath, QStringLiteral(" /pics/logo.bmp"));
    QCOMPARE(s.BusinessName.trimmed(), QStringLiteral("Velk Ltd"));
    VERIFY_UI(ui);
}

void InvoiceSetTest::cancelSavesNothing()
{
    TestUi ui;
    makeDataFile(invoiceRow("2"));
    settings.Logopath = QStringLiteral("/nowhere/logo.jpg");
    const QByteArray before = fileBytes(ui.file("data.mdb"));
    frmInvoiceSet w;
    child<QRadioButton>(w, "Option5")->click();
    ui.expectOpen(QStringLiteral("/pics/other.jpg"));
    child<QPushButton>(w, "Select_cmd")->click();
    child<QPushButton>(w, "cancel_cmd")->click();
    QCOMPARE(fileBytes(ui.file("data.mdb")), before);
    QCOMPARE(settings.Logopath, QStringLiteral("/nowhere/logo.jpg"));
    QCOMPARE(settings.InvoiceType, QString());
    VERIFY_UI(ui);
}

VELK_TEST(InvoiceSetTest)
#include "tst_invoiceset.moc"
