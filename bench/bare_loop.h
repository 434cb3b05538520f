// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Shared by the benchmarks of the database: statements run beside the program, a database of 10,000
// songs with 200,000 played rows, and a bare loop that runs the same statements with SQLite alone,
// as the measure.
#pragma once

#include "core/data/paths.h"
#include "platform/desktop/desktop.h"
#include "ratios.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <sqlite3.h>
#include <string>

inline void fill(sqlite3* db) {
    sqlite3_exec(db,
                 "BEGIN;"
                 "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) "
                 "INSERT INTO songs (title, artist, dakey, cat1, cat2, playlist) SELECT "
                 "printf('Song number %05d', (i * 7919) % 10000), 'Artist', 'G', 'Praise', "
                 "'Prayer', 'Current' FROM n;"
                 "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 199999) "
                 "INSERT INTO played_on (title, played_date, songID) SELECT 'Song', "
                 "printf('%02d/%02d/%02d', 1 + i * 7 % 12, 1 + i * 11 % 28, i / 10000 + 6), "
                 "1 + i % 10000 FROM n;"
                 "INSERT INTO categories (name) VALUES ('Praise');"
                 "COMMIT;",
                 nullptr, nullptr, nullptr);
}

// Runs statements on a database file, in one transaction.
inline void runStatements(const QString& file, const QString& statements) {
    sqlite3* db = nullptr;
    sqlite3_open(file.toUtf8().constData(), &db);
    const QString all = QStringLiteral("BEGIN;") + statements + QStringLiteral("COMMIT;");
    sqlite3_exec(db, all.toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// A separate program folder with the filled database, and a plain SQLite connection to it.
class FilledFolder {
public:
    FilledFolder() {
        const QString file = m_folder.filePath(QStringLiteral("db1.mdb"));
        QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), file);
        sqlite3_open(file.toUtf8().constData(), &db);
        fill(db);
        setProgramFolder(m_folder.path());
        setEndOfProcess([](int) {});
    }
    ~FilledFolder() { sqlite3_close(db); }
    FilledFolder(const FilledFolder&) = delete;
    FilledFolder& operator=(const FilledFolder&) = delete;

    sqlite3* db = nullptr;

private:
    QTemporaryDir m_folder;
};

inline int stepAll(sqlite3* db, const std::string& source) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, source.c_str(), -1, &statement, nullptr);
    int rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) ++rows;
    sqlite3_finalize(statement);
    return rows;
}

// Steps through the songs of one statement and, for each, through all rows of a second one for its
// ID. With `walksTwice`, steps through the songs once more beforehand.
inline void bareLoop(sqlite3* db, const char* songs, const std::string& before,
                     const std::string& after, bool walksTwice) {
    if (walksTwice) stepAll(db, songs);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, songs, -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const auto* id = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        stepAll(db, before + id + after);
    }
    sqlite3_finalize(statement);
}

// Compares the medians of both with a limit of their ratio. Returns false if it is above the limit.
[[nodiscard]] inline bool compare(const char* name, const std::function<void()>& ours,
                                  const std::function<void()>& bare, double most) {
    const Medians medians = mediansOf(7, ours, bare);
    const bool within = medians.ratio <= most;
    std::printf(
        "%-18s %7.1f ms, bare loop %7.1f ms, ratio %.2f (%.2f in processor time), at most %.2f: "
        "%s\n",
        name, medians.first * 1000, medians.second * 1000, medians.ratio, medians.processorRatio,
        most, within ? "holds" : "FAILS");
    return within;
}
