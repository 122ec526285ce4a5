#include "einvoice/FacturX.h"

#include "store/Errors.h"

// qpdf 11 asks which of its smart pointer forms a program uses: the standard one alone.
#define POINTERHOLDER_TRANSITION 4

#include <QTimeZone>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFEFStreamObjectHelper.hh>
#include <qpdf/QPDFEmbeddedFileDocumentHelper.hh>
#include <qpdf/QPDFFileSpecObjectHelper.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
#include <stdexcept>

namespace einvoice
{

namespace
{

const char* const AttachmentName = "factur-x.xml";

QString xmlEscaped(const QString& text)
{
    return text.toHtmlEscaped();
}

// "D:20261120103015+01'00'", as a PDF writes a moment.
std::string pdfDate(const QDateTime& when)
{
    const int offset = when.offsetFromUtc() / 60;
    const QString zone = QStringLiteral("%1%2'%3'")
                             .arg(offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                             .arg(std::abs(offset) / 60, 2, 10, QLatin1Char('0'))
                             .arg(std::abs(offset) % 60, 2, 10, QLatin1Char('0'));
    return (QStringLiteral("D:") + when.toString(QStringLiteral("yyyyMMddHHmmss")) + zone).toStdString();
}

} // namespace

QByteArray facturXMetadata(const QString& title, const QDateTime& when)
{
    // With its offset, as the document information's dates carry it.
    const QString stamp = when.toOffsetFromUtc(when.offsetFromUtc()).toString(Qt::ISODate);
    return QStringLiteral(
               R"(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:pdfaid="http://www.aiim.org/pdfa/ns/id/">
<pdfaid:part>3</pdfaid:part>
<pdfaid:conformance>B</pdfaid:conformance>
</rdf:Description>
<rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
<dc:title><rdf:Alt><rdf:li xml:lang="x-default">%1</rdf:li></rdf:Alt></dc:title>
</rdf:Description>
<rdf:Description rdf:about="" xmlns:pdf="http://ns.adobe.com/pdf/1.3/">
<pdf:Producer>Velk Invoice</pdf:Producer>
</rdf:Description>
<rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/">
<xmp:CreatorTool>Velk Invoice</xmp:CreatorTool>
<xmp:CreateDate>%2</xmp:CreateDate>
<xmp:ModifyDate>%2</xmp:ModifyDate>
</rdf:Description>
<rdf:Description rdf:about="" xmlns:fx="urn:factur-x:pdfa:CrossIndustryDocument:invoice:1p0#">
<fx:DocumentType>INVOICE</fx:DocumentType>
<fx:DocumentFileName>factur-x.xml</fx:DocumentFileName>
<fx:Version>1.0</fx:Version>
<fx:ConformanceLevel>EN 16931</fx:ConformanceLevel>
</rdf:Description>
<rdf:Description rdf:about="" xmlns:pdfaExtension="http://www.aiim.org/pdfa/ns/extension/" xmlns:pdfaSchema="http://www.aiim.org/pdfa/ns/schema#" xmlns:pdfaProperty="http://www.aiim.org/pdfa/ns/property#">
<pdfaExtension:schemas><rdf:Bag><rdf:li rdf:parseType="Resource">
<pdfaSchema:schema>Factur-X PDFA Extension Schema</pdfaSchema:schema>
<pdfaSchema:namespaceURI>urn:factur-x:pdfa:CrossIndustryDocument:invoice:1p0#</pdfaSchema:namespaceURI>
<pdfaSchema:prefix>fx</pdfaSchema:prefix>
<pdfaSchema:property><rdf:Seq>
<rdf:li rdf:parseType="Resource"><pdfaProperty:name>DocumentFileName</pdfaProperty:name><pdfaProperty:valueType>Text</pdfaProperty:valueType><pdfaProperty:category>external</pdfaProperty:category><pdfaProperty:description>The name of the embedded XML document</pdfaProperty:description></rdf:li>
<rdf:li rdf:parseType="Resource"><pdfaProperty:name>DocumentType</pdfaProperty:name><pdfaProperty:valueType>Text</pdfaProperty:valueType><pdfaProperty:category>external</pdfaProperty:category><pdfaProperty:description>The type of the hybrid document in capital letters, e.g. INVOICE or ORDER</pdfaProperty:description></rdf:li>
<rdf:li rdf:parseType="Resource"><pdfaProperty:name>Version</pdfaProperty:name><pdfaProperty:valueType>Text</pdfaProperty:valueType><pdfaProperty:category>external</pdfaProperty:category><pdfaProperty:description>The actual version of the standard applying to the embedded XML document</pdfaProperty:description></rdf:li>
<rdf:li rdf:parseType="Resource"><pdfaProperty:name>ConformanceLevel</pdfaProperty:name><pdfaProperty:valueType>Text</pdfaProperty:valueType><pdfaProperty:category>external</pdfaProperty:category><pdfaProperty:description>The conformance level of the embedded XML document</pdfaProperty:description></rdf:li>
</rdf:Seq></pdfaSchema:property>
</rdf:li></rdf:Bag></pdfaExtension:schemas>
</rdf:Description>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)")
        .arg(xmlEscaped(title), stamp)
        .toUtf8();
}

QByteArray facturX(const QByteArray& pagePdf, const QByteArray& ciiXml, const QString& title, const QDateTime& when)
{
    try {
        QPDF pdf;
        pdf.processMemoryFile("page", pagePdf.constData(), size_t(pagePdf.size()));
        QPDFObjectHandle root = pdf.getRoot();

        const std::string date = pdfDate(when);
        auto stream = QPDFEFStreamObjectHelper::createEFStream(pdf, ciiXml.toStdString());
        stream.setSubtype("text/xml").setCreationDate(date).setModDate(date);
        auto attachment = QPDFFileSpecObjectHelper::createFileSpec(pdf, AttachmentName, stream);
        attachment.setDescription("Factur-X invoice");
        attachment.getObjectHandle().replaceKey("/AFRelationship", QPDFObjectHandle::newName("/Data"));
        QPDFEmbeddedFileDocumentHelper(pdf).replaceEmbeddedFile(AttachmentName, attachment);
        root.replaceKey("/AF", QPDFObjectHandle::newArray({attachment.getObjectHandle()}));

        QPDFObjectHandle metadata = pdf.newStream(facturXMetadata(title, when).toStdString());
        metadata.replaceDict(QPDFObjectHandle::newDictionary(
            {{"/Type", QPDFObjectHandle::newName("/Metadata")}, {"/Subtype", QPDFObjectHandle::newName("/XML")}}));
        root.replaceKey("/Metadata", metadata);

        // PDF/A wants the document information to say what the metadata says.
        QPDFObjectHandle info = pdf.makeIndirectObject(
            QPDFObjectHandle::newDictionary({{"/Title", QPDFObjectHandle::newUnicodeString(title.toStdString())},
                                             {"/Creator", QPDFObjectHandle::newUnicodeString("Velk Invoice")},
                                             {"/Producer", QPDFObjectHandle::newUnicodeString("Velk Invoice")},
                                             {"/CreationDate", QPDFObjectHandle::newString(date)},
                                             {"/ModDate", QPDFObjectHandle::newString(date)}}));
        pdf.getTrailer().replaceKey("/Info", info);

        QPDFWriter writer(pdf);
        writer.setOutputMemory();
        writer.setDeterministicID(true);
        writer.write();
        const auto buffer = writer.getBufferSharedPointer();
        return QByteArray(reinterpret_cast<const char*>(buffer->getBuffer()), qsizetype(buffer->getSize()));
    } catch (const std::exception& e) {
        throw VbError(err::DeviceIO, QStringLiteral("Factur-X: ") + QString::fromUtf8(e.what()));
    }
}

} // namespace einvoice
