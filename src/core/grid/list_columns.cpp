// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grid/list_columns.h"

#include "core/grid/sheet_grid.h"

void setUpList(SheetGrid& list, int count, std::initializer_list<ListColumn> columns) {
    list.MaxCols(count);
    list.MaxRows(0);
    list.RowHeadersShow(false);
    list.GridShowHoriz(false);
    list.GridShowVert(false);
    for (const auto& [col, head, width] : columns) {
        list.SetText(col, 0, QString::fromLatin1(head));
        list.ColWidth(col, width);
    }
}
