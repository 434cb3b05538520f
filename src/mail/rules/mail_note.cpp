// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/mail_note.h"

#include "core/data/texts.h"

namespace {

const QString NoteStart = QStringLiteral("<TABLE Width='400' name = note>");
const QString TableEnd = QStringLiteral("</TABLE>");
const QString PageStart = QStringLiteral("<HTML>");

bool containsTag(const QString& line, const QString& tag) {
    return line.contains(tag, Qt::CaseInsensitive);
}

}  // namespace

QString noteWithBreaks(const QString& note) {
    return withUnixLineEnds(note).replace(QLatin1Char('\n'), QLatin1String("<BR>"));
}

QStringList linesWithNote(const QStringList& lines, const QString& note) {
    QStringList noted;
    for (const QString& line : lines) {
        if (!containsTag(line, PageStart)) {
            noted += line;
            continue;
        }
        // Deliberate: behaviour 164.
        const qsizetype start = PageStart.size();
        noted += line.left(start) + NoteStart + QStringLiteral("<TR><TD>") + note +
                 QStringLiteral("</TD></TR>") + TableEnd + line.mid(start);
    }
    return noted;
}

QStringList linesWithoutNote(const QStringList& lines) {
    QStringList kept;
    // Deliberate: behaviour 165.
    for (const QString& line : lines)
        if (!containsTag(line, NoteStart) && !containsTag(line, TableEnd)) kept += line;
    return kept;
}
