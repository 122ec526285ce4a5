#include "platform/Platform.h"
#include "platform/ProgramFolder.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLocale>
#include <QMessageBox>
#include <QPageSize>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <cstdio>
#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform
{

namespace
{

int currentPointer = vbDefault;

// "Access Database(*.mdb)|*.mdb" becomes Qt's "Access Database(*.mdb)".
QString qtFilter(const QString& filter, int index, QString* selected)
{
    const QStringList parts = filter.split('|');
    QStringList entries;
    for (int i = 0; i + 1 < parts.size(); i += 2)
        entries << QStringLiteral("%1 (%2)").arg(parts[i], QString(parts[i + 1]).replace(';', ' '));
    if (index >= 1 && index <= entries.size())
        *selected = entries[index - 1];
    return entries.join(QStringLiteral(";;"));
}

std::optional<QString> fileDialog(const FileDialogRequest& r, bool save)
{
    QString selected;
    const QString filter = qtFilter(r.filter, r.filterIndex, &selected);
    QString start = r.fileName;
    if (!r.initialDir.isEmpty())
        start = r.initialDir + '/' + r.fileName;
    const QString chosen =
        save ? QFileDialog::getSaveFileName(QApplication::activeWindow(), r.title, start, filter, &selected,
                                            QFileDialog::DontConfirmOverwrite)
             : QFileDialog::getOpenFileName(QApplication::activeWindow(), r.title, start, filter, &selected);
    if (chosen.isEmpty())
        return std::nullopt;
    return chosen;
}

int desktopMsgBox(const QString& text, int style, const QString& title)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Velk Invoice") : title);
    box.setText(text);
    switch (style & 0x70) {
    case vbCritical:
        box.setIcon(QMessageBox::Critical);
        break;
    case vbQuestion:
        box.setIcon(QMessageBox::Question);
        break;
    case vbExclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case vbInformation:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        break;
    }
    struct Choice {
        QMessageBox::StandardButton button;
        int answer;
    };
    std::vector<Choice> choices;
    switch (style & 0x7) {
    case vbOKCancel:
        choices = {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
        break;
    case vbAbortRetryIgnore:
        choices = {{QMessageBox::Abort, vbAbort}, {QMessageBox::Retry, vbRetry}, {QMessageBox::Ignore, vbIgnore}};
        break;
    case vbYesNoCancel:
        choices = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
        break;
    case vbYesNo:
        choices = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
        break;
    default:
        choices = {{QMessageBox::Ok, vbOK}};
        break;
    }
    QMessageBox::StandardButtons buttons;
    for (const auto& c : choices)
        buttons |= c.button;
    box.setStandardButtons(buttons);
    box.setDefaultButton(choices.front().button);
    // The old boxes ignored the window's close button only where Cancel was missing.
    const auto clicked = static_cast<QMessageBox::StandardButton>(box.exec());
    for (const auto& c : choices)
        if (c.button == clicked)
            return c.answer;
    return (style & 0x7) == vbYesNo ? vbNo : vbCancel;
}

int desktopPaperSize()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    QPageSize size;
    if (!printer.isNull()) {
        size = printer.defaultPageSize();
    } else {
        return countryPaperSize();
    }
    if (size.id() == QPageSize::Letter)
        return vbPRPSLetter;
    if (size.id() == QPageSize::A4)
        return vbPRPSA4;
    return 256; // any other form
}

} // namespace

Hooks desktopHooks()
{
    Hooks h;
    h.programDir = [] {
        // Decided once: the user's data folder is made at the first call.
        static const QString dir = programDirFor(QCoreApplication::applicationDirPath());
        return dir;
    };
    h.shippedFile = [](const QString& name) { return shippedFileFor(QCoreApplication::applicationDirPath(), name); };
    h.now = [] { return QDateTime::currentDateTime(); };
    h.msgBox = desktopMsgBox;
    h.openFile = [](const FileDialogRequest& r) { return fileDialog(r, false); };
    h.saveFile = [](const FileDialogRequest& r) { return fileDialog(r, true); };
    h.beep = [] { QApplication::beep(); };
    h.setPointer = [](int p) {
        while (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
        if (p == vbHourglass)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    };
    h.paperSize = desktopPaperSize;
    h.showModal = [](QDialog& d) { return d.exec(); };
    h.endProgram = [](int code) {
        std::fflush(nullptr);
        std::_Exit(code);
    };
    return h;
}

Hooks& hooks()
{
    static Hooks h = desktopHooks();
    return h;
}

QString programDir()
{
    QString dir = hooks().programDir();
    while (dir.size() > 1 && dir.endsWith('/'))
        dir.chop(1);
    return dir;
}

QString programFile(const QString& name)
{
    return programDir() + '/' + name;
}
QString shippedFile(const QString& name)
{
    return hooks().shippedFile(name);
}
QDateTime now()
{
    return hooks().now();
}
QDate today()
{
    return now().date();
}

int MsgBox(const QString& text, int style, const QString& title)
{
    return hooks().msgBox(text, style, title);
}
std::optional<QString> ShowOpen(const FileDialogRequest& request)
{
    return hooks().openFile(request);
}
std::optional<QString> ShowSave(const FileDialogRequest& request)
{
    return hooks().saveFile(request);
}
void Beep()
{
    hooks().beep();
}

void setPointer(int p)
{
    currentPointer = p;
    hooks().setPointer(p);
}

int pointer()
{
    return currentPointer;
}
int countryPaperSize()
{
    const auto country = QLocale::system().territory();
    const bool letter = country == QLocale::UnitedStates || country == QLocale::Canada || country == QLocale::Mexico ||
                        country == QLocale::Philippines || country == QLocale::Chile;
    return letter ? vbPRPSLetter : vbPRPSA4;
}

int paperSize()
{
    return hooks().paperSize();
}

void endProgram(int exitCode)
{
    hooks().endProgram(exitCode);
    std::_Exit(exitCode); // a hook that returns must not let the program go on
}

void keepFreedMemory()
{
#ifdef __GLIBC__
    // Rows of 30,000 invoices take tens of megabytes: blocks that size come from the heap
    // rather than from mappings of their own, and up to 256 MB of free heap stays put.
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
    mallopt(M_TOP_PAD, 16 * 1024 * 1024);
#endif
}

} // namespace platform
