#include "einvoice/CommandLine.h"

#include "einvoice/InvoiceSource.h"
#include "store/Errors.h"

#include <QFile>
#include <QTextStream>

namespace einvoice
{

bool isEInvoiceCommand(const QStringList& arguments)
{
    return arguments.contains(QStringLiteral("--einvoice"));
}

int runEInvoiceCommand(const QStringList& arguments, const QString& defaultConnection)
{
    QTextStream err(stderr);
    auto option = [&](const char* name) {
        const int i = arguments.indexOf(QLatin1String(name));
        return i >= 0 && i + 1 < arguments.size() ? arguments.at(i + 1) : QString();
    };
    const QString invNo = option("--einvoice"), format = option("--format"), out = option("--out");
    const QString database = option("--database");
    const QString connection =
        database.isEmpty() ? defaultConnection : QStringLiteral("Data Source='%1';").arg(database);
    if (invNo.isEmpty() || out.isEmpty() || format != QLatin1String("cii")) {
        err << "usage: velk-invoice --einvoice INVNO --format cii --out FILE [--database FILE]\n";
        return 2;
    }
    try {
        Printed printed;
        const Invoice inv = loadInvoice(connection, invNo, &printed);
        // Never a file with other figures than the invoice shows, unasked.
        const QString conflict = conflictOf(inv, printed);
        if (!conflict.isEmpty()) {
            err << "Invoice " << invNo << " cannot be written as EN 16931 with its printed figures. " << conflict
                << "\n";
            return 1;
        }
        QFile file(out);
        const QByteArray xml = toCii(inv);
        if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size()) {
            err << "Cannot write " << out << ": " << file.errorString() << "\n";
            return 1;
        }
    } catch (const VbError& e) {
        err << "Invoice " << invNo << ": error " << e.number() << " " << QString::fromUtf8(e.what()) << "\n";
        return 1;
    }
    return 0;
}

} // namespace einvoice
