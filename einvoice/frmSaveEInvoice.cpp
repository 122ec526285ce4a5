#include "einvoice/frmSaveEInvoice.h"

#include "einvoice/Fields.h"
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
        auto* note = named(new QLabel(QStringLiteral("%1 written off on this invoice. ").arg(money(writtenOffCents)) +
                                          writtenOffNote(),
                                      this),
                           "WrittenOff_lbl");
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    layout->addWidget(platform::okCancel(this, [this] { accept(); }));
}

std::optional<Format> frmSaveEInvoice::ask(qint64 writtenOffCents, QWidget* parent)
{
    frmSaveEInvoice window(writtenOffCents, parent);
    if (platform::showModal(window) != QDialog::Accepted)
        return std::nullopt;
    return window.Cii_opt->isChecked() ? Format::Cii : Format::FacturX;
}

} // namespace einvoice
