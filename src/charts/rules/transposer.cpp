// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/transposer.h"

#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"

#include <QStringBuilder>

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

// How many characters of a chord, or of one side of a slash chord, are its note.
qsizetype noteLength(QStringView side) {
    // An accidental anywhere counts. Deliberate: behaviour 138.
    const bool accidental =
        std::any_of(side.begin(), side.end(), [](QChar c) { return c == u'#' || c == u'b'; });
    return std::min<qsizetype>(accidental ? 2 : 1, side.size());
}

}  // namespace

ChordSplit splitChord(const QString& text) {
    const qsizetype length = noteLength(text);
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
    m_positions.clear();
    for (const NoteName& name : NoteNames) {
        const auto entry = std::find_if(rootNotes.begin(), rootNotes.end(),
                                        [&](const QString& text) { return isNamed(text, name); });
        m_positions.push_back(entry == rootNotes.end() ? -1 : int(entry - rootNotes.begin()));
    }
}

void Transposer::setKeyNotes(const QString& noteValue) { keyNotes = entriesOf(noteValue); }

void Transposer::writeTransposedNote(SheetGrid& chart, QStringView note, int col, int row,
                                     QStringView suffix) {
    const auto known =
        std::find_if(NoteNames.begin(), NoteNames.end(), [note](const NoteName& name) {
            return std::equal(note.begin(), note.end(), name.name.begin(), name.name.end(),
                              [](QChar a, char b) { return a == QLatin1Char(b); });
        });
    if (known == NoteNames.end() || m_positions.empty()) return;
    const int position = m_positions[size_t(known - NoteNames.begin())];
    if (position < 0) return;
    if (position >= keyNotes.size()) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
    const QString& name = keyNotes.at(position);
    if (bassPass)
        chart.SetText(col, row, chart.GetText(col, row) % u'/' % name % suffix);
    else
        chart.SetText(col, row, name % suffix);
}

void Transposer::transposeCell(SheetGrid& chart, int col, int row) {
    bassPass = false;
    const QString text = chart.GetText(col, row);
    if (text.isEmpty()) return;
    const auto write = [&](QStringView side) {
        const qsizetype length = noteLength(side);
        writeTransposedNote(chart, side.first(length), col, row, side.sliced(length));
    };
    const qsizetype slash = text.indexOf(u'/');
    write(slash < 0 ? QStringView(text) : QStringView(text).first(slash));
    if (slash < 0) return;
    // Deliberate: behaviour 140.
    bassPass = true;
    write(QStringView(text).sliced(slash + 1));
}

void Transposer::transposeChart(SheetGrid& chart) {
    const int page = chart.Sheet();
    for (int s = 1; s <= chart.SheetCount(); ++s) {
        chart.ActiveSheet(s);
        chart.Sheet(s);
        const int rows = chart.MaxRows();
        const int cols = chart.MaxCols();
        for (int row = ChartRow::FirstChord; row <= rows; row += 2)
            for (int col = 1; col <= cols; ++col) transposeCell(chart, col, row);
    }
    chart.ActiveSheet(page);
    chart.Sheet(page);
}
