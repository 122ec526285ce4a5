#include "store/Currency.h"

#include "store/Errors.h"
#include "store/Numbers.h"

#include <cmath>
#include <limits>

Currency Currency::fromDouble(double value)
{
    const double scaled = value * double(Scale);
    // 2^63 is the first value that does not fit; the largest double below it does.
    if (!std::isfinite(scaled) || scaled >= 9223372036854775808.0 || scaled < -9223372036854775808.0)
        throw VbError(err::Overflow);
    return Currency(qint64(std::nearbyint(scaled))); // the default rounding is to even
}

Currency Currency::fromText(const QString& text)
{
    // Exact when the text has no exponent, so large amounts keep every digit.
    const QString t = text.trimmed();
    bool negative = false;
    int i = 0;
    if (i < t.size() && (t[i] == '-' || t[i] == '+'))
        negative = t[i++] == '-';
    qint64 whole = 0;
    int digits = 0;
    bool exact = true;
    for (; i < t.size() && t[i].isDigit(); ++i, ++digits) {
        if (whole > (std::numeric_limits<qint64>::max() / Scale) / 10) {
            exact = false;
            break;
        }
        whole = whole * 10 + t[i].digitValue();
    }
    qint64 frac = 0;
    int fracDigits = 0;
    int roundDigit = -1;
    bool beyondHalf = false;
    if (exact && i < t.size() && t[i] == '.') {
        for (++i; i < t.size() && t[i].isDigit(); ++i, ++digits) {
            if (fracDigits < 4) {
                frac = frac * 10 + t[i].digitValue();
                ++fracDigits;
            } else if (roundDigit < 0) {
                roundDigit = t[i].digitValue();
            } else if (t[i] != '0') {
                beyondHalf = true;
            }
        }
    }
    if (!exact || i != t.size()) {
        return fromDouble(strictNumber(text)); // exponent forms, or a failure with error 13
    }
    if (digits == 0)
        throw VbError(err::TypeMismatch);
    for (int k = fracDigits; k < 4; ++k)
        frac *= 10;
    // Counted without a sign, so that the most negative amount has a magnitude too; past
    // either end of the range is error 6, never a wrap to the other sign.
    quint64 units = 0;
    bool over = __builtin_mul_overflow(quint64(whole), quint64(Scale), &units) ||
                __builtin_add_overflow(units, quint64(frac), &units);
    if (roundDigit > 5 || (roundDigit == 5 && (beyondHalf || (units & 1))))
        over = over || __builtin_add_overflow(units, quint64(1), &units);
    const quint64 limit = negative ? quint64(1) << 63 : (quint64(1) << 63) - 1;
    if (over || units > limit)
        throw VbError(err::Overflow);
    return Currency(negative ? qint64(quint64(0) - units) : qint64(units));
}

QString Currency::toString() const
{
    // Work in unsigned so that the most negative value has a magnitude too.
    const quint64 magnitude = ticks_ < 0 ? quint64(0) - quint64(ticks_) : quint64(ticks_);
    return decimalText(ticks_ < 0, magnitude, 4, true);
}

Currency Currency::operator+(Currency other) const
{
    qint64 r;
    if (__builtin_add_overflow(ticks_, other.ticks_, &r))
        throw VbError(err::Overflow);
    return Currency(r);
}

Currency Currency::operator-(Currency other) const
{
    qint64 r;
    if (__builtin_sub_overflow(ticks_, other.ticks_, &r))
        throw VbError(err::Overflow);
    return Currency(r);
}

Currency Currency::operator-() const
{
    return Currency() - *this;
}
