#include "TestUi.h"

#include <QMetaMethod>

namespace
{

// The test functions of a class, in their order.
QStringList testFunctions(const QObject* test)
{
    const QMetaObject* meta = test->metaObject();
    const QStringList special{"initTestCase", "cleanupTestCase", "init", "cleanup"};
    QStringList out;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod m = meta->method(i);
        const QString name = QString::fromLatin1(m.name());
        if (m.methodType() == QMetaMethod::Slot && m.access() == QMetaMethod::Private && m.parameterCount() == 0 &&
            !name.endsWith(QLatin1String("_data")) && !special.contains(name))
            out << name;
    }
    return out;
}

// Runs a class's functions. A program end that no test expected fails the function it
// happened in (the test framework has told it already) and the run goes on after it.
int runClass(const std::function<QObject*()>& make, const QStringList& arguments)
{
    std::unique_ptr<QObject> first(make());
    QStringList remaining = arguments.size() > 1 ? QStringList() : testFunctions(first.get());
    int failed = 0;
    do {
        std::unique_ptr<QObject> test(first ? std::move(first) : std::unique_ptr<QObject>(make()));
        try {
            failed += QTest::qExec(test.get(), arguments + remaining);
            remaining.clear();
        } catch (const platform::ProgramEnded&) {
            ++failed;
            const qsizetype at = remaining.indexOf(std::exchange(unexpectedEnd, QString()));
            remaining = at < 0 ? QStringList() : remaining.mid(at + 1);
        }
    } while (!remaining.isEmpty());
    return failed;
}

} // namespace

// Runs every registered test class; C locale so that figures are stable.
int main(int argc, char** argv)
{
    // Off screen, on the screen CTest names (such as a laptop's), or else Qt's own.
    if (!qEnvironmentVariable("QT_QPA_PLATFORM").startsWith(QLatin1String("offscreen")))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto& make : registeredTests)
        failed += runClass(make, app.arguments());
    return failed == 0 ? 0 : 1;
}
