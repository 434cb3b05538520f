// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/rules/notes.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"

namespace {

// The date of a new note without a date: the calendar's day zero.
const QDate DayZero(1899, 12, 30);

// Deliberate: behaviour 193.
QString withoutApostrophes(QString note) { return note.remove(QLatin1Char('\'')); }

}  // namespace

void listNotes(SheetGrid& list) {
    list.MaxRows(0);
    Recordset rs = select(QStringLiteral("SELECT * FROM notes"));
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        list.MaxRows(row);
        list.SetText(NoteColumn::ID, row, rs.Fields("ID"));
        list.SetText(NoteColumn::Date, row, rs.Fields("post_date"));
        list.SetText(NoteColumn::Note, row, rs.Fields("notes"));
        list.SetText(NoteColumn::NotifyUntil, row, rs.Fields("notify_date"));
    }
    rs.Close();
}

void addNote(const QString& note, const QString& until) {
    // Deliberate: behaviour 190.
    const QString date = until.isEmpty() ? formatDate(DayZero) : formatDate(until);
    execute(QStringLiteral("INSERT INTO notes (post_date, notes, notify_date) VALUES ('") +
            formatDate(today()) + QStringLiteral("', '") + withoutApostrophes(note) +
            QStringLiteral("', '") + date + QStringLiteral("')"));
}

void updateNote(const QString& id, const QString& note, const QString& until) {
    // Deliberate: behaviour 191.
    execute(QStringLiteral("UPDATE notes SET post_date = '") + formatDate(today()) +
            QStringLiteral("', notes = '") + withoutApostrophes(note) +
            QStringLiteral("', notify_date = '") + until + QStringLiteral("' WHERE ID = ") + id);
}

void deleteNote(const QString& id) {
    // Deliberate: behaviour 194.
    execute(QStringLiteral("DELETE FROM notes WHERE id = ") + id);
}
