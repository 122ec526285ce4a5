// Selected rows stay readable, 4.5:1 or better, in the default style and under dark or
// light desktop palettes, in the window that has the focus and in one that has not.

#include "TestUi.h"

#include "customers/frmCustomer.h"
#include "platform/Palette.h"
#include "shell/frmMain.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QStyle>
#include <QtTest>

namespace
{

QPalette themed(const QColor& window, const QColor& text, const QColor& highlight, const QColor& highlightedText)
{
    QPalette p(window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Highlight, highlight);
    p.setColor(QPalette::HighlightedText, highlightedText);
    return p;
}

} // namespace

class PaletteTest : public QObject
{
    Q_OBJECT
private slots:
    void selectionIsReadable_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<bool>("alreadyReadable");
        QTest::newRow("default style") << QApplication::style()->standardPalette() << false;
        QTest::newRow("dark, blue selection") << themed("#353535", "#eeeeee", "#2a82da", Qt::white) << false;
        QTest::newRow("dark, grey selection") << themed("#202020", "#dddddd", "#5a5a5a", "#d0d0d0") << false;
        QTest::newRow("light, pale selection") << themed("#f0f0f0", Qt::black, "#cce8ff", Qt::black) << true;
        QTest::newRow("selection text as pale as its ground")
            << themed("#ffffff", Qt::black, "#ffff00", "#ffffe0") << false;
    }
    void selectionIsReadable()
    {
        QFETCH(QPalette, palette);
        QFETCH(bool, alreadyReadable);
        const QPalette mended = platform::withReadableSelection(palette);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            const QColor back = mended.color(group, QPalette::Highlight);
            const QColor text = mended.color(group, QPalette::HighlightedText);
            QVERIFY2(
                platform::contrast(back, text) >= 4.5,
                qPrintable(
                    QStringLiteral("%1 on %2: %3").arg(text.name(), back.name()).arg(platform::contrast(back, text))));
        }
        if (alreadyReadable)
            QCOMPARE(mended, palette);
    }

    void contrastOfKnownPairs()
    {
        QCOMPARE(qRound(platform::contrast(Qt::black, Qt::white) * 10), 210);
        QCOMPARE(qRound(platform::contrast(Qt::white, Qt::white) * 10), 10);
        QCOMPARE(qRound(platform::contrast(QColor("#777777"), Qt::white) * 100), 448); // just short of 4.5
    }

    // A desktop that turns dark while the program runs: the lists follow, readable.
    void listsFollowTheDesktop()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        const QPalette before = QApplication::palette();
        platform::keepSelectionReadable();
        QApplication::setPalette(themed("#353535", "#eeeeee", "#2a82da", Qt::white));
        frmCustomer list(main.get());
        const QPalette shown = list.findChild<QAbstractItemView*>("Cust_lst")->palette();
        QVERIFY(platform::contrast(shown.color(QPalette::Active, QPalette::Highlight),
                                   shown.color(QPalette::Active, QPalette::HighlightedText)) >= 4.5);
        QApplication::setPalette(before);
        VERIFY_UI(ui);
    }
};

VELK_TEST(PaletteTest)
#include "tst_palette.moc"
