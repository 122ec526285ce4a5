#include "store/Invoices.h"

#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Recordset.h"

Currency Delete_invoice(const QString& number)
{
    Recordset invoices, lines;
    invoices.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockPessimistic);
    lines.open(QStringLiteral("InvoiceD"), ConnectionString, Recordset::adLockPessimistic);
    lines.setIndex(QStringLiteral("InvNo"));
    invoices.setIndex(QStringLiteral("invno"));
    invoices.seek(number);
    const Currency balance = Null_to_zero(invoices.field(QStringLiteral("BALANCE")));
    invoices.deleteRecord();
    invoices.close();
    const QString trimmed = number.trimmed();
    for (lines.seek(trimmed); !lines.eof(); lines.moveNext()) {
        if (Null_to_text(lines.field(QStringLiteral("INVNO"))) != trimmed)
            break;
        lines.deleteRecord();
    }
    lines.close();
    return balance;
}
