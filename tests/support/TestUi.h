#pragma once
// Stands in for the user in tests: a fresh program folder, a fixed clock, and queues of the
// boxes, file dialogs and windows a test expects. Anything unexpected fails the test at its
// end instead of blocking a headless run.

#include "platform/Platform.h"
#include "report/Report.h"
#include "store/Value.h"

#include <QApplication>
#include <QDateTime>
#include <QMap>
#include <QSizeF>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class frmMain;
class QAbstractItemView;

class TestUi
{
public:
    TestUi();
    ~TestUi();

    QString dir() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

    // A box the test expects next: its title, text and answer; style -1 for any.
    void expectBox(const QString& title, const QString& text, int answer = platform::vbOK, int style = -1)
    {
        boxes_.push_back({title, text, answer, style});
    }
    void expectSave(std::optional<QString> path) { saves_.push_back(std::move(path)); }
    void expectOpen(std::optional<QString> path) { opens_.push_back(std::move(path)); }
    void onModal(const QString& objectName, std::function<int(QDialog&)> handler)
    {
        modals_.emplace_back(objectName, std::move(handler));
    }

    // What the program showed, in order.
    QStringList shownBoxes;
    QList<platform::FileDialogRequest> dialogs;
    int beeps = 0;
    // Reports shown, each kept and rendered to a PDF in the test's folder instead of a preview.
    struct ShownReport {
        QString name, pdf;
        int pages;
        bool landscape;
        std::shared_ptr<report::Report> report;
    };
    QList<ShownReport> reports;
    int paper = platform::vbPRPSA4;

    // Empty when everything expected happened and nothing else did.
    QString problems() const;
    void clearProblems() { problems_.clear(); }

private:
    struct Box {
        QString title, text;
        int answer, style;
    };
    QTemporaryDir dir_;
    std::deque<Box> boxes_;
    std::deque<std::optional<QString>> saves_, opens_;
    std::deque<std::pair<QString, std::function<int(QDialog&)>>> modals_;
    QStringList problems_;
};

// Leaves a data file in the test's folder with these System rows, as an earlier run would
// have, and the program ended.
void makeDataFile(TestUi& ui, const QList<QMap<QString, Value>>& settingsRows);
// Starts the program in the test's folder, as after the first run, on a settings row of the values given.
std::unique_ptr<frmMain> startProgram(TestUi& ui, const QMap<QString, Value>& settingsRow);
// Rows of the running program's data file; a settings row has the required columns and
// numbered series unless the values given say otherwise.
void addSettingsRow(const QMap<QString, Value>& values);
void addRow(const QString& table, const QMap<QString, Value>& values);
// The values of a column, in table order.
QStringList columnValues(const QString& table, const QString& column);
// The rows of a table, each as the named columns' texts joined by "|", in table order.
QStringList tableRows(const QString& table, const QStringList& columns);

// Writes a file whole; a file that cannot be written fails the test.
void writeFile(const QString& path, const QByteArray& bytes);
QByteArray fileBytes(const QString& path);
// The rows of a list, each as its cells joined by the separator.
QStringList listRows(QAbstractItemView* list, const QString& separator = QStringLiteral(" | "));
// On screen and in front, so that focus and shortcuts are those a user meets.
void showUp(QWidget& window);
// Makes a window of the class under a parent, for tables of windows.
using WindowMaker = std::function<QDialog*(QWidget* parent)>;
template <class Window> WindowMaker makeWindow()
{
    return [](QWidget* parent) { return new Window(parent); };
}
// A control of a window by its name; a missing one ends the test run at once.
template <class T> T* child(QWidget& window, const QString& name)
{
    T* c = window.findChild<T*>(name);
    if (!c)
        qFatal("no control %s in %s", qPrintable(name), qPrintable(window.objectName()));
    return c;
}

// What a user does to a window's controls, found by name: a toolbar button by its place
// (Toolbar1(place)), a button clicked, a box cleared and typed into key by key.
void trigger(QWidget& window, int place);
void click(QWidget& window, const QString& name);
void typeInto(QWidget& window, const QString& name, const QString& text);
// The texts of controls by name, whatever their kind.
QStringList texts(QWidget& window, const QStringList& names);

// A table of cases as the rows of a data function: one column "row", each row named by its
// case's name, so that every case runs and a failure names it. Read with QFETCH(Case, row).
template <class Case, std::size_t N> void addCases(const Case (&cases)[N])
{
    QTest::addColumn<Case>("row");
    for (const Case& c : cases)
        QTest::newRow(c.name) << c;
}

// Runs an outside program that dev/tools.list names, waits for it, and gives its standard
// output. A program missing from the list or the machine fails the running test, naming
// the Debian package to install: tests never skip for want of a tool.
QString runTool(const QString& program, const QStringList& arguments);

// The text of a PDF as pdftotext lays it out, and its page count and page size in points.
QString pdfText(const QString& path);
struct PdfInfo {
    int pages = 0;
    QSizeF pageSize;
};
PdfInfo pdfInfo(const QString& path);

// Runs the code and tells whether it ended the program. An end anywhere else fails the
// test that met it, with the text of the program's last box.
bool endsProgram(const std::function<void()>& code);
// The test function the program ended in unexpectedly, if any.
inline QString unexpectedEnd;

#define VERIFY_UI(ui) QVERIFY2((ui).problems().isEmpty(), qPrintable((ui).problems()))

// Each test file registers its class with VELK_TEST and main runs them all. The list is
// constant-initialized, so that no registration can come before it.
constinit inline std::vector<std::function<QObject*()>> registeredTests;
#define VELK_TEST(TestClass)                                                                                           \
    static const bool registered##TestClass = (registeredTests.push_back([] { return new TestClass; }), true);
