#include "invoices/frmAddInv.h"

frmAddInv::frmAddInv(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAddInv"));
    setWindowTitle(QStringLiteral("Invoice"));
}
