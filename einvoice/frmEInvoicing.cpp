#include "einvoice/frmEInvoicing.h"

#include "einvoice/Fields.h"
#include "platform/Controls.h"
#include "platform/Platform.h"

#include "store/Connection.h"
#include "store/Database.h"
#include "store/EInvoiceData.h"
#include "store/Globals.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace einvoice
{

using platform::named;

namespace
{

const QString Title = QStringLiteral("E-invoicing");

std::shared_ptr<Database> dataFile()
{
    Connection connection;
    connection.open(ConnectionString);
    return connection.database();
}

} // namespace

frmEInvoicing::frmEInvoicing(const QString& custId, QWidget* parent) : QDialog(parent), custId_(custId), db_(dataFile())
{
    setObjectName(QStringLiteral("frmEInvoicing"));
    setWindowTitle(custId.isEmpty() ? Title : Title + QStringLiteral(" - ") + custId);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    for (const Field& f : custId.isEmpty() ? sellerFields() : customerFields()) {
        auto* box = named(new QLineEdit(this), QLatin1String(f.name) + QStringLiteral("_txt"));
        box->setMaxLength(f.maxLength);
        box->setText(value(QLatin1String(f.name)));
        form->addRow(QLatin1String(f.caption), box);
        boxes_[QLatin1String(f.name)] = box;
    }
    if (custId.isEmpty()) {
        QLineEdit* currency = boxes_.at(QStringLiteral("Currency"));
        if (currency->text().isEmpty())
            currency->setText(defaultCurrencyCode(settings.Currency.text()));
        QLineEdit* country = boxes_.at(QStringLiteral("Country"));
        if (country->text().isEmpty())
            country->setText(defaultCountryCode(settings.Currency.text()));
        Untaxed_cbo = named(new QComboBox(this), "Untaxed_cbo");
        for (const auto& [code, caption] : untaxedCategories())
            Untaxed_cbo->addItem(caption, code);
        Untaxed_cbo->setCurrentIndex(std::max(0, Untaxed_cbo->findData(value(QStringLiteral("UntaxedCategory")))));
        form->addRow(QStringLiteral("Untaxed lines:"), Untaxed_cbo);
        ExemptionReason_txt =
            named(new QLineEdit(value(QStringLiteral("ExemptionReason")), this), "ExemptionReason_txt");
        ExemptionReason_txt->setMaxLength(100);
        form->addRow(QStringLiteral("Exemption reason:"), ExemptionReason_txt);
        QrCode_chk =
            platform::tick(QStringLiteral("QrCode_chk"),
                           QStringLiteral("Print a payment QR code on invoices in EUR (needs the IBAN)"), this);
        QrCode_chk->setChecked(value(QStringLiteral("QrCode")) == QLatin1String("1"));
        form->addRow(QString(), QrCode_chk);
        auto* note = named(new QLabel(writtenOffNote(), this), "Note_lbl");
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    layout->addWidget(platform::okCancel(this, [this] { OK_cmd_Click(); }));
}

// Every value checked before any is written; all written in one transaction.
void frmEInvoicing::OK_cmd_Click()
{
    for (auto& [name, box] : boxes_) {
        box->setText(box->text().trimmed());
        if (name != QLatin1String("PaymentTerms") && name != QLatin1String("LegalId") &&
            name != QLatin1String("BuyerReference") && name != QLatin1String("ElectronicAddress"))
            box->setText(box->text().toUpper().remove(QLatin1Char(' ')));
        const QString problem = fieldProblem(name, box->text());
        if (!problem.isEmpty()) {
            platform::MsgBox(problem, platform::vbExclamation, Title);
            box->setFocus();
            return;
        }
    }
    if (Untaxed_cbo && Untaxed_cbo->currentData().toString() == QLatin1String("E") &&
        ExemptionReason_txt->text().trimmed().isEmpty()) {
        platform::MsgBox(QStringLiteral("Exempt lines need the reason for the exemption."), platform::vbExclamation,
                         Title);
        ExemptionReason_txt->setFocus();
        return;
    }
    Write_batch(db_, [&] {
        for (const auto& [name, box] : boxes_)
            store(name, box->text());
        if (Untaxed_cbo) {
            store(QStringLiteral("UntaxedCategory"), Untaxed_cbo->currentData().toString());
            store(QStringLiteral("ExemptionReason"), ExemptionReason_txt->text().trimmed());
            store(QStringLiteral("QrCode"), QrCode_chk->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
        }
    });
    accept();
}

QString frmEInvoicing::value(const QString& name) const
{
    Database& db = *db_;
    return custId_.isEmpty() ? eInvoiceSetting(db, name) : eInvoiceCustomerValue(db, custId_, name);
}

void frmEInvoicing::store(const QString& name, const QString& value)
{
    Database& db = *db_;
    if (custId_.isEmpty())
        setEInvoiceSetting(db, name, value);
    else
        setEInvoiceCustomerValue(db, custId_, name, value);
}

} // namespace einvoice
