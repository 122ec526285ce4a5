#pragma once
// The money type: a signed 64-bit count of ten-thousandths, exact in sums and in the store.

#include <QString>
#include <QtGlobal>
#include <compare>

class Currency
{
public:
    static constexpr qint64 Scale = 10000;

    constexpr Currency() = default;
    static constexpr Currency fromTicks(qint64 ticks) { return Currency(ticks); }
    // Rounds to four decimals, exact halves to the even digit; overflow is error 6.
    static Currency fromDouble(double value);
    // The whole text, blanks apart, must be a number (error 13 otherwise).
    static Currency fromText(const QString& text);

    constexpr qint64 ticks() const { return ticks_; }
    double toDouble() const { return double(ticks_) / double(Scale); }
    // Plain decimal text with no trailing zeros: "17.5", "-0.25", "0".
    QString toString() const;

    Currency operator+(Currency other) const;
    Currency operator-(Currency other) const;
    Currency operator-() const;
    Currency& operator+=(Currency other) { return *this = *this + other; }
    constexpr auto operator<=>(const Currency&) const = default;

private:
    constexpr explicit Currency(qint64 ticks) : ticks_(ticks) {}
    qint64 ticks_ = 0;
};
