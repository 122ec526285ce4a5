// E-invoicing data kept beside the tables every file has.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "einvoice/EInvoice.h"
#include "einvoice/EInvoiceFile.h"
#include "einvoice/PaymentCode.h"
#include "invoices/frmAddInv.h"
#include "invoices/frmInvoice.h"
#include "report/Report.h"
#include "shell/EInvoiceCommand.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Globals.h"
#include "store/ListView.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QtTest>

namespace
{

using namespace einvoice;
using namespace platform;

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
    // The official artefacts, kept with their licence beside these tests.
    const QString validator = QStringLiteral(VELK_SOURCE_DIR "/tests/einvoice/validator/validate");
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

    // The program started for a German seller with its e-invoicing data, and invoice INV7 for
    // customer C1 saved through the invoice window: lines of 1.23 and 2.46 taxed at 19 %,
    // less the discount given in percent.
    static std::unique_ptr<frmMain> withInvoice(TestUi& ui, int discountPercent)
    {
        auto main = startProgram(ui, {{"BusinessName", "Velk Test GmbH"},
                                      {"Address", "Hauptstr. 1\nBerlin"},
                                      {"TaxEnabled", 1},
                                      {"TaxAmount", 19.0},
                                      {"TaxName", "VAT"},
                                      {"TaxNo", "DE123456789"},
                                      {"Currency", QString::fromUtf8("€")},
                                      {"InvoiceType", "1"},
                                      {"ConfirmAll", 1}});
        {
            auto db = Database::open(ui.file("data.mdb"));
            for (const auto& [name, value] : {std::pair{"Country", "DE"},
                                              {"VatId", "DE123456789"},
                                              {"Currency", "EUR"},
                                              {"IBAN", "DE89370400440532013000"},
                                              {"PaymentTerms", "30 days net"}})
                setEInvoiceSetting(*db, name, value);
            setEInvoiceCustomerValue(*db, "C1", "Country", "DE");
        }
        addRow("Customers", {{"CustID", "C1"},
                             {"LastName", QString::fromUtf8("Kunde & Söhne")},
                             {"Address", "Ringstr. 5"},
                             {"City", "Hamburg"},
                             {"Postcode", "20095"}});
        addRow("Invoices", {{"InvNo", "INV7"},
                            {"Date", QDate(2026, 11, 20)},
                            {"CustNo", "C1"},
                            {"CustomerName", QString::fromUtf8("Kunde & Söhne")},
                            {"DiscountPercentage", discountPercent},
                            {"TaxPer", 19.0}});
        for (const auto& [description, ticks] : {std::pair{"Bolt", 12300}, {"Nut", 24600}})
            addRow("InvoiceD", {{"InvNo", "INV7"},
                                {"Qty", 1},
                                {"Description", description},
                                {"Amount", Currency::fromTicks(ticks)},
                                {"Total", Currency::fromTicks(ticks)},
                                {"Taxable", 1}});
        EditInvoiceMode = 1;
        OpenInvoiceNo = "INV7";
        frmAddInv w;
        click(w, "update_cmd"); // the window's own figures, saved
        EditInvoiceMode = 1;
        OpenInvoiceNo = "INV7";
        return main;
    }

    static void chooseFormat(TestUi& ui, const QString& option)
    {
        ui.onModal("frmSaveEInvoice", [option](QDialog& d) {
            d.findChild<QRadioButton*>(option)->setChecked(true);
            return int(QDialog::Accepted);
        });
    }

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

    // Made from the invoice window, as the user does: the format asked, the file offered as
    // the invoice's number, and the result passing the official rules. A Factur-X file
    // carries the XML as its data and says so in its metadata, its page is the invoice.
    void windowSavesEInvoice_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("file");
        QTest::newRow("Factur-X") << "FacturX_opt"
                                  << "INV7.pdf";
        QTest::newRow("XML") << "Cii_opt"
                             << "INV7.xml";
    }
    void windowSavesEInvoice()
    {
        QFETCH(QString, option);
        QFETCH(QString, file);
        TestUi ui;
        auto main = withInvoice(ui, 0);
        const QString path = ui.file(file);
        chooseFormat(ui, option);
        ui.expectSave(path);
        {
            // Factur-X from the print preview's button, the XML from the invoice list's menu.
            if (option == "FacturX_opt") {
                frmAddInv w;
                w.Print_Invoice();
                QCOMPARE(ui.reports.size(), 1);
                const report::Report& shown = *ui.reports[0].report;
                QCOMPARE(shown.commands.size(), size_t(1));
                QCOMPARE(shown.commands[0].name, "EInvoice_cmd");
                QCOMPARE(shown.commands[0].caption, QString::fromUtf8("Save as &e-invoice…"));
                shown.commands[0].run(shown);
            } else {
                frmInvoice list;
                auto* rows = list.findChild<ListView*>("Inv_lst");
                QCOMPARE(rows->text(0, 0), "INV7");
                rows->selectRow(0);
                auto* command = list.findChild<QAction*>("mnuEInvoice");
                QCOMPARE(command->text(), QString::fromUtf8("Save as e-invoice…"));
                command->trigger();
            }
        }
        QCOMPARE(QFileInfo(ui.dialogs.last().fileName).fileName(), file);
        QCOMPARE(validatorVerdict(keep("window-" + file, fileBytes(path))), QString());
        if (file.endsWith(".pdf")) {
            QVERIFY(runTool("qpdf", {"--list-attachments", path}).contains("factur-x.xml"));
            const QString inside = runTool("qpdf", {"--qdf", "--object-streams=disable", path, "-"});
            QVERIFY(inside.contains("/AFRelationship /Data"));
            QVERIFY(inside.contains(QRegularExpression("/AF \\[\\s*\\d+ 0 R\\s*\\]")));
            QVERIFY(inside.contains("<pdfaid:part>3</pdfaid:part>"));
            QVERIFY(inside.contains("<fx:ConformanceLevel>EN 16931</fx:ConformanceLevel>"));
            // The document information agrees with the metadata, as PDF/A asks.
            const QString info = runTool("pdfinfo", {path});
            QVERIFY2(info.contains(QRegularExpression("Producer:\\s+Velk Invoice\\n")), qPrintable(info));
            QVERIFY2(info.contains(QRegularExpression("Title:\\s+Invoice INV7\\n")), qPrintable(info));
            QVERIFY(inside.contains("<xmp:CreateDate>2026-11-22T10:30:15"));
            QVERIFY(inside.contains("/OutputIntents"));
            const QString page = pdfText(path).simplified();
            QVERIFY2(page.contains("INVOICE - INV7"), qPrintable(page));
            QVERIFY2(page.contains(QString::fromUtf8("Total €4.39")), qPrintable(page)); // 3.69 and 0.70 tax
        } else {
            QVERIFY(fileBytes(path).contains("<ram:GrandTotalAmount>4.39</ram:GrandTotalAmount>"));
        }
        VERIFY_UI(ui);
    }

    // An invoice whose discount the printed tax ignores: the rule and the amounts are told;
    // No writes nothing, Yes writes a corrected document whose page shows the norm's figures.
    void conflictIsAskedAndCorrected_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("cancelled") << int(vbNo);
        QTest::newRow("issued corrected") << int(vbYes);
    }
    void conflictIsAskedAndCorrected()
    {
        QFETCH(int, answer);
        TestUi ui;
        auto main = withInvoice(ui, 10);
        const QString path = ui.file("INV7.pdf");
        chooseFormat(ui, "FacturX_opt");
        ui.expectBox("Save as e-invoice",
                     "Invoice INV7 cannot be an EN 16931 e-invoice with its own figures.\n\nBR-S-08: the discount "
                     "of 0.37 lowers the taxed base to 3.32, so the tax at 19.00 % is 0.63; the invoice shows tax "
                     "of 0.70 on the amount before the discount.\n\nIssue it as a corrected document with the "
                     "figures EN 16931 gives? Its page will show the same figures as its data.",
                     answer);
        if (answer == vbYes)
            ui.expectSave(path);
        {
            frmAddInv w;
            w.Save_einvoice();
        }
        QCOMPARE(QFileInfo::exists(path), answer == vbYes);
        if (answer == vbYes) {
            QCOMPARE(validatorVerdict(keep("window-corrected-INV7.pdf", fileBytes(path))), QString());
            const QString page = pdfText(path).simplified();
            QVERIFY2(page.contains(QString::fromUtf8("VAT @ 19% €0.63")) &&
                         page.contains(QString::fromUtf8("Balance Due €3.95")),
                     qPrintable(page)); // 3.32 + 0.63
        }
        VERIFY_UI(ui);
    }

    // Only a saved invoice: a new one, not yet in the file, is refused with a reason.
    void unsavedInvoiceRefused()
    {
        TestUi ui;
        auto main = withInvoice(ui, 0);
        EditInvoiceMode = 0;
        ui.expectBox("Save as e-invoice",
                     "Please save the invoice first: the e-invoice is made from the invoice as saved.");
        frmAddInv w;
        w.Save_einvoice();
        VERIFY_UI(ui);
    }

    // A folder that cannot take the file is told, and no file is left half written.
    void unwritableFolderTold()
    {
        TestUi ui;
        auto main = withInvoice(ui, 0);
        const QString path = ui.file("gone/INV7.xml");
        chooseFormat(ui, "Cii_opt");
        ui.expectSave(path);
        ui.expectBox("Save as e-invoice", "The e-invoice could not be written: " + path);
        frmAddInv w;
        w.Save_einvoice();
        QVERIFY(!QFileInfo::exists(ui.file("gone")));
        VERIFY_UI(ui);
    }

    // What the rules need and the data lacks is listed with where to fill it in, before
    // anything is asked; a customer without a country is taken to be in the seller's.
    void missingDataListed()
    {
        TestUi ui;
        auto main = withInvoice(ui, 0);
        {
            auto db = Database::open(ui.file("data.mdb"));
            setEInvoiceSetting(*db, "VatId", "");
            setEInvoiceSetting(*db, "Country", "");
            setEInvoiceCustomerValue(*db, "C1", "Country", "");
        }
        ui.expectBox("Save as e-invoice", "Invoice INV7 cannot be an e-invoice yet. EN 16931 needs:\n"
                                          "- the seller's country code (Tools > E-invoicing)\n"
                                          "- the seller's VAT identifier (Tools > E-invoicing)\n"
                                          "- the customer's country code (E-invoicing on the customer's record)");
        frmAddInv w;
        w.Save_einvoice();
        QCOMPARE(ui.dialogs.size(), 0);
        VERIFY_UI(ui);
        // Reverse charge on an untaxed line needs the customer's VAT identifier.
        Invoice reverse = sample(2);
        reverse.untaxedCategory = "AE";
        reverse.lines[1].taxed = false;
        QCOMPARE(missingOf(reverse), QStringList{"the customer's VAT identifier, for reverse charge (E-invoicing on "
                                                 "the customer's record)"});
        reverse.buyer.vatId = "FR12345678901";
        QCOMPARE(missingOf(reverse), QStringList());
    }

    // The command line form: both formats; a conflict refused unless --corrected.
    void commandLine_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<int>("discount");
        QTest::addColumn<bool>("corrected");
        QTest::addColumn<int>("status");
        QTest::newRow("cii") << "cii" << 0 << false << 0;
        QTest::newRow("facturx") << "facturx" << 0 << false << 0;
        QTest::newRow("conflict refused") << "facturx" << 10 << false << 1;
        QTest::newRow("conflict corrected") << "cii" << 10 << true << 0;
        QTest::newRow("unknown format") << "ubl" << 0 << false << 2;
    }
    void commandLine()
    {
        QFETCH(QString, format);
        QFETCH(int, discount);
        QFETCH(bool, corrected);
        QFETCH(int, status);
        TestUi ui;
        auto main = withInvoice(ui, discount);
        const QString out = ui.file("out." + format);
        QStringList args{"velk-invoice", "--einvoice", "INV7", "--format", format, "--out", out};
        if (corrected)
            args << "--corrected";
        QCOMPARE(runEInvoiceCommand(args, ui.file("data.mdb")), status);
        QCOMPARE(QFileInfo::exists(out), status == 0);
        if (status == 0)
            QCOMPARE(validatorVerdict(keep("cli-" + QString::fromLatin1(QTest::currentDataTag()).replace(' ', '-') +
                                               (format == "cii" ? ".xml" : ".pdf"),
                                           fileBytes(out))),
                     QString());
    }

    // The printed invoice carries the "scan to pay" code, read back from the page by a
    // scanner as exactly the EPC text; only when switched on, in euro, with an IBAN, and
    // something due.
    void paymentCodeOnThePage_data()
    {
        QTest::addColumn<QString>("qrCode");
        QTest::addColumn<QString>("currency");
        QTest::addColumn<QString>("iban");
        QTest::addColumn<bool>("printed");
        QTest::newRow("on, euro, IBAN") << "1"
                                        << "EUR"
                                        << "DE89370400440532013000" << true;
        QTest::newRow("switched off") << "0"
                                      << "EUR"
                                      << "DE89370400440532013000" << false;
        QTest::newRow("pounds") << "1"
                                << "GBP"
                                << "GB82WEST12345698765432" << false;
        QTest::newRow("no IBAN") << "1"
                                 << "EUR"
                                 << "" << false;
    }
    void paymentCodeOnThePage()
    {
        QFETCH(QString, qrCode);
        QFETCH(QString, currency);
        QFETCH(QString, iban);
        QFETCH(bool, printed);
        TestUi ui;
        auto main = withInvoice(ui, 0);
        {
            auto db = Database::open(ui.file("data.mdb"));
            setEInvoiceSetting(*db, "QrCode", qrCode);
            setEInvoiceSetting(*db, "Currency", currency);
            setEInvoiceSetting(*db, "IBAN", iban);
            setEInvoiceSetting(*db, "BIC", "COBADEFFXXX");
        }
        frmAddInv w;
        w.Print_Invoice();
        QCOMPARE(ui.reports.size(), 1);
        const QString image = ui.file("page");
        runTool("pdftoppm", {"-r", "300", "-png", "-singlefile", ui.reports[0].pdf, image});
        const QString read = runTool("zbarimg", {"--raw", "-q", image + ".png"}).trimmed();
        QCOMPARE(read, printed ? QString::fromUtf8("BCD\n002\n1\nSCT\nCOBADEFFXXX\nVelk Test GmbH\n"
                                                   "DE89370400440532013000\nEUR4.39\n\n\nINV7")
                               : QString());
        // The notes keep their place and give the code their right end.
        const report::Control& notes = ui.reports[0].report->control("Section2", "Notes_lbl");
        QCOMPARE(notes.left, 1740);
        QCOMPARE(notes.width, printed ? 5505 - 1100 - 60 : 5505);
        VERIFY_UI(ui);
    }

    // The code's text follows EPC069-12 to the letter: long names cut at 70, amounts with
    // two decimals and no separators, no trailing blank.
    void paymentCodeText()
    {
        const Payee payee{QString(80, QChar(0x00e4)), "DE89370400440532013000", ""};
        QCOMPARE(epcPayload(payee, 123456789, " INV/7 "), "BCD\n002\n1\nSCT\n\n" + QString(70, QChar(0x00e4)) +
                                                              "\nDE89370400440532013000\nEUR1234567.89\n\n\nINV/7");
        const QImage code = qrImage(epcPayload(payee, 1, "X"));
        QCOMPARE(code.width(), code.height());
        QCOMPARE(code.pixelColor(0, 0), QColor(Qt::white)); // the quiet zone
        QCOMPARE(code.pixelColor(4, 4), QColor(Qt::black)); // a finder pattern's corner
    }

    // Tools > E-invoicing: the currency and country follow the wizard's sign until set;
    // what is entered is kept, tidied, and read back into the next e-invoice.
    void sellerDialog()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"BusinessName", "Shop"}, {"Currency", QString::fromUtf8("£")}});
        QStringList shown;
        ui.onModal("frmEInvoicing", [&shown](QDialog& d) {
            shown << d.windowTitle() << d.findChild<QLineEdit*>("Currency_txt")->text()
                  << d.findChild<QLineEdit*>("Country_txt")->text();
            d.findChild<QLineEdit*>("IBAN_txt")->setText(" gb82 west 1234 5698 7654 32 ");
            d.findChild<QLineEdit*>("VatId_txt")->setText("gb123456789");
            d.findChild<QLineEdit*>("PaymentTerms_txt")->setText("Net 30 days");
            auto* untaxed = d.findChild<QComboBox*>("Untaxed_cbo");
            untaxed->setCurrentIndex(untaxed->findData("AE"));
            d.findChild<QCheckBox*>("QrCode_chk")->setChecked(true);
            click(d, "OK_cmd");
            return d.result();
        });
        main->findChild<QAction*>("mnuEInvoicing")->trigger();
        QCOMPARE(shown, (QStringList{"E-invoicing", "GBP", "GB"}));
        auto db = Database::open(ui.file("data.mdb"));
        const QList<std::pair<QString, QString>> kept{
            {"IBAN", "GB82WEST12345698765432"}, {"VatId", "GB123456789"},  {"Currency", "GBP"}, {"Country", "GB"},
            {"PaymentTerms", "Net 30 days"},    {"UntaxedCategory", "AE"}, {"QrCode", "1"},     {"BIC", ""}};
        for (const auto& [name, value] : kept)
            QCOMPARE(eInvoiceSetting(*db, name), value);
        VERIFY_UI(ui);
    }

    // A value that cannot be right is named and nothing is written; the window stays.
    void sellerDialogRefuses_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("entered");
        QTest::addColumn<QString>("message");
        QTest::newRow("IBAN check digits") << "IBAN_txt"
                                           << "DE89370400440532013001"
                                           << "This IBAN is not valid: its check digits do not match. Write it "
                                              "without blanks.";
        QTest::newRow("country") << "Country_txt"
                                 << "D"
                                 << "The country code is two capital letters, as DE or FR.";
        QTest::newRow("currency") << "Currency_txt"
                                  << "EU"
                                  << "The currency code is three capital letters, as EUR.";
        QTest::newRow("BIC") << "BIC_txt"
                             << "COBADEF"
                             << "The BIC has 8 or 11 letters and digits, as COBADEFFXXX.";
        QTest::newRow("VAT identifier") << "VatId_txt"
                                        << "123456789"
                                        << "The VAT identifier starts with its country's two letters, as "
                                           "DE123456789.";
        QTest::newRow("electronic address") << "ElectronicAddress_txt"
                                            << "invoices at shop"
                                            << "The electronic address is an e-mail address, as "
                                               "invoices@example.com.";
        QTest::newRow("exempt without reason") << "Untaxed_cbo"
                                               << "E"
                                               << "Exempt lines need the reason for the exemption.";
    }
    void sellerDialogRefuses()
    {
        QFETCH(QString, box);
        QFETCH(QString, entered);
        QFETCH(QString, message);
        TestUi ui;
        auto main = startProgram(ui, {{"BusinessName", "Shop"}});
        ui.expectBox("E-invoicing", message);
        ui.onModal("frmEInvoicing", [&](QDialog& d) {
            if (auto* combo = d.findChild<QComboBox*>(box))
                combo->setCurrentIndex(combo->findData(entered));
            else
                d.findChild<QLineEdit*>(box)->setText(entered);
            d.findChild<QLineEdit*>("PaymentTerms_txt")->setText("Net 30 days");
            click(d, "OK_cmd");
            return d.result();
        });
        main->findChild<QAction*>("mnuEInvoicing")->trigger();
        QCOMPARE(Database::open(ui.file("data.mdb"))->texts("SELECT count(*) FROM EInvoiceSettings"), QStringList{"0"});
        VERIFY_UI(ui);
    }

    // The customer record's button: that customer's values, into the buyer of its e-invoices.
    void customerDialog()
    {
        TestUi ui;
        auto main = withInvoice(ui, 0);
        QStringList shown;
        ui.onModal("frmEInvoicing", [&shown](QDialog& d) {
            shown << d.windowTitle() << d.findChild<QLineEdit*>("Country_txt")->text()
                  << (d.findChild<QLineEdit*>("IBAN_txt") ? "IBAN" : "no IBAN");
            d.findChild<QLineEdit*>("BuyerReference_txt")->setText("04011000-12345-34");
            d.findChild<QLineEdit*>("ElectronicAddress_txt")->setText("ap@kunde.example");
            click(d, "OK_cmd");
            return d.result();
        });
        NewCustomerMode = 0;
        SelectedCustID = "C1";
        {
            frmAddCust record;
            click(record, "EInvoicing_cmd");
        }
        QCOMPARE(shown, (QStringList{"E-invoicing - C1", "DE", "no IBAN"}));
        const Document doc = readDocument(ConnectionString, "INV7");
        QCOMPARE(doc.invoice.buyerReference, "04011000-12345-34");
        QCOMPARE(doc.invoice.buyer.electronicAddress, "ap@kunde.example");
        QVERIFY(toCii(doc.invoice).contains("<ram:BuyerReference>04011000-12345-34</ram:BuyerReference>"));
        VERIFY_UI(ui);
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
