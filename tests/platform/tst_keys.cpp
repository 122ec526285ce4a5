// The classic key events: which keys raise a key press, and the number boxes' filter.

#include "TestUi.h"

#include "platform/Keys.h"

#include <QKeyEvent>
#include <QtTest>

using namespace platform;

class KeysTest : public QObject
{
    Q_OBJECT
private slots:
    void keyPressCodes_data();
    void keyPressCodes();
    void numberFilter_data();
    void numberFilter();
};

void KeysTest::keyPressCodes_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("ascii");
    QTest::newRow("letter") << int(Qt::Key_A) << 0 << "a" << int('a');
    QTest::newRow("shifted letter") << int(Qt::Key_A) << int(Qt::ShiftModifier) << "A" << int('A');
    QTest::newRow("digit") << int(Qt::Key_7) << 0 << "7" << int('7');
    QTest::newRow("backspace") << int(Qt::Key_Backspace) << 0 << "\b" << 8;
    QTest::newRow("enter") << int(Qt::Key_Return) << 0 << "\r" << 13;
    QTest::newRow("keypad enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "\r" << 13;
    QTest::newRow("escape") << int(Qt::Key_Escape) << 0 << "\x1b" << 27;
    QTest::newRow("ctrl+v") << int(Qt::Key_V) << int(Qt::ControlModifier) << "\x16" << 22;
    QTest::newRow("tab") << int(Qt::Key_Tab) << 0 << "\t" << 0;
    QTest::newRow("shift+tab") << int(Qt::Key_Backtab) << int(Qt::ShiftModifier) << "" << 0;
    QTest::newRow("alt+e") << int(Qt::Key_E) << int(Qt::AltModifier) << "e" << 0;
    QTest::newRow("arrow") << int(Qt::Key_Left) << 0 << "" << 0;
    QTest::newRow("delete") << int(Qt::Key_Delete) << 0 << "\x7f" << 0;
    QTest::newRow("function key") << int(Qt::Key_F2) << 0 << "" << 0;
}

void KeysTest::keyPressCodes()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, text);
    QFETCH(int, ascii);
    const QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text);
    QCOMPARE(keyAscii(event), ascii);
}

void KeysTest::numberFilter_data()
{
    QTest::addColumn<int>("ascii");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("point");
    QTest::addColumn<int>("passed");
    QTest::newRow("digit") << int('5') << "12" << false << int('5');
    QTest::newRow("letter") << int('a') << "12" << true << 0;
    QTest::newRow("minus") << int('-') << "" << true << 0;
    QTest::newRow("first point") << int('.') << "12" << true << int('.');
    QTest::newRow("second point") << int('.') << "1.2" << true << 0;
    QTest::newRow("point where none is allowed") << int('.') << "12" << false << 0;
    QTest::newRow("backspace") << 8 << "12" << false << 8;
    QTest::newRow("paste") << 22 << "12" << false << 22;
}

void KeysTest::numberFilter()
{
    QFETCH(int, ascii);
    QFETCH(QString, text);
    QFETCH(bool, point);
    QFETCH(int, passed);
    QCOMPARE(numberKey(ascii, text, point), passed);
}

VELK_TEST(KeysTest)
#include "tst_keys.moc"
