#include "report/ReportRenderer.h"

#include "store/Functions.h"
#include "store/ShapeRecordset.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <array>

namespace report
{

namespace
{

// Twips kept clear between a right-aligned text and the right edge of its box: 1.5 points.
constexpr int RightInset = 30;

// Sums and counts of one footer's functions over the rows it covers. A Null adds
// nothing and is not counted.
struct Totals {
    struct Item {
        const Control* control;
        Currency money;
        double real = 0;
        bool anyReal = false;
        int count = 0;
    };
    std::vector<Item> items;

    explicit Totals(const Section* section)
    {
        if (section)
            for (const Control& c : section->controls)
                if (c.kind == ControlKind::Function)
                    items.push_back({&c, {}, 0, false, 0});
    }
    // The rows of one level: the detail rows, or a group's own row.
    void add(const ShapeRecordset& rs, bool detail = true)
    {
        for (Item& i : items) {
            const QString& member = i.control->member;
            if (member.isEmpty() ? !detail : member.compare(rs.name(), Qt::CaseInsensitive) != 0)
                continue;
            if (i.control->field.isEmpty()) {
                ++i.count;
                continue;
            }
            const Value v = rs.field(i.control->field);
            if (v.isNull())
                continue;
            ++i.count;
            if (v.type() == Value::Type::Currency || v.type() == Value::Type::Long)
                i.money += v.toCurrency();
            else {
                i.real += v.toDouble();
                i.anyReal = true;
            }
        }
    }
    // In the order of the section's function controls.
    std::vector<QString> texts() const
    {
        std::vector<QString> out;
        for (const Item& i : items) {
            Value v;
            if (i.control->function.compare(QLatin1String("Count"), Qt::CaseInsensitive) == 0)
                v = Value(qint64(i.count));
            else
                v = i.anyReal ? Value(i.real + i.money.toDouble()) : Value(i.money);
            out.push_back(formatValue(v, i.control->format));
        }
        return out;
    }
};

QString decimals(const Value& v)
{
    if (v.type() == Value::Type::Text)
        return Format_amount(*v.text(), 18, 2).trimmed(); // a text that is no number shows as it is
    if (v.type() == Value::Type::Currency)
        return Format_amount(v.toCurrency(), 18, 2).trimmed();
    return Format_amount(v.toDouble(), 18, 2).trimmed();
}

} // namespace

bool fitsUnshaped(const QFont& font, const QString& text, qreal width)
{
    // The advances of the printable ASCII letters, by font; the last font asked is kept at hand.
    static QHash<QString, std::array<qreal, 128>> tables;
    static QFont lastFont;
    static const std::array<qreal, 128>* last = nullptr;
    if (!last || font != lastFont) {
        auto table = tables.find(font.key());
        if (table == tables.end()) {
            const QFontMetricsF metrics(font);
            std::array<qreal, 128> advances{};
            for (int c = 32; c < 127; ++c)
                advances[size_t(c)] = metrics.horizontalAdvance(QChar(c));
            table = tables.insert(font.key(), advances);
        }
        lastFont = font;
        last = &*table;
    }
    qreal sum = 0;
    for (const QChar c : text) {
        if (c.unicode() < 32 || c.unicode() > 126)
            return false;
        sum += (*last)[c.unicode()];
    }
    return sum * 1.05 + font.pixelSize() * 0.1 <= width;
}

QString elideAtWord(const QFontMetricsF& metrics, const QString& text, qreal width)
{
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    const QString ellipsis(QChar(0x2026));
    // The most whole words that fit with the ellipsis after them.
    for (qsizetype end = text.lastIndexOf(QLatin1Char(' ')); end > 0;
         end = text.lastIndexOf(QLatin1Char(' '), end - 1)) {
        const QString shown = text.left(end).trimmed() + ellipsis;
        if (!shown.startsWith(ellipsis) && metrics.horizontalAdvance(shown) <= width)
            return shown;
    }
    // One word longer than the column: as much of it as fits.
    return metrics.elidedText(text, Qt::ElideRight, width);
}

QString formatValue(const Value& value, const QString& format)
{
    if (value.isNull())
        return QString();
    if (format == QLatin1String("0.00"))
        return decimals(value);
    if (format == QLatin1String("0.00;(0.00)")) {
        const QString text = decimals(value);
        return text.startsWith('-') ? QStringLiteral("(%1)").arg(text.mid(1)) : text;
    }
    if (value.type() == Value::Type::Date && !format.isEmpty())
        return value.toDate().toString(format);
    return Null_to_text(value);
}

Layout::Layout(const Report& report, int paperCode) : report_(report), paper_(paperFor(paperCode))
{
    // A design wider than the portrait page prints across it.
    if (report.leftMargin + report.width + report.rightMargin > paper_.width)
        orientation_ = QPageLayout::Landscape;
    build();
}

int Layout::pageWidth() const
{
    return orientation_ == QPageLayout::Portrait ? paper_.width : paper_.height;
}
int Layout::pageHeight() const
{
    return orientation_ == QPageLayout::Portrait ? paper_.height : paper_.width;
}

void Layout::build()
{
    const Report& r = report_;
    const Section* reportHeader = r.sectionOf(SectionKind::ReportHeader);
    const Section* pageHeader = r.sectionOf(SectionKind::PageHeader);
    const Section* groupHeader = r.sectionOf(SectionKind::GroupHeader);
    const Section* detail = r.sectionOf(SectionKind::Detail);
    const Section* groupFooter = r.sectionOf(SectionKind::GroupFooter);
    const Section* pageFooter = r.sectionOf(SectionKind::PageFooter);
    const Section* reportFooter = r.sectionOf(SectionKind::ReportFooter);
    const int usable = pageHeight() - r.topMargin - r.bottomMargin - (pageFooter ? pageFooter->height : 0);
    int y = 0;
    Page page;

    auto pageHead = [&] {
        if (pageHeader) {
            page.bands.push_back({pageHeader, y});
            y += pageHeader->height;
        }
    };
    auto endPage = [&] {
        pages_.push_back(std::move(page));
        page = Page();
        y = 0;
    };
    auto newPage = [&] {
        endPage();
        pageHead();
    };
    auto place = [&](const Section* s, int row, int child = -1, const std::vector<QString>& functions = {}) {
        if (!s)
            return;
        // A band that does not fit goes to the next page, unless the page holds nothing
        // of its own yet (then it is cut at the foot rather than lost).
        const int headerOnly = pageHeader ? pageHeader->height : 0;
        if (y + s->height > usable && y > headerOnly)
            newPage();
        int texts = -1;
        if (!functions.empty()) {
            texts = int(functions_.size());
            functions_.insert(functions_.end(), functions.begin(), functions.end());
        }
        page.bands.push_back({s, y, row, child, texts});
        y += s->height;
    };

    place(reportHeader, -1);
    pageHead();

    Totals all(reportFooter);
    const std::shared_ptr<ShapeRecordset>& source = r.dataSource();
    const bool grouped = source && groupHeader && !source->chapterName().isEmpty();
    const int n = source ? source->recordCount() : 0;
    for (int i = 0; i < n; ++i) {
        source->moveTo(i);
        if (grouped) {
            place(groupHeader, i);
            all.add(*source, false);
            Totals group(groupFooter);
            auto children = source->chapter(source->chapterName());
            for (int c = 0; c < children->recordCount(); ++c) {
                children->moveTo(c);
                place(detail, i, c);
                group.add(*children);
                all.add(*children);
            }
            place(groupFooter, i, -1, group.texts());
        } else {
            place(detail, i);
            all.add(*source);
            if (detail && detail->newPageAfter && i + 1 < n)
                newPage();
        }
    }
    place(reportFooter, -1, -1, all.texts());
    endPage();
}

void Layout::paint(QPainter& painter, int pageIndex) const
{
    paintPage(painter, pages_[size_t(pageIndex)]);
}

void Layout::paintPage(QPainter& painter, const Page& page) const
{
    const Report& r = report_;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(1);
    painter.save();
    painter.setFont(font);
    painter.translate(r.leftMargin, r.topMargin);
    std::vector<Band> bands = page.bands;
    if (const Section* footer = r.sectionOf(SectionKind::PageFooter))
        bands.push_back({footer, pageHeight() - r.topMargin - r.bottomMargin - footer->height});
    const std::shared_ptr<ShapeRecordset>& source = r.dataSource();
    std::shared_ptr<ShapeRecordset> children; // the chapter of childrenOf, made once for its rows
    int childrenOf = -1;
    for (const Band& band : bands) {
        ShapeRecordset* rows = nullptr;
        if (source && band.row >= 0) {
            source->moveTo(band.row);
            rows = source.get();
            if (band.child >= 0) {
                if (childrenOf != band.row) {
                    children = source->chapter(source->chapterName());
                    childrenOf = band.row;
                }
                children->moveTo(band.child);
                rows = children.get();
            }
        }
        int functions = 0; // the function controls met so far: their texts stand in this order
        for (const Control& c : band.section->controls) {
            const int function = c.kind == ControlKind::Function ? functions++ : -1;
            if (!c.visible)
                continue;
            const QRect rect(c.left, band.top + c.top, c.width, c.height);
            switch (c.kind) {
            case ControlKind::Shape:
                painter.setPen(QPen(Qt::black, 15));
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(rect);
                break;
            case ControlKind::Line:
                painter.setPen(QPen(Qt::black, 15));
                painter.drawLine(c.left, band.top + c.top, c.left + c.width, band.top + c.top + c.height);
                break;
            case ControlKind::Picture:
                if (!c.picture.isNull()) {
                    const QSize size = c.picture.size().scaled(rect.size(), Qt::KeepAspectRatio);
                    painter.drawImage(QRect(rect.topLeft(), size), c.picture);
                }
                break;
            default: {
                QString text = c.caption;
                if (c.kind == ControlKind::Field)
                    text = rows ? formatValue(rows->field(c.field), c.format) : QString();
                else if (c.kind == ControlKind::Function)
                    text = band.functions >= 0 ? functions_[size_t(band.functions + function)] : QString();
                if (text.isEmpty())
                    break;
                const int flags = int(c.alignment) | Qt::AlignTop | (c.wordWrap ? Qt::TextWordWrap : 0);
                // Amounts stand right against their box: a little room keeps them off its border.
                const QRect room = c.alignment & Qt::AlignRight ? rect.adjusted(0, 0, -RightInset, 0) : rect;
                // Changing the painter's font is costly: only when the control's differs.
                auto setSize = [&](int pixels) {
                    if (font.pixelSize() != pixels || font.bold() != c.bold) {
                        font.setPixelSize(pixels);
                        font.setBold(c.bold);
                        painter.setFont(font);
                    }
                };
                setSize(c.fontSize * 20);
                if (c.shrink) {
                    // Half a point at a time, down to 4 points; what is still too big is cut.
                    for (int pixels = c.fontSize * 20; pixels > 80; pixels -= 10) {
                        const QRect needed = painter.boundingRect(room, flags, text);
                        if (needed.width() <= room.width() && needed.height() <= room.height())
                            break;
                        setSize(pixels - 10);
                    }
                } else if (!c.wordWrap && c.kind == ControlKind::Field && !fitsUnshaped(font, text, room.width()))
                    text = elideAtWord(QFontMetricsF(painter.font()), text, room.width());
                painter.setPen(Qt::black);
                painter.drawText(room, flags, text);
                break;
            }
            }
        }
    }
    painter.restore();
}

bool Layout::print(QPagedPaintDevice& device) const
{
    device.setPageSize(QPageSize(paper_.code == 1 ? QPageSize::Letter : QPageSize::A4));
    device.setPageOrientation(orientation_);
    device.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter(&device);
    if (!painter.isActive())
        return false;
    // Work in twips: 1440 to the inch.
    const double scale = device.logicalDpiX() / 1440.0;
    for (size_t i = 0; i < pages_.size(); ++i) {
        if (i > 0)
            device.newPage();
        painter.save();
        painter.scale(scale, scale);
        paintPage(painter, pages_[i]);
        painter.restore();
    }
    return painter.end();
}

// Written under a temporary name and put in place only when whole, so that a folder
// that is not there or a full disk is told, and no half file is left.
bool Layout::writePdf(const QString& path) const
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && writePdf(file) && file.commit();
}

bool Layout::writePdf(QIODevice& device, bool archival) const
{
    QPdfWriter writer(&device);
    writer.setResolution(600);
    writer.setTitle(report_.title);
    writer.setCreator(QStringLiteral("Velk Invoice"));
    if (archival)
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    return print(writer);
}

} // namespace report
