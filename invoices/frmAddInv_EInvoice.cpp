// "Save as e-invoice..." of the invoice window, from its print preview or the invoice
// list: the invoice as saved, as an EN 16931 file. A Factur-X file's page is the invoice
// as it prints.

#include "einvoice/EInvoiceFile.h"
#include "einvoice/PaymentCode.h"
#include "einvoice/frmSaveEInvoice.h"
#include "invoices/frmAddInv.h"
#include "platform/Platform.h"
#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbers.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSaveFile>
#include <QStandardPaths>

using namespace platform;

namespace
{

const QString Title = QStringLiteral("Save as e-invoice");

// An amount as the window shows it, in cents.
qint64 shownCents(const QString& text)
{
    return qRound64(Val(QString(text).remove(QLatin1Char(','))) * 100);
}

// The page shows the norm's figures where they differ from the invoice's own: the tax,
// both totals and the amount due (the written-off amount is no part of the document).
void showNormFigures(report::Report& page, const einvoice::Document& d)
{
    const einvoice::Totals t = d.totals();
    const auto shown = [](qint64 cents) {
        return settings.Currency.text() + Format_amount(Currency::fromTicks(cents * 100), 7, 2).trimmed();
    };
    page.control(QStringLiteral("Section2"), QStringLiteral("Tax_lbl")).setCaption(shown(t.taxCents));
    page.control(QStringLiteral("Section2"), QStringLiteral("total11_lbl")).setCaption(shown(t.grandCents));
    page.control(QStringLiteral("Section2"), QStringLiteral("Total10_lbl")).setCaption(shown(t.grandCents));
    page.control(QStringLiteral("Section2"), QStringLiteral("balance_lbl")).setCaption(shown(t.dueCents));
}

} // namespace

// The "scan to pay" code for the balance due, where the seller has it printed.
void frmAddInv::fillPaymentCode(report::Report& r, std::optional<qint64> dueCents)
{
    if (const auto payee = einvoice::printedPayee(settings.BusinessName.trimmed(), settings.Currency.trimmed()))
        einvoice::placePaymentCode(r, *payee, dueCents.value_or(shownCents(Balance_txt->text())),
                                   Inv_lbl->text().trimmed());
}

std::unique_ptr<report::Report> frmAddInv::EInvoice_page(const einvoice::Document& d, const report::Report* shown)
{
    std::unique_ptr<report::Report> page = shown ? std::make_unique<report::Report>(*shown) : Invoice_report();
    if (page && !d.conflict.isEmpty()) {
        showNormFigures(*page, d);
        fillPaymentCode(*page, d.totals().dueCents);
    }
    return page;
}

void frmAddInv::Save_einvoice(const report::Report* shown)
{
    Trap(objectName(), "Save_einvoice", [&] {
        const QString invNo = Inv_lbl->text().trimmed();
        einvoice::Document doc;
        try {
            doc = einvoice::readDocument(ConnectionString, invNo);
        } catch (const VbError& e) {
            if (e.number() != err::NoCurrentRecord)
                throw;
        }
        // Made from the invoice as saved: what the window shows must be that.
        if (doc.invoice.number.isEmpty() || shownCents(total_txt->text()) != doc.printed.totalCents ||
            shownCents(Paid_txt->text()) != doc.invoice.prepaidCents) {
            MsgBox(QStringLiteral("Please save the invoice first: the e-invoice is made from the invoice as saved."),
                   vbExclamation, Title);
            return;
        }
        if (!doc.missing.isEmpty()) {
            MsgBox(einvoice::missingText(doc), vbExclamation, Title);
            return;
        }
        const auto format = einvoice::frmSaveEInvoice::ask(doc.writtenOffCents, this);
        if (!format)
            return;
        // Never other figures than the invoice shows, unasked.
        if (!doc.conflict.isEmpty() &&
            MsgBox(QStringLiteral("Invoice %1 cannot be an EN 16931 e-invoice with its own figures.\n\n%2\n\n"
                                  "Issue it as a corrected document with the figures EN 16931 gives? Its page "
                                  "will show the same figures as its data.")
                       .arg(invNo, doc.conflict),
                   vbYesNo + vbExclamation, Title) != vbYes)
            return;
        std::unique_ptr<report::Report> page;
        if (*format == einvoice::Format::FacturX) {
            page = EInvoice_page(doc, shown);
            if (!page)
                return;
        }
        FileDialogRequest request;
        request.title = Title;
        request.filter = einvoice::fileFilter(*format);
        request.fileName = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                               .filePath(invNo + einvoice::fileSuffix(*format));
        const auto path = ShowSave(request);
        if (!path)
            return;
        std::unique_ptr<report::Layout> layout;
        if (page)
            layout = std::make_unique<report::Layout>(*page, paperSize());
        const QByteArray bytes = einvoice::fileBytes(doc, *format, layout.get(), now());
        QSaveFile file(*path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            MsgBox(QStringLiteral("The e-invoice could not be written: ") + *path, vbExclamation, Title);
    });
}
