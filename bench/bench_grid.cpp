// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times filling, saving, loading, sorting and searching a grid of 10,000 x 5 cells. Filling may
// take at most half as long as filling a QStandardItemModel, saving and loading at most 3 times as
// long as a round trip of the plain texts through QJsonDocument. Fails if one of them takes longer.
#include "core/grid/sheet_grid.h"
#include "ratios.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardItemModel>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int Rows = 10'000;
constexpr int Cols = 5;

const std::vector<QString>& texts() {
    static const std::vector<QString> list = [] {
        std::vector<QString> made;
        for (int i = 0; i < Rows * Cols; ++i)
            made.push_back(QStringLiteral("Song title %1").arg((i * 7919) % (Rows * Cols)));
        return made;
    }();
    return list;
}

const QString& textOf(int col, int row) { return texts()[size_t((row - 1) * Cols + col - 1)]; }

void fillGrid(SheetGrid& grid) {
    grid.MaxCols(Cols);
    grid.MaxRows(Rows);
    for (int row = 1; row <= Rows; ++row)
        for (int col = 1; col <= Cols; ++col) grid.SetText(col, row, textOf(col, row));
}

void fillModel(QStandardItemModel& model) {
    for (int row = 1; row <= Rows; ++row)
        for (int col = 1; col <= Cols; ++col)
            model.setItem(row - 1, col - 1, new QStandardItem(textOf(col, row)));
}

void gridTrip(const SheetGrid& grid, const QString& path) {
    SheetGrid loaded;
    if (!grid.SaveToFile(path, false) || !loaded.LoadFromFile(path)) std::abort();
}

void jsonTrip(const QString& path) {
    QJsonArray array;
    for (int row = 1; row <= Rows; ++row) {
        QJsonArray cells;
        for (int col = 1; col <= Cols; ++col) cells.append(textOf(col, row));
        array.append(cells);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write(QJsonDocument(array).toJson(QJsonDocument::Compact));
    if (!file.commit()) std::abort();
    QFile back(path);
    if (!back.open(QIODevice::ReadOnly)) std::abort();
    const QJsonArray read = QJsonDocument::fromJson(back.readAll()).array();
    std::vector<QString> loaded;
    for (const QJsonValue& row : read)
        for (const QJsonValue& cell : row.toArray()) loaded.push_back(cell.toString());
    if (loaded != texts()) std::abort();
}

void BM_FillGrid(benchmark::State& state) {
    for (auto _ : state) {
        SheetGrid grid;
        fillGrid(grid);
    }
}
BENCHMARK(BM_FillGrid)->Unit(benchmark::kMillisecond);

void BM_FillStandardItemModel(benchmark::State& state) {
    for (auto _ : state) {
        QStandardItemModel model(Rows, Cols);
        fillModel(model);
    }
}
BENCHMARK(BM_FillStandardItemModel)->Unit(benchmark::kMillisecond);

void BM_SaveAndLoadGrid(benchmark::State& state) {
    const QTemporaryDir folder;
    SheetGrid grid;
    fillGrid(grid);
    for (auto _ : state) gridTrip(grid, folder.filePath(QStringLiteral("grid.set")));
}
BENCHMARK(BM_SaveAndLoadGrid)->Unit(benchmark::kMillisecond);

void BM_BareJsonRoundTrip(benchmark::State& state) {
    const QTemporaryDir folder;
    for (auto _ : state) jsonTrip(folder.filePath(QStringLiteral("bare.json")));
}
BENCHMARK(BM_BareJsonRoundTrip)->Unit(benchmark::kMillisecond);

void BM_SortByHead(benchmark::State& state) {
    SheetGrid grid;
    fillGrid(grid);
    for (auto _ : state) grid.SortByHead(2);
}
BENCHMARK(BM_SortByHead)->Unit(benchmark::kMillisecond);

void BM_SortNonAscii(benchmark::State& state) {
    SheetGrid grid;
    fillGrid(grid);
    for (int row = 1; row <= Rows; ++row)
        grid.SetText(2, row, QStringLiteral("Großer Gott ") + textOf(2, row));
    for (auto _ : state) grid.SortByHead(2);
}
BENCHMARK(BM_SortNonAscii)->Unit(benchmark::kMillisecond);

void BM_SearchColToTheEnd(benchmark::State& state) {
    SheetGrid grid;
    fillGrid(grid);
    for (auto _ : state)
        benchmark::DoNotOptimize(grid.SearchCol(2, 1, -1, QStringLiteral("no such text")));
}
BENCHMARK(BM_SearchColToTheEnd)->Unit(benchmark::kMillisecond);

bool ratiosHold() {
    const auto fill = quickest(
        [] {
            SheetGrid grid;
            fillGrid(grid);
        },
        [] {
            QStandardItemModel model(Rows, Cols);
            fillModel(model);
        });
    const QTemporaryDir folder;
    SheetGrid grid;
    fillGrid(grid);
    const auto trip = quickest([&] { gridTrip(grid, folder.filePath(QStringLiteral("grid.set"))); },
                               [&] { jsonTrip(folder.filePath(QStringLiteral("bare.json"))); });
    const bool filled = holds("filling, grid : item model", fill, 0.5);
    return holds("save and load, grid : bare JSON", trip, 3) && filled;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return ratiosHold() ? 0 : 1;
}
