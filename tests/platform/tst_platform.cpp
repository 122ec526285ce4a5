// Where the program keeps its files on this machine, the pictures of its toolbars, and
// the classic key events: which keys raise a key press, and the number boxes' filter.

#include "TestUi.h"

#include "platform/CodePage.h"
#include "platform/Icons.h"
#include "platform/Keys.h"
#include "platform/ProgramFolder.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QKeyEvent>
#include <QtTest>

using namespace platform;

namespace
{

enum Layout { BuildTree, ReadOnly, Installed };
enum Xdg { XdgUnset, XdgRelative, XdgSet };
enum Where { InExe, InXdgData, InHomeData };

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
        QDir().mkpath(shareDir);
        QDir().mkpath(home);
        if (layout == Installed) {
            QDir().mkpath(root.filePath(QStringLiteral("prefix/share/applications")));
            touch(root.filePath(QStringLiteral("prefix/share/applications/velk-invoice.desktop")));
        } else if (layout == ReadOnly) {
            QFile::setPermissions(exeDir, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
        }
    }
    ~Machine() { QFile::setPermissions(exeDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); }
    static void touch(const QString& path) { QFile(path).open(QIODevice::WriteOnly); }
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
    void programFolder_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<int>("xdg");
        QTest::addColumn<int>("expected");
        QTest::newRow("build tree") << int(BuildTree) << int(XdgSet) << int(InExe);
        QTest::newRow("read-only, XDG set") << int(ReadOnly) << int(XdgSet) << int(InXdgData);
        QTest::newRow("read-only, XDG unset") << int(ReadOnly) << int(XdgUnset) << int(InHomeData);
        QTest::newRow("read-only, XDG relative") << int(ReadOnly) << int(XdgRelative) << int(InHomeData);
        QTest::newRow("installed, XDG set") << int(Installed) << int(XdgSet) << int(InXdgData);
        QTest::newRow("installed, XDG unset") << int(Installed) << int(XdgUnset) << int(InHomeData);
    }

    void programFolder()
    {
        QFETCH(int, layout);
        QFETCH(int, xdg);
        QFETCH(int, expected);
        Machine m(layout);
        const QString xdgDir = m.root.filePath(QStringLiteral("data"));
        qputenv("HOME", QFile::encodeName(m.home));
        if (xdg == XdgUnset)
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", xdg == XdgSet ? QFile::encodeName(xdgDir) : "data");
        const QString want = expected == InExe       ? m.exeDir
                             : expected == InXdgData ? xdgDir + QStringLiteral("/velk-invoice")
                                                     : m.home + QStringLiteral("/.local/share/velk-invoice");
        QCOMPARE(programDirFor(m.exeDir + '/'), want);
        QVERIFY(QFileInfo(want).isDir());
        // A build tree leaves the user's folders alone; the next start finds the folder it made.
        if (expected == InExe)
            QVERIFY(!QFileInfo::exists(xdgDir));
        Machine::touch(want + QStringLiteral("/data.mdb"));
        QCOMPARE(programDirFor(m.exeDir), want);
        QVERIFY(QFileInfo::exists(want + QStringLiteral("/data.mdb")));
    }

    // A file shipped with the program: an installed copy prefers its share folder, anything
    // else the executable's folder.
    void shippedFile_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<bool>("beside"); // the file beside the executable
        QTest::addColumn<bool>("shared"); // the file in the share folder
        QTest::addColumn<bool>("expectShared");
        QTest::newRow("build tree, beside") << int(BuildTree) << true << false << false;
        QTest::newRow("installed, shared") << int(Installed) << false << true << true;
        QTest::newRow("installed, both") << int(Installed) << true << true << true;
        QTest::newRow("installed, beside") << int(Installed) << true << false << false;
        QTest::newRow("installed, neither") << int(Installed) << false << false << true;
        QTest::newRow("build tree, neither") << int(BuildTree) << false << false << false;
    }

    void shippedFile()
    {
        QFETCH(int, layout);
        QFETCH(bool, beside);
        QFETCH(bool, shared);
        QFETCH(bool, expectShared);
        Machine m(layout);
        if (beside)
            Machine::touch(m.exeDir + QStringLiteral("/customers.htm"));
        if (shared)
            Machine::touch(m.shareDir + QStringLiteral("/customers.htm"));
        QCOMPARE(shippedFileFor(m.exeDir, QStringLiteral("customers.htm")),
                 (expectShared ? m.shareDir : m.exeDir) + QStringLiteral("/customers.htm"));
    }

    // With no desktop theme, the toolbars show the pictures shipped in the program.
    void toolbarIcons()
    {
        QIcon::setThemeSearchPaths({});
        QIcon::setThemeName(QString());
        frmMain main;
        const char* mainIcons[] = {"x-office-address-book", "x-office-spreadsheet", "document-new",
                                   "x-office-document",     "appointment-soon",     "package-x-generic",
                                   "help-contents",         "application-exit"};
        for (int i = 0; i < 8; ++i)
            QVERIFY2(
                shows(main.findChild<QAction*>(QStringLiteral("Toolbar1(%1)").arg(2 * i + 1))->icon(), mainIcons[i]),
                mainIcons[i]);
        // The list windows name their buttons by the style's pixmaps.
        for (const auto& [pixmap, name] : {std::pair{QStyle::SP_FileIcon, "document-new"},
                                           {QStyle::SP_TrashIcon, "edit-delete"},
                                           {QStyle::SP_FileDialogContentsView, "document-properties"},
                                           {QStyle::SP_DialogHelpButton, "help-contents"}})
            QVERIFY2(shows(standardIcon(pixmap), name), name);
        QVERIFY(!picture(standardIcon(QStyle::SP_ArrowUp)).isNull());
        QVERIFY(shows(themeIcon("edit-find"), "edit-find"));
    }

    void keyCodes()
    {
        auto ascii = [](int key, int modifiers, const char* text) {
            return keyAscii(QKeyEvent(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text));
        };
        // Keys that type a character raise a key press with its code, Ctrl with a letter too.
        QCOMPARE((QList<int>{ascii(Qt::Key_A, 0, "a"), ascii(Qt::Key_A, Qt::ShiftModifier, "A"),
                             ascii(Qt::Key_Backspace, 0, "\b"), ascii(Qt::Key_Return, 0, "\r"),
                             ascii(Qt::Key_Enter, Qt::KeypadModifier, "\r"), ascii(Qt::Key_Escape, 0, "\x1b"),
                             ascii(Qt::Key_V, Qt::ControlModifier, "\x16")}),
                 (QList<int>{'a', 'A', 8, 13, 13, 27, 22}));
        // Tab, the arrows, Delete, Alt with a letter and the function keys raise none.
        QCOMPARE((QList<int>{ascii(Qt::Key_Tab, 0, "\t"), ascii(Qt::Key_Backtab, Qt::ShiftModifier, ""),
                             ascii(Qt::Key_E, Qt::AltModifier, "e"), ascii(Qt::Key_Left, 0, ""),
                             ascii(Qt::Key_Delete, 0, "\x7f"), ascii(Qt::Key_F2, 0, "")}),
                 QList<int>(6, 0));
        // The number boxes pass digits, one point where allowed, Backspace and Ctrl+V.
        QCOMPARE((QList<int>{numberKey('5', "12", false), numberKey('a', "12", true), numberKey('-', "", true),
                             numberKey('.', "12", true), numberKey('.', "1.2", true), numberKey('.', "12", false),
                             numberKey(8, "12", false), numberKey(22, "12", false)}),
                 (QList<int>{'5', 0, 0, '.', 0, 0, 8, 22}));
    }

    // Every byte reads as one character and writes back as itself: an imported file
    // exported again keeps its bytes, the five bytes the page leaves unassigned included.
    void codePageRoundTrip()
    {
        for (int b = 0; b < 256; ++b) {
            const QByteArray byte(1, char(b));
            const QString text = fromWindows1252(byte);
            QCOMPARE(text.size(), 1);
            QCOMPARE(toWindows1252(text), byte);
        }
        const QList<std::pair<int, char16_t>> page{{0x41, u'A'},      {0x80, u'\u20AC'}, {0x81, u'\u0081'},
                                                   {0x8D, u'\u008D'}, {0x8F, u'\u008F'}, {0x90, u'\u0090'},
                                                   {0x91, u'\u2018'}, {0x9D, u'\u009D'}, {0x9F, u'\u0178'},
                                                   {0xA0, u'\u00A0'}, {0xE9, u'\u00E9'}, {0xFF, u'\u00FF'}};
        for (const auto& [b, u] : page)
            QCOMPARE(fromWindows1252(QByteArray(1, char(b))), QString(QChar(u)));
    }

    void codePageWritesWhatItLacksAsQuestionMarks()
    {
        QCOMPARE(toWindows1252("a,b Café ÿ €‘’Ÿ"), QByteArray("a,b Caf\xe9 \xff \x80\x91\x92\x9f"));
        // Control characters of bytes the page gives to others, outside the page, and one
        // character beyond the basic plane, each as one "?".
        QCOMPARE(toWindows1252(QString::fromUtf8("\u0080\u0091 Ω 日 a\xf0\x9f\x98\x80z")), QByteArray("?? ? ? a?z"));
        QByteArray line("kept,");
        appendWindows1252(line, QStringLiteral("Zoë"));
        QCOMPARE(line, QByteArray("kept,Zo\xeb"));
    }
};

VELK_TEST(PlatformTest)
#include "tst_platform.moc"
