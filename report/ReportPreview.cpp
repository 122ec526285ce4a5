#include "report/ReportPreview.h"

#include "platform/Platform.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace report
{

namespace
{

// Room around and between the pages, in pixels.
constexpr int PageGap = 10;

// The strip the pages stand on, one below the other; it paints through its preview.
class PageStrip : public QWidget
{
public:
    PageStrip(QWidget* parent, std::function<void(QPaintEvent*)> paint) : QWidget(parent), paint_(std::move(paint))
    {
        setObjectName(QStringLiteral("PageStrip"));
    }

protected:
    void paintEvent(QPaintEvent* event) override { paint_(event); }

private:
    std::function<void(QPaintEvent*)> paint_;
};

} // namespace

ReportPreview::ReportPreview(const Layout& layout, QWidget* parent) : QDialog(parent), layout_(layout)
{
    setObjectName(QStringLiteral("ReportPreview"));
    setWindowTitle(layout.report().title);
    // As much of the screen as a page wants, and never more than the screen has.
    if (const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        resize(std::min(900, area.width()), std::min(1000, area.height() * 9 / 10));
    }
    auto* top = new QVBoxLayout(this);
    auto* bar = new QHBoxLayout;
    auto* print = new QPushButton(QStringLiteral("&Print..."), this);
    print->setObjectName(QStringLiteral("Print_cmd"));
    auto* pdf = new QPushButton(QStringLiteral("Save as &PDF..."), this);
    pdf->setObjectName(QStringLiteral("Pdf_cmd"));
    zoom_ = new QComboBox(this);
    zoom_->setObjectName(QStringLiteral("Zoom_cbo"));
    zoom_->addItem(QStringLiteral("Whole page"), int(FitPage));
    zoom_->addItem(QStringLiteral("Page width"), int(FitWidth));
    for (int z : {50, 75, 100, 150, 200})
        zoom_->addItem(QStringLiteral("%1%").arg(z), z);
    zoom_->setCurrentIndex(0);
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("Close_cmd"));
    bar->addWidget(print);
    bar->addWidget(pdf);
    for (const Report::Command& command : layout.report().commands) {
        auto* button = new QPushButton(command.caption, this);
        button->setObjectName(command.name);
        bar->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, run = command.run] { run(layout_.report()); });
    }
    bar->addWidget(new QLabel(QStringLiteral("Zoom:"), this));
    bar->addWidget(zoom_);
    bar->addStretch();
    bar->addWidget(new QLabel(QStringLiteral("%1 page(s)").arg(layout.pages().size()), this));
    bar->addWidget(close);
    top->addLayout(bar);
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName(QStringLiteral("Pages"));
    strip_ = new PageStrip(scroll_, [this](QPaintEvent* event) { paintPages(event); });
    scroll_->setWidget(strip_);
    scroll_->setAlignment(Qt::AlignHCenter);
    top->addWidget(scroll_, 1);
    connect(print, &QPushButton::clicked, this, &ReportPreview::printReport);
    connect(pdf, &QPushButton::clicked, this, &ReportPreview::savePdf);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(zoom_, &QComboBox::currentIndexChanged, this, &ReportPreview::showPages);
    showPages();
}

double ReportPreview::scale() const
{
    const int zoom = zoom_->currentData().toInt();
    if (zoom > 0)
        return 96.0 / 1440.0 * zoom / 100.0; // at 100% a page shows at 96 pixels to the inch
    // The room beside the page's frame and the scroll bar that a long report brings.
    const QSize room = scroll_->viewport()->size() - QSize(2 * PageGap + 24, 2 * PageGap);
    const double across = double(room.width()) / layout_.pageWidth();
    const double down = double(room.height()) / layout_.pageHeight();
    return std::max(0.01, zoom == FitWidth ? across : std::min(across, down));
}

void ReportPreview::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    // A fitted zoom follows the window; the pages are drawn again only when it moved.
    if (zoom_->currentData().toInt() < 0 && std::abs(scale() - shownScale_) > shownScale_ / 50)
        showPages();
}

QSize ReportPreview::pageSize() const
{
    return QSize(int(layout_.pageWidth() * shownScale_), int(layout_.pageHeight() * shownScale_));
}

void ReportPreview::showPages()
{
    shownScale_ = scale();
    strip_->setFixedSize(pageSize().width() + 2 * PageGap,
                         int(layout_.pages().size()) * (pageSize().height() + PageGap) + PageGap);
    strip_->update();
}

// Only the pages in view are drawn, each time they come into view: a report of thousands
// of pages costs no more to show than its first.
void ReportPreview::paintPages(QPaintEvent* event)
{
    QPainter painter(strip_);
    const QSize page = pageSize();
    const int step = page.height() + PageGap;
    const int first = std::max(0, (event->rect().top() - PageGap) / step);
    const int last = std::min(int(layout_.pages().size()) - 1, event->rect().bottom() / step);
    for (int i = first; i <= last; ++i) {
        const QRect frame(PageGap, PageGap + i * step, page.width(), page.height());
        painter.fillRect(frame, Qt::white);
        painter.setPen(Qt::black);
        painter.drawRect(frame.adjusted(-1, -1, 0, 0));
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(frame);
        painter.translate(frame.topLeft());
        painter.scale(shownScale_, shownScale_);
        layout_.paint(painter, i);
        painter.restore();
    }
}

void ReportPreview::printReport()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (platform::showModal(dialog) == QDialog::Accepted)
        layout_.print(printer);
}

void ReportPreview::savePdf()
{
    platform::FileDialogRequest request;
    request.filter = QStringLiteral("PDF File(*.pdf)|*.pdf");
    request.fileName = proposedPdfPath(layout_.report());
    if (const auto path = platform::ShowSave(request); path && !layout_.writePdf(*path))
        platform::MsgBox(QStringLiteral("The PDF file could not be written: ") + *path, platform::vbExclamation,
                         QStringLiteral("Save PDF"));
}

} // namespace report
