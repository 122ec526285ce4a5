#pragma once
// The headless form for scripts:
//   velk-invoice --einvoice INVNO --format facturx|cii --out FILE [--database FILE] [--corrected]
// Writes the file and answers 0, or tells standard error why not. An invoice whose printed
// figures EN 16931 cannot express is written only with --corrected, its page then showing
// the norm's figures.

#include <QStringList>

bool isEInvoiceCommand(const QStringList& arguments);
// Needs the application made; dataFile: the program's own, read when no --database is given.
int runEInvoiceCommand(const QStringList& arguments, const QString& dataFile);
