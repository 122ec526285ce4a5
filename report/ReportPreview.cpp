#include "report/ReportPreview.h"

#include "platform/Platform.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace report
{

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
    bar->addWidget(new QLabel(QStringLiteral("Zoom:"), this));
    bar->addWidget(zoom_);
    bar->addStretch();
    bar->addWidget(new QLabel(QStringLiteral("%1 page(s)").arg(layout.pages().size()), this));
    bar->addWidget(close);
    top->addLayout(bar);
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName(QStringLiteral("Pages"));
    auto* inner = new QWidget(scroll_);
    pages_ = new QVBoxLayout(inner);
    scroll_->setWidget(inner);
    scroll_->setWidgetResizable(true);
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
    const QSize room = scroll_->viewport()->size() - QSize(2 * pages_->contentsMargins().left() + 24, 24);
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

void ReportPreview::showPages()
{
    while (QLayoutItem* item = pages_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const double scale = shownScale_ = this->scale();
    for (size_t i = 0; i < layout_.pages().size(); ++i) {
        QImage image(int(layout_.pageWidth() * scale), int(layout_.pageHeight() * scale), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        layout_.paint(painter, int(i));
        painter.end();
        auto* page = new QLabel(this);
        page->setPixmap(QPixmap::fromImage(image));
        page->setFrameStyle(QFrame::Box);
        pages_->addWidget(page, 0, Qt::AlignHCenter);
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
