// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lists: grids without row heads and grid lines, whose rows are records.
#pragma once

#include <initializer_list>

class SheetGrid;

struct ListColumn {
    int col;
    const char* head;
    double width;
};

// Gives a grid `count` columns, the heads and widths of these, and no rows.
void setUpList(SheetGrid& list, int count, std::initializer_list<ListColumn> columns);
