#include "report/ReportPreview.h"

#include "platform/Platform.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace report
{

ReportPreview::ReportPreview(const Layout& layout, QWidget* parent) : QDialog(parent), layout_(layout)
{
    setObjectName(QStringLiteral("ReportPreview"));
    setWindowTitle(layout.report().title);
    resize(900, 1000);
    auto* top = new QVBoxLayout(this);
    auto* bar = new QHBoxLayout;
    auto* print = new QPushButton(QStringLiteral("&Print..."), this);
    print->setObjectName(QStringLiteral("Print_cmd"));
    auto* pdf = new QPushButton(QStringLiteral("Save as &PDF..."), this);
    pdf->setObjectName(QStringLiteral("Pdf_cmd"));
    zoom_ = new QComboBox(this);
    zoom_->setObjectName(QStringLiteral("Zoom_cbo"));
    for (int z : {50, 75, 100, 150, 200})
        zoom_->addItem(QStringLiteral("%1%").arg(z), z);
    zoom_->setCurrentIndex(2);
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
    auto* scroll = new QScrollArea(this);
    auto* inner = new QWidget(scroll);
    pages_ = new QVBoxLayout(inner);
    scroll->setWidget(inner);
    scroll->setWidgetResizable(true);
    top->addWidget(scroll, 1);
    connect(print, &QPushButton::clicked, this, &ReportPreview::printReport);
    connect(pdf, &QPushButton::clicked, this, &ReportPreview::savePdf);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(zoom_, &QComboBox::currentIndexChanged, this, &ReportPreview::showPages);
    showPages();
}

void ReportPreview::showPages()
{
    while (QLayoutItem* item = pages_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    // At 100% a page shows at the screen's own size: 96 pixels to the inch.
    const double scale = 96.0 / 1440.0 * zoom_->currentData().toInt() / 100.0;
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
    request.fileName = layout_.report().name + QStringLiteral(".pdf");
    if (const auto path = platform::ShowSave(request); path && !layout_.writePdf(*path))
        platform::MsgBox(QStringLiteral("The PDF file could not be written: ") + *path, platform::vbExclamation,
                         QStringLiteral("Save PDF"));
}

} // namespace report
