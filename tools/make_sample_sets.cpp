// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes the set designs and the saved sets, as the set window writes them.
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"
#include "make_sample.h"
#include "sets/rules/set_grid.h"

#include <QDir>

namespace {

void layOutDesign(SheetGrid& grid, const Design& design) {
    setUpSet(grid);
    setUpSetWidths(grid);
    int row = 2;
    for (const QString& label : design.labels) grid.SetText(1, row++, label);
}

void writeSet(const Sample& sample, const Service& service) {
    const Design& design = sample.designs.at(service.design);
    SheetGrid grid;
    layOutDesign(grid, design);
    const QString date = formatDate(service.date);
    grid.SetText(2, 1, date);
    for (size_t i = 0; i < design.songRows.size(); ++i) {
        const QString title = service.titles[qsizetype(i)];
        if (title.isEmpty()) continue;
        const int row = design.songRows[i];
        grid.SetText(2, row, title);
        if (sample.find(title)->chart.isEmpty()) continue;
        grid.Col(2);
        grid.Row(row);
        grid.BackColor(SheetMusicGreen);
    }
    saveGrid(grid, QStringLiteral("%1/saved sets/%2.set").arg(sample.target, defaultSetName(date)));
}

}  // namespace

void writeSets(const Sample& sample) {
    QDir(sample.target).mkpath(QStringLiteral("set designs"));
    QDir(sample.target).mkpath(QStringLiteral("saved sets"));
    for (const auto& [name, design] : sample.designs) {
        SheetGrid grid;
        layOutDesign(grid, design);
        saveGrid(grid, QStringLiteral("%1/set designs/%2.sdl").arg(sample.target, name));
    }
    for (const Service& service : sample.services) writeSet(sample, service);
}
