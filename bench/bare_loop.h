// What the benchmark programs share: statements run beside the program, a database of 10,000 songs
// with 200,000 played rows, a bare loop that prepares and steps the same statements with SQLite
// itself, and the ratio of the two.
#pragma once

#include "core/data/paths.h"
#include "platform/desktop/desktop.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <sqlite3.h>
#include <string>
#include <vector>

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

// Runs statements, as one transaction, on a database file.
inline void runStatements(const QString& file, const QString& statements) {
    sqlite3* db = nullptr;
    sqlite3_open(file.toUtf8().constData(), &db);
    const QString all = QStringLiteral("BEGIN;") + statements + QStringLiteral("COMMIT;");
    sqlite3_exec(db, all.toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// A program folder of its own with the filled database, and SQLite's own connection to it.
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

// Walks the songs of one statement and, for each, all rows of a second one about its ID.
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

inline double seconds(const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Both in turn, so that a change of the machine's speed meets both.
inline void compare(const char* name, const std::function<void()>& ours,
                    const std::function<void()>& bare) {
    constexpr int Rounds = 7;
    std::vector<double> a;
    std::vector<double> b;
    std::vector<double> ratios;
    for (int round = 0; round < Rounds; ++round) {
        a.push_back(seconds(ours));
        b.push_back(seconds(bare));
        ratios.push_back(a.back() / b.back());
    }
    std::printf("%-18s %7.1f ms, bare loop %7.1f ms, ratio %.2f\n", name, median(a) * 1000,
                median(b) * 1000, median(ratios));
}
