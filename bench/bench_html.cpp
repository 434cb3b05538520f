// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times the HTML export of a grid of 10,000 x 4 cells. It may take at most 1.5 times as long as
// writing the same bytes with QTextStream into a file that is replaced as a whole, like the grid's.
// Fails if it takes longer.
#include "core/grid/sheet_grid.h"
#include "ratios.h"

#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdlib>

int main() {
    constexpr int rows = 10'000;
    constexpr int cols = 4;
    SheetGrid grid;
    grid.MaxCols(cols);
    grid.MaxRows(rows);
    for (int row = 1; row <= rows; ++row)
        for (int col = 1; col <= cols; ++col)
            grid.SetText(col, row, QStringLiteral("Song title %1 & more").arg(row * cols + col));
    for (int row = 1; row <= rows; row += 16) {
        grid.Col(1);
        grid.Row(row);
        grid.BackColor(RGB(180, 255, 180));
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("grid.html"));
    const auto write = [&] {
        if (!grid.ExportRangeToHTML(1, 1, cols, rows, path, false, QStringLiteral("lsl")))
            std::abort();
    };
    write();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 2;
    const QString text = QString::fromUtf8(file.readAll());
    const auto bare = [&] {
        QSaveFile copy(folder.filePath(QStringLiteral("bare.html")));
        if (!copy.open(QIODevice::WriteOnly)) std::abort();
        QTextStream stream(&copy);
        stream << text;
        stream.flush();
        if (!copy.commit()) std::abort();
    };
    return holds("HTML of 10,000 x 4 : QTextStream", quickest(write, bare), 1.5) ? 0 : 1;
}
