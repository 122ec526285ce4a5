#pragma once
// The headless form for scripts: velk-invoice --einvoice INVNO --format cii --out FILE
// [--database FILE]. Writes the file and answers 0, or tells standard error why not.

#include <QStringList>

namespace einvoice
{

bool isEInvoiceCommand(const QStringList& arguments);
// defaultConnection: the program's own data file, read when no --database is given.
int runEInvoiceCommand(const QStringList& arguments, const QString& defaultConnection);

} // namespace einvoice
