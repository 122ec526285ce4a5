#pragma once
// "Save as e-invoice": which file to make of the invoice, Factur-X or the XML alone.

#include "einvoice/EInvoiceFile.h"

#include <QDialog>
#include <optional>

class QRadioButton;

namespace einvoice
{

class frmSaveEInvoice : public QDialog
{
    Q_OBJECT
public:
    // The written-off amount, when there is one, is told: it stays out of the e-invoice.
    frmSaveEInvoice(qint64 writtenOffCents, QWidget* parent = nullptr);

    // The format chosen, or none when cancelled.
    static std::optional<Format> ask(qint64 writtenOffCents, QWidget* parent);

private:
    QRadioButton *FacturX_opt, *Cii_opt;
};

} // namespace einvoice
