#pragma once
// A field's value: Null, or a number, an amount, a text or a date.

#include "store/Currency.h"

#include <QDateTime>
#include <QString>
#include <variant>

class Value
{
public:
    enum class Type { Null, Long, Double, Currency, Text, Date };

    Value() = default;
    Value(int v) : v_(qint64(v)) {}
    Value(qint64 v) : v_(v) {}
    Value(double v) : v_(v) {}
    Value(Currency v) : v_(v) {}
    Value(const QString& v) : v_(v) {}
    Value(const char* v) : v_(QString::fromUtf8(v)) {}
    Value(QLatin1String v) : v_(QString(v)) {}
    Value(const QDate& v) : v_(QDateTime(v, QTime(0, 0))) {}
    Value(const QDateTime& v) : v_(v) {}

    static Value null() { return Value(); }

    Type type() const { return Type(v_.index()); }
    bool isNull() const { return type() == Type::Null; }
    bool isNumber() const { return type() == Type::Long || type() == Type::Double || type() == Type::Currency; }

    // Conversions, each failing as the old runtime did: a Null is error 94,
    // a text that is no number error 13.
    QString toText() const; // the text form of the value
    double toDouble() const;
    Currency toCurrency() const;
    qint64 toLong() const;  // rounded, halves to even; error 6 beyond 32 bits
    qint16 toInt16() const; // the same for 16 bits
    QDateTime toDate() const;

    // Raw access where the type is known.
    const QString* text() const { return std::get_if<QString>(&v_); }

    bool operator==(const Value& other) const { return v_ == other.v_; }

private:
    std::variant<std::monostate, qint64, double, Currency, QString, QDateTime> v_;
};
