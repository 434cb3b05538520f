// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A program's folder that is copied, and a process that copies it until it is killed.
#pragma once

#include <QString>
#include <QStringList>

// Makes or rewrites the user's files of a program's folder and the songs of its database; each of
// them names the round. With round 1 the folder gets a database first.
void writeRound(const QString& folder, int round);

// The round that all of a copy is of; 0 where something is missing, is damaged or is of another
// round.
int roundOf(const QString& copy);

// The relative paths of the files that writeRound makes, without the database.
QStringList roundFiles();

// Writes rounds and makes the copy of one day after another, as a program that runs for years;
// prints a line at the start of each copy and one when it is made. Goes on behind the newest copy
// that it finds. Never returns.
[[noreturn]] void copyForEver(const QString& folder);
