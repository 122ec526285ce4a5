#include "platform/CodePage.h"

namespace
{
// The characters of bytes 0x80 to 0x9F; every other byte is its Latin-1 character.
constexpr char16_t high[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                               0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                               0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
} // namespace

QString fromWindows1252(const QByteArray& bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        text[i] = QChar(b >= 0x80 && b < 0xA0 ? high[b - 0x80] : char16_t(b));
    }
    return text;
}

void appendWindows1252(QByteArray& out, const QString& text)
{
    const qsizetype start = out.size();
    out.resize(start + text.size());
    char* p = out.data() + start;
    const char16_t* u = reinterpret_cast<const char16_t*>(text.constData());
    const char16_t* end = u + text.size();
    for (; u < end; ++u) {
        if (*u < 0x80 || (*u >= 0xA0 && *u <= 0xFF)) {
            *p++ = char(*u);
            continue;
        }
        char byte = '?';
        for (int k = 0; k < 32; ++k)
            if (high[k] == *u)
                byte = char(0x80 + k);
        // A character beyond the basic plane is one "?", not two.
        if (QChar::isHighSurrogate(*u) && u + 1 < end && QChar::isLowSurrogate(u[1]))
            ++u;
        *p++ = byte;
    }
    out.resize(p - out.constData());
}

QByteArray toWindows1252(const QString& text)
{
    QByteArray out;
    appendWindows1252(out, text);
    return out;
}
