// The usual desktop keys press the commands a window already has: they reach the same
// button or toolbar command a click would, and nothing when it is hidden or disabled.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "customers/frmsearchCust.h"
#include "invoices/frmAddInv.h"
#include "items/frm_AddPart.h"
#include "options/frmCustomerSet.h"
#include "options/frmInvoiceSet.h"
#include "platform/Shortcuts.h"
#include "reports/FrmExport.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QAction>
#include <QSignalSpy>
#include <QtTest>

namespace
{

// Counts the presses of a button or toolbar command, with the window's own handler taken
// off so that the press does nothing else.
std::unique_ptr<QSignalSpy> pressesOf(QWidget& window, const QString& name)
{
    if (auto* b = window.findChild<QAbstractButton*>(name)) {
        QObject::disconnect(b, &QAbstractButton::clicked, nullptr, nullptr);
        return std::make_unique<QSignalSpy>(b, &QAbstractButton::clicked);
    }
    auto* a = window.findChild<QAction*>(name);
    if (!a)
        qFatal("no command %s in %s", qPrintable(name), qPrintable(window.objectName()));
    QObject::disconnect(a, &QAction::triggered, nullptr, nullptr);
    return std::make_unique<QSignalSpy>(a, &QAction::triggered);
}

} // namespace

class KeyboardTest : public QObject
{
    Q_OBJECT
private slots:
    void dialogKeys_data()
    {
        QTest::addColumn<WindowMaker>("window");
        QTest::addColumn<QKeySequence>("key");
        QTest::addColumn<QString>("command");
        QTest::newRow("customer record saves")
            << makeWindow<frmAddCust>() << QKeySequence(QKeySequence::Save) << "Save_cmd";
        QTest::newRow("item record saves")
            << makeWindow<frm_AddPart>() << QKeySequence(QKeySequence::Save) << "Update_cmd";
        QTest::newRow("invoice saves") << makeWindow<frmAddInv>() << QKeySequence(QKeySequence::Save) << "update_cmd";
        QTest::newRow("invoice prints") << makeWindow<frmAddInv>() << QKeySequence(QKeySequence::Print)
                                        << "Toolbar1(8)";
        QTest::newRow("invoice: Escape cancels")
            << makeWindow<frmAddInv>() << QKeySequence(Qt::Key_Escape) << "Exit_cmd";
        QTest::newRow("customer list adds")
            << makeWindow<frmCustomer>() << QKeySequence(QKeySequence::New) << "Toolbar1(2)";
        QTest::newRow("customer list helps") << makeWindow<frmCustomer>() << QKeySequence(Qt::Key_F1) << "Toolbar1(8)";
        QTest::newRow("picker: Escape cancels")
            << makeWindow<frmsearchCust>() << QKeySequence(Qt::Key_Escape) << "cancel_cmd";
        QTest::newRow("customisation: Escape")
            << makeWindow<frmCustomerSet>() << QKeySequence(Qt::Key_Escape) << "cancel_cmd";
        QTest::newRow("invoice customisation: Escape")
            << makeWindow<frmInvoiceSet>() << QKeySequence(Qt::Key_Escape) << "cancel_cmd";
    }
    void dialogKeys()
    {
        QFETCH(WindowMaker, window);
        QFETCH(QKeySequence, key);
        QFETCH(QString, command);
        TestUi ui;
        auto main = startProgram(ui, {});
        std::unique_ptr<QDialog> w(window(main.get()));
        std::unique_ptr<QSignalSpy> presses = pressesOf(*w, command);
        ui.onModal(w->objectName(), [&](QDialog& d) {
            showUp(d);
            QTest::keySequence(&d, key);
            return 0;
        });
        platform::showModal(*w);
        QCOMPARE(presses->count(), 1);
        VERIFY_UI(ui);
    }

    // The main window: Ctrl+Q quits through File > Exit, Ctrl+N adds an invoice, F1 helps;
    // Ctrl+S is no key here, File > Save being the backup.
    void mainWindowKeys_data()
    {
        QTest::addColumn<QKeySequence>("key");
        QTest::addColumn<QString>("command");
        QTest::newRow("quit") << QKeySequence(Qt::CTRL | Qt::Key_Q) << "mnuExit";
        QTest::newRow("new invoice") << QKeySequence(QKeySequence::New) << "Toolbar1(5)";
        QTest::newRow("help") << QKeySequence(Qt::Key_F1) << "Toolbar1(13)";
        QTest::newRow("no save") << QKeySequence(QKeySequence::Save) << "MnuSave";
    }
    void mainWindowKeys()
    {
        QFETCH(QKeySequence, key);
        QFETCH(QString, command);
        TestUi ui;
        auto main = startProgram(ui, {});
        platform::addStandardShortcuts(main.get());
        std::unique_ptr<QSignalSpy> presses = pressesOf(*main, command);
        showUp(*main);
        QTest::keySequence(main.get(), key);
        QCOMPARE(presses->count(), command == "MnuSave" ? 0 : 1);
        VERIFY_UI(ui);
    }

    // A key presses only what a click could: a disabled command, or one in a hidden panel
    // (the export's path chooser), stays unpressed.
    void unusableCommandIsNotPressed()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        frmAddCust record(main.get());
        FrmExport exporter(main.get());
        std::unique_ptr<QSignalSpy> save = pressesOf(record, "Save_cmd");
        std::unique_ptr<QSignalSpy> cancel = pressesOf(exporter, "Command3");
        record.findChild<QAbstractButton*>("Save_cmd")->setEnabled(false);
        for (auto [window, key] : {std::pair<QDialog*, QKeySequence>{&record, QKeySequence::Save},
                                   {&exporter, QKeySequence(Qt::Key_Escape)}}) {
            ui.onModal(window->objectName(), [&](QDialog& d) {
                showUp(d);
                QTest::keySequence(&d, key);
                return 0;
            });
            platform::showModal(*window);
        }
        QCOMPARE(save->count(), 0);
        QCOMPARE(cancel->count(), 0);
        VERIFY_UI(ui);
    }
};

VELK_TEST(KeyboardTest)
#include "tst_keyboard.moc"
