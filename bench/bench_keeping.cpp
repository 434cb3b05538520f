// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the keeping of an unsaved schedule of 31 weeks holds the window up, beside one way of
// the same texts into JSON. It may take 10 ms and 3 times the texts at most; the program fails
// where it does not hold.
#include "core/grid/sheet_grid.h"
#include "keeping/work_keeper.h"
#include "ratios.h"
#include "team/rules/schedule_grid.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

constexpr int Weeks = 31;
constexpr int Cols = ScheduleColumn::Last;
constexpr double MostMilliseconds = 10;
constexpr double MostTimesTheTexts = 3;

// Every cell of every week is filled, with the looks of the schedule's.
void fillSchedule(SheetGrid& grid) {
    grid.MaxCols(Cols);
    grid.MaxRows(ScheduleRow::FirstHead + Weeks * WeekRows);
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        for (int col = 1; col <= Cols; ++col) {
            grid.Col(col);
            grid.Row(row);
            grid.BackColor(row % WeekRows == ScheduleRow::FirstHead ? RGB(200, 200, 255)
                                                                    : RGB(255, 255, col * 20));
            grid.FontBold(row % WeekRows == ScheduleRow::FirstHead);
            grid.SetText(col, row,
                         QStringLiteral("Acoustic Guitar: First%1 Last%2").arg(row).arg(col));
        }
        if (row % WeekRows == ScheduleRow::FirstHead)
            grid.AddCellSpan(ScheduleColumn::Notes, row, 2, 1);
    }
}

const SheetGrid& schedule() {
    static const std::unique_ptr<SheetGrid> grid = [] {
        auto made = std::make_unique<SheetGrid>();
        fillSchedule(*made);
        return made;
    }();
    return *grid;
}

qsizetype textsAsJson(const SheetGrid& grid) {
    QJsonArray rows;
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        QJsonArray cells;
        for (int col = 1; col <= Cols; ++col) cells.append(grid.GetText(col, row));
        rows.append(cells);
    }
    return QJsonDocument(rows).toJson(QJsonDocument::Compact).size();
}

void takeBytes(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(schedule().fileBytes());
}
BENCHMARK(takeBytes)->Unit(benchmark::kMillisecond);

void bareTexts(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(textsAsJson(schedule()));
}
BENCHMARK(bareTexts)->Unit(benchmark::kMillisecond);

// What the window's thread does when the 30 seconds are over.
bool keepingHolds() {
    const QTemporaryDir folder;
    SheetGrid work;
    fillSchedule(work);
    WorkKeeper keeper(folder.path(), UnsavedKind::Schedule, [&] { return work.fileBytes(); });
    keeper.setComparison([&] { return work.contentSum(); });
    keeper.workLoaded();
    keeper.setDelay(std::chrono::milliseconds(0));
    int changes = 0;
    const auto seconds = quickest(
        [&] {
            work.SetText(1, 5, QString::number(++changes));
            keeper.workChanged();
            // The timer of 0 ms fires here, and nothing else waits.
            QCoreApplication::processEvents();
        },
        [&] { benchmark::DoNotOptimize(textsAsJson(work)); });
    keeper.keepNow();
    const UnsavedStore store(folder.path());
    if (store.list(UnsavedKind::Schedule).size() != 1) {
        std::puts("nothing was kept");
        return false;
    }
    const bool quick = seconds.first * 1000 <= MostMilliseconds;
    std::printf(
        "keeping a schedule of %d weeks: %.2f ms of the window's thread, at most %.0f: %s\n", Weeks,
        seconds.first * 1000, MostMilliseconds, quick ? "holds" : "FAILS");
    return holds("keeping against its bare texts", seconds, MostTimesTheTexts) && quick;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return keepingHolds() ? 0 : 1;
}
