// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/cell_look.h"

#include "core/data/texts.h"

#include <QFontMetricsF>

#include <cmath>

double pixelsPerUnit() {
    static const double width = [] {
        constexpr int large = 1000;  // so that rounding to whole pixels does not matter
        QFont font(QStringLiteral("Arial"));
        font.setPixelSize(large);
        const double share = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')) / large;
        return share * 10 * 96 / 72;
    }();
    return width;
}

int pixelsOfPoints(double points) { return int(std::lround(points * 96 / 72)); }

QColor screenColour(int gridColour) {
    return QColor(gridColour & 0xff, (gridColour >> 8) & 0xff, (gridColour >> 16) & 0xff);
}

QString withLineEnds(QString text) {
    text = withUnixLineEnds(text);
    while (text.endsWith(QLatin1Char('\n'))) text.chop(1);
    return text;
}

bool takesOverflow(const SheetGrid& grid, int sheet, int col, int row) {
    if (!grid.textAt(sheet, col, row).isEmpty()) return false;
    if (grid.spanAt(sheet, col, row).cols > 0) return false;
    if (!grid.pictureAt(sheet, col, row).isEmpty()) return false;
    const CellKind kind = grid.formatAt(sheet, col, row).kind;
    return kind != CellKind::Combo && kind != CellKind::Button;
}
