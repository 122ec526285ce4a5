#pragma once
// The ink of a printed report, word by word as pdftotext finds it, checked against the
// boxes of the controls that print it.

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace report
{
class Report;
}

struct PdfWord {
    QString text;
    QRectF box; // points, from the page's top left corner
};

QList<PdfWord> pdfWords(const QString& pdf);

// Each word that stands outside every visible text of the report as laid out on the
// paper, or over another word: one line each. Empty when all the ink is in its place.
QStringList inkProblems(const report::Report& report, int paper, const QString& pdf);
