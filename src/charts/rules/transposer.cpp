// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/transposer.h"

#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"

#include <algorithm>

namespace {

// A note's name, and the signs that the entry of its position must and must not contain.
struct NoteName {
    QLatin1String name;
    QLatin1String holds;
    QLatin1String lacks;
};

constexpr std::array<NoteName, 17> NoteNames = {{
    {QLatin1String("C"), QLatin1String("C"), QLatin1String("#")},
    {QLatin1String("C#"), QLatin1String("C#"), QLatin1String("")},
    {QLatin1String("D"), QLatin1String("D"), QLatin1String("#b")},
    {QLatin1String("D#"), QLatin1String("D#"), QLatin1String("")},
    {QLatin1String("Db"), QLatin1String("Db"), QLatin1String("")},
    {QLatin1String("E"), QLatin1String("E"), QLatin1String("b")},
    {QLatin1String("Eb"), QLatin1String("Eb"), QLatin1String("")},
    {QLatin1String("F"), QLatin1String("F"), QLatin1String("#")},
    {QLatin1String("F#"), QLatin1String("F#"), QLatin1String("")},
    {QLatin1String("G"), QLatin1String("G"), QLatin1String("#b")},
    {QLatin1String("Gb"), QLatin1String("Gb"), QLatin1String("")},
    {QLatin1String("G#"), QLatin1String("G#"), QLatin1String("")},
    {QLatin1String("Ab"), QLatin1String("Ab"), QLatin1String("")},
    {QLatin1String("A"), QLatin1String("A"), QLatin1String("#b")},
    {QLatin1String("A#"), QLatin1String("A#"), QLatin1String("")},
    {QLatin1String("Bb"), QLatin1String("Bb"), QLatin1String("")},
    {QLatin1String("B"), QLatin1String("B"), QLatin1String("b")},
}};

QStringList entriesOf(const QString& noteValue) {
    return noteValue.isEmpty() ? QStringList() : noteValue.split(QLatin1Char(','));
}

// The first entry that matches wins, even one for another note. Deliberate: behaviour 139.
bool isNamed(const QString& entry, const NoteName& name) {
    const auto inEntry = [&entry](QLatin1Char sign) { return entry.contains(sign); };
    return std::all_of(name.holds.begin(), name.holds.end(),
                       [&](char c) { return inEntry(QLatin1Char(c)); }) &&
           std::none_of(name.lacks.begin(), name.lacks.end(),
                        [&](char c) { return inEntry(QLatin1Char(c)); });
}

QString noteValueOf(const QString& colName) {
    Recordset rs = select(QStringLiteral("SELECT noteValue FROM transpose WHERE colName = '") +
                          colName + QStringLiteral("'"));
    QString value = rs.Fields("noteValue");
    rs.Close();
    return value;
}

}  // namespace

ChordSplit splitChord(const QString& text) {
    // An accidental anywhere counts. Deliberate: behaviour 138.
    const bool accidental = text.contains(QLatin1Char('#')) || text.contains(QLatin1Char('b'));
    const qsizetype length = accidental ? 2 : 1;
    return {text.left(length), text.mid(length)};
}

QString transposeRow(int semiTones) {
    // Deliberate: behaviour 142.
    if (semiTones == 0) return QStringLiteral("rootnote");
    return (semiTones < 0 ? QStringLiteral("n") : QStringLiteral("p")) +
           QString::number(qAbs(semiTones));
}

void Transposer::loadRootNotes() { setRootNotes(noteValueOf(transposeRow(0))); }

void Transposer::loadKeyNotes(int semiTones) { setKeyNotes(noteValueOf(transposeRow(semiTones))); }

void Transposer::setRootNotes(const QString& noteValue) {
    const QStringList entries = entriesOf(noteValue);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (size_t(i) >= Notes) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
        QString entry = entries[i];
        rootNotes.at(size_t(i)) = entry.replace(QLatin1Char(':'), QLatin1Char('/'));
    }
}

void Transposer::setKeyNotes(const QString& noteValue) { keyNotes = entriesOf(noteValue); }

int Transposer::positionOf(const QString& note) const {
    const auto name = std::find_if(NoteNames.begin(), NoteNames.end(),
                                   [&](const NoteName& known) { return note == known.name; });
    if (name == NoteNames.end()) return -1;
    const auto entry = std::find_if(rootNotes.begin(), rootNotes.end(),
                                    [&](const QString& text) { return isNamed(text, *name); });
    return entry == rootNotes.end() ? -1 : int(entry - rootNotes.begin());
}

void Transposer::writeTransposedNote(SheetGrid& chart, const QString& note, int col, int row,
                                     const QString& suffix) {
    const int position = positionOf(note);
    if (position < 0) return;
    if (position >= keyNotes.size()) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
    const QString name = keyNotes[position] + suffix;
    chart.SetText(col, row, bassPass ? chart.GetText(col, row) + QLatin1Char('/') + name : name);
}

void Transposer::transposeCell(SheetGrid& chart, int col, int row) {
    bassPass = false;
    const QString text = chart.GetText(col, row);
    if (text.isEmpty()) return;
    const qsizetype slash = text.indexOf(QLatin1Char('/'));
    const ChordSplit chord = splitChord(slash < 0 ? text : text.left(slash));
    writeTransposedNote(chart, chord.note, col, row, chord.suffix);
    if (slash < 0) return;
    // Deliberate: behaviour 140.
    bassPass = true;
    const ChordSplit bass = splitChord(text.mid(slash + 1));
    writeTransposedNote(chart, bass.note, col, row, bass.suffix);
}

void Transposer::transposeChart(SheetGrid& chart) {
    const int page = chart.Sheet();
    for (int s = 1; s <= chart.SheetCount(); ++s) {
        chart.ActiveSheet(s);
        chart.Sheet(s);
        for (int row = ChartRow::FirstChord; row <= chart.MaxRows(); row += 2)
            for (int col = 1; col <= chart.MaxCols(); ++col) transposeCell(chart, col, row);
    }
    chart.ActiveSheet(page);
    chart.Sheet(page);
}
