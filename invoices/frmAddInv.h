#pragma once
// The invoice window: one invoice's header, eight lines and totals, new or old as the
// hand-over values say (EditInvoiceMode, OpenInvoiceNo, the picked customer).

#include <QDialog>

class frmAddInv : public QDialog
{
    Q_OBJECT
public:
    explicit frmAddInv(QWidget* parent = nullptr);
};
