#include "platform/Activation.h"
#include "platform/Icons.h"
#include "platform/Palette.h"
#include "platform/Platform.h"
#include "platform/ProgramFolder.h"
#include "platform/Shortcuts.h"
#include "platform/Window.h"
#include "shell/EInvoiceCommand.h"
#include "shell/Opener.h"
#include "shell/frmMain.h"
#include "store/Errors.h"
#include "store/Functions.h"

#include <QApplication>
#include <QTimer>

namespace
{

// A failure that no procedure trapped still ends through the program's own box.
class Application : public QApplication
{
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const VbError& e) {
            Report_error(e.number(), receiver ? receiver->objectName() : QString(), QStringLiteral("Event"));
        } catch (const std::exception&) {
            Report_error(err::DatabaseFailure, receiver ? receiver->objectName() : QString(), QStringLiteral("Event"));
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    platform::keepFreedMemory();
    if (isEInvoiceCommand(QStringList(argv, argv + argc))) {
        // Headless: the invoice's page is drawn without a screen.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication headless(argc, argv);
        return runEInvoiceCommand(headless.arguments(), platform::programFile(QStringLiteral("data.mdb")));
    }
    Application app(argc, argv);
    app.setApplicationName(QStringLiteral("Velk Invoice"));
    // Every window takes this icon; the desktop file name ties the windows to the menu entry.
    app.setWindowIcon(platform::themeIcon("velk-invoice"));
    app.setDesktopFileName(QStringLiteral("velk-invoice"));
    platform::keepSelectionReadable();
    Install_window_opener();
    frmMain main;
    main.MDIForm_Load();
    platform::fitToScreen(&main);
    platform::addStandardShortcuts(&main);
    main.show();
    QTimer::singleShot(0, &main, [&main] { platform::activate(&main); });
    // For the benchmark, which times a start up to the main window: the end, once shown.
    if (app.arguments().contains(QStringLiteral("--quit-when-shown")))
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}
