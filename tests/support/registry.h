// The list of test objects of the one test program. Put LORVANITE_TEST(ClassName) below the class
// in tests/<folder>/test_<name>.cpp; the CTest entry has the file's name.
#pragma once

#include <QObject>

#include <functional>

void registerTest(const char* file, std::function<QObject*()> make);

struct TestRegistrar {
    TestRegistrar(const char* file, std::function<QObject*()> make) { registerTest(file, make); }
};

#define LORVANITE_TEST(Class) \
    static const TestRegistrar registrarOf##Class(__FILE__, [] { return new Class; });
