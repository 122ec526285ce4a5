// "Print" of the invoice window: what stands in the window now, copied into the labels
// of the layout the settings choose, and shown as a preview from which the user prints.

#include "invoices/InvoiceLayouts.h"
#include "invoices/frmAddInv.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>

using namespace platform;

namespace
{

// The customer's billing and delivery addresses, each part on its own line when it is
// there, the postcode last with no line break after it.
struct AddressBlocks {
    QString billing, shipping;
};

AddressBlocks customerAddresses(const QString& custId)
{
    Recordset rs;
    rs.open(QStringLiteral("Customers"), ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(QStringLiteral("CUSTID"));
    // The key reached is not compared: a customer no longer on file prints the next one's.
    rs.seek(custId);
    QStringList billing(5), shipping(5);
    if (!rs.eof()) {
        const char* billingColumns[] = {"Address", "Address2", "city", "Address4", "Postcode"};
        for (int i = 0; i < 5; ++i) {
            billing[i] = Null_to_text(rs.field(QLatin1String(billingColumns[i])));
            shipping[i] = Null_to_text(rs.field(QStringLiteral("DelAddress%1").arg(i + 1)));
        }
    }
    rs.close();
    AddressBlocks blocks;
    for (int i = 0; i < 5; ++i) {
        const QString end = i < 4 ? QStringLiteral("\n") : QString();
        if (!billing[i].isEmpty())
            blocks.billing += billing[i] + end;
        if (!shipping[i].isEmpty())
            blocks.shipping += shipping[i] + end;
    }
    return blocks;
}

// The business's phone, mobile, email and web lines, each only when set.
QString contactBlock()
{
    const SettingsRecord& s = settings;
    QString block;
    if (!s.Phone.trimmed().isEmpty())
        block = QStringLiteral("Phone: ") + s.Phone.text();
    if (!s.Mobile.trimmed().isEmpty())
        block += QStringLiteral("  Mobile: ") + s.Mobile.text();
    if (!s.Email.trimmed().isEmpty())
        block += QStringLiteral("\nEmail: ") + s.Email.text();
    if (!s.Web.trimmed().isEmpty())
        block += QStringLiteral("\nWeb: ") + s.Web.text();
    return block;
}

report::Control& label(report::Report& r, const char* section, const QString& name)
{
    return r.control(QLatin1String(section), name);
}

} // namespace

void frmAddInv::Print_Invoice()
{
    Trap(objectName(), "Print_Invoice", [this] {
        const std::unique_ptr<report::Report> r = Invoice_report();
        if (!r)
            return;
        r->commands.push_back({QStringLiteral("Save as &e-invoice\u2026"), QStringLiteral("EInvoice_cmd"),
                               [this](const report::Report& shown) { Save_einvoice(&shown); }});
        report::Show(*r);
    });
}

// The invoice as it prints: none, after telling why, when the paper or the settings do
// not allow it.
std::unique_ptr<report::Report> frmAddInv::Invoice_report()
{
    SettingsRecord& s = settings;
    if (!s.Logopath.isEmpty() && !QFileInfo::exists(s.Logopath)) {
        MsgBox(QStringLiteral("Logo cannot be found"), vbInformation, QStringLiteral("Logo!"));
        s.Logopath.clear(); // in memory only, until the settings are read again
    }
    const int paper = paperSize();
    if (paper != vbPRPSLetter && paper != vbPRPSA4) {
        MsgBox(QStringLiteral("Please change the paper size on your printer to 'Letter' or 'A4'"), vbExclamation,
               QStringLiteral("Change Paper Size"));
        return nullptr;
    }
    const AddressBlocks blocks = customerAddresses(Cust_lbl->text());
    const QString contact = contactBlock();
    QString taxLine;
    if (s.TaxEnabled == 1)
        taxLine = s.TaxName.trimmed() + QStringLiteral(" No: ") + s.TaxNo.trimmed();

    // The number goes in as it stands: one with an apostrophe breaks the command, and
    // the report then has no source.
    std::shared_ptr<ShapeRecordset> source;
    Open_shape(QStringLiteral("SHAPE {SELECT * FROM invoices where invno = '") + Inv_lbl->text() +
                   QStringLiteral("'} "),
               source);

    const int type = QStringList{"1", "2", "3", "4", "5", "6"}.indexOf(s.InvoiceType) + 1;
    if (type == 0)
        return nullptr;
    std::unique_ptr<report::Report> r = Invoice_layout(type);
    if (paper == vbPRPSA4)
        Adjust_for_A4(*r);
    if (!source)
        throw VbError(err::ObjectClosed);
    r->setDataSource(source);
    r->documentName = Inv_lbl->text().trimmed();
    fillHeading(*r, type, blocks.billing, blocks.shipping, contact, taxLine);
    fillLines(*r);
    fillTotals(*r);
    fillDataBlock(*r, type);
    fillTermsAndLogo(*r);
    fillPaymentCode(*r);
    return r;
}

// The company, the customer's addresses and the captions that follow the settings.
void frmAddInv::fillHeading(report::Report& r, int type, const QString& billing, const QString& shipping,
                            const QString& contact, QString taxLine)
{
    const SettingsRecord& s = settings;
    if (s.IncludeStatement == 1)
        label(r, "Section2", "statment_lbl").setCaption(s.Statement);
    if (s.IncludeShipping == 0)
        for (const char* name : {"ShippingAdd", "shippingShape", "shipping1_lbl"})
            label(r, "Section4", QLatin1String(name)).setVisible(false);
    label(r, "Section2", "taxname_lbl").setCaption(vat_lbl->text());
    label(r, "Section4", "Invoice_Lbl").setCaption(QStringLiteral("INVOICE - ") + Inv_lbl->text());

    // Design 1 trims the company's texts; the others print them with their blanks.
    if (type == 1) {
        label(r, "Section4", "companyname_lbl").setCaption(s.BusinessName.trimmed());
        label(r, "Section4", "Companyadd")
            .setCaption(s.Address.trimmed() + "\n" + contact.trimmed() + "\n" + taxLine.trimmed());
    } else {
        if (type == 4 && s.TaxEnabled == 1)
            taxLine = s.TaxName.text() + QStringLiteral(" No: ") + s.TaxNo.text();
        label(r, "Section4", "companyname_lbl").setCaption(s.BusinessName.text());
        label(r, "Section4", "Companyadd").setCaption(s.Address + "\n" + contact + "\n" + taxLine);
    }
    label(r, "Section4", "BillingAdd").setCaption(Customername_lbl->text() + "\n" + billing);
    label(r, "Section4", "ShippingAdd").setCaption(Customername_lbl->text() + "\n" + shipping);
    if (s.TaxEnabled == 0)
        label(r, "Section2", "taxable_lbl").setVisible(false);
}

void frmAddInv::fillLines(report::Report& r)
{
    const SettingsRecord& s = settings;
    for (int i = 0; i < Lines; ++i) {
        auto row = [&](const char* stem) -> report::Control& {
            return label(r, "Section2", QStringLiteral("%1%2_lbl").arg(QLatin1String(stem)).arg(i));
        };
        row("Parts").setCaption(PartID_txt[i]->text());
        row("Qty").setCaption(Qty_txt[i]->text());
        row("Description").setCaption(Desc_txt[i]->text());
        // The blank keeps the price in line with a total that carries a "*".
        row("Amount").setCaption(Amount_txt[i]->text() + QLatin1Char(' '));
        const QString total = tota1l_txt[i]->text();
        if (total.trimmed() == QLatin1String("0.00"))
            row("Total").setCaption(QString());
        else if (s.TaxEnabled == 1 && !tax[i]->isChecked())
            row("Total").setCaption(total + QLatin1Char('*'));
        else
            row("Total").setCaption(total);
    }
}

// The notes when ticked, and every figure after the currency sign.
void frmAddInv::fillTotals(report::Report& r)
{
    const SettingsRecord& s = settings;
    if (Notes_chk->isChecked())
        label(r, "Section2", "Notes_lbl").setCaption(QStringLiteral("Notes:\n") + notes_txt->text());

    const QList<QPair<const char*, QString>> money{
        {"Subtotal_lbl", subtotal_txt->text()},    {"Tax_lbl", vat_txt->text()},
        {"Discount_lbl", Discount_txt->text()},    {"total11_lbl", total_txt->text()},
        {"Total10_lbl", total_txt2->text()},       {"Paid_lbl", Paid_txt->text()},
        {"wrttenoff_lbl", Writtenoff_txt->text()}, {"balance_lbl", Balance_txt->text()}};
    for (const auto& [name, text] : money)
        label(r, "Section2", QLatin1String(name)).setCaption(s.Currency.text() + text.trimmed());
}

// The data block. The second and third headings stand crossed over the values, as
// they always have: the sales order's heading over the shipped value and back.
void frmAddInv::fillDataBlock(report::Report& r, int type)
{
    const SettingsRecord& s = settings;
    const char* data = type == 2 || type == 4 ? "Section4" : "Section2";
    const QString colon = type == 2 || type == 4 ? QStringLiteral(":") : QString();
    label(r, data, "Invoice1_lbl").setCaption(Inv_lbl->text());
    label(r, data, "Date1_lbl").setCaption(Date_txt->date().toString(QStringLiteral("dd/MM/yyyy")));
    label(r, data, "CustNo_lbl").setCaption(Cust_lbl->text());
    label(r, data, "CustName_lbl").setCaption(Customername_lbl->text());
    const QList<std::tuple<const char*, QString, const char*, QString, qint16>> pairs{
        {"SalesPerson_lbl", SalesPerson_txt->text(), "Sales_lbl", SalesPerson_lbl->text(), s.text1Visible},
        {"Shipping2_lbl", Shipped_txt->text(), "Shipping_lbl", SalesOrder_lbl->text(), s.text2Visible},
        {"SalesNO1_lbl", SalesOrder_txt->text(), "SalesNO_lbl", Shipped_lbl->text(), s.text3Visible},
        {"TrackNo_lbl", TrackingNo_txt->text(), "Tracking_lbl", TrackingNo_lbl->text(), s.text4Visible}};
    for (const auto& [value, text, heading, caption, visible] : pairs) {
        label(r, data, QLatin1String(value)).setCaption(text);
        label(r, data, QLatin1String(heading)).setCaption(caption + colon);
        label(r, data, QLatin1String(value)).setVisible(visible == 1);
        label(r, data, QLatin1String(heading)).setVisible(visible == 1);
    }
}

void frmAddInv::fillTermsAndLogo(report::Report& r)
{
    const SettingsRecord& s = settings;
    if (s.IncludeTerms == 1) {
        label(r, "Section2", "Terms_lbl").setCaption(s.terms1);
    } else {
        label(r, "Section2", "Terms_lbl").setVisible(false);
        label(r, "Section2", "Shape1").setVisible(false);
    }

    // As the report starts, the logo.
    if (!s.Logopath.isEmpty()) {
        label(r, "Section4", "Image1").picture = report::loadPicture(s.Logopath);
    }
}
