// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Times the printing of a chart of three pages to a PDF file. It may take at most 1.5 times as long
// as writing the same texts in the same font at the same positions with QPdfWriter and QPainter
// alone, into a file that is replaced as a whole, like ours. Fails if it takes longer.
#include "charts/chart_output.h"
#include "filled_chart.h"
#include "platform/paper/printing.h"
#include "platform/theme/theme.h"
#include "ratios.h"

#include <QApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

constexpr int Pages = 3;
constexpr int TwipsPerInch = 1440;
constexpr int Margin = 720;
constexpr int ColTwips = 280;
constexpr int RowTwips = 298;
constexpr int LetterTwips = 200;

void writeBare(const SheetGrid& chart, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    QPdfWriter writer(&file);
    writer.setResolution(TwipsPerInch);
    writer.setPageMargins({});
    QPainter painter(&writer);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(LetterTwips);
    font.setBold(true);
    painter.setFont(font);
    for (int page = 1; page <= Pages; ++page) {
        if (page > 1) writer.newPage();
        for (int row = 1; row <= ChartRows; ++row) {
            for (int col = 1; col <= ChartCols; ++col) {
                const QString text = chart.textAt(page, col, row);
                if (!text.isEmpty())
                    painter.drawText(Margin + (col - 1) * ColTwips, Margin + row * RowTwips, text);
            }
        }
    }
    painter.end();
    if (!file.commit()) std::abort();
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    applyTheme(app);
    const QTemporaryDir folder;
    SheetGrid chart;
    fillChart(chart, Pages);
    setPrintTarget(folder.filePath(QStringLiteral("ours.pdf")));
    const QString bare = folder.filePath(QStringLiteral("bare.pdf"));
    const auto print = [&chart] { printChart(chart); };
    const auto write = [&] { writeBare(chart, bare); };
    return holds("chart of 3 pages : QPdfWriter", quickest(print, write), 1.5) ? 0 : 1;
}
