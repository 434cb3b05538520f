// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Plain text with chords, and tables.
#include "exchange/rules/csv_table.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/writer.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString bracketed(const QString& text) { return u'[' + text + u"]\n"_s; }

QString textOfLine(const SongLine& line) {
    if (line.kind == SongLine::Kind::Comment) return bracketed(line.text);
    QString chords, remarks;
    for (const SongChord& chord : line.chords) {
        if (chord.annotation) {
            remarks += bracketed(chord.name);
            continue;
        }
        if (!chords.isEmpty()) chords += u' ';
        if (chords.size() < chord.column) chords += QString(chord.column - chords.size(), u' ');
        chords += chord.name;
    }
    QString text = remarks;
    if (!chords.isEmpty()) text += chords + u'\n';
    if (!line.text.isEmpty()) text += line.text + u'\n';
    return text;
}

QString listOf(const QStringList& entries) {
    // Without a ";" a reader would part an entry at its commas.
    const bool alone =
        entries.size() == 1 && (entries[0].contains(u',') || entries[0].contains(u'|'));
    return entries.join(u"; "_s) + (alone ? u";"_s : QString());
}

}  // namespace

QByteArray writeSongText(const Song& song) {
    QString text = song.title() + u'\n';
    if (!song.authors.isEmpty()) text += authorNames(song) + u'\n';
    QStringList music;
    if (!song.key.isEmpty()) music += u"Key: "_s + song.key;
    if (!song.tempo.isEmpty()) music += u"Tempo: "_s + song.tempo;
    if (!song.time.isEmpty()) music += u"Time: "_s + song.time;
    if (!song.capo.isEmpty()) music += u"Capo: "_s + song.capo;
    if (!music.isEmpty()) text += u'\n' + music.join(u" | "_s) + u'\n';
    for (const SongVerse& verse : song.verses) {
        text += u'\n';
        QString label = verse.label;
        if (label.isEmpty() && verse.kind != VerseKind::Verse) label = labelOfName(verse.name);
        // A label that does not look like one is put in brackets.
        if (!label.isEmpty()) text += verseName(label) ? label + u'\n' : bracketed(label);
        QString part;
        for (const SongLine& line : verse.lines) {
            if (line.part != part && !line.part.isEmpty()) text += bracketed(line.part);
            part = line.part;
            text += textOfLine(line);
        }
    }
    if (!song.ccli.isEmpty() || !song.copyright.isEmpty()) text += u'\n';
    if (!song.ccli.isEmpty()) text += u"CCLI Song # "_s + song.ccli + u'\n';
    if (!song.copyright.isEmpty()) text += song.copyright + u'\n';
    return text.toUtf8();
}

QByteArray writeSongsCsv(const QList<Song>& songs) {
    QList<QStringList> rows = {{u"Title"_s, u"Artist"_s, u"Key"_s, u"CCLI"_s, u"Categories"_s,
                                u"Copyright"_s, u"Tempo"_s, u"Time"_s, u"Alternate Title"_s}};
    for (const Song& song : songs) {
        QStringList authors;
        for (const SongAuthor& author : song.authors)
            if (!authors.contains(author.name)) authors += author.name;
        rows += QStringList{song.title(),
                            authors.join(u"; "_s),
                            song.key,
                            song.ccli,
                            listOf(song.themes),
                            song.copyright,
                            song.tempo,
                            song.time,
                            song.titles.mid(1).join(u"; "_s)};
    }
    return csvBytes(rows);
}

QByteArray writePeopleCsv(const QList<Contact>& people) {
    QList<QStringList> rows = {{u"First Name"_s, u"Last Name"_s, u"Role 1"_s, u"Role 2"_s,
                                u"Role 3"_s, u"Address"_s, u"City"_s, u"State"_s, u"Zip"_s,
                                u"Phone"_s, u"Cell"_s, u"Email"_s}};
    for (const Contact& person : people)
        rows += QStringList{person.firstName,
                            person.lastName,
                            person.roles.value(0),
                            person.roles.value(1),
                            person.roles.mid(2).join(u"; "_s),
                            person.address,
                            person.city,
                            person.state,
                            person.zip,
                            person.phone,
                            person.cell,
                            person.email};
    return csvBytes(rows);
}

QByteArray writePlayedCsv(const QList<PlayedDate>& played) {
    QList<QStringList> rows = {{u"Title"_s, u"CCLI"_s, u"Date"_s}};
    for (const PlayedDate& one : played)
        rows += QStringList{one.title, one.ccli, one.date.toString(Qt::ISODate)};
    return csvBytes(rows);
}
