// A text too long for its one-line column ends at a word with an ellipsis, on the page as
// in the rule; a text that fits is drawn whole.

#include "TestUi.h"

#include "report/Report.h"
#include "report/ReportRenderer.h"
#include "shell/frmMain.h"
#include "store/Functions.h"
#include "store/ShapeRecordset.h"

#include <QtTest>

using namespace report;

class LongTextTest : public QObject
{
    Q_OBJECT
private slots:
    void elideAtWord_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("columns"); // the width, in widths of "x"
        QTest::addColumn<QString>("shown");
        QTest::newRow("fits") << "Short" << 10 << "Short";
        QTest::newRow("fits exactly") << "xxxxx" << 5 << "xxxxx";
        QTest::newRow("cut at a word") << "Alpha Beta Gamma" << 12 << QString("Alpha Beta\u2026");
        QTest::newRow("blanks before the cut") << "Alpha   Betamax" << 12 << QString("Alpha\u2026");
        QTest::newRow("one long word") << "Supercalifragilistic" << 8 << "";
    }
    void elideAtWord()
    {
        QFETCH(QString, text);
        QFETCH(int, columns);
        QFETCH(QString, shown);
        QFont font(QStringLiteral("DejaVu Sans Mono"));
        font.setPixelSize(200);
        const QFontMetricsF metrics(font);
        const qreal width = columns * metrics.horizontalAdvance(QLatin1Char('x'));
        const QString got = report::elideAtWord(metrics, text, width);
        QVERIFY(metrics.horizontalAdvance(got) <= width);
        if (shown.isEmpty()) { // a word alone: its first letters and the ellipsis
            QVERIFY2(got.endsWith(QChar(0x2026)) && text.startsWith(got.chopped(1)) && got.size() > 2, qPrintable(got));
        } else {
            QCOMPARE(got, shown);
        }
    }

    // A bound text too long for its column; the column's heading, a caption the design
    // sets, is drawn as designed.
    void onThePage()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        const QString name = "Harbour Chandlery Supplies Limited";
        addRow("Customers", {{"CustID", "C1"}, {"LastName", name}});
        Report r;
        r.name = "Long_rpt";
        r.width = 9000;
        r.leftMargin = r.rightMargin = r.topMargin = r.bottomMargin = 720;
        Control c;
        c.name = "LastName_txt";
        c.kind = ControlKind::Field;
        c.field = "LastName";
        c.width = 1500; // about an inch: room for two of the words
        c.height = 250;
        c.wordWrap = false;
        r.sections = {{"Section1", SectionKind::Detail, 300, false, {c}}};
        std::shared_ptr<ShapeRecordset> rows;
        Open_shape("SHAPE {SELECT * FROM customers} as details", rows);
        r.setDataSource(rows);
        const Layout layout(r, platform::vbPRPSA4);
        QVERIFY(layout.writePdf(ui.file("long.pdf")));
        const QString text = pdfText(ui.file("long.pdf")).simplified();
        // Whole words of the name, then the ellipsis.
        const QString kept = text.section(QChar(0x2026), 0, 0);
        QVERIFY2(text.endsWith(QChar(0x2026)) && kept.size() >= 7, qPrintable(text));
        QVERIFY2(name.startsWith(kept) && name.at(kept.size()) == QLatin1Char(' '), qPrintable(kept));
        VERIFY_UI(ui);
    }
};

VELK_TEST(LongTextTest)
#include "tst_long_text.moc"
