// The help window on its pages, its toolbar, and the web window's caption as pages load.

#include "TestUi.h"

#include "customers/frmCustomer.h"
#include "help/Help_frm.h"
#include "help/frmBrowser.h"
#include "items/frm_Parts.h"
#include "platform/Browser.h"
#include "shell/Globals.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QDir>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QtTest>

using platform::Browser;

namespace
{

const int LoadTimeout = 30000;

const QString HelpSource = QStringLiteral(VELK_SOURCE_DIR "/help");

// The help pages as the build puts them beside the program.
void copyHelpPages(const TestUi& ui)
{
    const QDir source(HelpSource);
    for (const QString& name : source.entryList({"*.htm", "*.css"}, QDir::Files))
        QVERIFY(QFile::copy(source.filePath(name), ui.file(name)));
}

QString fileUrl(const TestUi& ui, const QString& name)
{
    return QUrl::fromLocalFile(ui.file(name)).toString();
}

void click(QWidget& window, const char* key)
{
    child<QAction>(window, QLatin1String(key))->trigger();
}

// A web server on 127.0.0.1 whose answers can be held back, so that a load lasts as
// long as a test needs. Every page is called by its path.
class SlowServer : public QTcpServer
{
public:
    SlowServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = nextPendingConnection())
                connect(s, &QTcpSocket::readyRead, this, [this, s] {
                    s->setProperty("request", s->property("request").toByteArray() + s->readAll());
                    if (!s->property("request").toByteArray().contains("\r\n\r\n"))
                        return;
                    if (holding)
                        held_ << s;
                    else
                        answer(s);
                });
        });
    }
    QString url(const QString& page) const
    {
        return QStringLiteral("http://127.0.0.1:%1/%2").arg(serverPort()).arg(page);
    }
    void release()
    {
        holding = false;
        for (const QPointer<QTcpSocket>& s : std::exchange(held_, {}))
            if (s)
                answer(s);
    }
    bool holding = false;

private:
    static void answer(QTcpSocket* s)
    {
        const QByteArray path = s->property("request").toByteArray().split(' ').value(1).mid(1);
        const QByteArray body = "<html><head><title>Page " + path + "</title></head><body>" + path + "</body></html>";
        s->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nCache-Control: no-store\r\nConnection: close\r\n"
                 "Content-Length: " +
                 QByteArray::number(body.size()) + "\r\n\r\n" + body);
        s->disconnectFromHost();
    }
    QList<QPointer<QTcpSocket>> held_;
};

} // namespace

class HelpTest : public QObject
{
    Q_OBJECT
private slots:
    void opensOnTheTopicOfItsOpener_data();
    void opensOnTheTopicOfItsOpener();
    void toolbarGoesHomeBackAndForward();
    void missingPageShowsTheEnginesOwnPage();
    void pagesLinkOnlyToPagesThatExist();
    void webWindowOpensOnTheSite();
    void webCaptionFollowsTheLoad();
};

void HelpTest::opensOnTheTopicOfItsOpener_data()
{
    QTest::addColumn<QString>("opener");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("title");
    auto row = [](const char* name, const char* opener, const char* page, const char* title) {
        QTest::newRow(name) << QString(opener) << QString(page) << QString(title);
    };
    row("main toolbar", "frmMain", "help.htm", "Velk Invoice Help");
    row("customer list", "frmCustomer", "customers.htm", "Customers - Velk Invoice Help");
    row("item list", "frm_Parts", "Items.htm", "Items - Velk Invoice Help");
    // The invoice and debtor lists call the same routine with their pages.
    row("invoice list", "", "Invoice.htm", "Invoices - Velk Invoice Help");
    row("debtor list", "", "debtors.htm", "Debtors and Letters - Velk Invoice Help");
}

void HelpTest::opensOnTheTopicOfItsOpener()
{
    QFETCH(QString, opener);
    QFETCH(QString, page);
    QFETCH(QString, title);
    TestUi ui;
    copyHelpPages(ui);
    auto w = startProgram(ui, {});
    const bool fromList = !opener.isEmpty() && opener != QLatin1String("frmMain");
    if (fromList)
        ui.onModal(opener, [](QDialog& list) {
            child<QAction>(list, "Toolbar1(8)")->trigger();
            return 0;
        });
    QString url, name, caption;
    ui.onModal("Help_frm", [&](QDialog& d) {
        auto* browser = child<Browser>(d, "brwWebBrowser");
        if (!QTest::qWaitFor([&] { return !browser->Busy(); }, LoadTimeout))
            url = "still loading";
        else
            url = browser->LocationURL();
        name = browser->LocationName();
        caption = d.windowTitle();
        return 0;
    });
    if (opener.isEmpty())
        Show_help(w.get(), page);
    else if (fromList)
        child<QAction>(*w, opener == "frmCustomer" ? "Toolbar1(1)" : "Toolbar1(11)")->trigger();
    else
        child<QAction>(*w, "Toolbar1(13)")->trigger();
    VERIFY_UI(ui);
    QCOMPARE(url, fileUrl(ui, page));
    QCOMPARE(name, title);
    QCOMPARE(caption, "Help");
    QCOMPARE(HelpTopic.trimmed(), page);
}

void HelpTest::toolbarGoesHomeBackAndForward()
{
    TestUi ui;
    copyHelpPages(ui);
    HelpTopic = "customers.htm";
    Help_frm w;
    auto* browser = child<Browser>(w, "brwWebBrowser");
    QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy(), LoadTimeout);
    QCOMPARE(browser->LocationName(), "Customers - Velk Invoice Help");
    // Nothing to go back to: nothing happens, and nothing is said.
    click(w, "Back");
    QVERIFY(!browser->Busy());
    click(w, "Forward");
    QVERIFY(!browser->Busy());
    // Home is the contents page, not the page the window opened on.
    for (const auto& [key, page] :
         {std::pair{"Home", "help.htm"}, {"Back", "customers.htm"}, {"Forward", "help.htm"}, {"Refresh", "help.htm"}}) {
        click(w, key);
        QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy() && browser->LocationURL() == fileUrl(ui, page), LoadTimeout);
    }
    QCOMPARE(w.windowTitle(), "Help");
    // Stop names the window after the page.
    w.tbToolBar_ButtonClick("Stop");
    QCOMPARE(w.windowTitle(), "Velk Invoice Help");
    child<QPushButton>(w, "Exit_cmd")->click();
    QCOMPARE(w.result(), int(QDialog::Accepted));
    VERIFY_UI(ui);
}

void HelpTest::missingPageShowsTheEnginesOwnPage()
{
    TestUi ui;
    HelpTopic = "nohelp.htm";
    Help_frm w;
    auto* browser = child<Browser>(w, "brwWebBrowser");
    QTRY_VERIFY_WITH_TIMEOUT(!browser->Busy(), LoadTimeout);
    QCOMPARE(browser->LocationURL(), fileUrl(ui, "nohelp.htm"));
    QCOMPARE(w.windowTitle(), "Help");
    VERIFY_UI(ui); // no box of ours
}

void HelpTest::pagesLinkOnlyToPagesThatExist()
{
    const QDir source(HelpSource);
    const QStringList pages = source.entryList({"*.htm"}, QDir::Files);
    QCOMPARE(pages.size(), 5);
    QStringList linkedFromContents;
    const QRegularExpression href("(?:href|src)=\"([^\"#]*)");
    for (const QString& page : pages) {
        QFile f(source.filePath(page));
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(f.readAll());
        QVERIFY2(html.contains(QLatin1String("href=\"help.css\"")), qPrintable(page));
        for (auto m = href.globalMatch(html); m.hasNext();) {
            const QString target = m.next().captured(1);
            if (target.isEmpty() || target.contains(':'))
                continue; // within the page, or out on the web
            // Names must match in case too: the pages are files on a case-sensitive disk.
            QVERIFY2(source.entryList(QDir::Files).contains(target), qPrintable(page + " -> " + target));
            if (page == QLatin1String("help.htm"))
                linkedFromContents << target;
        }
    }
    for (const QString& page : pages)
        QVERIFY2(page == QLatin1String("help.htm") || linkedFromContents.contains(page), qPrintable(page));
}

void HelpTest::webWindowOpensOnTheSite()
{
    TestUi ui;
    auto w = startProgram(ui, {});
    QString url;
    bool timerAtRest = false;
    ui.onModal("frmBrowser", [&](QDialog& d) {
        auto* timer = child<QTimer>(d, "timTimer");
        timerAtRest = !timer->isActive() && timer->interval() == 5;
        // With no network the engine shows its own error page for the address.
        auto* browser = child<Browser>(d, "brwWebBrowser");
        if (QTest::qWaitFor([&] { return !browser->Busy(); }, LoadTimeout))
            url = browser->LocationURL();
        return 0;
    });
    child<QAction>(*w, "mnuWeb")->trigger();
    VERIFY_UI(ui);
    QVERIFY(timerAtRest);
    QCOMPARE(url, ProductWebSite);
}

void HelpTest::webCaptionFollowsTheLoad()
{
    TestUi ui;
    SlowServer server;
    frmBrowser w;
    auto* browser = child<Browser>(w, "brwWebBrowser");
    auto* timer = child<QTimer>(w, "timTimer");
    // A page finished names the window, with no click and so no timer.
    browser->Navigate(server.url("one"));
    QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), "Page one", LoadTimeout);
    QVERIFY(!timer->isActive());

    // After a click the caption says the page is on its way, then names it.
    server.holding = true;
    click(w, "Refresh");
    QVERIFY(timer->isActive());
    QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), "Working...", LoadTimeout);
    server.release();
    QTRY_VERIFY_WITH_TIMEOUT(!timer->isActive(), LoadTimeout);
    QCOMPARE(w.windowTitle(), "Page one");

    // Stop ends the timer at once and names the page the window stopped on.
    server.holding = true;
    click(w, "Refresh");
    QTRY_COMPARE_WITH_TIMEOUT(w.windowTitle(), "Working...", LoadTimeout);
    w.tbToolBar_ButtonClick("Stop");
    QVERIFY(!timer->isActive());
    QVERIFY(!browser->Busy());
    QCOMPARE(w.windowTitle(), browser->LocationName());
    QTest::qWait(50);
    QCOMPARE(w.windowTitle(), browser->LocationName());
    server.release();
    VERIFY_UI(ui);
}

VELK_TEST(HelpTest)
#include "tst_help.moc"
