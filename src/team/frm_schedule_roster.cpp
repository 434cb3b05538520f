// The roster: everyone of the team on paper.
#include "core/data/database.h"
#include "platform/paper/printing.h"
#include "team/frm_schedule.h"

#include <array>

namespace {

struct RosterColumn {
    double width;
    const char* head;
    const char* field;  // null where the column is filled in by hand, on paper
};

constexpr std::array<RosterColumn, 13> Columns{{{8.0, "First Name", "fName"},
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
                                                {20.0, "Vacation Days", nullptr}}};

constexpr int RosterMargin = 720;  // twips, top and bottom

}  // namespace

void frmSchedule::cmdPrintRoster_Click() {
    fpTemp.ClearRange(1, 1, -1, -1, true);
    fpTemp.MaxRows(0);
    fpTemp.MaxCols(int(Columns.size()));
    for (int col = 1; col <= int(Columns.size()); ++col) {
        const RosterColumn& column = Columns[size_t(col) - 1];
        fpTemp.ColWidth(col, column.width);
        fpTemp.SetText(col, 0, QString::fromLatin1(column.head));
    }
    fpTemp.AllowCellOverflow(true);
    for (int i = 0; i < cmbPersonell->count(); ++i) addToRoster(cmbPersonell->itemData(i).toInt());
    printRoster();
}

// One row, in the order of the box. The vacation days are not read and print blank: this is meant.
void frmSchedule::addToRoster(int id) {
    const int row = fpTemp.MaxRows() + 1;
    fpTemp.MaxRows(row);
    Recordset rs =
        select(QStringLiteral("SELECT * FROM personell WHERE ID = ") + QString::number(id));
    for (int col = 1; col <= int(Columns.size()); ++col) {
        const char* field = Columns[size_t(col) - 1].field;
        if (!field) continue;
        const QString text = rs.Fields(field);
        if (!text.isEmpty()) fpTemp.SetText(col, row, text);
    }
}

void frmSchedule::printRoster() {
    applyPrintSettings(fpTemp);
    fpTemp.PrintColHeaders(true);
    fpTemp.PrintColor(false);
    fpTemp.PrintGrid(true);
    fpTemp.PrintOrientation(PrintOrientations::Landscape);
    fpTemp.PrintMarginTop(RosterMargin);
    fpTemp.PrintMarginBottom(RosterMargin);
    fpTemp.PrintScalingMethod(PrintScaling::BestFit);
    fpTemp.PrintBestFitPagesWide(1);
    PrintSheet(fpTemp, 1);
}
