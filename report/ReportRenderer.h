#pragma once
// Lays a report out on pages and paints them: one routine for the preview, the printer
// and PDF files.

#include "report/Report.h"
#include "store/Value.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QString>
#include <utility>
#include <vector>

class QIODevice;
class QPagedPaintDevice;
class QPainter;

namespace report
{

// One section as placed on a page, with the row its fields show: a few numbers, as a
// long report places over a million of them.
struct Band {
    const Section* section;
    int top;            // twips below the top margin
    int row = -1;       // the source's row its fields show, or none
    int child = -1;     // in that row's chapter, the detail row shown; -1: the row itself
    int functions = -1; // where a footer's function texts start in the layout's list
};

struct Page {
    std::vector<Band> bands;
};

class Layout
{
public:
    Layout(const Report& report, int paperCode);

    const Report& report() const { return report_; }
    const std::vector<Page>& pages() const { return pages_; }
    Paper paper() const { return paper_; }
    QPageLayout::Orientation orientation() const { return orientation_; }
    int pageWidth() const; // twips, as oriented
    int pageHeight() const;

    // Paints one page; the painter's units must be twips with the page's corner at 0,0.
    void paint(QPainter& painter, int page) const;
    // Paints every page on a printer or a PDF writer set to this paper; false when the
    // device could not be painted on.
    bool print(QPagedPaintDevice& device) const;

    // False when the file could not be written whole.
    bool writePdf(const QString& path) const;
    // To a device; archival: PDF/A, every font embedded whole, for documents that must
    // stand on their own for years (the e-invoice's page).
    bool writePdf(QIODevice& device, bool archival = false) const;

private:
    void build();
    void paintPage(QPainter& painter, const Page& page) const;

    const Report& report_;
    Paper paper_;
    QPageLayout::Orientation orientation_ = QPageLayout::Portrait;
    std::vector<Page> pages_;
    std::vector<QString> functions_; // footers' function texts, a band's from its place on
};

// The text a value shows under a control's format.
QString formatValue(const Value& value, const QString& format);

// A one-line text too long for its width: the whole words that fit and an ellipsis, or,
// for a single word too long, as many of its letters as fit.
QString elideAtWord(const QFontMetricsF& metrics, const QString& text, qreal width);

// Whether a one-line text surely fits a width, told without shaping it (from its letters'
// own advances with room for kerning): false when in doubt. Most fields fit, and shaping
// each twice, once to measure and once to draw, was most of a long report's time.
bool fitsUnshaped(const QFont& font, const QString& text, qreal width);

} // namespace report
