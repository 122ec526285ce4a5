#include "TestUi.h"

#include <vector>

std::vector<std::pair<const char*, std::function<QObject*()>>>& registeredTests()
{
    static std::vector<std::pair<const char*, std::function<QObject*()>>> tests;
    return tests;
}

void registerTest(const char* name, std::function<QObject*()> make)
{
    registeredTests().emplace_back(name, std::move(make));
}
