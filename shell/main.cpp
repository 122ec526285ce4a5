#include "einvoice/CommandLine.h"
#include "platform/Activation.h"
#include "platform/Icons.h"
#include "platform/Platform.h"
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
    // The help and web windows' engine shares its drawing contexts; it asks for this first.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    platform::keepFreedMemory();
    if (einvoice::isEInvoiceCommand(QStringList(argv, argv + argc))) {
        QCoreApplication headless(argc, argv);
        return einvoice::runEInvoiceCommand(headless.arguments(), plainConnectionString());
    }
    Application app(argc, argv);
    app.setApplicationName(QStringLiteral("Velk Invoice"));
    // Every window takes this icon; the desktop file name ties the windows to the menu entry.
    app.setWindowIcon(platform::themeIcon("velk-invoice"));
    app.setDesktopFileName(QStringLiteral("velk-invoice"));
    frmMain main;
    main.MDIForm_Load();
    main.show();
    QTimer::singleShot(0, &main, [&main] { platform::activate(&main); });
    return app.exec();
}
