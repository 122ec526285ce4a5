#pragma once
// The "scan to pay" code on a printed invoice: an EPC069-12 credit transfer (version 002,
// UTF-8), for invoices in euro to a seller with an IBAN, when the seller has it switched on.

#include <QImage>
#include <QString>
#include <optional>

namespace report
{
class Report;
}

namespace einvoice
{

struct Payee {
    QString name, iban, bic;
};

// The code's text: service tag, version, character set, SCT, BIC, name (70 characters at
// most), IBAN, "EUR" and the amount, no purpose, no structured reference, the invoice's
// number as the remittance text.
QString epcPayload(const Payee& payee, qint64 dueCents, const QString& invNo);

// The code as black modules on white, one pixel a module, with the quiet zone of four.
QImage qrImage(const QString& payload);

// The seller's payee when the code is to be printed: switched on, an IBAN, and euro as
// the invoice currency; none otherwise.
std::optional<Payee> printedPayee(const QString& businessName, const QString& currencySign);

// Puts the code at the right end of the notes area, the notes narrowed beside it, or
// takes it away when nothing is due. The area is the design's own: nothing else moves.
void placePaymentCode(report::Report& invoice, const Payee& payee, qint64 dueCents, const QString& invNo);

} // namespace einvoice
