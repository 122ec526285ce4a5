#pragma once
// Everything the program asks of the desktop goes through here, so that tests can
// stand in for the user: the program folder, the clock, message boxes, file dialogs,
// the beep, the busy pointer, the printer's paper, modal windows and the end of the run.

#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

class QDialog;

namespace platform
{

// Message box styles and answers, in the classic numbering the windows use.
enum MsgStyle {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64
};
enum MsgAnswer { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

// Mouse pointer shapes of the screen.
enum Pointer { vbDefault = 0, vbHourglass = 11 };

// Paper size codes of the default printer.
enum Paper { vbPRPSLetter = 1, vbPRPSA4 = 9 };

struct FileDialogRequest {
    QString title;
    QString filter; // "Description(*.ext)|*.ext" pairs, as the windows write them
    int filterIndex = 1;
    QString fileName; // proposed name, or a full path
    QString initialDir;
};

// Thrown by endProgram() under test, so that nothing after the end runs. It is not a
// std::exception on purpose: no failure trap may catch it.
struct ProgramEnded {
    int exitCode;
};

// The hooks. Each has a desktop implementation; tests replace them.
struct Hooks {
    std::function<QString()> programDir;
    std::function<QString(const QString& name)> shippedFile;
    std::function<QDateTime()> now;
    std::function<int(const QString& text, int style, const QString& title)> msgBox;
    std::function<std::optional<QString>(const FileDialogRequest&)> openFile;
    std::function<std::optional<QString>(const FileDialogRequest&)> saveFile;
    std::function<void()> beep;
    std::function<void(int pointer)> setPointer;
    std::function<int()> paperSize;
    std::function<int(QDialog&)> showModal;
    std::function<void(int exitCode)> endProgram;
};

Hooks& hooks();       // the hooks in force
Hooks desktopHooks(); // the real desktop ones

QString programDir();                     // the program's folder (ProgramFolder.h), without a trailing slash
QString programFile(const QString& name); // a file in that folder
QString shippedFile(const QString& name); // a read-only file shipped with the program, such as a help page
QDateTime now();
QDate today();
int MsgBox(const QString& text, int style = vbOKOnly, const QString& title = QString());
std::optional<QString> ShowOpen(const FileDialogRequest& request);
std::optional<QString> ShowSave(const FileDialogRequest& request);
void Beep();
void setPointer(int pointer);
int pointer(); // the pointer last set
int paperSize();
// The paper of the user's country, for when no printer tells: Letter or A4.
int countryPaperSize();
int showModal(QDialog& dialog); // see Activation.h: the windows beneath come to the front again
[[noreturn]] void endProgram(int exitCode);
// Keeps the memory a large list, report or export frees for the next one, instead of
// handing it back and faulting it in again page by page. Called once at start.
void keepFreedMemory();

} // namespace platform
