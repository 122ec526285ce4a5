#include "report/Report.h"
#include "report/ReportPreview.h"

#include "platform/Platform.h"
#include "store/Errors.h"

#include <QApplication>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

namespace report
{

namespace
{

SectionKind sectionKind(const QString& kind)
{
    static const QStringList names{"ReportHeader", "PageHeader", "GroupHeader", "Detail",
                                   "GroupFooter",  "PageFooter", "ReportFooter"};
    const int i = names.indexOf(kind);
    if (i < 0)
        throw VbError(err::TypeMismatch, QStringLiteral("Unknown section kind ") + kind);
    return SectionKind(i);
}

ControlKind controlKind(const QString& kind)
{
    static const QStringList names{"Label", "Field", "Picture", "Shape", "Line", "Function"};
    const int i = names.indexOf(kind);
    if (i < 0)
        throw VbError(err::TypeMismatch, QStringLiteral("Unknown control kind ") + kind);
    return ControlKind(i);
}

Qt::Alignment alignment(const QString& a)
{
    if (a == QLatin1String("right"))
        return Qt::AlignRight;
    if (a == QLatin1String("center"))
        return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

} // namespace

Control& Section::control(const QString& controlName)
{
    for (Control& c : controls)
        if (c.name.compare(controlName, Qt::CaseInsensitive) == 0)
            return c;
    throw VbError(err::ItemNotFound, QStringLiteral("No control %1 in %2").arg(controlName, name));
}

Section& Report::section(const QString& sectionName)
{
    for (Section& s : sections)
        if (s.name.compare(sectionName, Qt::CaseInsensitive) == 0)
            return s;
    throw VbError(err::ItemNotFound, QStringLiteral("No section %1 in %2").arg(sectionName, name));
}

Control& Report::control(const QString& sectionName, const QString& controlName)
{
    return section(sectionName).control(controlName);
}

QStringList Report::boundFields() const
{
    QStringList fields;
    for (const Section& s : sections)
        for (const Control& c : s.controls)
            if ((c.kind == ControlKind::Field || c.kind == ControlKind::Function) && !c.field.isEmpty())
                fields << c.field;
    return fields;
}

const Section* Report::sectionOf(SectionKind kind) const
{
    for (const Section& s : sections)
        if (s.kind == kind)
            return &s;
    return nullptr;
}

std::unique_ptr<Report> Report::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw VbError(err::FileNotFound, QStringLiteral("No report design ") + path);
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        throw VbError(err::TypeMismatch, QStringLiteral("Not a report design: ") + path);
    const QJsonObject o = doc.object();
    auto r = std::make_unique<Report>();
    r->name = o.value("name").toString();
    r->title = o.value("title").toString(r->name);
    r->width = o.value("width").toInt();
    const QJsonObject m = o.value("margins").toObject();
    r->leftMargin = m.value("left").toInt();
    r->rightMargin = m.value("right").toInt();
    r->topMargin = m.value("top").toInt();
    r->bottomMargin = m.value("bottom").toInt();
    for (const QJsonValue sv : o.value("sections").toArray()) {
        const QJsonObject so = sv.toObject();
        Section s;
        s.name = so.value("name").toString();
        s.kind = sectionKind(so.value("kind").toString());
        s.height = so.value("height").toInt();
        s.newPageAfter = so.value("newPageAfter").toBool();
        for (const QJsonValue cv : so.value("controls").toArray()) {
            const QJsonObject co = cv.toObject();
            Control c;
            c.name = co.value("name").toString();
            c.kind = controlKind(co.value("kind").toString("Label"));
            c.left = co.value("left").toInt();
            c.top = co.value("top").toInt();
            c.width = co.value("width").toInt();
            c.height = co.value("height").toInt();
            c.caption = co.value("caption").toString();
            c.field = co.value("field").toString();
            c.format = co.value("format").toString();
            c.function = co.value("function").toString();
            c.member = co.value("member").toString();
            c.alignment = alignment(co.value("align").toString());
            c.wordWrap = co.value("wrap").toBool(true);
            c.fontSize = co.value("size").toInt(9);
            c.bold = co.value("bold").toBool();
            c.visible = co.value("visible").toBool(true);
            c.shrink = co.value("shrink").toBool();
            s.controls.push_back(std::move(c));
        }
        r->sections.push_back(std::move(s));
    }
    return r;
}

Paper paperFor(int code)
{
    if (code != platform::vbPRPSLetter && code != platform::vbPRPSA4)
        code = platform::countryPaperSize();
    if (code == platform::vbPRPSLetter)
        return {code, 12240, 15840};
    return {code, 11906, 16838};
}

std::function<void(Report&)>& previewHook()
{
    static std::function<void(Report&)> hook;
    return hook;
}

void Show(Report& report)
{
    if (const auto& hook = previewHook()) {
        hook(report);
        return;
    }
    const Layout layout(report, platform::paperSize());
    ReportPreview preview(layout, QApplication::activeWindow());
    platform::showModal(preview);
}

QString proposedPdfPath(const Report& report)
{
    QString name = report.documentName.trimmed();
    if (name.isEmpty())
        name = report.title.trimmed() + QLatin1Char(' ') + platform::today().toString(QStringLiteral("yyyy-MM-dd"));
    static const QRegularExpression unfit(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]"));
    name.replace(unfit, QStringLiteral("-"));
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .filePath(name + QStringLiteral(".pdf"));
}

QImage loadPicture(const QString& path)
{
    if (!QFileInfo(path).isFile())
        throw VbError(err::FileNotFound);
    QImage picture(path);
    if (picture.isNull())
        throw VbError(err::InvalidPicture);
    return picture;
}

} // namespace report
