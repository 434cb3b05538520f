// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The file in which a window prepares the body of a message.
#pragma once

#include <QString>
#include <QStringList>

class SheetGrid;

// Its path: "\config\email.html" in the program's folder.
QString mailStagingFile();

// Replaces the staging file. Raises RunTimeError::PathAccess if it cannot be written.
void writeStagingFile(const QStringList& lines);

// Exports columns 1 and 2 of a set or a report to the staging file, down to the last row with data.
// Raises RunTimeError::PathAccess if the file cannot be written.
void stageSetBlock(const SheetGrid& grid);
