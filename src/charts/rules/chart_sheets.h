// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A chart's pages as a whole: copied to another grid, or merged on page 1 for paper and mail.
#pragma once

#include <QString>

#include <functional>

class SheetGrid;

// Reports to the user that a page could not be copied.
using TellFailure = std::function<void(const QString&)>;

// Copies the pages of a chart to another grid and shows its first page; the chart is left on its
// last page. `formatCopy` formats the copy's pages once their number is set. Returns false at a
// page without cells, after `tell`.
[[nodiscard]] bool copyChart(SheetGrid& chart, SheetGrid& copy,
                             const std::function<void()>& formatCopy, const TellFailure& tell);

// Takes the focus off the cells and puts all further pages below page 1, which is shown. Returns
// false at a page without cells, after `tell`: page 1 keeps the rows added so far, and the page
// without cells is shown.
[[nodiscard]] bool mergePages(SheetGrid& chart, const TellFailure& tell);

// Undoes mergePages and shows page 1. Does nothing to a chart of one page.
void splitMergedPages(SheetGrid& chart);
