// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chart_import.h"

#include "charts/rules/chart_page.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"

#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 MaxBytes = 64 << 20;  // far more than fits into the list
constexpr qint64 MinBytes = 64 << 10;  // for files that do not report their size
constexpr size_t MaxMarkedRow = 100;
constexpr size_t MaxChords = 30;

// Decodes a line as UTF-8 if it is valid, as code page 1252 otherwise.
QString decoded(QByteArrayView line) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(line);
    return utf8.hasError() ? fromCodePage1252(line) : text;
}

// Reads a file; converts UTF-16 to UTF-8.
QByteArray readBytes(const QString& path) {
    QFile file(resolvedPath(path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    // read() allocates all that it asks for.
    QByteArray bytes = file.read(std::clamp(file.size(), MinBytes, MaxBytes));
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")) {
        QStringDecoder utf16(QStringDecoder::Utf16);
        const QString text = utf16(bytes);
        bytes = text.toUtf8();
    } else if (bytes.startsWith("\xef\xbb\xbf")) {
        bytes.remove(0, 3);
    }
    return bytes;
}

int colourOf(SheetGrid& list, int col, int row) {
    list.Col(col);
    list.Row(row);
    return list.BackColor();
}

// The kinds of lines that can be marked.
struct LineKind {
    QChar letter;
    int colour;
};

constexpr std::array<LineKind, 3> LineKinds = {
    {{u't', TitleMark}, {u'c', ChordMark}, {u'l', LyricMark}}};

using RowKinds = std::array<QChar, MaxMarkedRow + 1>;

RowKinds kindsOf(SheetGrid& list) {
    RowKinds rowKinds{};
    for (int i = 1; i <= list.DataRowCnt(); ++i) {
        const int colour = colourOf(list, ImportColumn::Line, i);
        for (const LineKind& kind : LineKinds) {
            if (colour != kind.colour) continue;
            // Deliberate: behaviour 134.
            if (size_t(i) > MaxMarkedRow) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
            rowKinds.at(size_t(i)) = kind.letter;
        }
    }
    return rowKinds;
}

// The chords of a line, without their positions. Deliberate: behaviour 135.
QStringList splitChords(QString line) {
    line.replace(QLatin1Char(' '), QLatin1Char(':')).replace(QLatin1Char('\t'), QLatin1Char(':'));
    return line.split(QLatin1Char(':'), Qt::SkipEmptyParts);
}

QStringList chordTokens(const QString& line) {
    QStringList tokens = splitChords(line);
    if (size_t(tokens.size()) > MaxChords) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
    return tokens;
}

}  // namespace

void listLines(SheetGrid& list, const QString& path) {
    list.ClearRange(-1, -1, -1, -1, true);  // the marks stay; deliberate: behaviour 133
    const QByteArray bytes = readBytes(path);
    int row = list.DataRowCnt();
    qsizetype start = 0;
    while (start < bytes.size() && row < list.MaxRows()) {
        qsizetype end = start;
        while (end < bytes.size() && bytes[end] != '\r' && bytes[end] != '\n') ++end;
        const QString line = decoded(QByteArrayView(bytes).sliced(start, end - start));
        if (!line.isEmpty()) list.SetText(ImportColumn::Line, ++row, line);
        start = end + 1;
    }
}

void markLine(SheetGrid& list, int col, int row, const QString& importMode) {
    const int colour = colourOf(list, col, row);
    if (importMode == QLatin1String("title"))
        list.BackColor(TitleMark);  // also at a second click; deliberate: behaviour 132
    else if (importMode == QLatin1String("chords"))
        list.BackColor(colour == ChordMark ? White : ChordMark);
    else if (importMode == QLatin1String("lyrics"))
        list.BackColor(colour == LyricMark ? White : LyricMark);
}

void clearMarks(SheetGrid& list) {
    const int rows = list.DataRowCnt();
    list.Col(ImportColumn::Line);
    for (int row = 1; row <= rows; ++row) {
        list.Row(row);
        list.BackColor(White);
    }
}

QStringList importNotes(SheetGrid& list) {
    QStringList notes;
    for (int i = 1; i <= list.DataRowCnt(); ++i) {
        const int colour = colourOf(list, ImportColumn::Line, i);
        const bool isMarked =
            std::any_of(LineKinds.begin(), LineKinds.end(),
                        [&](const LineKind& kind) { return kind.colour == colour; });
        if (isMarked && size_t(i) > MaxMarkedRow) {
            notes.append(QStringLiteral("Line %1 is marked, but only the first %2 lines can be "
                                        "imported. Remove its mark first.")
                             .arg(i)
                             .arg(MaxMarkedRow));
            break;
        }
        if (colour != ChordMark) continue;
        const auto chords = splitChords(list.GetText(ImportColumn::Line, i).trimmed()).size();
        if (size_t(chords) > MaxChords)
            notes.append(QStringLiteral("Line %1 has %2 chords, but only %3 can be imported. "
                                        "Remove its mark first.")
                             .arg(i)
                             .arg(chords)
                             .arg(MaxChords));
    }
    return notes;
}

void layMarkedLines(SheetGrid& list, SheetGrid& chart, const std::function<void()>& addPage) {
    const RowKinds rowKinds = kindsOf(list);
    int titleRow = ChartRow::Title;  // without a limit; deliberate: behaviour 137
    int chordRow = ChartRow::FirstChord;
    int lyricRow = ChartRow::FirstLyric;
    for (int i = 1; i <= int(MaxMarkedRow); ++i) {
        // Deliberate: behaviour 136.
        if (lyricRow > ChartRow::LastLyric) {
            addPage();
            chart.ActiveSheet(chart.SheetCount());
            lyricRow = ChartRow::FirstLyric;
            chordRow = ChartRow::FirstChord;
        }
        const QChar kind = rowKinds.at(size_t(i));
        if (kind.isNull()) {
            if (i == list.DataRowCnt() + 1) break;
            continue;
        }
        const QString text = list.GetText(ImportColumn::Line, i).trimmed();
        if (kind == u't') {
            chart.SetText(ChartColumn::Text, titleRow++, text);
        } else if (kind == u'l') {
            chart.SetText(ChartColumn::Text, lyricRow, text);
            lyricRow += 2;
        } else {
            const QStringList chords = chordTokens(text);
            int col = ChartColumn::FirstChord;
            for (const QString& chord : chords) chart.SetText(col++, chordRow, chord);
            chordRow += 2;
        }
    }
}
