// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/rules/set_grid.h"

#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid_dates.h"

#include <tuple>

namespace {

constexpr int NewSetRows = 25;
constexpr int ClearedSetRows = 50;

const QString DateLabel = QStringLiteral("Set List For:");

QString defaultDesign() { return preference(QStringLiteral("DefaultSetList")); }

// Whether a row has a text or a colour.
bool isRowInUse(const SheetGrid& set, int row) {
    for (int col : {SetColumn::Label, SetColumn::Title})
        if (!set.GetText(col, row).isEmpty() ||
            set.formatAt(set.Sheet(), col, row).backColor != White)
            return true;
    return false;
}

}  // namespace

void setUpSet(SheetGrid& set) {
    set.MaxCols(SetColumn::Title);
    set.MaxRows(NewSetRows);
    set.RowHeadersShow(false);
    set.SetText(SetColumn::Label, 0, QStringLiteral("Service"));
    set.SetText(SetColumn::Title, 0, QStringLiteral("Song"));
    set.SetText(SetColumn::Label, SetRow::Date, DateLabel);
    setUpDateCell(set);
}

bool isDateLabel(const SheetGrid& set, int col, int row) {
    return col == SetColumn::Label && row == SetRow::Date && set.GetText(col, row) == DateLabel;
}

void setUpDateCell(SheetGrid& set) { setUpDateCells(set, SetColumn::Title, SetRow::Date); }

void setUpSetWidths(SheetGrid& set) {
    set.ColWidth(SetColumn::Title, TitleWidth);
    set.ColWidth(SetColumn::Label, 22.63);
}

QString dateOfSet(const SheetGrid& set) { return set.GetText(SetColumn::Title, SetRow::Date); }

QString specialMusicOn(const QString& date) {
    Recordset rs =
        select(QStringLiteral("SELECT song_name FROM special_music WHERE play_date = '") + date +
               QStringLiteral("'"));
    QString names;
    for (; !rs.EOF_(); rs.MoveNext()) names += QLatin1Char(' ') + rs.Fields("song_name");
    rs.Close();
    return names;
}

QString personnelOn(const QString& date) {
    Recordset rs =
        select(QStringLiteral("SELECT player, instrument FROM schedule WHERE pdate = '") + date +
               QStringLiteral("'"));
    QString people;
    for (; !rs.EOF_(); rs.MoveNext())
        people += rs.Fields("instrument") + QStringLiteral(" : ") + rs.Fields("player") +
                  QLatin1Char('\r');
    rs.Close();
    return people;
}

void writeSong(SheetGrid& set, int row, const QString& title, int songID) {
    set.SetText(SetColumn::Title, row, title);
    Recordset rs =
        select(QStringLiteral("SELECT fileLoco FROM songs WHERE ID = ") + QString::number(songID));
    // Deliberate: behaviour 60. A song without sheet music leaves the colour.
    if (!rs.Fields("fileloco").isEmpty()) {
        set.Col(SetColumn::Title);
        set.Row(row);
        set.BackColor(SheetMusicGreen);
    }
    rs.Close();
}

void deleteText(SheetGrid& set, int col, int row) {
    if (row < 1) return;
    set.Col(col);
    set.Row(row);
    if (set.BackColor() != White) set.BackColor(White);
    set.Text(QString());
}

void addRow(SheetGrid& set, int row) {
    const int last = set.MaxRows();
    if (row < 1 || row > last) return;
    if (isRowInUse(set, last)) set.MaxRows(last + 1);
    set.InsertRows(row, 1);
}

// Deliberate: behaviour 63.
void clearDesign(SheetGrid& set) {
    set.ClearRange(SetColumn::Label, SetRow::FirstTitle, SetColumn::Title, set.MaxRows(), true);
}

// Deliberate: behaviour 63.
void clearSetGrid(SheetGrid& set) {
    set.ClearRange(SetColumn::Title, SetRow::Date, SetColumn::Title, set.MaxRows(), true);
    set.MaxRows(0);
    set.MaxRows(ClearedSetRows);
    setUpDateCell(set);
    setUpSetWidths(set);
    loadSetFile(set, defaultDesign());
    set.Col(SetColumn::Label);
    set.Col2(SetColumn::Label);
    set.Row(SetRow::Date);
    set.Row2(set.MaxRows());
    set.BlockMode(true);
    set.BackColor(White);
    set.BlockMode(false);
}

void loadDefaultDesign(SheetGrid& set) {
    const QString design = defaultDesign();
    if (!design.isEmpty()) loadSetFile(set, design);
}

void loadSetFile(SheetGrid& set, const QString& path) {
    std::ignore = set.LoadFromFile(path);  // Deliberate: behaviour 64.
    set.EditModeReplace(true);
}

QString setAsText(const SheetGrid& set) {
    QString text;
    for (int row = SetRow::Date; row <= set.DataRowCnt(); ++row)
        text += set.GetText(SetColumn::Label, row) + QStringLiteral("   ") +
                set.GetText(SetColumn::Title, row) + QStringLiteral("\r\n");
    return text;
}

// Deliberate: behaviour 76.
QStringList highlightedTitles(const SheetGrid& set) {
    QStringList titles;
    for (int row = SetRow::Date; row <= set.MaxRows(); ++row)
        if (set.formatAt(set.Sheet(), SetColumn::Title, row).backColor != White)
            titles.append(set.GetText(SetColumn::Title, row));
    return titles;
}

QString defaultSetName(const QString& date) {
    const QString name = QStringLiteral("Set For %1_%2_%3");
    if (date.size() == 8)
        return safeFileName(name.arg(date.mid(0, 2), date.mid(3, 2), date.mid(6, 2)));
    if (date.size() == 7)
        return safeFileName(name.arg(date.mid(0, 1), date.mid(2, 2), date.mid(5, 2)));
    return {};
}
