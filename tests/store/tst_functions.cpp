// The shared routines, money and the two readings of numbers.

#include "TestUi.h"

#include "store/Currency.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Numbers.h"

#include <QtTest>

// The number of the error a call ends with, or 0 (in tst_store.cpp).
int failure(const std::function<void()>& f);

class FunctionsTest : public QObject
{
    Q_OBJECT
private slots:
    void formatAmount_data();
    void formatAmount();
    void formatAmountOfCurrency();
    void padsAndAligns();
    void csvField_data();
    void csvField();
    void busyNests();
    void currencyFromDouble_data();
    void currencyFromDouble();
    void currencyLimitsAndText();
    void lenientReading_data();
    void lenientReading();
    void strictReading();
    void nullConversions();
};

void FunctionsTest::formatAmount_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("intDigits");
    QTest::addColumn<int>("decDigits");
    QTest::addColumn<QString>("expected");
    QTest::newRow("zero") << 0.0 << 7 << 2 << "      0.00";
    QTest::newRow("negative") << -1.5 << 7 << 2 << "     -1.50";
    QTest::newRow("half away from zero on 15 digits") << 1.005 << 7 << 2 << "      1.01";
    QTest::newRow("negative half") << -2.675 << 7 << 2 << "     -2.68";
    QTest::newRow("twelve fifty") << 12.5 << 7 << 2 << "     12.50";
    QTest::newRow("carry into a new digit") << 9.999 << 7 << 2 << "     10.00";
    QTest::newRow("small rounds to zero without a sign") << -0.001 << 7 << 2 << "      0.00";
    QTest::newRow("below one") << 0.5 << 7 << 2 << "      0.50";
    QTest::newRow("width 13") << 1234567.891 << 10 << 2 << "   1234567.89";
    QTest::newRow("no decimals") << 5.0 << 3 << 0 << "  5";
    QTest::newRow("no decimals rounds") << 2.5 << 3 << 0 << "  3";
    QTest::newRow("silent left cut") << 12345678.0 << 7 << 2 << "2345678.00";
    QTest::newRow("cut loses the sign") << -1234567.89 << 7 << 2 << "1234567.89";
    QTest::newRow("widest negative shown whole") << -123456.78 << 7 << 2 << "-123456.78";
}

void FunctionsTest::formatAmount()
{
    QFETCH(double, value);
    QFETCH(int, intDigits);
    QFETCH(int, decDigits);
    QFETCH(QString, expected);
    QCOMPARE(Format_amount(value, intDigits, decDigits), expected);
}

void FunctionsTest::formatAmountOfCurrency()
{
    QCOMPARE(Format_amount(Currency::fromTicks(10050), 7, 2), "      1.01"); // 1.005
    QCOMPARE(Format_amount(Currency::fromTicks(-15000), 7, 2), "     -1.50");
    QCOMPARE(Format_amount(Currency::fromTicks(49), 7, 2), "      0.00");
    QCOMPARE(Format_amount(Currency::fromText("922337203685477.5807"), 7, 2), "3685477.58");
}

void FunctionsTest::padsAndAligns()
{
    QCOMPARE(Zero_pad(42, 6), "000042");
    QCOMPARE(Zero_pad(1234567, 6), "234567");
    QCOMPARE(Zero_pad(" 10000 ", 4), "0000"); // the wrap of a full width
    QCOMPARE(Zero_pad(QString(), 3), "000");
    QCOMPARE(Right_align("3021", 6), "  3021");
    QCOMPARE(Right_align("-2147467259", 6), "467259");
    QCOMPARE(Right_align(QString(), 2), "  ");
}

void FunctionsTest::csvField_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first") << "a,,c" << 1 << "a";
    QTest::newRow("empty middle") << "a,,c" << 2 << "";
    QTest::newRow("last") << "a,,c" << 3 << "c";
    QTest::newRow("beyond the last") << "a,,c" << 4 << "";
    QTest::newRow("empty line") << "" << 1 << "";
    QTest::newRow("quotes are plain") << "\"x,y\",z" << 1 << "\"x";
    QTest::newRow("no trimming") << " a , b" << 2 << " b";
}

void FunctionsTest::csvField()
{
    QFETCH(QString, line);
    QFETCH(int, n);
    QFETCH(QString, expected);
    QCOMPARE(Csv_field(line, n), expected);
}

void FunctionsTest::busyNests()
{
    TestUi ui;
    int pointer = -1;
    platform::hooks().setPointer = [&](int p) { pointer = p; };
    Busy_off(); // at zero: stays zero, default pointer
    QCOMPARE(busyCount(), qint16(0));
    QCOMPARE(pointer, int(platform::vbDefault));
    Busy_on();
    QCOMPARE(pointer, int(platform::vbHourglass));
    pointer = -1;
    Busy_on();
    QCOMPARE(pointer, -1); // only the outermost pair shows
    Busy_off();
    QCOMPARE(pointer, -1);
    Busy_off();
    QCOMPARE(pointer, int(platform::vbDefault));
    QCOMPARE(busyCount(), qint16(0));
}

void FunctionsTest::currencyFromDouble_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<qint64>("ticks");
    QTest::newRow("four decimals") << 17.123456 << qint64(171235);
    QTest::newRow("exact") << 17.5 << qint64(175000);
    QTest::newRow("half to even, down") << 0.00025 << qint64(2);
    QTest::newRow("half to even, up") << 0.00035 << qint64(4);
    QTest::newRow("negative half to even") << -0.00025 << qint64(-2);
    QTest::newRow("beyond 32 bits") << 1234567890.1234 << qint64(12345678901234LL);
}

void FunctionsTest::currencyFromDouble()
{
    QFETCH(double, value);
    QFETCH(qint64, ticks);
    QCOMPARE(Currency::fromDouble(value).ticks(), ticks);
}

void FunctionsTest::currencyLimitsAndText()
{
    QCOMPARE(failure([] { Currency::fromDouble(922337203685478.0); }), int(err::Overflow));
    QCOMPARE(failure([] { Currency::fromDouble(std::nan("")); }), int(err::Overflow));
    const Currency top = Currency::fromText("922337203685477.5807");
    QCOMPARE(top.ticks(), std::numeric_limits<qint64>::max());
    QCOMPARE(failure([&] { top + Currency::fromTicks(1); }), int(err::Overflow));
    QCOMPARE(Currency::fromText("-922337203685477.5808").toString(), "-922337203685477.5808");
    QCOMPARE(Currency::fromText(" 1.00005 ").ticks(), qint64(10000)); // exact half to even
    QCOMPARE(Currency::fromText("1.00015").ticks(), qint64(10002));
    QCOMPARE(Currency::fromText("1.000051").ticks(), qint64(10001));
    QCOMPARE(Currency::fromText("1e3").ticks(), qint64(10000000));
    QCOMPARE(failure([] { Currency::fromText("."); }), int(err::TypeMismatch));
    QCOMPARE(failure([] { Currency::fromText("12abc"); }), int(err::TypeMismatch));
    QCOMPARE(Currency::fromTicks(175000).toString(), "17.5");
    QCOMPARE(Currency::fromTicks(-2500).toString(), "-0.25");
    QCOMPARE(Currency().toString(), "0");
    QCOMPARE(Currency::fromTicks(171235).toDouble(), 17.1235);
}

void FunctionsTest::lenientReading_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("no number") << "abc" << 0.0;
    QTest::newRow("leading number") << "12.5abc" << 12.5;
    QTest::newRow("blanks skipped") << " 1 2 . 5" << 12.5;
    QTest::newRow("amount text") << "     -1.50" << -1.5;
    QTest::newRow("point alone") << "." << 0.0;
    QTest::newRow("second point ends") << "1.2.3" << 1.2;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("comma ends") << "1,234" << 1.0;
}

void FunctionsTest::lenientReading()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(Val(text), value);
}

void FunctionsTest::strictReading()
{
    QCOMPARE(strictNumber("  17.5 "), 17.5);
    QCOMPARE(strictNumber("-.5"), -0.5);
    for (const char* bad : {"", ".", "1.2.3", "12abc", "1 2", "-"})
        QVERIFY2(failure([&] { strictNumber(QLatin1String(bad)); }) == err::TypeMismatch, bad);
    QCOMPARE(numberText(17.5), "17.5");
    QCOMPARE(numberText(0.1 + 0.2), "0.3");
    QCOMPARE(numberText(1e20), "1E+20");
    QCOMPARE(toInt16(2.5), qint16(2));
    QCOMPARE(toInt16(3.5), qint16(4));
}

void FunctionsTest::nullConversions()
{
    QCOMPARE(Null_to_text(Value()), QString());
    QCOMPARE(Null_to_text(Value(qint64(0))), "0");
    QCOMPARE(Null_to_text(Value(QDate(2026, 3, 4))), "04/03/2026");
    QCOMPARE(Null_to_zero(Value()), Currency());
    QCOMPARE(Null_to_zero(Value(17.123456)).ticks(), qint64(171235));
    QCOMPARE(Null_to_zero(Value("1")).ticks(), qint64(10000));
    QCOMPARE(failure([] { Null_to_zero(Value("yes")); }), int(err::TypeMismatch));
    QCOMPARE(failure([] { Value().toInt16(); }), int(err::InvalidUseOfNull));
}

VELK_TEST(FunctionsTest)
#include "tst_functions.moc"
