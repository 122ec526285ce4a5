#pragma once
// Stands in for the user in tests: a fresh program folder, a fixed clock, and queues of
// the boxes, file dialogs and windows a test expects. Anything unexpected is recorded
// and fails the test at its end instead of blocking a headless run.

#include "platform/Platform.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
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

class TestUi
{
public:
    TestUi();
    ~TestUi();

    QString dir() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

    // A box the test expects next: its title, text and answer; style -1 for any.
    void expectBox(const QString& title, const QString& text, int answer = platform::vbOK, int style = -1);
    void expectSave(std::optional<QString> path);
    void expectOpen(std::optional<QString> path);
    void onModal(const QString& objectName, std::function<int(QDialog&)> handler);

    // What the program showed, in order, for checks beyond the queue.
    QStringList shownBoxes;
    QList<platform::FileDialogRequest> dialogs;
    int beeps = 0;
    // Reports shown: instead of a preview, each is rendered to a PDF in the test's folder.
    struct ShownReport {
        QString name;
        QString pdf;
        int pages;
        bool landscape;
    };
    QList<ShownReport> reports;
    int paper = platform::vbPRPSA4;
    QDateTime clock = QDateTime(QDate(2026, 11, 22), QTime(10, 30, 15));

    // Empty when everything expected happened and nothing else did.
    QString problems() const;
    void clearProblems();

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

class frmMain;
class QTreeWidget;
#include "store/Value.h"
// Starts the program in the test's folder on a data file whose settings row holds the
// values given (numbered series and no other options unless given), as a user would
// find it after the first run. Rows of other tables can be added through Recordset.
std::unique_ptr<frmMain> startProgram(TestUi& ui, const QMap<QString, Value>& settingsRow);
// Adds a settings row: the required columns and the four numbering modes filled, then
// the values given.
void addSettingsRow(const QMap<QString, Value>& values);
// Adds one row to a table of the running program's data file.
void addRow(const QString& table, const QMap<QString, Value>& values);
// The values of a column, in table order.
QStringList columnValues(const QString& table, const QString& column);

// The bytes of a file, for checks that nothing changed it.
QByteArray fileBytes(const QString& path);
// The rows of a list, each as its cells joined by the separator.
QStringList listRows(QTreeWidget* list, const QString& separator = QStringLiteral(" | "));
// Puts a window on screen and in front, so that focus and shortcuts are those a user meets.
void showUp(QWidget& window);
// A control of a window by its name; a missing one ends the test run at once.
template <class T> T* child(QWidget& window, const QString& name)
{
    T* c = window.findChild<T*>(name);
    if (!c)
        qFatal("no control %s in %s", qPrintable(name), qPrintable(window.objectName()));
    return c;
}

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
// The test function that the program ended in unexpectedly, if any; cleared when read.
QString takeUnexpectedEnd();

#define VERIFY_UI(ui) QVERIFY2((ui).problems().isEmpty(), qPrintable((ui).problems()))

// A test program of several classes: each file registers its class with VELK_TEST, and
// the support library's main runs them all.
void registerTest(const char* name, std::function<QObject*()> make);
#define VELK_TEST(TestClass)                                                                                           \
    static const bool registered##TestClass = (registerTest(#TestClass, [] { return new TestClass; }), true);
