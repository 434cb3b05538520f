// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// lorvanite_tests NAME [QtTest's options]    runs the tests of the file NAME.cpp
// lorvanite_tests --save-for-ever FOLDER     saves sets until it is killed
// lorvanite_tests --run-and-close FOLDER ACTIVITY    runs the program until its user closes it
// lorvanite_tests --work-and-end FOLDER END  runs the program with work in all its windows
// lorvanite_tests --copy-for-ever FOLDER     makes copies of a folder until it is killed
// lorvanite_tests --want-folder FOLDER       owns a folder, or calls its owner
#include "keeping/copies_hands.h"
#include "keeping/folder_lock_hands.h"
#include "keeping/program_hands.h"
#include "support/endless_saver.h"
#include "support/program_process.h"
#include "support/registry.h"
#include "trees.h"

#include <QApplication>
#include <QFileInfo>
#include <QTest>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

struct Entry {
    QString name;
    std::function<QObject*()> make;
};

std::vector<Entry>& entries() {
    static std::vector<Entry> list;
    return list;
}

}  // namespace

void registerTest(const char* file, std::function<QObject*()> make) {
    entries().push_back({QFileInfo(QString::fromUtf8(file)).completeBaseName(), std::move(make)});
}

int main(int argc, char** argv) {
    if (argc < 2) {
        for (const Entry& entry : entries()) std::puts(qPrintable(entry.name));
        return 2;
    }
    // Without a display unless one is chosen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM",
                "offscreen:configfile=" SOURCE_TREE "/tests/support/screen.json");
    // No test prints on a real printer.
    qputenv("CUPS_SERVER", "localhost:9");
    const QString name = QString::fromLocal8Bit(argv[1]);
    argv[1] = argv[0];
    ++argv;
    --argc;
    if (name == QLatin1String("--run-and-close") && argc == 3)
        return runAndClose(argc, argv, QString::fromLocal8Bit(argv[1]),
                           QString::fromLocal8Bit(argv[2]));
    if (name == QLatin1String("--work-and-end") && argc == 3)
        return workAndEnd(argc, argv, QString::fromLocal8Bit(argv[1]),
                          QString::fromLocal8Bit(argv[2]));
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lorvanite"));
    const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : ".");
    if (name == QLatin1String("--save-for-ever")) saveForEver(folder);
    if (name == QLatin1String("--copy-for-ever")) copyForEver(folder);
    if (name == QLatin1String("--want-folder")) return wantFolder(folder);
    int ran = 0;
    int failed = 0;
    for (const Entry& entry : entries()) {
        if (entry.name != name) continue;
        const std::unique_ptr<QObject> test(entry.make());
        failed += QTest::qExec(test.get(), argc, argv);
        ++ran;
    }
    if (ran == 0) std::fprintf(stderr, "no test named %s\n", qPrintable(name));
    return ran == 0 ? 2 : failed != 0;
}
