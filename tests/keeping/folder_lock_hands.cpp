// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/folder_lock_hands.h"

#include "keeping/folder_lock.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>

int wantFolder(const QString& folder) {
    FolderLock lock(folder);
    int calls = 0;
    QObject::connect(&lock, &FolderLock::called, [&calls] { ++calls; });
    const FolderLock::Result result = lock.acquire(60'000);
    if (result == FolderLock::Result::Owned) {
        std::puts("owned");
        std::fflush(stdout);
        QSocketNotifier input(0, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
        std::printf("%d calls\n", calls);
        return 0;
    }
    std::puts(result == FolderLock::Result::OwnerCalled ? "called" : "out of reach");
    return 0;
}
