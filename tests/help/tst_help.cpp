// The help window on its pages and its toolbar, the help pages' links, and the web
// window's caption as pages load.

#include "TestUi.h"

#include "help/Help_frm.h"
#include "help/frmBrowser.h"
#include "platform/Browser.h"
#include "shell/frmMain.h"
#include "store/Globals.h"

#include <QAction>
#include <QTcpServer>
#include <QtTest>

using platform::Browser;
using namespace Qt::StringLiterals;

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
    // Each opener's page loads, titled as its topic. The customer and item lists are
    // opened from the main toolbar; the invoice and debtor lists call the same routine.
    void opensOnTheTopicOfItsOpener_data()
    {
        QTest::addColumn<QString>("button"); // on the main toolbar
        QTest::addColumn<QString>("list");   // the list window it opens
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("title");
        QTest::newRow("main") << u"Toolbar1(13)"_s << u""_s << u"help.htm"_s << u"Velk Invoice Help"_s;
        QTest::newRow("customers") << u"Toolbar1(1)"_s << u"frmCustomer"_s << u"customers.htm"_s
                                   << u"Customers - Velk Invoice Help"_s;
        QTest::newRow("items") << u"Toolbar1(11)"_s << u"frm_Parts"_s << u"Items.htm"_s
                               << u"Items - Velk Invoice Help"_s;
        QTest::newRow("invoices") << u""_s << u""_s << u"Invoice.htm"_s << u"Invoices - Velk Invoice Help"_s;
        QTest::newRow("debtors") << u""_s << u""_s << u"debtors.htm"_s << u"Debtors and Letters - Velk Invoice Help"_s;
    }

    void opensOnTheTopicOfItsOpener()
    {
        QFETCH(QString, button);
        QFETCH(QString, list);
        QFETCH(QString, page);
        QFETCH(QString, title);
        TestUi ui;
        copyHelpPages(ui);
        auto w = startProgram(ui, {});
        if (!list.isEmpty())
            ui.onModal(list, [](QDialog& d) {
                trigger(d, 8);
                return 0;
            });
        QString seen;
        ui.onModal("Help_frm", [&](QDialog& d) {
            auto* browser = child<Browser>(d, "brwWebBrowser");
            const bool loaded = QTest::qWaitFor([&] { return !browser->Busy(); }, LoadTimeout);
            seen = (loaded ? browser->LocationURL() : "still loading") + " | " + browser->LocationName() + " | " +
                   d.windowTitle() + " | " + HelpTopic.trimmed();
            return 0;
        });
        if (!button.isEmpty())
            child<QAction>(*w, button)->trigger();
        else
            Show_help(w.get(), page);
        VERIFY_UI(ui);
        QCOMPARE(seen, fileUrl(ui, page) + " | " + title + " | Help | " + page);
    }

    // Home is the contents page, not the page the window opened on; Stop names the window
    // after the page.
    void homeStopAndCaption()
    {
        TestUi ui;
        copyHelpPages(ui);
        HelpTopic = "customers.htm";
        Help_frm w;
        auto* browser = child<Browser>(w, "brwWebBrowser");
        QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy(), LoadTimeout);
        child<QAction>(w, "Home")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy() && browser->LocationURL() == fileUrl(ui, "help.htm"), LoadTimeout);
        QCOMPARE(w.windowTitle(), "Help");
        w.tbToolBar_ButtonClick("Stop");
        QCOMPARE(w.windowTitle(), "Velk Invoice Help");
        // The web window names itself after a page once loaded; after a click the caption
        // says a page is on its way, until Stop names the page stopped on.
        QTcpServer silent; // takes connections and never answers: a load that lasts
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        frmBrowser web;
        browser = child<Browser>(web, "brwWebBrowser");
        browser->Navigate(fileUrl(ui, "Items.htm"));
        QTRY_COMPARE_WITH_TIMEOUT(web.windowTitle(), "Items - Velk Invoice Help", LoadTimeout);
        browser->Navigate(QString("http://127.0.0.1:%1/").arg(silent.serverPort()));
        child<QAction>(web, "Forward")->trigger(); // nothing ahead: the load goes on
        QTRY_COMPARE_WITH_TIMEOUT(web.windowTitle(), "Working...", LoadTimeout);
        web.tbToolBar_ButtonClick("Stop");
        QVERIFY(!child<QTimer>(web, "timTimer")->isActive());
        QVERIFY(!browser->Busy());
        QCOMPARE(web.windowTitle(), browser->LocationName());
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
            const QString html = QString::fromUtf8(fileBytes(HelpSource.filePath(page)));
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
};

VELK_TEST(HelpTest)
#include "tst_help.moc"
