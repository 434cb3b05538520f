// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The files of one copy, as they are written. For the copies alone.
#pragma once

#include "keeping/copies.h"

#include <QDateTime>
#include <QFileInfo>
#include <QString>

// Raises 70 with a sentence that names a path as %1.
[[noreturn]] void failCopy(const QString& sentence, const QString& path);

// Makes a folder that only its owner can read, with those above it; one that is there stays.
// Raises 70 if it cannot be made.
void makePrivateFolder(const QString& path);

// Waits until the entries of a folder are on the disk.
void syncFolder(const QString& path);

// Writes the files of the program's folder into a new folder.
class CopyWriter {
public:
    // `previous` is an earlier copy to link to, or empty.
    CopyWriter(const QString& folder, const QString& target, const QString& previous,
               const CopyStep& step);

    // Writes everything. False if the work was ended. Raises like makeDailyCopy.
    bool write();

    // Asks for the next step.
    bool goesOn(const QString& what) const { return !m_step || m_step(what); }

private:
    bool writeDatabase();
    bool writeFolder(const QString& relative, QStringList above);
    bool writeFile(const QString& relative);
    bool linkTo(const QString& relative) const;
    bool isAsBefore(const QString& relative, const QFileInfo& source) const;

    QString m_folder;
    QString m_target;
    QString m_previous;
    const CopyStep& m_step;
};
