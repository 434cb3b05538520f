// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lyrics as plain text, with chords in lines of their own over them, and what SongSelect offers as
// text: a title, labelled verses, and the credits at the end.
#include "exchange/rules/chord_names.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

const QRegularExpression& ccliSongLine() {
    static const QRegularExpression line(
        u"^\\W*CCLI[\\s-]*(?:Song|Lied|Liednummer|Nummer|Number|Song\\s*(?:No|Number)|No)?[\\s.:#-]"
        u"*"
        "(?:No\\.?|Nr\\.?|Number|nummer)?[\\s.:#-]*(\\d{2,9})\\b"_s,
        QRegularExpression::CaseInsensitiveOption);
    return line;
}

bool isSmallPrint(const QString& line) {
    static const QRegularExpression print(
        u"^\\W*(?:For use solely|Note:? Reproduction|CCLI[\\s-]*(?:Licen[cs]e|Lizenz)|"
        "www\\.ccli\\.com|https?://|All rights reserved|Alle Rechte|Used by permission|"
        "Nutzung ausschlie|Usage solely|Uso exclusivo|SongSelect)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return print.match(line).hasMatch();
}

// "Key: G", "Tempo - 72 BPM", "72 BPM", "Time: 4/4", "Capo 2".
bool takeMusicField(Song& song, const QString& field) {
    static const QRegularExpression bare(u"^\\s*(\\d{2,3})\\s*bpm\\s*$"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    if (const auto match = bare.match(field); match.hasMatch()) {
        song.tempo = match.captured(1);
        return true;
    }
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(
            u"\\s*(?<name>key|original key|tonart|tempo|bpm|time|time signature|takt|capo)\\s*"
            "(?:[:=\u2013-]|(?=\\[?[A-H\\d]))\\s*(?<value>[^|]{1,30}?)\\s*"_s),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(field);
    if (!match.hasMatch()) return false;
    const QString name = match.captured(u"name"_s).toLower();
    QString value = match.captured(u"value"_s);
    if (value.startsWith(u'[') && value.endsWith(u']')) value = value.mid(1).chopped(1).trimmed();
    if (value.isEmpty()) return true;
    if (name.contains("key"_L1) || name == "tonart"_L1) {
        if (!isBracketChord(value.section(u' ', 0, 0))) return false;
        if (song.key.isEmpty()) song.key = value;
    } else if (name == "capo"_L1) {
        if (value.compare("none"_L1, Qt::CaseInsensitive) == 0) return true;
        if (!value[0].isDigit()) return false;
        song.capo = value;
    } else if (name.startsWith("time"_L1) || name == "takt"_L1) {
        static const QRegularExpression signature(u"^\\d{1,2}\\s*/\\s*\\d{1,2}$"_s);
        if (!signature.match(value).hasMatch()) return false;
        song.time = value;
    } else {
        static const QRegularExpression beats(u"^(\\d{2,3})\\s*(?:bpm)?$"_s,
                                              QRegularExpression::CaseInsensitiveOption);
        const auto number = beats.match(value);
        if (!number.hasMatch() && name == "bpm"_L1) return false;
        song.tempo = number.hasMatch() ? number.captured(1) : value;
    }
    return true;
}

bool takeMusicFields(Song& song, const QString& line) {
    if (line.size() > 120) return false;
    Song tried = song;
    for (const QString& field : line.split(u'|'))
        if (!takeMusicField(tried, field)) return false;
    song = tried;
    return true;
}

bool isCopyright(const QString& line) {
    static const QRegularExpression copyright(
        u"^\\W{0,2}(?:\u00a9|\\(c\\)\\s*\\d|\\(p\\)\\s*\\d|Copyright\\b|Public Domain\\W*$|"
        "(?:Words|Music|Text|Musik)\\s*:\\s*Public Domain)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return line.size() < 400 && copyright.match(line).hasMatch();
}

void addCopyright(Song& song, const QString& line) {
    if (song.copyright.contains(line)) return;
    song.copyright += (song.copyright.isEmpty() ? QString() : u"; "_s) + line;
}

// A line of text with what makes it one thing or another.
struct TextLine {
    QString text;
    QList<SongChord> chords;
    bool label = false;

    bool isBlank() const { return text.isEmpty(); }
    bool isWords() const { return !text.isEmpty() && chords.isEmpty() && !label; }
};

class SongTextReader {
public:
    explicit SongTextReader(Song& song) : m_song(song), m_builder(song) {}

    void read(const QString& text) {
        for (const QString& line : linesOfText(text)) {
            TextLine read;
            read.text = cleanLine(line);
            if (!read.text.isEmpty()) {
                read.label = verseName(read.text).has_value();
                if (!read.label) read.chords = chordsOfLine(read.text);
            }
            m_lines += read;
        }
        const qsizetype bodyStart = readHead();
        const qsizetype bodyEnd = footStart(bodyStart);
        for (qsizetype i = bodyStart; i < bodyEnd; ++i) readBody(i, bodyEnd);
        flushChords();
        readFoot(bodyEnd);
        m_builder.finish();
    }

private:
    // Title and credits at the top. Gives the index of the first line of the song.
    qsizetype readHead() {
        qsizetype i = 0;
        while (i < m_lines.size() && m_lines[i].isBlank()) ++i;
        static const QRegularExpression named(u"^\\s*(?:Title|Titel)\\s*:\\s*(?=\\S)"_s,
                                              QRegularExpression::CaseInsensitiveOption);
        if (i < m_lines.size() && m_lines[i].isWords() &&
            !takeCreditLine(m_song, m_lines[i].text)) {
            QString title = m_lines[i].text.trimmed();
            title.remove(named);
            m_song.titles += title;
            ++i;
        }
        const qsizetype start = i;
        qsizetype end = start;
        while (end < m_lines.size() && m_lines[end].isWords()) ++end;
        // One or two lines below the title name the authors, unless they are sung.
        const bool sung = end < m_lines.size() && !m_lines[end].chords.isEmpty();
        const bool credits = !sung && end - start <= 2 && !m_song.titles.isEmpty();
        for (; i < end; ++i) {
            const QString text = m_lines[i].text.trimmed();
            if (takeCreditLine(m_song, text) || takeNamedAuthor(text)) continue;
            if (!credits || text.size() > 100) break;
            addAuthors(m_song, text);
        }
        // Credits may follow in a paragraph of their own.
        while (i < m_lines.size() &&
               (m_lines[i].isBlank() || (m_lines[i].isWords() && takeHeadCredit(m_lines[i].text))))
            ++i;
        return i;
    }

    bool takeHeadCredit(const QString& line) {
        return takeCreditLine(m_song, line) || takeNamedAuthor(line.trimmed());
    }

    bool takeNamedAuthor(const QString& line) {
        static const QRegularExpression author(
            u"^(?:by|artist|author|authors|words|music|words\\s?(?:and|&)\\s?music|text|musik|"
            "written|autor|interpret)(?:\\s+by)?\\s*(:|(?<=by))\\s*(?<who>\\S.*)$"_s,
            QRegularExpression::CaseInsensitiveOption);
        const auto match = author.match(line);
        if (!match.hasMatch() || line.size() > 160) return false;
        const bool credit = line.startsWith(u'w', Qt::CaseInsensitive) ||
                            line.startsWith(u'm', Qt::CaseInsensitive) ||
                            line.startsWith(u't', Qt::CaseInsensitive);
        addAuthors(m_song, credit ? line : match.captured(u"who"_s));
        return true;
    }

    // The credits at the end begin at the paragraph with the CCLI number.
    qsizetype footStart(qsizetype bodyStart) const {
        for (qsizetype i = m_lines.size(); i-- > bodyStart;) {
            if (!ccliSongLine().match(m_lines[i].text).hasMatch()) continue;
            qsizetype start = i;
            while (start > bodyStart && m_lines[start - 1].isWords() && i - start < 3) --start;
            const bool whole = start == bodyStart || !m_lines[start - 1].isWords();
            return whole && start > bodyStart ? start : i;
        }
        return m_lines.size();
    }

    void readFoot(qsizetype start) {
        for (qsizetype i = start; i < m_lines.size(); ++i) {
            const QString line = m_lines[i].text.trimmed();
            if (line.isEmpty() || takeCreditLine(m_song, line)) continue;
            if (m_song.authors.isEmpty())
                addAuthors(m_song, line);
            else if (!m_song.copyright.isEmpty())
                addCopyright(m_song, line);
            else
                m_song.comments += line.simplified();
        }
    }

    void readBody(qsizetype i, qsizetype end) {
        const TextLine& line = m_lines[i];
        if (line.isBlank()) {
            flushChords();
            m_builder.addBlank();
        } else if (line.label) {
            flushChords();
            m_builder.startVerse(line.text);
        } else if (!line.chords.isEmpty()) {
            flushChords();
            // A single letter over nothing is a word.
            const bool over = i + 1 < end && m_lines[i + 1].isWords();
            if (line.chords.size() == 1 && !over && line.text.trimmed() == "A"_L1)
                m_builder.addLine(line.text);
            else
                m_chords = line.chords;
        } else if (m_chords.isEmpty() && takeCreditLine(m_song, line.text)) {
            return;
        } else {
            readWords(line.text, i == 0 || m_lines[i - 1].isBlank() || !m_chords.isEmpty());
        }
    }

    // "Intro: G  C  D": a label and the chords of a line.
    bool readLabelledChords(const QString& line) {
        const qsizetype colon = line.indexOf(u':');
        if (colon <= 0 || colon > 30 || !verseName(line.left(colon))) return false;
        const QString rest = line.mid(colon + 1);
        const QList<SongChord> chords = chordsOfRemark(rest);
        if (chordsOfLine(rest).isEmpty() || chords.isEmpty()) return false;
        m_builder.startVerse(line.left(colon));
        m_builder.addLine({}, chords);
        return true;
    }

    // "(x2)" below a line of chords.
    static bool isRepeat(const QString& line) {
        static const QRegularExpression repeat(
            u"^\\s*[(\\[]?\\s*(?:x\\s*\\d|\\d\\s*x)\\s*[)\\]]?\\s*$"_s,
            QRegularExpression::CaseInsensitiveOption);
        return repeat.match(line).hasMatch();
    }

    void readWords(const QString& line, bool first) {
        if (isRepeat(line)) {
            flushChords();
            return m_builder.addComment(line.trimmed());
        }
        if (m_chords.isEmpty() && readLabelledChords(line)) return;
        QString text = line;
        QList<SongChord> chords = std::exchange(m_chords, {});
        // "2. Through many dangers" starts the second verse.
        static const QRegularExpression numbered(u"^\\s*(\\d{1,2})[.)]\\s+(?=\\S)"_s);
        const auto match = numbered.match(text);
        if (first && match.hasMatch() && !m_builder.hasLines()) {
            m_builder.label(u"Verse "_s + match.captured(1));
            text.remove(0, match.capturedEnd(0));
            for (SongChord& chord : chords)
                chord.column = std::max(0, chord.column - int(match.capturedEnd(0)));
        }
        if (chords.isEmpty() && text.contains(u'[')) {
            const QString inside = bareLabel(text);
            if (isInBrackets(text) && !isBracketChord(inside)) return m_builder.addComment(inside);
            const SongLine read = bracketLine(text, false);
            m_builder.addLine(read.text, read.chords);
        } else {
            m_builder.addLine(text, chords);
        }
    }

    static bool isInBrackets(const QString& line) {
        const QString text = line.trimmed();
        return text.startsWith(u'[') && text.indexOf(u']') == text.size() - 1;
    }

    void flushChords() {
        if (!m_chords.isEmpty()) m_builder.addLine({}, std::exchange(m_chords, {}));
    }

    Song& m_song;
    SongBuilder m_builder;
    QList<TextLine> m_lines;
    QList<SongChord> m_chords;
};

}  // namespace

bool takeCreditLine(Song& song, const QString& source) {
    const QString line = source.simplified();
    const auto ccli = ccliSongLine().match(line);
    if (ccli.hasMatch()) {
        if (song.ccli.isEmpty()) song.ccli = ccliDigits(ccli.captured(1));
        return true;
    }
    if (isCopyright(line)) {
        addCopyright(song, line);
        return true;
    }
    return isSmallPrint(line) || takeMusicFields(song, line);
}

void readSongText(const QString& text, ExchangeContent& content) {
    Song song;
    SongTextReader(song).read(text);
    if (!song.titles.isEmpty() || !song.verses.isEmpty()) content.songs += song;
}

ExchangeForm textFormOf(const QString& text) {
    int marks = 0;
    const QStringList lines = linesOfText(text);
    bool ccli = false;
    for (const QString& raw : lines) {
        const QString line = cleanLine(raw);
        if (line.isEmpty() || line.size() > 300) continue;
        ccli = ccli || (ccliSongLine().match(line).hasMatch() &&
                        line.contains("song"_L1, Qt::CaseInsensitive));
        marks += verseName(line).has_value() || !chordsOfLine(line).isEmpty();
    }
    if (ccli) return ExchangeForm::SongSelectText;
    return marks > 1 ? ExchangeForm::PlainText : ExchangeForm::Unknown;
}

void readSongSelectUsr(const QString& text, ExchangeContent& content) {
    Song song;
    QStringList fields, words;
    bool inSong = false;
    const auto finish = [&] {
        SongBuilder builder(song);
        for (qsizetype i = 0; i < std::max(fields.size(), words.size()); ++i) {
            const QStringList lines = words.value(i).split("/n"_L1);
            if (fields.value(i).trimmed().isEmpty())
                builder.endVerse();
            else
                builder.startVerse(fields[i]);
            builder.holdOpen(true);
            for (const QString& line : lines) builder.addLine(cleanLine(line));
        }
        builder.finish();
        if (!song.titles.isEmpty() || !song.verses.isEmpty()) content.songs += song;
        song = Song();
        fields.clear();
        words.clear();
    };
    static const QRegularExpression section(u"^\\[S\\s*[A-Z]?(\\d+)\\]"_s);
    for (const QString& line : linesOfText(text)) {
        const auto match = section.match(line.trimmed());
        if (match.hasMatch()) {
            if (inSong) finish();
            inSong = true;
            song.ccli = ccliDigits(match.captured(1));
            continue;
        }
        const qsizetype sign = line.indexOf(u'=');
        if (sign < 0) continue;
        const QString key = line.left(sign).trimmed().toLower(), value = line.mid(sign + 1);
        const QString clean = cleanField(QString(value).replace(" | "_L1, "; "_L1));
        if (clean.isEmpty()) continue;
        if (key == "title"_L1)
            song.titles += cleanField(value);
        else if (key == "author"_L1)
            addAuthors(song, value, SongAuthor::Work::Any, true);
        else if (key == "copyright"_L1)
            song.copyright = clean;
        else if (key == "themes"_L1)
            song.themes = splitList(QString(value).replace("/t"_L1, "\t"_L1), u"\t");
        else if (key == "keys"_L1)
            song.key = cleanField(value.section("/t"_L1, 0, 0));
        else if (key == "fields"_L1)
            fields = value.split("/t"_L1);
        else if (key == "words"_L1)
            words = value.split("/t"_L1);
        inSong = true;
    }
    finish();
}
