// The desktop preview: it fits the screen, shows a page whole or by its width, and offers
// to save under a name that says what the document is.

#include "TestUi.h"

#include "report/Report.h"
#include "report/ReportPreview.h"
#include "report/ReportRenderer.h"

#include <QComboBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardPaths>
#include <QtTest>

using namespace report;

namespace
{

// An empty design of the given width: wider than 11000 twips turns the page.
std::unique_ptr<Report> blank(int width, const QString& title)
{
    auto r = std::make_unique<Report>();
    r->name = "Blank_rpt";
    r->title = title;
    r->width = width;
    r->leftMargin = r->rightMargin = r->topMargin = r->bottomMargin = 720;
    Control box;
    box.kind = ControlKind::Shape;
    box.width = 2000;
    box.height = 300;
    r->sections = {{"Section4", SectionKind::ReportHeader, 400, false, {box}}};
    return r;
}

QSize firstPage(ReportPreview& preview)
{
    return preview.pageSize();
}

} // namespace

class PreviewTest : public QObject
{
    Q_OBJECT
private slots:
    void fitsThePage_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("portrait") << 9000;
        QTest::newRow("landscape") << 13500;
    }
    void fitsThePage()
    {
        QFETCH(int, width);
        TestUi ui;
        auto r = blank(width, "List");
        const Layout layout(*r, platform::vbPRPSA4);
        ReportPreview preview(layout);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(preview.width() <= screen.width());
        QVERIFY(preview.height() <= screen.height());
        preview.show();
        QVERIFY(QTest::qWaitForWindowExposed(&preview));
        auto* zoom = preview.findChild<QComboBox*>("Zoom_cbo");
        QCOMPARE(zoom->currentText(), QStringLiteral("Whole page"));
        const QSize room = preview.findChild<QScrollArea*>("Pages")->viewport()->size();
        QSize page = firstPage(preview);
        QVERIFY2(page.width() <= room.width() && page.height() <= room.height(),
                 qPrintable(QStringLiteral("page %1x%2 in %3x%4")
                                .arg(page.width())
                                .arg(page.height())
                                .arg(room.width())
                                .arg(room.height())));
        // The page keeps its shape: a landscape page shows wider than high.
        QCOMPARE(page.width() > page.height(), width > 11000);
        zoom->setCurrentText(QStringLiteral("Page width"));
        page = firstPage(preview);
        QVERIFY(page.width() <= room.width());
        QVERIFY(page.width() >= room.width() * 8 / 10);
        zoom->setCurrentText(QStringLiteral("100%"));
        QCOMPARE(firstPage(preview).width(), int(layout.pageWidth() * 96 / 1440));
        // The strip holds every page; the one in view is drawn: white, with the header's
        // box at the margins (48 pixels at 100%).
        auto* strip = preview.findChild<QWidget*>("PageStrip");
        QCOMPARE(strip->height(), 1 * (firstPage(preview).height() + 10) + 10);
        const QImage shown = strip->grab(QRect(QPoint(10, 10), firstPage(preview))).toImage();
        QCOMPARE(shown.pixelColor(shown.width() / 2, shown.height() / 2), QColor(Qt::white));
        QVERIFY(qGray(shown.pixel(48, 60)) < 128);
        QCOMPARE(shown.pixelColor(44, 60), QColor(Qt::white));
        VERIFY_UI(ui);
    }

    // An invoice is offered as its number, a list as its title and the day; in the
    // documents folder, with what a file name cannot hold replaced.
    void proposedFileName_data()
    {
        QTest::addColumn<QString>("documentName");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("file");
        QTest::newRow("invoice") << "INV0042"
                                 << "Invoice"
                                 << "INV0042.pdf";
        QTest::newRow("number with a slash") << " 2026/17 "
                                             << "Invoice"
                                             << "2026-17.pdf";
        QTest::newRow("list") << ""
                              << "Invoices - Summary"
                              << "Invoices - Summary 2026-11-22.pdf";
        QTest::newRow("list with a colon") << ""
                                           << "Debtors: 30 days"
                                           << "Debtors- 30 days 2026-11-22.pdf";
    }
    void proposedFileName()
    {
        QFETCH(QString, documentName);
        QFETCH(QString, title);
        QFETCH(QString, file);
        TestUi ui;
        auto r = blank(9000, title);
        r->documentName = documentName;
        const Layout layout(*r, platform::vbPRPSA4);
        ReportPreview preview(layout);
        ui.expectSave(std::nullopt);
        preview.findChild<QPushButton*>("Pdf_cmd")->click();
        QCOMPARE(ui.dialogs.size(), 1);
        QCOMPARE(ui.dialogs[0].fileName,
                 QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(file));
        VERIFY_UI(ui);
    }
};

VELK_TEST(PreviewTest)
#include "tst_preview.moc"
