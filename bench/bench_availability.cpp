// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compares the availability update of a schedule, with 200 people and 50,000 played rows over 31
// weeks, with a bare loop that reads the same rows and makes the same comparisons. The update may
// take at most 1.5 times as long as the loop, and 100 ms; otherwise the program fails.
#include "bare_loop.h"
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/shell/frm_mdi.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_grid.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>

namespace {

constexpr int People = 200;
constexpr int Played = 50'000;
constexpr int Weeks = 31;

QStringList g_dates;

void fillDatabase(const QString& path) {
    QString sql;
    const QDate start(2026, 11, 22);
    for (int week = 0; week < Weeks; ++week)
        g_dates.append(start.addDays(7 * week).toString(QStringLiteral("MM/dd/yy")));
    for (int i = 0; i < People; ++i)
        sql += QStringLiteral(
                   "INSERT INTO personell (fName, lName, role, role2, role3, vDays, "
                   "excludeScheduling) VALUES ('First%1', 'Last%1', 'Role %2', 'Other %3', '%4', "
                   "'%5:%6:%7', '0');")
                   .arg(QString::number(i), QString::number(i % 12), QString::number(i % 7),
                        i % 3 ? QString() : QStringLiteral("Third"), g_dates[i % Weeks],
                        g_dates[i * 7 % Weeks], g_dates[i * 11 % Weeks]);
    for (int i = 0; i < Played; ++i)
        sql += QStringLiteral(
                   "INSERT INTO played_on (title, played_date, songID) VALUES ('Song title %1', "
                   "'%2', %1);")
                   .arg(QString::number(i % 2000),
                        start.addDays(-7 * (i / 6) + 70).toString(QStringLiteral("MM/dd/yy")));
    runStatements(path, sql);
}

// What every implementation has to do: read both tables once, search each vacation text for each
// date, and compare each date with each played row.
int bareLoop() {
    struct Person {
        QString offer, vacation, excluded;
    };
    std::vector<Person> people;
    Recordset rs;
    rs.Open(QStringLiteral("SELECT fName, lName, role, role2, role3, vDays, excludeScheduling FROM "
                           "personell ORDER BY role"),
            dbConn, CursorType::Dynamic, LockType::ReadOnly);
    for (; !rs.EOF_(); rs.MoveNext())
        people.push_back({rs.Fields("role") + rs.Fields("fName"), rs.Fields("vDays"),
                          rs.Fields("excludeScheduling")});
    rs.Close();
    std::vector<std::pair<QString, QString>> played;
    rs.Open(QStringLiteral("SELECT title, played_date FROM played_on"), dbConn, CursorType::Dynamic,
            LockType::ReadOnly);
    for (; !rs.EOF_(); rs.MoveNext())
        played.emplace_back(rs.Fields("title"), rs.Fields("played_date"));
    rs.Close();
    int hits = 0;
    for (const QString& date : g_dates) {
        for (const Person& person : people)
            hits += !person.vacation.contains(date) && person.excluded == QLatin1String("0");
        for (const auto& row : played) hits += row.second == date;
    }
    return hits;
}

void refresh() { frmSchedule::instance().refreshAvailability(); }

template <class Body>
double bestOf(int runs, Body body) {
    double best = 1e9;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        body();
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - start;
        best = std::min(best, took.count());
    }
    return best;
}

void refreshAvailability(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) refresh();
}
BENCHMARK(refreshAvailability)->Unit(benchmark::kMillisecond);

void bare(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(bareLoop());
}
BENCHMARK(bare)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("db1.mdb"));
    QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), database);
    fillDatabase(database);
    setProgramFolder(folder.path());
    const frmMDI window;
    SheetView& grid = *frmSchedule::instance().fpSchedule;
    for (int week = 0; week < Weeks; ++week)
        grid.SetText(ScheduleColumn::Date, dateRowOf(week + 1), g_dates[week]);
    benchmark::RunSpecifiedBenchmarks();
    const double pass = bestOf(20, refresh);
    const double loop = bestOf(20, [] { benchmark::DoNotOptimize(bareLoop()); });
    std::printf("pass %.1f ms, bare loop %.1f ms, ratio %.2f\n", pass, loop, pass / loop);
    return pass <= 1.5 * loop && pass < 100 ? 0 : 1;
}
