// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How other windows hand a prepared message to the mail window.
#pragma once

#include "mail/rules/staging_file.h"

#include <QString>

enum class NoteButton { Shown, AsItWas };

// Fills the mail window with a prepared body and does not show it.
void fillMail(const QString& html, NoteButton note = NoteButton::Shown);

// Fills the mail window and shows it.
void handOverMail(const QString& html, NoteButton note = NoteButton::Shown);

// Reads the body from the staging file and hands it over. Raises what linesOf raises.
void handOverStagedMail(NoteButton note = NoteButton::Shown);

// Stages columns 1 and 2 of a set or a report, down to the last row with data, and hands them over
// with the "+ Note" button. Raises RunTimeError::PathAccess if the file cannot be written, and what
// linesOf raises if it cannot be read back.
void mailSetBlock(const SheetGrid& grid);
