#include "store/Functions.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Numbers.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <new>

namespace
{
qint16 BusyCount = 0;

// The decimal digits of a non-negative value rounded to dec places, halves away from
// zero, from the value's decimal form: given as whole and fraction digit strings.
void roundDecimal(QString digits, int exponent, int dec, QString* whole, QString* fraction)
{
    // digits d1d2d3... with the point after position exponent+1 (scientific form).
    const int pointAt = exponent + 1;
    if (pointAt <= 0)
        digits = QString(-pointAt, '0') + digits;
    const int intLen = std::max(pointAt, 0);
    const int want = intLen + dec; // digits to keep
    if (digits.size() < want + 1)
        digits += QString(want + 1 - digits.size(), '0');
    QString kept = digits.left(want);
    if (digits[want] >= '5') {
        int i = kept.size() - 1;
        for (; i >= 0; --i) {
            if (kept[i] == '9') {
                kept[i] = '0';
            } else {
                kept[i] = QChar(kept[i].unicode() + 1);
                break;
            }
        }
        if (i < 0) {
            kept.prepend('1'); // the carry adds an integer digit
            *whole = kept.left(intLen + 1);
            *fraction = kept.mid(intLen + 1);
            return;
        }
    }
    *whole = kept.left(intLen);
    *fraction = kept.mid(intLen);
}

// Blanks in front up to the width, at most 20; a longer text loses its left end.
QString fitWidth(const QString& text, int width)
{
    if (width >= text.size() && width <= text.size() + 20)
        return QString(width - text.size(), ' ') + text;
    return (QString(20, ' ') + text).right(width);
}

QString formatDigits(bool negative, QString digits, int exponent, int intDigits, int decDigits)
{
    QString whole, fraction;
    roundDecimal(std::move(digits), exponent, std::max(decDigits, 0), &whole, &fraction);
    while (whole.size() > 1 && whole.startsWith('0'))
        whole.remove(0, 1);
    if (whole.isEmpty())
        whole = QStringLiteral("0");
    QString text = whole;
    if (decDigits > 0)
        text += '.' + fraction;
    // A value that rounds to zero shows no sign.
    // (A plain scan: this runs for every amount a list or an export writes.)
    const bool zero = std::none_of(text.cbegin(), text.cend(), [](QChar c) { return c >= '1' && c <= '9'; });
    if (negative && !zero)
        text.prepend('-');
    return fitWidth(text, intDigits + decDigits + (decDigits > 0 ? 1 : 0));
}
} // namespace

QString Null_to_text(const Value& value)
{
    return value.isNull() ? QString() : value.toText();
}

Currency Null_to_zero(const Value& value)
{
    return value.isNull() ? Currency() : value.toCurrency();
}

QString Format_amount(double value, int intDigits, int decDigits)
{
    if (!std::isfinite(value))
        throw VbError(err::Overflow);
    // The value's decimal form of 15 significant digits is what gets rounded.
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    const QString s = QString::fromLatin1(buffer);
    const int e = s.indexOf('e');
    QString digits = s.left(e);
    digits.remove('.');
    return formatDigits(value < 0, digits, s.mid(e + 1).toInt(), intDigits, decDigits);
}

QString Format_amount(Currency value, int intDigits, int decDigits)
{
    const qint64 t = value.ticks();
    const quint64 magnitude = t < 0 ? quint64(0) - quint64(t) : quint64(t);
    if (decDigits >= 0 && decDigits <= 4) {
        // The ticks are ten-thousandths: rounding to four places or fewer is whole-number
        // work, halves away from zero as below.
        static const quint64 tens[] = {1, 10, 100, 1000, 10000};
        const quint64 step = tens[4 - decDigits];
        const quint64 kept = magnitude / step + (step > 1 && magnitude % step >= step / 2 ? 1 : 0);
        // A value that rounds to zero shows no sign.
        return fitWidth(decimalText(t < 0 && kept != 0, kept, decDigits, false),
                        intDigits + decDigits + (decDigits > 0 ? 1 : 0));
    }
    const QString digits = QString::number(magnitude).rightJustified(5, '0');
    // The point stands four places from the right.
    return formatDigits(t < 0, digits, int(digits.size()) - 5, intDigits, decDigits);
}

QString Format_amount(const QString& text, int intDigits, int decDigits)
{
    if (isNumeric(text))
        return Format_amount(strictNumber(text), intDigits, decDigits);
    return (QString(20, ' ') + text).right(intDigits + decDigits + (decDigits > 0 ? 1 : 0));
}

QString Zero_pad(const QString& value, int width)
{
    return (QString(20, '0') + value.trimmed()).right(std::max(width, 0));
}

QString Zero_pad(qint64 value, int width)
{
    return Zero_pad(QString::number(value), width);
}

QString Right_align(const QString& text, int width)
{
    return (QString(std::max(width, 0), ' ') + text).right(std::max(width, 0));
}

QString Csv_field(const QString& line, int n)
{
    QString field;
    int commas = 0;
    for (const QChar c : line) {
        if (c == ',')
            ++commas;
        else if (commas == n - 1)
            field += c;
    }
    return field;
}

void Busy_on()
{
    ++BusyCount;
    if (BusyCount == 1)
        platform::setPointer(platform::vbHourglass);
}

void Busy_off()
{
    if (BusyCount > 0)
        --BusyCount;
    if (BusyCount == 0)
        platform::setPointer(platform::vbDefault);
}

qint16 busyCount()
{
    return BusyCount;
}

bool Open_shape(const QString& source, std::shared_ptr<ShapeRecordset>& recordset, const QStringList& fields)
{
    if (!ShapeConnection.isOpen())
        return false;
    recordset.reset();
    try {
        recordset = ShapeRecordset::open(source, ShapeConnection.database(), fields);
        // The count is read into a 16-bit integer: a larger source fails here, rows kept.
        toInt16(recordset->recordCount());
    } catch (const VbError&) {
        return false;
    }
    return true;
}

bool Debug_mode()
{
    return false;
}

QString errorMessageText(int number, const QString& module, const QString& procedure, const QString& description)
{
    const QString crlf = QStringLiteral("\r\n");
    const QString code = Right_align(QString::number(number), 6).trimmed();
    return QStringLiteral("The following error has occurred.") + crlf + crlf + QStringLiteral("Error Code \t: ") +
           code + crlf + crlf + QStringLiteral("Error Description \t: ") + description + crlf + crlf +
           QStringLiteral("Module \t\t: ") + module + crlf + crlf + QStringLiteral("Procedure \t: ") + procedure +
           crlf + crlf + QStringLiteral("Please log this error on the website noting the above details.");
}

void Report_error(int number, const QString& module, const QString& procedure, const QString& description)
{
    // Nothing on the way may stop the end: every step below is allowed to fail.
    QString message;
    try {
        message = errorMessageText(number, module, procedure,
                                   description.isEmpty() ? standardErrorText(number) : description);
        platform::MsgBox(message, platform::vbExclamation, QStringLiteral("Error Message"));
    } catch (const std::exception&) {
    }
    try {
        QDir(platform::programDir()).mkpath(QStringLiteral("Logs"));
        const QString name = platform::now().toString(QStringLiteral("yyyyMMddhhmmss")) + QStringLiteral(".log");
        QFile log(platform::programFile(QStringLiteral("Logs/") + name));
        // A log names the business's customers and figures: the user's eyes only.
        if (log.open(QIODevice::WriteOnly | QIODevice::Truncate, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
            log.write((message + QStringLiteral("\r\n")).toUtf8());
    } catch (const std::exception&) {
    }
    platform::endProgram(1);
}

void Trap(const QString& module, const char* procedure, const std::function<void()>& body)
{
    try {
        body();
    } catch (const VbError& e) {
        Report_error(e.number(), module, QLatin1String(procedure));
    } catch (const std::bad_alloc&) {
        Report_error(err::OutOfMemory, module, QLatin1String(procedure));
    } catch (const std::exception&) {
        Report_error(err::DatabaseFailure, module, QLatin1String(procedure));
    }
}

void BusyTrap(const QString& module, const char* procedure, const std::function<void()>& body)
{
    Trap(module, procedure, [&] {
        Busy_on();
        try {
            body();
        } catch (...) {
            Busy_off();
            throw;
        }
        Busy_off();
    });
}
