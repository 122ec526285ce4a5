// Where the program keeps its files on this machine, and the pictures of its toolbars.

#include "TestUi.h"

#include "platform/ProgramFolder.h"
#include "shell/frmMain.h"
#include "store/ListWindow.h"

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QPushButton>
#include <QtTest>

using namespace platform;

namespace
{

enum Layout { BuildTree, ReadOnly, Installed };
enum Xdg { Unset, Relative, Set };
enum Where { Exe, XdgData, HomeData, Beside, Shared };

// A machine in a temporary folder: an executable folder laid out as a build tree, a
// read-only folder or an installed prefix, and a home folder of its own.
struct Machine {
    QTemporaryDir root;
    QString exeDir = root.filePath(QStringLiteral("prefix/bin"));
    QString shareDir = root.filePath(QStringLiteral("prefix/share/velk-invoice"));
    QString home = root.filePath(QStringLiteral("home"));

    explicit Machine(int layout)
    {
        QDir().mkpath(exeDir);
        QDir().mkpath(home);
        if (layout == Installed) {
            QDir().mkpath(root.filePath(QStringLiteral("prefix/share/applications")));
            touch(root.filePath(QStringLiteral("prefix/share/applications/velk-invoice.desktop")));
        } else if (layout == ReadOnly) {
            QFile::setPermissions(exeDir, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
        }
    }
    ~Machine() { QFile::setPermissions(exeDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); }
    static void touch(const QString& path)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
    }
};

QImage picture(const QIcon& icon)
{
    return icon.pixmap(24, 24).toImage();
}

// The icon draws, and draws as the program's own picture of that name.
bool shows(const QIcon& icon, const char* name)
{
    const QImage drawn = picture(icon);
    return !drawn.isNull() && drawn == picture(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name))));
}

} // namespace

class PlatformTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        // No desktop theme: every picture must come from those shipped in the program.
        QIcon::setThemeSearchPaths({});
        QIcon::setThemeName(QString());
    }

    void programFolder_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<int>("xdg");
        QTest::addColumn<int>("expected");
        QTest::newRow("build tree") << int(BuildTree) << int(Set) << int(Exe);
        QTest::newRow("read-only, XDG_DATA_HOME") << int(ReadOnly) << int(Set) << int(XdgData);
        QTest::newRow("read-only, no XDG_DATA_HOME") << int(ReadOnly) << int(Unset) << int(HomeData);
        QTest::newRow("read-only, relative XDG_DATA_HOME") << int(ReadOnly) << int(Relative) << int(HomeData);
        QTest::newRow("installed, XDG_DATA_HOME") << int(Installed) << int(Set) << int(XdgData);
        QTest::newRow("installed, no XDG_DATA_HOME") << int(Installed) << int(Unset) << int(HomeData);
    }
    void programFolder()
    {
        QFETCH(int, layout);
        QFETCH(int, xdg);
        QFETCH(int, expected);
        Machine m(layout);
        const QString xdgDir = m.root.filePath(QStringLiteral("data"));
        qputenv("HOME", QFile::encodeName(m.home));
        if (xdg == Unset)
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", xdg == Set ? QFile::encodeName(xdgDir) : "data");
        const QString want = expected == Exe       ? m.exeDir
                             : expected == XdgData ? xdgDir + QStringLiteral("/velk-invoice")
                                                   : m.home + QStringLiteral("/.local/share/velk-invoice");

        QCOMPARE(programDirFor(m.exeDir + '/'), want);
        QVERIFY(QFileInfo(want).isDir());
        if (expected == Exe)
            QVERIFY(!QFileInfo::exists(xdgDir)); // a build tree leaves the user's folders alone

        // The next start finds the folder it made, with what the first left in it.
        Machine::touch(want + QStringLiteral("/data.mdb"));
        QCOMPARE(programDirFor(m.exeDir), want);
        QVERIFY(QFileInfo::exists(want + QStringLiteral("/data.mdb")));
    }

    void shippedFile_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<bool>("beside");
        QTest::addColumn<bool>("shared");
        QTest::addColumn<int>("expected");
        QTest::newRow("build tree") << int(BuildTree) << true << false << int(Beside);
        QTest::newRow("installed") << int(Installed) << false << true << int(Shared);
        QTest::newRow("installed, copy beside too") << int(Installed) << true << true << int(Shared);
        QTest::newRow("installed, page only beside") << int(Installed) << true << false << int(Beside);
        QTest::newRow("installed, missing") << int(Installed) << false << false << int(Shared);
        QTest::newRow("portable, missing") << int(BuildTree) << false << false << int(Beside);
    }
    void shippedFile()
    {
        QFETCH(int, layout);
        QFETCH(bool, beside);
        QFETCH(bool, shared);
        QFETCH(int, expected);
        Machine m(layout);
        QDir().mkpath(m.shareDir);
        if (beside)
            Machine::touch(m.exeDir + QStringLiteral("/customers.htm"));
        if (shared)
            Machine::touch(m.shareDir + QStringLiteral("/customers.htm"));
        const QString want = (expected == Beside ? m.exeDir : m.shareDir) + QStringLiteral("/customers.htm");
        QCOMPARE(shippedFileFor(m.exeDir, QStringLiteral("customers.htm")), want);
    }

    // With no desktop theme, the toolbars show the pictures shipped in the program.
    void toolbarIcons()
    {
        frmMain main;
        const char* mainIcons[] = {"x-office-address-book", "x-office-spreadsheet", "document-new",
                                   "x-office-document",     "appointment-soon",     "package-x-generic",
                                   "help-contents",         "application-exit"};
        for (int i = 0; i < 8; ++i)
            QVERIFY(
                shows(main.findChild<QAction*>(QStringLiteral("Toolbar1(%1)").arg(2 * i + 1))->icon(), mainIcons[i]));

        // The list windows name their buttons by the style's pixmaps.
        QDialog window;
        ListWindowPlan plan;
        plan.buttons = {{"Add", QStyle::SP_FileIcon},
                        {"Delete", QStyle::SP_TrashIcon},
                        {"Edit", QStyle::SP_FileDialogContentsView},
                        {"Help", QStyle::SP_DialogHelpButton},
                        {"Other", QStyle::SP_ArrowUp}};
        plan.onButton = [](int) {};
        plan.listName = "List_lst";
        plan.searchName = "Search_txt";
        const ListWindow w = buildListWindow(&window, plan);
        const char* listIcons[] = {"document-new", "edit-delete", "document-properties", "help-contents"};
        for (int i = 0; i < 4; ++i)
            QVERIFY(
                shows(window.findChild<QAction*>(QStringLiteral("Toolbar1(%1)").arg(2 * i + 2))->icon(), listIcons[i]));
        QVERIFY(!picture(window.findChild<QAction*>(QStringLiteral("Toolbar1(10)"))->icon()).isNull());
        QVERIFY(shows(w.searchButton->icon(), "edit-find"));
    }
};

VELK_TEST(PlatformTest)
#include "tst_platform.moc"
