// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Creates the delivered database from its SQL text: lorvanite_make_db FROM.sql TO.mdb
// Writes the new file beside the target and renames it.
#include "core/data/database_handle.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: lorvanite_make_db FROM.sql TO.mdb\n", stderr);
        return 2;
    }
    QFile source(QFile::decodeName(argv[1]));
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", argv[1], qPrintable(source.errorString()));
        return 1;
    }
    try {
        const StoreHandle database = openMemoryStore();
        runInStore(database.get(), source.readAll().constData());
        if (replaceFile(QFile::decodeName(argv[2]), bytesOfStore(database.get()))) return 0;
        std::fprintf(stderr, "%s cannot be written\n", argv[2]);
    } catch (const RunTimeError& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
    }
    return 1;
}
