// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Dated notes. Each function raises what a failing statement raises.
#pragma once

#include <QString>

class SheetGrid;

// The columns of the list of notes.
namespace NoteColumn {
enum { ID = 1, Date, Note, NotifyUntil };
}

// The one cell that holds the date of the note being edited.
namespace NotifyUntilCell {
enum { Column = 1, Row = 1 };
}

// Lists all notes in the order of the table.
void listNotes(SheetGrid& list);

// Stores a note with today's date. The program reminds of it at each start before the date `until`;
// empty for no reminder. Deliberate: behaviour 192.
void addNote(const QString& note, const QString& until);
void updateNote(const QString& id, const QString& note, const QString& until);

void deleteNote(const QString& id);
