#include "TestUi.h"

#include "platform/Activation.h"
#include "report/ReportRenderer.h"
#include "shell/Opener.h"
#include "shell/frmMain.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QFile>
#include <QHash>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTreeWidget>

using namespace platform;

namespace
{
int expectedEnds = 0;

// Program name -> its Debian package, as dev/tools.list gives them.
QHash<QString, QString> listedTools()
{
    QHash<QString, QString> out;
    QFile file(QStringLiteral(VELK_SOURCE_DIR "/dev/tools.list"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.size() >= 2 && !words[0].startsWith(QLatin1Char('#')))
            out.insert(words[0], words[1]);
    }
    return out;
}
} // namespace

QString runTool(const QString& program, const QStringList& arguments)
{
    static const QHash<QString, QString> tools = listedTools();
    const QString fail =
        !tools.contains(program) ? program + QStringLiteral(" is not in dev/tools.list")
        : QStandardPaths::findExecutable(program).isEmpty() && !QFile::exists(program)
            ? QStringLiteral("%1 is missing: install the Debian package %2").arg(program, tools[program])
            : QString();
    if (!fail.isEmpty()) {
        QTest::qFail(qPrintable(fail), __FILE__, __LINE__);
        return QString();
    }
    QProcess p;
    p.start(program, arguments);
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

TestUi::TestUi()
{
    resetGlobals();
    Install_window_opener();
    PlainConnection.close();
    ShapeConnection.close();
    ConnectionString.clear();
    Database::closeAll();
    Hooks& h = hooks();
    h.programDir = [this] { return dir_.path(); };
    h.shippedFile = [this](const QString& name) { return dir_.filePath(name); };
    h.now = [] { return QDateTime(QDate(2026, 11, 22), QTime(10, 30, 15)); };
    h.msgBox = [this](const QString& text, int style, const QString& title) {
        shownBoxes << title + QStringLiteral(": ") + text;
        if (boxes_.empty()) {
            problems_ << QStringLiteral("unexpected box \"%1\": \"%2\"").arg(title, text);
            return int(vbCancel);
        }
        const Box b = boxes_.front();
        boxes_.pop_front();
        if (b.title != title || b.text != text || (b.style >= 0 && b.style != style))
            problems_ << QStringLiteral("box \"%1\": \"%2\" (style %3), expected \"%4\": \"%5\" (style %6)")
                             .arg(title, text, QString::number(style), b.title, b.text, QString::number(b.style));
        return b.answer;
    };
    auto dialog = [this](std::deque<std::optional<QString>>& queue, const char* kind) {
        return [this, &queue, kind](const FileDialogRequest& r) -> std::optional<QString> {
            dialogs << r;
            if (queue.empty()) {
                problems_ << QStringLiteral("unexpected %1 dialog").arg(QLatin1String(kind));
                return std::nullopt;
            }
            const std::optional<QString> path = queue.front();
            queue.pop_front();
            return path;
        };
    };
    h.openFile = dialog(opens_, "open");
    h.saveFile = dialog(saves_, "save");
    h.beep = [this] { ++beeps; };
    h.setPointer = [](int) {};
    h.paperSize = [this] { return paper; };
    h.showModal = [this](QDialog& d) {
        if (modals_.empty() || modals_.front().first != d.objectName()) {
            problems_ << QStringLiteral("unexpected window %1").arg(d.objectName());
            return 0;
        }
        const auto handler = std::move(modals_.front().second);
        modals_.pop_front();
        return handler(d);
    };
    h.endProgram = [this](int code) {
        if (expectedEnds == 0) {
            unexpectedEnd = QString::fromLatin1(QTest::currentTestFunction());
            QString box = shownBoxes.isEmpty() ? QStringLiteral("no box") : shownBoxes.last();
            box.replace(QRegularExpression(QStringLiteral("\\s*[\\r\\n]+\\s*")), QStringLiteral(" / "));
            QTest::qFail(qPrintable(QStringLiteral("the program ended: ") + box), __FILE__, __LINE__);
        }
        throw ProgramEnded{code};
    };
    report::previewHook() = [this](report::Report& r) {
        const report::Layout layout(r, paper);
        const QString pdf = dir_.filePath(QStringLiteral("%1-%2.pdf").arg(r.name).arg(reports.size() + 1));
        if (!layout.writePdf(pdf))
            problems_ << QStringLiteral("report %1 could not be written").arg(r.name);
        reports.push_back({r.name, pdf, int(layout.pages().size()), layout.orientation() == QPageLayout::Landscape,
                           std::make_shared<report::Report>(r)});
    };
}

TestUi::~TestUi()
{
    PlainConnection.close();
    ShapeConnection.close();
    Database::closeAll();
    while (busyCount() > 0)
        Busy_off();
}

QString TestUi::problems() const
{
    QStringList all = problems_;
    for (const Box& b : boxes_)
        all << QStringLiteral("box never shown \"%1\": \"%2\"").arg(b.title, b.text);
    if (!saves_.empty() || !opens_.empty())
        all << QStringLiteral("file dialog never shown");
    for (const auto& m : modals_)
        all << QStringLiteral("window never opened %1").arg(m.first);
    return all.join('\n');
}

bool endsProgram(const std::function<void()>& code)
{
    struct Expecting {
        Expecting() { ++expectedEnds; }
        ~Expecting() { --expectedEnds; }
    } expecting;
    try {
        code();
    } catch (const ProgramEnded&) {
        return true;
    }
    return false;
}

void makeDataFile(TestUi& ui, const QList<QMap<QString, Value>>& settingsRows)
{
    {
        frmMain first;
        first.MDIForm_Load();
        for (const auto& row : settingsRows)
            addSettingsRow(row);
        first.close();
    }
    Database::closeAll();
    resetGlobals();
    ui.clearProblems();
}

std::unique_ptr<frmMain> startProgram(TestUi& ui, const QMap<QString, Value>& settingsRow)
{
    makeDataFile(ui, {settingsRow});
    auto w = std::make_unique<frmMain>();
    w->MDIForm_Load();
    platform::activate(w.get()); // the first coming to the front, as at a start
    return w;
}

void addSettingsRow(const QMap<QString, Value>& values)
{
    QMap<QString, Value> row{{"FreeFormInv", 0}, {"FreeformCus", 0},       {"FreeformPart", 0},     {"FreeFormCrd", 0},
                             {"TaxAmount", 0.0}, {"Text3Name", QString()}, {"Text4Name", QString()}};
    row.insert(values);
    addRow(QStringLiteral("System"), row);
}

void addRow(const QString& table, const QMap<QString, Value>& values)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockPessimistic);
    rs.addNew();
    for (auto it = values.begin(); it != values.end(); ++it)
        rs.setField(it.key(), it.value());
    rs.update();
}

QStringList columnValues(const QString& table, const QString& column)
{
    Recordset rs;
    rs.open(table, ConnectionString, Recordset::adLockReadOnly);
    QStringList values;
    for (; !rs.eof(); rs.moveNext())
        values << Null_to_text(rs.field(column));
    return values;
}

QStringList tableRows(const QString& table, const QStringList& columns)
{
    QStringList out = columnValues(table, columns[0]);
    for (const QString& c : columns.mid(1))
        for (qsizetype i = 0; const QString& v : columnValues(table, c))
            out[i++] += '|' + v;
    return out;
}

void trigger(QWidget& window, int place)
{
    child<QAction>(window, QStringLiteral("Toolbar1(%1)").arg(place))->trigger();
}

void click(QWidget& window, const QString& name)
{
    child<QAbstractButton>(window, name)->click();
}

void typeInto(QWidget& window, const QString& name, const QString& text)
{
    auto* box = child<QLineEdit>(window, name);
    box->clear();
    QTest::keyClicks(box, text);
}

QStringList texts(QWidget& window, const QStringList& names)
{
    QStringList out;
    for (const QString& name : names) {
        QWidget* c = child<QWidget>(window, name);
        out << c->property(qobject_cast<QPlainTextEdit*>(c) ? "plainText" : "text").toString();
    }
    return out;
}

void showUp(QWidget& window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("window %s never came to the front", qPrintable(window.objectName()));
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    QVERIFY2(f.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(f.write(bytes), bytes.size());
}

QByteArray fileBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList listRows(QAbstractItemView* list, const QString& separator)
{
    const QAbstractItemModel* rows = list->model();
    QStringList out(rows->rowCount());
    for (int i = 0; i < out.size(); ++i)
        for (int c = 0; c < rows->columnCount(); ++c)
            out[i] += (c > 0 ? separator : QString()) + rows->index(i, c).data().toString();
    return out;
}

QString pdfText(const QString& path)
{
    return runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
}

PdfInfo pdfInfo(const QString& path)
{
    const QString out = runTool(QStringLiteral("pdfinfo"), {path});
    const auto pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(out);
    const auto size = QRegularExpression(QStringLiteral("Page size:\\s+([\\d.]+) x ([\\d.]+)")).match(out);
    return {pages.captured(1).toInt(), QSizeF(size.captured(1).toDouble(), size.captured(2).toDouble())};
}
