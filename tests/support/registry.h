// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tests of the test program. LORVANITE_TEST(ClassName) after the class in a file
// test_<name>.cpp registers it; its CTest entry has the name of the file.
#pragma once

#include <QObject>

#include <functional>

void registerTest(const char* file, std::function<QObject*()> make);

struct TestRegistrar {
    TestRegistrar(const char* file, std::function<QObject*()> make) { registerTest(file, make); }
};

#define LORVANITE_TEST(Class) \
    static const TestRegistrar registrarOf##Class(__FILE__, [] { return new Class; });
