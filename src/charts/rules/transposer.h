// Takes the chords of a chart apart and puts them together again in another key. The names come
// from rows of twelve entries, looked up by position; nothing here knows any music.
#pragma once

#include <QStringList>

#include <array>

class SheetGrid;

// A chord's note and what stands behind it.
struct ChordSplit {
    QString note;
    QString suffix;
    bool operator==(const ChordSplit&) const = default;
};

// Splits a chord, or one side of a slash chord: behind its second character where it holds "#" or
// "b" anywhere, behind its first otherwise.
ChordSplit splitChord(const QString& text);

class Transposer {
public:
    static constexpr size_t Notes = 12;

    std::array<QString, Notes> rootNotes;  // the positions' names, such as "C" or "C#/Db"
    QStringList keyNotes;                  // what replaces a note of each position
    bool bassPass = false;                 // the note behind a slash is being written

    // Takes the entries of a row apart: the positions' names and the names of the pass. The first
    // raises 9 for more than twelve.
    void setRootNotes(const QString& noteValue);
    void setKeyNotes(const QString& noteValue);

    // One pass over all pages: each chord row's cells as they stand. Leaves the page on view.
    // Raises 9 where the key has no entry for a note.
    void transposeChart(SheetGrid& chart);

    // Writes a note's new name and the suffix into a cell, behind a slash where bassPass is set.
    // A note that is no name or has no position leaves the cell as it is.
    void writeTransposedNote(SheetGrid& chart, const QString& note, int col, int row,
                             const QString& suffix);

private:
    int positionOf(const QString& note) const;
    void transposeCell(SheetGrid& chart, int col, int row);
};
