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

namespace
{

// A one-line control about an inch wide: room for two words of a name.
Control oneLine(ControlKind kind, int left)
{
    Control c;
    c.name = "One";
    c.kind = kind;
    c.left = left;
    c.width = 1500;
    c.height = 250;
    c.wordWrap = false;
    return c;
}

// A report of that one control, in a section of the kind given.
Report around(const Control& c, SectionKind kind)
{
    Report r;
    r.name = "One_rpt";
    r.width = 9000;
    r.leftMargin = r.rightMargin = r.topMargin = r.bottomMargin = 720;
    r.sections = {{"Section1", kind, 300, false, {c}}};
    return r;
}

} // namespace

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

    // The shortcut that skips measuring never says a text fits that does not, in the
    // report's font, plain and bold, at the sizes the designs use; and it does say so of
    // most texts with room to spare.
    void fitsWithoutMeasuring()
    {
        const QStringList texts = {"INV000123", "12,345.67",         "AVA WAVE Tj", "Line 12345", "fi ffi ll",
                                   "W.A.V.E.",  "Harbour Chandlery", "(1,234.00)",  "LT AV Yo"};
        int sure = 0;
        for (const int points : {7, 8, 9, 10, 12, 14})
            for (const bool bold : {false, true}) {
                QFont font(QStringLiteral("DejaVu Sans"));
                font.setPixelSize(points * 20);
                font.setBold(bold);
                const QFontMetricsF metrics(font);
                for (const QString& text : texts) {
                    const qreal exact = metrics.horizontalAdvance(text);
                    for (qreal width = exact * 0.9; width < exact * 1.2; width += exact / 200) {
                        if (report::fitsUnshaped(font, text, width)) {
                            ++sure;
                            QVERIFY2(exact <= width, qPrintable(QStringLiteral("%1 at %2 px%3: %4 > %5")
                                                                    .arg(text)
                                                                    .arg(points * 20)
                                                                    .arg(bold ? " bold" : "")
                                                                    .arg(exact)
                                                                    .arg(width)));
                        }
                    }
                }
            }
        QVERIFY(sure > 0);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(180);
        QVERIFY(report::fitsUnshaped(font, "12.50", 2000));
        QVERIFY(!report::fitsUnshaped(font, QStringLiteral("caf\u00e9"), 2000)); // beyond ASCII: measured
    }

    // A bound text too long for its column; the column's heading, a caption the design
    // sets, is drawn as designed.
    void onThePage()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        const QString name = "Harbour Chandlery Supplies Limited";
        addRow("Customers", {{"CustID", "C1"}, {"LastName", name}});
        Control c = oneLine(ControlKind::Field, 0);
        c.field = "LastName";
        Report r = around(c, SectionKind::Detail);
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

    // A right-aligned amount keeps clear of its box's right border.
    void amountsKeepOffTheBorder()
    {
        TestUi ui;
        Control c = oneLine(ControlKind::Label, 3000);
        c.alignment = Qt::AlignRight;
        c.caption = "1234.56";
        const Report r = around(c, SectionKind::ReportHeader);
        QVERIFY(Layout(r, platform::vbPRPSA4).writePdf(ui.file("amount.pdf")));
        static const QRegularExpression word(QStringLiteral("xMax=\"([\\d.]+)\"[^>]*>1234.56<"));
        const auto m = word.match(runTool("pdftotext", {"-bbox", ui.file("amount.pdf"), "-"}));
        QVERIFY(m.hasMatch());
        const double border = (720 + 3000 + 1500) / 20.0; // points
        QVERIFY2(border - m.captured(1).toDouble() >= 1.0, qPrintable(m.captured(1)));
        VERIFY_UI(ui);
    }
};

VELK_TEST(LongTextTest)
#include "tst_long_text.moc"
