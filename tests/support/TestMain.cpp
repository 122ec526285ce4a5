#include "TestUi.h"

#include <memory>
#include <vector>

std::vector<std::pair<const char*, std::function<QObject*()>>>& registeredTests();

// Runs every registered test class; C locale so that figures are stable.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto& [name, make] : registeredTests()) {
        std::unique_ptr<QObject> test(make());
        failed += QTest::qExec(test.get(), argc, argv);
    }
    return failed == 0 ? 0 : 1;
}
