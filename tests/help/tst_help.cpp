// The help window on its pages and its toolbar, the help pages' links, and the web
// window's caption as pages load.

#include "TestUi.h"

#include "help/Help_frm.h"
#include "help/frmBrowser.h"
#include "platform/Browser.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QDir>
#include <QPushButton>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTimer>
#include <QtTest>

using platform::Browser;

namespace
{

const int LoadTimeout = 30000;
const QDir HelpSource(VELK_SOURCE_DIR "/help");

// The help pages as the build puts them beside the program.
void copyHelpPages(const TestUi& ui)
{
    for (const QString& name : HelpSource.entryList({"*.htm", "*.css"}, QDir::Files))
        QVERIFY(QFile::copy(HelpSource.filePath(name), ui.file(name)));
}

QString fileUrl(const TestUi& ui, const QString& name)
{
    return QUrl::fromLocalFile(ui.file(name)).toString();
}

} // namespace

class HelpTest : public QObject
{
    Q_OBJECT
private slots:
    // Each opener's page loads, titled as its topic; the lists' pages are named by them.
    void opensOnTheTopicOfItsOpener_data()
    {
        QTest::addColumn<QString>("button"); // of the main toolbar, then of the list it opens
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("title");
        QTest::newRow("main toolbar") << "Toolbar1(13)"
                                      << "help.htm"
                                      << "Velk Invoice Help";
        QTest::newRow("customer list") << "Toolbar1(1)"
                                       << "customers.htm"
                                       << "Customers - Velk Invoice Help";
        QTest::newRow("item list") << "Toolbar1(11)"
                                   << "Items.htm"
                                   << "Items - Velk Invoice Help";
        QTest::newRow("invoice list") << ""
                                      << "Invoice.htm"
                                      << "Invoices - Velk Invoice Help";
        QTest::newRow("debtor list") << ""
                                     << "debtors.htm"
                                     << "Debtors and Letters - Velk Invoice Help";
    }
    void opensOnTheTopicOfItsOpener()
    {
        QFETCH(QString, button);
        QFETCH(QString, page);
        QFETCH(QString, title);
        TestUi ui;
        copyHelpPages(ui);
        auto w = startProgram(ui, {});
        if (button == "Toolbar1(1)" || button == "Toolbar1(11)")
            ui.onModal(button == "Toolbar1(1)" ? "frmCustomer" : "frm_Parts", [](QDialog& list) {
                child<QAction>(list, "Toolbar1(8)")->trigger();
                return 0;
            });
        QString seen;
        ui.onModal("Help_frm", [&](QDialog& d) {
            auto* browser = child<Browser>(d, "brwWebBrowser");
            const bool loaded = QTest::qWaitFor([&] { return !browser->Busy(); }, LoadTimeout);
            seen = (loaded ? browser->LocationURL() : "still loading") + " | " + browser->LocationName() + " | " +
                   d.windowTitle();
            return 0;
        });
        if (button.isEmpty()) // the invoice and debtor lists call the same routine
            Show_help(w.get(), page);
        else
            child<QAction>(*w, button)->trigger();
        VERIFY_UI(ui);
        QCOMPARE(seen, fileUrl(ui, page) + " | " + title + " | Help");
        QCOMPARE(HelpTopic.trimmed(), page);
    }

    void toolbarGoesHomeBackAndForward()
    {
        TestUi ui;
        copyHelpPages(ui);
        HelpTopic = "customers.htm";
        Help_frm w;
        auto* browser = child<Browser>(w, "brwWebBrowser");
        QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy(), LoadTimeout);
        // Home is the contents page, not the page the window opened on.
        for (const auto& [key, page] : {std::pair{"Home", "help.htm"},
                                        {"Back", "customers.htm"},
                                        {"Forward", "help.htm"},
                                        {"Refresh", "help.htm"}}) {
            child<QAction>(w, key)->trigger();
            QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy() && browser->LocationURL() == fileUrl(ui, page), LoadTimeout);
        }
        QCOMPARE(w.windowTitle(), "Help");
        w.tbToolBar_ButtonClick("Stop"); // names the window after the page
        QCOMPARE(w.windowTitle(), "Velk Invoice Help");
        child<QPushButton>(w, "Exit_cmd")->click();
        QCOMPARE(w.result(), int(QDialog::Accepted));
        VERIFY_UI(ui);
    }

    // Names must match in case too: the pages are files on a case-sensitive disk.
    void pagesLinkOnlyToPagesThatExist()
    {
        const QStringList files = HelpSource.entryList(QDir::Files);
        const QStringList pages = HelpSource.entryList({"*.htm"}, QDir::Files);
        QCOMPARE(pages.size(), 5);
        QStringList fromContents;
        for (const QString& page : pages) {
            QFile f(HelpSource.filePath(page));
            QVERIFY(f.open(QIODevice::ReadOnly));
            const QString html = QString::fromUtf8(f.readAll());
            QVERIFY2(html.contains("href=\"help.css\""), qPrintable(page));
            for (auto m = QRegularExpression("(?:href|src)=\"(?![a-z]+:)([^\"#]+)").globalMatch(html); m.hasNext();) {
                const QString target = m.next().captured(1);
                QVERIFY2(files.contains(target), qPrintable(page + " -> " + target));
                if (page == "help.htm")
                    fromContents << target;
            }
        }
        for (const QString& page : pages)
            QVERIFY2(page == "help.htm" || fromContents.contains(page), qPrintable(page));
    }

    // A load with no click names the window at once; after a click the caption says the
    // page is on its way until it has come, and Stop names the page stopped on.
    void webCaptionFollowsTheLoad()
    {
        TestUi ui;
        copyHelpPages(ui);
        QTcpServer silent; // takes connections and never answers: a load that lasts
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        frmBrowser w;
        auto* browser = child<Browser>(w, "brwWebBrowser");
        auto* timer = child<QTimer>(w, "timTimer");
        browser->Navigate(fileUrl(ui, "Items.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), "Items - Velk Invoice Help", LoadTimeout);
        QVERIFY(!timer->isActive());
        w.setWindowTitle("before");
        child<QAction>(w, "Refresh")->trigger();
        QVERIFY(timer->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(!timer->isActive(), LoadTimeout);
        QCOMPARE(w.windowTitle(), "Items - Velk Invoice Help");
        browser->Navigate(QString("http://127.0.0.1:%1/").arg(silent.serverPort()));
        child<QAction>(w, "Forward")->trigger(); // nothing ahead: the load goes on
        QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), "Working...", LoadTimeout);
        w.tbToolBar_ButtonClick("Stop");
        QVERIFY(!timer->isActive() && !browser->Busy());
        QCOMPARE(w.windowTitle(), browser->LocationName());
        VERIFY_UI(ui);
    }
};

VELK_TEST(HelpTest)
#include "tst_help.moc"
