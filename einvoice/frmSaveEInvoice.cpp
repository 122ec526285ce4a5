#include "einvoice/frmSaveEInvoice.h"

#include "platform/Controls.h"
#include "platform/Platform.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace einvoice
{

using platform::named;

frmSaveEInvoice::frmSaveEInvoice(qint64 writtenOffCents, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSaveEInvoice"));
    setWindowTitle(QStringLiteral("Save as e-invoice"));
    auto* layout = new QVBoxLayout(this);
    FacturX_opt = named(new QRadioButton(QStringLiteral("&Factur-X / ZUGFeRD PDF (EN 16931): the printed page "
                                                        "with the invoice's data inside"),
                                         this),
                        "FacturX_opt");
    Cii_opt = named(new QRadioButton(QStringLiteral("&XML alone (UN/CEFACT CII, EN 16931)"), this), "Cii_opt");
    FacturX_opt->setChecked(true);
    layout->addWidget(FacturX_opt);
    layout->addWidget(Cii_opt);
    if (writtenOffCents != 0) {
        auto* note = named(new QLabel(QStringLiteral("The %1 written off is not part of the e-invoice: it shows "
                                                     "the total, the amount paid and the amount due.")
                                          .arg(money(writtenOffCents)),
                                      this),
                           "WrittenOff_lbl");
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OK_cmd"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("Cancel_cmd"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::optional<Format> frmSaveEInvoice::ask(qint64 writtenOffCents, QWidget* parent)
{
    frmSaveEInvoice window(writtenOffCents, parent);
    if (platform::showModal(window) != QDialog::Accepted)
        return std::nullopt;
    return window.Cii_opt->isChecked() ? Format::Cii : Format::FacturX;
}

} // namespace einvoice
