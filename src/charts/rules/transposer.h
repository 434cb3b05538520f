// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Transposes the chords of a chart. The names of the notes come from the table transpose: rows of
// twelve entries, looked up by position. Nothing here knows any music.
#pragma once

#include <QStringList>

#include <array>
#include <vector>

class SheetGrid;

// A chord's note and what follows it.
struct ChordSplit {
    QString note;
    QString suffix;
    bool operator==(const ChordSplit&) const = default;
};

// Splits a chord, or one side of a slash chord: after its second character if it contains "#" or
// "b" anywhere, after its first one otherwise.
ChordSplit splitChord(const QString& text);

// The row of the table transpose for a distance in semi-tones: "p1" to "p12" up, "n1" to "n12"
// down, "rootnote" for 0.
QString transposeRow(int semiTones);

class Transposer {
public:
    static constexpr size_t Notes = 12;

    std::array<QString, Notes> rootNotes;  // the names of each position, such as "C" or "C#/Db"
    QStringList keyNotes;                  // the new name for each position
    bool bassPass = false;                 // the note after a slash is being written

    // Read the row "rootnote" and the row of a distance from the table transpose. Raise
    // RunTimeError::NoCurrentRecord if the row is missing, and what the setters raise.
    void loadRootNotes();
    void loadKeyNotes(int semiTones);

    // Set the names from the entries of a row, separated by commas. setRootNotes raises
    // RunTimeError::SubscriptOutOfRange for more than twelve.
    void setRootNotes(const QString& noteValue);
    void setKeyNotes(const QString& noteValue);

    // Transposes the cells of all chord rows on all pages, as they are. The page shown stays.
    // Raises RunTimeError::SubscriptOutOfRange if the key has no entry for a note.
    void transposeChart(SheetGrid& chart);

    // Writes a note's new name and the suffix to a cell, after its text and a slash if bassPass is
    // set. The cell stays as it is if the note is unknown or has no position.
    void writeTransposedNote(SheetGrid& chart, QStringView note, int col, int row,
                             QStringView suffix);

private:
    void transposeCell(SheetGrid& chart, int col, int row);

    std::vector<int> m_positions;  // in rootNotes, of each known note; -1 for none
};
