// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checks.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/writer.h"

#include <QSet>

namespace {

bool isCleanText(const QString& text) {
    for (const QChar c : text)
        if (c.unicode() < 0x20 || c.unicode() >= 0xFFFE) return false;
    return true;
}

QString lineFault(const SongLine& line) {
    if (!isCleanText(line.text) || (!line.text.isEmpty() && line.text.back().isSpace()))
        return QStringLiteral("a line is not clean: ") + line.text;
    if (line.text.isEmpty() && line.chords.isEmpty()) return QStringLiteral("an empty line");
    int last = 0;
    for (const SongChord& chord : line.chords) {
        if (chord.column < last) return QStringLiteral("chords are out of order");
        if (chord.name.isEmpty() || !isCleanText(chord.name))
            return QStringLiteral("a chord's name is not clean");
        last = chord.column;
    }
    return {};
}

QString songFault(const Song& song) {
    QSet<QString> names;
    for (const SongVerse& verse : song.verses) {
        const QString name = verse.name + u'\n' + verse.language;
        if (verse.name.isEmpty() || names.contains(name))
            return QStringLiteral("two verses are called ") + name;
        names += name;
        for (const SongLine& line : verse.lines)
            if (const QString fault = lineFault(line); !fault.isEmpty()) return fault;
    }
    for (const QString& entry : song.verseOrder) {
        bool found = false;
        for (const SongVerse& verse : song.verses) found = found || verse.name == entry;
        if (!found) return QStringLiteral("the order names a verse that is not there: ") + entry;
    }
    for (const QString& text : song.titles + QStringList{song.key, song.ccli, song.copyright})
        if (!isCleanText(text)) return QStringLiteral("a property is not clean");
    return {};
}

QString contentFault(const ExchangeContent& content) {
    for (const Song& song : content.songs)
        if (const QString fault = songFault(song); !fault.isEmpty()) return fault;
    for (const PlayedDate& one : content.played)
        if (!one.date.isValid() || (one.title.isEmpty() && one.ccli.isEmpty()))
            return QStringLiteral("a played date of nothing");
    for (const Contact& person : content.people)
        if (person.firstName.isEmpty() && person.lastName.isEmpty())
            return QStringLiteral("a person without a name");
    return {};
}

// The words of a song and the columns of its chords, a line each.
QStringList wordsOf(const QList<Song>& songs) {
    QStringList words;
    for (const Song& song : songs)
        for (const SongVerse& verse : song.verses)
            for (const SongLine& line : verse.lines) {
                if (line.kind == SongLine::Kind::Comment) continue;
                QString text = line.text;
                for (const SongChord& chord : line.chords)
                    if (!chord.annotation) text += u'|' + QString::number(chord.column);
                if (!text.isEmpty()) words += text;
            }
    return words;
}

// The first line that differs.
QString difference(const QStringList& one, const QStringList& other) {
    for (qsizetype i = 0; i < std::max(one.size(), other.size()); ++i)
        if (one.value(i) != other.value(i) || i >= one.size() || i >= other.size())
            return QStringLiteral("line %1 was\n%2\nand is\n%3")
                .arg(QString::number(i + 1), one.value(i), other.value(i));
    return {};
}

QString writtenFault(const Song& song) {
    if (song.verses.isEmpty()) return {};
    const QStringList words = wordsOf({song});
    ExchangeContent chordPro, openLyrics;
    readChordPro(decodedText(writeChordPro({song})), chordPro);
    if (wordsOf(chordPro.songs) != words)
        return QStringLiteral("in ChordPro, ") + difference(words, wordsOf(chordPro.songs));
    readOpenLyrics(decodedText(writeOpenLyrics(song)), openLyrics);
    if (!openLyrics.reason.isEmpty()) return openLyrics.reason;
    if (wordsOf(openLyrics.songs) != words)
        return QStringLiteral("in OpenLyrics, ") + difference(words, wordsOf(openLyrics.songs));
    return {};
}

QString checkContent(const ExchangeContent& content) {
    if (const QString fault = contentFault(content); !fault.isEmpty()) return fault;
    for (const Song& song : content.songs) {
        if (const QString fault = writtenFault(song); !fault.isEmpty()) return fault;
        writeSongText(song);
    }
    writeSongsCsv(content.songs);
    writePeopleCsv(content.people);
    writePlayedCsv(content.played);
    return {};
}

using TextReader = void (*)(const QString&, ExchangeContent&);

QString checkReaders(const QByteArray& bytes, std::initializer_list<TextReader> readers) {
    const QString text = decodedText(bytes);
    for (const TextReader reader : readers) {
        ExchangeContent content;
        reader(text, content);
        if (const QString fault = checkContent(content); !fault.isEmpty()) return fault;
    }
    return checkContent(readExchangeFile(bytes, QStringLiteral("a song.txt")));
}

}  // namespace

QString checkSongXml(const QByteArray& bytes) {
    return checkReaders(bytes, {readOpenSong, readOpenLyrics});
}

QString checkSongText(const QByteArray& bytes) {
    return checkReaders(bytes, {readChordPro, readSongText, readSongSelectUsr});
}

QString checkExchangeTables(const QByteArray& bytes) {
    ExchangeContent cards;
    readVCards(bytes, cards);
    if (const QString fault = checkContent(cards); !fault.isEmpty()) return fault;
    return checkReaders(bytes, {readCsv});
}

QString checkSongDatabase(const QByteArray& bytes) {
    ExchangeContent content;
    readSongDatabase(bytes, content);
    return checkContent(content);
}
