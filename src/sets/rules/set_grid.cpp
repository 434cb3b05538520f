#include "sets/rules/set_grid.h"

#include "core/data/paths.h"
#include "core/grid/sheet_grid_dates.h"

void setUpSet(SheetGrid& grid) {
    grid.MaxCols(2);
    grid.MaxRows(25);
    grid.RowHeadersShow(false);
    grid.SetText(1, 0, QStringLiteral("Service"));
    grid.SetText(2, 0, QStringLiteral("Song"));
    grid.SetText(1, 1, QStringLiteral("Set List For:"));
    setUpDateCell(grid);
}

void setUpDateCell(SheetGrid& grid) { setUpDateCells(grid, 2, 1); }

void setUpSetWidths(SheetGrid& grid) {
    grid.ColWidth(2, 32.88);
    grid.ColWidth(1, 22.63);
}

QString defaultSetName(const QString& date) {
    const QString name = QStringLiteral("Set For %1_%2_%3");
    if (date.size() == 8)
        return safeFileName(name.arg(date.mid(0, 2), date.mid(3, 2), date.mid(6, 2)));
    if (date.size() == 7)
        return safeFileName(name.arg(date.mid(0, 1), date.mid(2, 2), date.mid(5, 2)));
    return {};
}
