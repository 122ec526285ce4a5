#include "store/Numbers.h"

#include "store/Errors.h"

#include <QHash>
#include <QRegularExpression>
#include <cmath>

namespace
{

bool isBlank(QChar c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

double Val(const QString& text)
{
    // Collect the number's characters, skipping blanks wherever they stand.
    QByteArray number;
    int i = 0;
    const int n = text.size();
    auto skip = [&] {
        while (i < n && isBlank(text[i]))
            ++i;
    };
    skip();
    if (i < n && (text[i] == '-' || text[i] == '+')) {
        number += char(text[i].unicode());
        ++i;
    }
    bool digits = false, point = false;
    for (skip(); i < n; skip()) {
        const QChar c = text[i];
        if (c.isDigit() && c.unicode() < 128) {
            number += char(c.unicode());
            digits = true;
        } else if (c == '.' && !point) {
            number += '.';
            point = true;
        } else {
            break;
        }
        ++i;
    }
    if (!digits)
        return 0.0;
    if (i < n && (text[i] == 'e' || text[i] == 'E' || text[i] == 'd' || text[i] == 'D')) {
        QByteArray exponent = "e";
        int j = i + 1;
        while (j < n && isBlank(text[j]))
            ++j;
        if (j < n && (text[j] == '-' || text[j] == '+'))
            exponent += char(text[j++].unicode());
        bool expDigits = false;
        while (j < n && (text[j].isDigit() || isBlank(text[j]))) {
            if (!isBlank(text[j])) {
                exponent += char(text[j].unicode());
                expDigits = true;
            }
            ++j;
        }
        if (expDigits)
            number += exponent;
    }
    const double value = std::strtod(number.constData(), nullptr);
    return std::isfinite(value) ? value : 0.0;
}

bool isNumeric(const QString& text)
{
    static const QRegularExpression re(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d+)?$"));
    return re.match(text.trimmed()).hasMatch();
}

double strictNumber(const QString& text)
{
    if (!isNumeric(text))
        throw VbError(err::TypeMismatch);
    QByteArray t = text.trimmed().toLatin1();
    t.replace('d', 'e').replace('D', 'e');
    const double value = std::strtod(t.constData(), nullptr);
    if (!std::isfinite(value))
        throw VbError(err::Overflow);
    return value;
}

QString numberText(double value)
{
    if (value == 0.0)
        return QStringLiteral("0");
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    QString text = QString::fromLatin1(buffer);
    const int e = text.indexOf('e');
    if (e >= 0) {
        // 1e+20 is written 1E+20, 1.5e-07 stays with two exponent digits.
        text[e] = 'E';
    }
    return text;
}

qint16 toInt16(double value)
{
    const double r = std::nearbyint(value);
    if (!std::isfinite(r) || r < -32768.0 || r > 32767.0)
        throw VbError(err::Overflow);
    return qint16(r);
}

qint32 toInt32(double value)
{
    const double r = std::nearbyint(value);
    if (!std::isfinite(r) || r < -2147483648.0 || r > 2147483647.0)
        throw VbError(err::Overflow);
    return qint32(r);
}

QString decimalText(bool negative, quint64 units, int places, bool trimmed)
{
    char16_t buffer[48];
    char16_t* const end = buffer + 48;
    char16_t* p = end;
    for (; trimmed && places > 0 && units % 10 == 0; --places)
        units /= 10;
    for (int i = 0; i < places; ++i, units /= 10)
        *--p = char16_t(u'0' + units % 10);
    if (places > 0)
        *--p = u'.';
    do {
        *--p = char16_t(u'0' + units % 10);
        units /= 10;
    } while (units != 0);
    if (negative)
        *--p = u'-';
    return QString(reinterpret_cast<const QChar*>(p), end - p);
}

QString dateText(const QDate& date)
{
    int year, month, day;
    date.getDate(&year, &month, &day);
    if (!date.isValid() || year < 1 || year > 9999)
        return date.toString(QStringLiteral("dd/MM/yyyy"));
    // Written by hand: the formatter parses its pattern on every call, and lists and
    // exports write a date a row.
    const char16_t text[10] = {
        char16_t(u'0' + day / 10),    char16_t(u'0' + day % 10),        u'/',
        char16_t(u'0' + month / 10),  char16_t(u'0' + month % 10),      u'/',
        char16_t(u'0' + year / 1000), char16_t(u'0' + year / 100 % 10), char16_t(u'0' + year / 10 % 10),
        char16_t(u'0' + year % 10)};
    return QString(reinterpret_cast<const QChar*>(text), 10);
}

QString dateTimeText(const QDateTime& value)
{
    if (value.time() == QTime(0, 0))
        return dateText(value.date());
    return value.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"));
}

QString isoDateText(const QDateTime& value)
{
    if (value.time() == QTime(0, 0))
        return value.date().toString(Qt::ISODate);
    return value.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QDateTime parseIsoDate(const QString& text)
{
    const QString t = text.trimmed();
    if (t.size() == 10) {
        // A local date costs a look at the system's time zone each time it is made; the
        // dates of a table repeat, so each is made once.
        static QHash<QString, QDateTime> made;
        if (const auto it = made.constFind(t); it != made.constEnd())
            return *it;
        const QDateTime date(QDate::fromString(t, Qt::ISODate), QTime(0, 0));
        if (made.size() < 100000)
            made.insert(t, date);
        return date;
    }
    return QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}
