// How a window hands what it wants to mail to the mail window.
#pragma once

#include <QString>

// The file over which the window exports its grid: "\config\email.html" in the program's folder.
QString mailStagingFile();

// The lines of a text file. Raises 53 where the file is missing, 75 where it cannot be read.
QStringList linesOf(const QString& path);

// The lines of a text file joined with nothing between them. Errors as of linesOf.
QString joinedLinesOf(const QString& path);

enum class NoteButton { Shown, AsItWas };

// Gives the mail window a prepared body, with its "+ Note" button as told, and does not show it.
void fillMail(const QString& html, NoteButton note = NoteButton::Shown);

// The same, and shows it.
void handOverMail(const QString& html, NoteButton note = NoteButton::Shown);

// The whole way once the staging file is written: reads it back and hands it over.
void handOverStagedMail(NoteButton note = NoteButton::Shown);
