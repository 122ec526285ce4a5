#include "einvoice/PaymentCode.h"

#include "einvoice/EInvoice.h"
#include "einvoice/Fields.h"
#include "report/Report.h"
#include "store/Connection.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"

#include <algorithm>
#include <qrencode.h>

namespace einvoice
{

namespace
{

const QString CodeName = QStringLiteral("PaymentCode_img");
constexpr int QuietZone = 4;
constexpr int NoteGap = 60; // twips between the notes and the code

} // namespace

QString epcPayload(const Payee& payee, qint64 dueCents, const QString& invNo)
{
    return QStringList{QStringLiteral("BCD"),
                       QStringLiteral("002"),
                       QStringLiteral("1"),
                       QStringLiteral("SCT"),
                       payee.bic,
                       payee.name.trimmed().left(70),
                       payee.iban,
                       QStringLiteral("EUR") + money(dueCents),
                       QString(),
                       QString(),
                       invNo.trimmed().left(140)}
        .join(QLatin1Char('\n'));
}

QImage qrImage(const QString& payload)
{
    const QByteArray bytes = payload.toUtf8();
    QRcode* code = QRcode_encodeData(int(bytes.size()), reinterpret_cast<const unsigned char*>(bytes.constData()), 0,
                                     QR_ECLEVEL_M);
    if (!code)
        throw VbError(err::OutOfMemory, QStringLiteral("The payment code could not be made"));
    const int side = code->width + 2 * QuietZone;
    QImage image(side, side, QImage::Format_Mono);
    image.setColor(0, qRgb(0, 0, 0));
    image.setColor(1, qRgb(255, 255, 255));
    image.fill(1); // white
    for (int y = 0; y < code->width; ++y)
        for (int x = 0; x < code->width; ++x)
            if (code->data[y * code->width + x] & 1)
                image.setPixel(x + QuietZone, y + QuietZone, 0);
    QRcode_free(code);
    return image;
}

std::optional<Payee> printedPayee(const QString& businessName, const QString& currencySign)
{
    Connection connection;
    connection.open(ConnectionString);
    Database& db = *connection.database();
    if (eInvoiceSetting(db, QStringLiteral("QrCode")) != QLatin1String("1"))
        return std::nullopt;
    QString currency = eInvoiceSetting(db, QStringLiteral("Currency"));
    if (currency.isEmpty())
        currency = defaultCurrencyCode(currencySign);
    const Payee payee{businessName, eInvoiceSetting(db, QStringLiteral("IBAN")),
                      eInvoiceSetting(db, QStringLiteral("BIC"))};
    if (currency != QLatin1String("EUR") || payee.iban.isEmpty())
        return std::nullopt;
    return payee;
}

void placePaymentCode(report::Report& invoice, const Payee& payee, qint64 dueCents, const QString& invNo)
{
    report::Section& section = invoice.section(QStringLiteral("Section2"));
    report::Control& notes = section.control(QStringLiteral("Notes_lbl"));
    auto placed = std::find_if(section.controls.begin(), section.controls.end(),
                               [](const report::Control& c) { return c.name == CodeName; });
    if (placed != section.controls.end()) {
        notes.width += placed->width + NoteGap;
        section.controls.erase(placed);
    }
    if (dueCents <= 0)
        return;
    report::Control code;
    code.name = CodeName;
    code.kind = report::ControlKind::Picture;
    code.width = code.height = notes.height;
    code.left = notes.left + notes.width - code.width;
    code.top = notes.top;
    code.picture = qrImage(epcPayload(payee, dueCents, invNo));
    notes.width -= code.width + NoteGap;
    section.controls.push_back(code);
}

} // namespace einvoice
