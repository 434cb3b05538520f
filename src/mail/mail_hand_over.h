// How a window hands what it wants to mail to the mail window.
#pragma once

#include <QString>

class SheetGrid;

// The file over which the window exports its grid: "\config\email.html" in the program's folder.
QString mailStagingFile();

enum class NoteButton { Shown, AsItWas };

// Gives the mail window a prepared body, with its "+ Note" button as told, and does not show it.
void fillMail(const QString& html, NoteButton note = NoteButton::Shown);

// The same, and shows it.
void handOverMail(const QString& html, NoteButton note = NoteButton::Shown);

// The whole way once the staging file is written: reads it back and hands it over.
void handOverStagedMail(NoteButton note = NoteButton::Shown);

// Exports columns 1 and 2 of a set or a report, down to the last row with data, to the staging
// file and hands it over with the "+ Note" button. Raises RunTimeError::PathAccess if the file
// cannot be written, and what linesOf raises if it cannot be read back.
void mailSetBlock(const SheetGrid& grid);
