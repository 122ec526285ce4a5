// A date typed into a date field as it is written, digits alone or with separators,
// gives that date.

#include "TestUi.h"

#include "platform/DateBox.h"

#include <QtTest>

class DateBoxTest : public QObject
{
    Q_OBJECT
private slots:
    void typedDates_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QDate>("date");
        QTest::newRow("digits alone") << "15072026" << QDate(2026, 7, 15);
        QTest::newRow("slashes") << "15/07/2026" << QDate(2026, 7, 15);
        QTest::newRow("points") << "15.07.2026" << QDate(2026, 7, 15);
        QTest::newRow("dashes") << "15-07-2026" << QDate(2026, 7, 15);
        QTest::newRow("one-digit day and month") << "5/7/2026" << QDate(2026, 7, 5);
        QTest::newRow("day 3 moves on by itself") << "4/12/2027" << QDate(2027, 12, 4);
        QTest::newRow("two-digit day below 4") << "01/02/2026" << QDate(2026, 2, 1);
    }
    void typedDates()
    {
        QFETCH(QString, typed);
        QFETCH(QDate, date);
        platform::DateBox box;
        box.setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        box.setDate(QDate(2026, 11, 22));
        showUp(box);
        box.setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(&box, typed);
        QCOMPARE(box.date(), date);
    }
};

VELK_TEST(DateBoxTest)
#include "tst_datebox.moc"
