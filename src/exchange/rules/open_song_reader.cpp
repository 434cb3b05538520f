// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// OpenSong: properties in XML, lyrics and chords as lines with a mark in front.
#include "exchange/rules/chord_names.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/xml_source.h"

#include <QMap>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

// A line of an OpenSong section; '\0' stands for no verse number.
struct NumberedLine {
    char number = 0;
    SongLine line;
};

struct OpenSongSection {
    QString label;
    QList<NumberedLine> lines;
};

QList<SongChord> openSongChords(const QString& line) {
    QList<SongChord> chords;
    for (qsizetype i = 0; i < line.size();) {
        qsizetype end = i;
        while (end < line.size() && !line[end].isSpace()) ++end;
        if (end > i) {
            const QString token = line.sliced(i, end - i);
            static const QRegularExpression bars(u"^[|:.\\-/_%]+$"_s);
            if (!bars.match(token).hasMatch()) chords += {int(i), token, !isBracketChord(token)};
        }
        i = end + 1;
    }
    return chords;
}

// Takes out the underscores that make room for chords, and the marks of line and slide breaks.
SongLine openSongLyrics(const QString& text, QList<SongChord> chords) {
    SongLine line;
    line.text.reserve(text.size());
    qsizetype next = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        for (; next < chords.size() && chords[next].column <= i; ++next)
            chords[next].column = int(line.text.size());
        const bool breaks = text[i] == u'|';
        if (breaks && i + 1 < text.size() && !text[i + 1].isSpace() && text[i + 1] != u'|' &&
            !line.text.isEmpty() && !line.text.back().isSpace())
            line.text += u' ';
        if (text[i] != u'_' && !breaks) line.text += text[i];
    }
    const int dropped = int(text.size() - line.text.size());
    for (; next < chords.size(); ++next) chords[next].column -= dropped;
    line.chords = chords;
    return line;
}

class OpenSongLyrics {
public:
    explicit OpenSongLyrics(Song& song) : m_builder(song) {}

    void read(const QString& lyrics) {
        for (const QString& line : linesOfText(lyrics)) readLine(line);
        flushChords();
        emitSection();
        m_builder.finish();
    }

private:
    void readLine(const QString& raw) {
        const QString line = cleanLine(raw);
        const QChar mark = line.isEmpty() ? QChar(u' ') : line[0];
        if (line.isEmpty()) {
            flushChords();
            if (m_section.label.isEmpty()) emitSection();
        } else if (mark == u'[' && line.indexOf(u']') > 0) {
            flushChords();
            emitSection();
            m_section.label = line.sliced(1, line.indexOf(u']') - 1);
        } else if (mark == u'.') {
            flushChords();
            m_chords = openSongChords(line.mid(1));
            m_hasChords = true;
        } else if (mark == u';') {
            flushChords();
            comment(line.mid(1));
        } else if (mark == u'-' &&
                   (line.size() == 1 || line.startsWith("--"_L1) || line.startsWith("-!"_L1))) {
            flushChords();
        } else {
            lyrics(line, mark);
        }
    }

    void comment(const QString& text) {
        const QList<SongChord> chords = chordsOfRemark(text);
        if (!chords.isEmpty())
            m_section.lines += {0, {SongLine::Kind::Lyrics, {}, chords, {}}};
        else if (!text.trimmed().isEmpty())
            m_section.lines += {0, {SongLine::Kind::Comment, text.simplified(), {}, {}}};
    }

    void lyrics(const QString& line, QChar mark) {
        char number = 0;
        QString text = line;
        if (mark == u' ') {
            text = line.mid(1);
        } else if (mark >= u'1' && mark <= u'9' && line.size() > 1 && !line[1].isDigit() &&
                   line[1] != u'.' && line[1] != u',' && line[1] != u')') {
            number = char(mark.unicode());
            text = line.mid(1);
        }
        // The chords stand over the first line below them, and over the same line of each verse.
        if (m_hasChords && (number == 0 || m_lastNumber >= number)) {
            if (m_used) dropChords();
        }
        m_section.lines += {number, openSongLyrics(text, m_chords)};
        if (number == 0)
            dropChords();
        else
            m_used = m_hasChords;
        m_lastNumber = number;
    }

    void dropChords() {
        m_chords.clear();
        m_hasChords = m_used = false;
        m_lastNumber = 0;
    }

    // Chords without lyrics below them.
    void flushChords() {
        if (m_hasChords && !m_used && !m_chords.isEmpty())
            m_section.lines += {0, {SongLine::Kind::Lyrics, {}, m_chords, {}}};
        dropChords();
    }

    static QString shownLabel(const QString& label, const std::optional<VerseName>& called) {
        if (!called || verseName(label)) return bareLabel(label);
        if (label.trimmed().startsWith(u'T', Qt::CaseInsensitive))
            return QString(u"Tag "_s + called->name.mid(1)).trimmed();
        return labelOfName(called->name);
    }

    void emitSection() {
        const OpenSongSection section = std::exchange(m_section, {});
        if (section.lines.isEmpty() && section.label.isEmpty()) return;
        QMap<char, int> numbers;
        for (const NumberedLine& line : section.lines)
            if (line.number) ++numbers[line.number];
        if (numbers.isEmpty()) numbers.insert(0, 1);
        const auto called = verseName(section.label, true);
        for (auto number = numbers.cbegin(); number != numbers.cend(); ++number) {
            QString label = shownLabel(section.label, called);
            if (number.key()) {
                const QString digit(QLatin1Char(number.key()));
                const bool plain = !called || called->name.size() == 1;
                if (section.label.isEmpty())
                    label = u"Verse "_s + digit;
                else if (plain)
                    label += u' ' + digit;
                else if (numbers.size() > 1)
                    label += QChar(u'a' + (number.key() - '1'));
            }
            if (label.isEmpty())
                m_builder.endVerse();
            else
                m_builder.startVerse(label);
            for (const NumberedLine& line : section.lines) {
                if (line.number && line.number != number.key()) continue;
                if (line.line.kind == SongLine::Kind::Comment)
                    m_builder.addComment(line.line.text);
                else
                    m_builder.addLine(line.line.text, line.line.chords);
            }
        }
    }

    SongBuilder m_builder;
    OpenSongSection m_section;
    QList<SongChord> m_chords;
    bool m_hasChords = false;
    bool m_used = false;
    char m_lastNumber = 0;
};

void setOpenSongProperty(Song& song, const QString& name, const QString& text, QString& lyrics,
                         QString& order) {
    const QString value = cleanField(text);
    if (name == "lyrics"_L1) lyrics = text;
    if (value.isEmpty()) return;
    if (name == "title"_L1)
        song.titles.prepend(value);
    else if (name == "aka"_L1)
        song.titles += value;
    else if (name == "author"_L1)
        addAuthors(song, text);
    else if (name == "copyright"_L1)
        song.copyright = value;
    else if (name == "ccli"_L1)
        song.ccli = ccliDigits(value);
    else if (name == "key"_L1)
        song.key = value;
    else if (name == "capo"_L1)
        song.capo = value;
    else if (name == "tempo"_L1)
        song.tempo = value;
    else if (name == "time_sig"_L1 || name == "timesig"_L1)
        song.time = value;
    else if (name == "theme"_L1 || name == "alttheme"_L1)
        song.themes += splitList(text, u";,\n");
    else if (name == "hymn_number"_L1)
        song.songbooks += {QString(), value};
    else if (name == "presentation"_L1)
        order = value;
    else if (name == "user1"_L1 || name == "user2"_L1 || name == "user3"_L1)
        song.comments += value;
}

}  // namespace

void readOpenSong(const QString& text, ExchangeContent& content) {
    XmlSource xml(text);
    QString lyrics, order;
    Song song;
    bool inSong = false;
    int songDepth = 0;
    const auto finish = [&] {
        OpenSongLyrics(song).read(lyrics);
        static const QRegularExpression blanks(u"[\\s,]+"_s);
        const QStringList entries = order.split(blanks, Qt::SkipEmptyParts);
        if (!entries.isEmpty()) song.verseOrder.clear();
        setVerseOrder(song, entries);
        song.themes.removeDuplicates();
        content.songs += song;
        song = Song();
        lyrics.clear();
        order.clear();
    };
    while (xml.next()) {
        if (xml.isStart() && xml.name() == "song"_L1 && !inSong) {
            inSong = true;
            songDepth = xml.depth();
        } else if (xml.isStart() && inSong && xml.depth() == songDepth + 1) {
            const QString name = xml.name();
            setOpenSongProperty(song, name, xml.elementText(), lyrics, order);
        } else if (xml.isEnd() && inSong && xml.depth() == songDepth) {
            inSong = false;
            finish();
        }
    }
    content.reason = xml.problem();
    if (inSong && !(song == Song() && lyrics.isEmpty())) finish();
}
