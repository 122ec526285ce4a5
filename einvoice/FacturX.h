#pragma once
// A Factur-X (ZUGFeRD 2) file: the printed invoice's page as PDF/A-3b with the same invoice
// as CII XML inside it, named factur-x.xml and tied to the document as its data.

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace einvoice
{

// The XMP metadata: PDF/A-3b identification and the Factur-X extension schema naming the
// attachment and the profile (EN 16931).
QByteArray facturXMetadata(const QString& title, const QDateTime& when);

// The archival PDF of the page with the XML attached; fails with error 57, and qpdf's
// words, when the page is not a PDF qpdf can read.
QByteArray facturX(const QByteArray& pagePdf, const QByteArray& ciiXml, const QString& title, const QDateTime& when);

} // namespace einvoice
