// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/roster.h"

#include "core/data/database.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/schedule_output.h"

#include <array>

namespace {

struct RosterColumnLayout {
    double width;
    const char* head;
    const char* field;  // null for a column to be filled in by hand
};

constexpr std::array<RosterColumnLayout, RosterColumn::Last> RosterColumns{
    {{8.0, "First Name", "fName"},
     {8.0, "Last Name", "lName"},
     {12.0, "Address", "address"},
     {10.0, "City", "city"},
     {4.0, "State", "State"},
     {8.0, "Zip", "zip"},
     {10.0, "Phone", "phone"},
     {10.0, "Cell", "cell"},
     {19.0, "e-Mail", "email"},
     {10.0, "Role 1", "role"},
     {10.0, "Role 2", "role2"},
     {10.0, "Role 3", "role3"},
     // Deliberate: behaviour 114.
     {20.0, "Vacation Days", nullptr}}};

constexpr int RosterMargin = 720;  // twips, top and bottom

}  // namespace

void setUpRoster(SheetGrid& roster) {
    roster.ClearRange(1, 1, -1, -1, true);
    roster.MaxRows(0);
    roster.MaxCols(RosterColumn::Last);
    int col = 0;
    for (const RosterColumnLayout& column : RosterColumns) {
        roster.ColWidth(++col, column.width);
        roster.SetText(col, 0, QString::fromLatin1(column.head));
    }
    roster.AllowCellOverflow(true);
}

void addToRoster(SheetGrid& roster, int id) {
    const int row = roster.MaxRows() + 1;
    roster.MaxRows(row);
    const Recordset rs =
        select(QStringLiteral("SELECT * FROM personell WHERE ID = ") + QString::number(id));
    int col = 0;
    for (const RosterColumnLayout& column : RosterColumns) {
        ++col;
        if (!column.field) continue;
        const QString text = rs.Fields(column.field);
        if (!text.isEmpty()) roster.SetText(col, row, text);
    }
}

void setRosterPrint(SheetGrid& roster) {
    setTeamPrint(roster);
    roster.PrintColHeaders(true);
    roster.PrintColor(false);
    roster.PrintGrid(true);
    roster.PrintOrientation(PrintOrientations::Landscape);
    roster.PrintMarginTop(RosterMargin);
    roster.PrintMarginBottom(RosterMargin);
    roster.PrintScalingMethod(PrintScaling::BestFit);
    roster.PrintBestFitPagesWide(1);
}
