// Where the program keeps its files on this machine, and the pictures of its toolbars.

#include "TestUi.h"

#include "platform/ProgramFolder.h"
#include "shell/frmMain.h"
#include "store/ListWindow.h"

#include <QAction>
#include <QDialog>
#include <QDirIterator>
#include <QFile>
#include <QPushButton>
#include <QToolBar>
#include <QtTest>

using namespace platform;

namespace
{

// A machine in a temporary folder: an executable folder laid out as a build tree, a
// read-only folder or an installed prefix, and a home folder of its own.
struct Machine {
    QTemporaryDir root;
    QString exeDir = root.filePath(QStringLiteral("prefix/bin"));
    QString shareDir = root.filePath(QStringLiteral("prefix/share/velk-invoice"));
    QString home = root.filePath(QStringLiteral("home"));

    explicit Machine(const QString& layout)
    {
        QDir().mkpath(exeDir);
        QDir().mkpath(home);
        if (layout == QLatin1String("installed")) {
            QDir().mkpath(root.filePath(QStringLiteral("prefix/share/applications")));
            touch(root.filePath(QStringLiteral("prefix/share/applications/velk-invoice.desktop")));
        } else if (layout == QLatin1String("read-only")) {
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

// Keeps the test run's own environment as it was.
struct SavedEnvironment {
    QByteArray home = qgetenv("HOME");
    QByteArray xdg = qgetenv("XDG_DATA_HOME");
    bool hadXdg = qEnvironmentVariableIsSet("XDG_DATA_HOME");
    ~SavedEnvironment()
    {
        qputenv("HOME", home);
        if (hadXdg)
            qputenv("XDG_DATA_HOME", xdg);
        else
            qunsetenv("XDG_DATA_HOME");
    }
};

QImage picture(const QIcon& icon)
{
    return icon.pixmap(24, 24).toImage();
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
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("xdg"); // "" unset, "relative", or "set"
        QTest::addColumn<QString>("expected");
        QTest::newRow("build tree") << "writable"
                                    << "set"
                                    << "exe";
        QTest::newRow("read-only, XDG_DATA_HOME") << "read-only"
                                                  << "set"
                                                  << "xdg";
        QTest::newRow("read-only, no XDG_DATA_HOME") << "read-only"
                                                     << ""
                                                     << "home";
        QTest::newRow("read-only, relative XDG_DATA_HOME") << "read-only"
                                                           << "relative"
                                                           << "home";
        QTest::newRow("installed, XDG_DATA_HOME") << "installed"
                                                  << "set"
                                                  << "xdg";
        QTest::newRow("installed, no XDG_DATA_HOME") << "installed"
                                                     << ""
                                                     << "home";
    }
    void programFolder()
    {
        QFETCH(QString, layout);
        QFETCH(QString, xdg);
        QFETCH(QString, expected);
        SavedEnvironment saved;
        Machine m(layout);
        const QString xdgDir = m.root.filePath(QStringLiteral("data"));
        qputenv("HOME", QFile::encodeName(m.home));
        if (xdg.isEmpty())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", xdg == QLatin1String("set") ? QFile::encodeName(xdgDir) : "data");
        const QString want = expected == QLatin1String("exe")   ? m.exeDir
                             : expected == QLatin1String("xdg") ? xdgDir + QStringLiteral("/velk-invoice")
                                                                : m.home + QStringLiteral("/.local/share/velk-invoice");

        QCOMPARE(programDirFor(m.exeDir + '/'), want);
        QVERIFY(QFileInfo(want).isDir());
        if (expected == QLatin1String("exe"))
            QVERIFY(!QFileInfo::exists(xdgDir)); // a build tree leaves the user's folders alone

        // The next start finds the folder it made, with what the first left in it.
        Machine::touch(want + QStringLiteral("/data.mdb"));
        QCOMPARE(programDirFor(m.exeDir), want);
        QVERIFY(QFileInfo::exists(want + QStringLiteral("/data.mdb")));
    }

    void shippedFile_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<bool>("beside");
        QTest::addColumn<bool>("shared");
        QTest::addColumn<QString>("expected");
        QTest::newRow("build tree") << "writable" << true << false << "beside";
        QTest::newRow("installed") << "installed" << false << true << "shared";
        QTest::newRow("installed, copy beside too") << "installed" << true << true << "shared";
        QTest::newRow("portable, share folder too") << "writable" << true << true << "beside";
        QTest::newRow("installed, page only beside") << "installed" << true << false << "beside";
        QTest::newRow("portable, page only shared") << "writable" << false << true << "shared";
        QTest::newRow("installed, missing") << "installed" << false << false << "shared";
        QTest::newRow("portable, missing") << "writable" << false << false << "beside";
    }
    void shippedFile()
    {
        QFETCH(QString, layout);
        QFETCH(bool, beside);
        QFETCH(bool, shared);
        QFETCH(QString, expected);
        Machine m(layout);
        QDir().mkpath(m.shareDir);
        if (beside)
            Machine::touch(m.exeDir + QStringLiteral("/customers.htm"));
        if (shared)
            Machine::touch(m.shareDir + QStringLiteral("/customers.htm"));
        const QString want = (expected == QLatin1String("beside") ? m.exeDir : m.shareDir) + "/customers.htm";
        QCOMPARE(shippedFileFor(m.exeDir, QStringLiteral("customers.htm")), want);
    }

    // Every shipped picture draws: the SVG engine is there and the files are sound.
    void shippedIcons()
    {
        int count = 0;
        for (QDirIterator it(QStringLiteral(":/icons")); it.hasNext(); ++count) {
            const QString path = it.next();
            QVERIFY2(!picture(QIcon(path)).isNull(), qPrintable(path));
        }
        QVERIFY(count >= 12);
    }

    void toolbarIcons()
    {
        frmMain main;
        const auto actions = main.findChild<QToolBar*>(QStringLiteral("Toolbar1"))->actions();
        const QStringList shipped = {"x-office-address-book", "x-office-spreadsheet", "document-new",
                                     "x-office-document",     "appointment-soon",     "package-x-generic",
                                     "help-contents",         "application-exit"};
        QStringList used;
        for (QAction* a : actions)
            if (!a->isSeparator())
                for (const QString& name : shipped)
                    if (picture(a->icon()) == picture(QIcon(QStringLiteral(":/icons/%1.svg").arg(name))))
                        used << name;
        QCOMPARE(used, shipped);

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
        const QStringList names = {"document-new", "edit-delete", "document-properties", "help-contents"};
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(picture(window.findChild<QAction*>(QStringLiteral("Toolbar1(%1)").arg(2 * i + 2))->icon()),
                     picture(QIcon(QStringLiteral(":/icons/%1.svg").arg(names[i]))));
        QVERIFY(!picture(window.findChild<QAction*>(QStringLiteral("Toolbar1(10)"))->icon()).isNull());
        QCOMPARE(picture(w.searchButton->icon()), picture(QIcon(QStringLiteral(":/icons/edit-find.svg"))));
    }
};

VELK_TEST(PlatformTest)
#include "tst_platform.moc"
