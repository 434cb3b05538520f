// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Copies of all that a user's work consists of, each in its own folder below "copies".
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>

// A copy is a folder below "copies" in the program's folder. It holds the database, the folders
// "saved sets", "set designs", "schedules" and "sheetmusic" with everything below them, and
// "config/mail.ini"; what is missing in the program's folder is missing in the copy, the database
// excepted. Times of files are kept, and only the owner can read them. A file that is the same as
// in the newest earlier copy is a hard link to it where the file system has them.
//
// A copy is complete or absent: it is made in the folder "copies/.unfinished" and renamed at the
// end, and one that is removed is renamed first.
//
// Every function takes the program's folder and can run in any thread. Those that write wait for a
// copy that is being made, by this process or another.

// Asked before each step with what comes next, for a person to read; false ends the work.
using CopyStep = std::function<bool(const QString& what)>;

enum class CopyOutcome { Made, AlreadyThere, Cancelled };

// Makes the copy of a day, "copies/2026-11-21", unless it is there. Afterwards the ten newest
// copies of days stay, and the first of each of the twelve newest months; others are removed.
// Raises 53 if the database is missing, -2147467259 if it cannot be read or is locked for a
// minute, 70 if a file cannot be read or written, 75 if another copy is being made for a minute.
// The description is a whole sentence with the file and the reason. Nothing is left behind then.
CopyOutcome makeDailyCopy(const QString& folder, const QDate& day, const CopyStep& step = {});

enum class SetAsideReason { BeforeRestore, BeforeReset, BeforeImport, BeforeMend };

// Makes a copy at once, whatever copies are there, and returns its path: "copies/2026-11-21 before
// restore", with " (2)" and so on if the name is taken. The ten newest of such copies stay. Raises
// like makeDailyCopy.
QString setAside(const QString& folder, const QDate& day, SetAsideReason reason);

// The paths of all complete copies, the newest first.
QStringList copiesIn(const QString& folder);

// The path of the newest complete copy, of a day or set aside; empty if there is none.
QString newestCopy(const QString& folder);
