#include "store/Value.h"

#include "store/Errors.h"
#include "store/Numbers.h"

#include <cmath>
#include <limits>

QString Value::toText() const
{
    switch (type()) {
    case Type::Null:
        throw VbError(err::InvalidUseOfNull);
    case Type::Long:
        return QString::number(std::get<qint64>(v_));
    case Type::Double:
        return numberText(std::get<double>(v_));
    case Type::Currency:
        return std::get<Currency>(v_).toString();
    case Type::Text:
        return std::get<QString>(v_);
    case Type::Date:
        return dateTimeText(std::get<QDateTime>(v_));
    }
    return {};
}

double Value::toDouble() const
{
    switch (type()) {
    case Type::Null:
        throw VbError(err::InvalidUseOfNull);
    case Type::Long:
        return double(std::get<qint64>(v_));
    case Type::Double:
        return std::get<double>(v_);
    case Type::Currency:
        return std::get<Currency>(v_).toDouble();
    case Type::Text:
        return strictNumber(std::get<QString>(v_));
    case Type::Date: {
        // A date as a number counts days from 30/12/1899, as the old runtime did.
        const QDateTime& d = std::get<QDateTime>(v_);
        return double(QDate(1899, 12, 30).daysTo(d.date())) + d.time().msecsSinceStartOfDay() / 86400000.0;
    }
    }
    return 0;
}

Currency Value::toCurrency() const
{
    switch (type()) {
    case Type::Long: {
        const qint64 v = std::get<qint64>(v_);
        if (v > std::numeric_limits<qint64>::max() / Currency::Scale ||
            v < std::numeric_limits<qint64>::min() / Currency::Scale)
            throw VbError(err::Overflow);
        return Currency::fromTicks(v * Currency::Scale);
    }
    case Type::Currency:
        return std::get<Currency>(v_);
    case Type::Text:
        return Currency::fromText(std::get<QString>(v_));
    default:
        return Currency::fromDouble(toDouble());
    }
}

qint64 Value::toLong() const
{
    if (type() == Type::Long) {
        const qint64 v = std::get<qint64>(v_);
        if (v < -2147483648LL || v > 2147483647LL)
            throw VbError(err::Overflow);
        return v;
    }
    return toInt32(toDouble());
}

qint16 Value::toInt16() const
{
    return ::toInt16(double(toLong()));
}

QDateTime Value::toDate() const
{
    switch (type()) {
    case Type::Null:
        throw VbError(err::InvalidUseOfNull);
    case Type::Date:
        return std::get<QDateTime>(v_);
    case Type::Text: {
        const QString& t = std::get<QString>(v_);
        QDateTime d = parseIsoDate(t);
        if (!d.isValid())
            d = QDateTime(QDate::fromString(t.trimmed(), QStringLiteral("dd/MM/yyyy")), QTime(0, 0));
        if (!d.isValid())
            throw VbError(err::TypeMismatch);
        return d;
    }
    default: {
        const double days = toDouble();
        const qint64 whole = qint64(std::floor(days));
        const QTime time = QTime(0, 0).addMSecs(int(std::llround((days - whole) * 86400000.0)));
        return QDateTime(QDate(1899, 12, 30).addDays(whole), time);
    }
    }
}
