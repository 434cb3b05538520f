// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue/rules/song_form.h"

#include "core/data/database.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr int MostDropLines = 25;

// The columns of songs in the rows from category 1 down.
constexpr const char* ShownFields[] = {"cat1",     "cat2",     "cat3", "cat4",     "cat5",
                                       "fileloco", "playlist", "CCLI", "soundFile"};

void setCellType(SheetGrid& form, int row, CellKind kind) {
    form.Col(SongFormColumn::Value);
    form.Row(row);
    form.CellType(kind);
}

// Deliberate: behaviour 34.
QString withoutFirstApostrophe(QString text) {
    const qsizetype at = text.indexOf(QLatin1Char('\''));
    return at < 0 ? text : text.remove(at, 1);
}

QString withoutApostrophes(QString text) { return text.remove(QLatin1Char('\'')); }

}  // namespace

void setUpSongForm(SheetGrid& form) {
    static const char* const labels[] = {"ID",         "Title",      "Artist",     "Key",
                                         "Category 1", "Category 2", "Category 3", "Category 4",
                                         "Category 5", "SheetMusic", "Playlist",   "CCLI #",
                                         "Sound File"};
    form.MaxCols(SongFormColumn::Value);
    form.MaxRows(SongRow::Last);
    for (int row = SongRow::ID; row <= SongRow::Last; ++row)
        form.SetText(SongFormColumn::Label, row, QLatin1String(labels[row - 1]));
    form.ColHeadersShow(false);
    form.ColWidth(SongFormColumn::Label, 13);
    for (int row = SongRow::Category1; row <= SongRow::Category5; ++row)
        setCellType(form, row, CellKind::Combo);
    setCellType(form, SongRow::SheetMusic, CellKind::Button);
    setCellType(form, SongRow::Playlist, CellKind::Combo);
    form.TypeComboBoxList(QStringLiteral("Current\tPast"));
    setCellType(form, SongRow::SoundFile, CellKind::Button);
}

void offerCategories(SheetGrid& form, const QStringList& categories) {
    QString list;
    for (const QString& category : categories) list += category + QLatin1Char('\t');
    form.Col(SongFormColumn::Value);
    for (int row = SongRow::Category1; row <= SongRow::Category5; ++row) {
        form.Row(row);
        form.TypeComboBoxList(list);
        form.TypeComboBoxMaxDrop(std::clamp(int(categories.size()), 1, MostDropLines));
    }
}

QString songValue(const SheetGrid& form, int row) {
    return form.GetText(SongFormColumn::Value, row);
}

void showSongFields(SheetGrid& form, const QString& songID) {
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE ID = ") + songID);
    int row = SongRow::Category1;
    for (const char* field : ShownFields)
        form.SetText(SongFormColumn::Value, row++, rs.Fields(field));
    rs.Close();
}

SongRecord readSong(const SheetGrid& form) {
    const auto value = [&form](int row) { return songValue(form, row); };
    SongRecord song;
    song.id = value(SongRow::ID);
    song.title = withoutFirstApostrophe(value(SongRow::Title));
    // Deliberate: behaviour 30. The artist is not among them.
    song.fields = {
        {QStringLiteral("title"), song.title},
        {QStringLiteral("dakey"), withoutFirstApostrophe(value(SongRow::Key))},
        {QStringLiteral("cat1"), value(SongRow::Category1)},
        {QStringLiteral("cat2"), value(SongRow::Category2)},
        {QStringLiteral("cat3"), value(SongRow::Category3)},
        {QStringLiteral("cat4"), value(SongRow::Category4)},
        {QStringLiteral("cat5"), value(SongRow::Category5)},
        {QStringLiteral("playlist"), value(SongRow::Playlist)},
        {QStringLiteral("fileLoco"), withoutApostrophes(value(SongRow::SheetMusic))},
        {QStringLiteral("CCLI"), withoutApostrophes(value(SongRow::CCLI))},
        {QStringLiteral("soundFile"), value(SongRow::SoundFile)},
    };
    return song;
}

bool isSongComplete(const SheetGrid& form) {
    return !songValue(form, SongRow::Title).isEmpty() &&
           !songValue(form, SongRow::Category1).isEmpty();
}

bool songExists(const QString& songID) {
    return !songID.isEmpty() && !select(QStringLiteral("SELECT ID FROM songs WHERE ID = ") +
                                        QString::number(toLong(songID)))
                                     .EOF_();
}

void storeSong(const SongRecord& song) {
    QStringList columns;
    QStringList values;
    QStringList assignments;
    for (const auto& [column, value] : song.fields) {
        columns.append(column);
        values.append(value);
        assignments.append(column + QStringLiteral(" = '") + value + QLatin1Char('\''));
    }
    if (song.id.isEmpty())
        execute(QStringLiteral("INSERT INTO songs (") + columns.join(QStringLiteral(", ")) +
                QStringLiteral(") VALUES ('") + values.join(QStringLiteral("', '")) +
                QStringLiteral("');"));
    else
        execute(QStringLiteral("UPDATE songs SET ") + assignments.join(QStringLiteral(", ")) +
                QStringLiteral(" WHERE ID = ") + song.id);
}

// Deliberate: behaviour 32.
void deleteSong(const QString& songID) {
    execute(QStringLiteral("DELETE FROM songs WHERE ID = ") + songID);
}
