#include "shell/EInvoiceCommand.h"

#include "einvoice/EInvoiceFile.h"
#include "invoices/frmAddInv.h"
#include "platform/Platform.h"
#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Globals.h"
#include "store/Recordset.h"
#include "store/SettingsTable.h"

#include <QSaveFile>
#include <QTextStream>

bool isEInvoiceCommand(const QStringList& arguments)
{
    return arguments.contains(QStringLiteral("--einvoice"));
}

int runEInvoiceCommand(const QStringList& arguments, const QString& dataFile)
{
    QTextStream err(stderr);
    auto option = [&](const char* name) {
        const qsizetype i = arguments.indexOf(QLatin1String(name));
        return i >= 0 && i + 1 < arguments.size() ? arguments.at(i + 1) : QString();
    };
    const QString invNo = option("--einvoice"), format = option("--format"), out = option("--out");
    const QString file = option("--database").isEmpty() ? dataFile : option("--database");
    const bool corrected = arguments.contains(QStringLiteral("--corrected"));
    if (invNo.isEmpty() || out.isEmpty() || (format != QLatin1String("cii") && format != QLatin1String("facturx"))) {
        err << "usage: velk-invoice --einvoice INVNO --format facturx|cii --out FILE [--database FILE] "
               "[--corrected]\n";
        return 2;
    }
    // No one to answer a box: its text goes to standard error.
    platform::hooks().msgBox = [&err](const QString& text, int, const QString& title) {
        err << title << ": " << text << "\n";
        err.flush();
        return int(platform::vbOK);
    };
    try {
        ConnectionString = QStringLiteral("Provider='SQLite';Data Source='%1';").arg(file);
        PlainConnection.open(ConnectionString);
        ShapeConnection.open(QStringLiteral("Data Provider = SQLite;Data Source = ") + file);
        Recordset system;
        system.open(QStringLiteral("system"), ConnectionString, Recordset::adLockReadOnly);
        if (system.recordCount() <= 0)
            throw VbError(err::NoCurrentRecord, QStringLiteral("The data file holds no settings"));
        system.moveFirst();
        loadSettings(system);
        system.close();

        const einvoice::Document doc = einvoice::readDocument(ConnectionString, invNo);
        if (!doc.missing.isEmpty()) {
            err << einvoice::missingText(doc) << "\n";
            return 1;
        }
        if (!doc.conflict.isEmpty() && !corrected) {
            err << "Invoice " << invNo << " cannot be written as EN 16931 with its printed figures. " << doc.conflict
                << " Add --corrected to issue it with EN 16931's figures.\n";
            return 1;
        }
        const einvoice::Format chosen =
            format == QLatin1String("cii") ? einvoice::Format::Cii : einvoice::Format::FacturX;
        std::unique_ptr<report::Report> page;
        std::unique_ptr<report::Layout> layout;
        if (chosen == einvoice::Format::FacturX) {
            OpenInvoiceNo = invNo;
            EditInvoiceMode = 1;
            frmAddInv window;
            page = window.EInvoice_page(doc);
            if (!page)
                return 1;
            layout = std::make_unique<report::Layout>(*page, platform::paperSize());
        }
        const QByteArray bytes = einvoice::fileBytes(doc, chosen, layout.get(), platform::now());
        QSaveFile target(out);
        if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size() || !target.commit()) {
            err << "Cannot write " << out << ": " << target.errorString() << "\n";
            return 1;
        }
    } catch (const VbError& e) {
        err << "Invoice " << invNo << ": error " << e.number() << ": " << QString::fromUtf8(e.what()) << "\n";
        return 1;
    }
    return 0;
}
