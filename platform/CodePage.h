#pragma once
// The single-byte code page of the program's CSV files (Windows-1252), both ways. The
// five bytes the code page leaves unassigned (0x81, 0x8D, 0x8F, 0x90, 0x9D) read as the
// control characters of the same number and write back as those bytes, so a file read
// and written again keeps every byte; any other character the page lacks writes as "?".

#include <QByteArray>
#include <QString>

QString fromWindows1252(const QByteArray& bytes);
QByteArray toWindows1252(const QString& text);
// The same, appended to what the buffer holds: a file written line by line reuses one buffer.
void appendWindows1252(QByteArray& out, const QString& text);
