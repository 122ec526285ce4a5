#include "PrintedInk.h"

#include "report/ReportRenderer.h"

#include <QProcess>
#include <QRegularExpression>

QList<PdfWord> pdfWords(const QString& pdf)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    p.waitForFinished(60000);
    const QString html = QString::fromUtf8(p.readAllStandardOutput());
    static const QRegularExpression word(
        QStringLiteral(R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    QList<PdfWord> words;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        const QPointF from(m.captured(1).toDouble(), m.captured(2).toDouble());
        const QPointF to(m.captured(3).toDouble(), m.captured(4).toDouble());
        words.push_back({m.captured(5), QRectF(from, to)});
    }
    return words;
}

QStringList inkProblems(const report::Report& report, int paper, const QString& pdf)
{
    using namespace report;
    const Layout layout(report, paper);
    QList<QPair<QString, QRectF>> boxes;
    for (const Band& band : layout.pages().at(0).bands)
        for (const Control& c : band.section->controls)
            if (c.visible && (c.kind == ControlKind::Label || c.kind == ControlKind::Field))
                boxes.push_back({c.name, QRectF(report.leftMargin + c.left, report.topMargin + band.top + c.top,
                                                c.width, c.height)});
    QStringList problems;
    const QList<PdfWord> words = pdfWords(pdf);
    // Glyph boxes reach a little above and below the line a text is set in.
    constexpr double slack = 1.5;
    for (int i = 0; i < words.size(); ++i) {
        const QRectF ink = words[i].box.adjusted(slack, slack, -slack, -slack);
        bool inside = false;
        for (const auto& [name, twips] : boxes)
            inside = inside || QRectF(twips.topLeft() / 20, twips.size() / 20).contains(ink);
        if (!inside)
            problems << QStringLiteral("\"%1\" outside its box at %2,%3")
                            .arg(words[i].text)
                            .arg(words[i].box.x())
                            .arg(words[i].box.y());
        for (int j = i + 1; j < words.size(); ++j)
            if (ink.intersects(words[j].box.adjusted(slack, slack, -slack, -slack)))
                problems << QStringLiteral("\"%1\" over \"%2\"").arg(words[i].text, words[j].text);
    }
    return problems;
}
