// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// OpenLyrics 0.8 and 0.9, older ones with <line>, and what song databases hold of it.
#include "exchange/rules/chord_names.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/xml_source.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

// The lines of one <lines> element, or of a text with the same marks.
class MixedLines {
public:
    MixedLines(QList<SongLine>& lines, const QString& part) : m_lines(lines), m_part(part) {}

    // Text of a document: a line end in it is only a blank.
    void addText(const QString& text) {
        QString run;
        for (qsizetype i = 0; i < text.size();) {
            if (!text[i].isSpace() || text[i] == QChar(0xA0)) {
                run += text[i++];
                continue;
            }
            qsizetype end = i;
            bool wraps = false;
            for (; end < text.size() && text[end].isSpace() && text[end] != QChar(0xA0); ++end)
                wraps = wraps || text[end] == u'\n' || text[end] == u'\r';
            if (!wraps)
                run += text.sliced(i, end - i);
            else if (!(m_text + run).trimmed().isEmpty())
                run += u' ';
            i = end;
        }
        m_text += run;
    }

    void addChord(const QString& name, bool annotation) {
        if (!name.isEmpty()) m_chords += {int(m_text.size()), name, annotation};
    }

    void addComment(const QString& text) {
        const QString comment = cleanField(text);
        if (!comment.isEmpty()) m_chords += {int(m_text.size()), comment, true};
    }

    void endLine() {
        // A tab would move the chords behind it.
        const QString text = cleanLine(m_text.replace(u'\t', u' '));
        bool hasChords = false;
        for (const SongChord& chord : m_chords)
            hasChords = hasChords || !chord.annotation || isBracketChord(chord.name);
        QList<SongChord> chords;
        for (const SongChord& chord : m_chords) {
            // A comment among words or chords is one to the players at its place.
            const bool among = text.isEmpty() ? hasChords : chord.column > 0;
            if (!chord.annotation || isBracketChord(chord.name) || among)
                chords += {chord.column, chord.name, false};
            else
                addCommentLine(chord.name);
        }
        Song scratch;
        SongBuilder builder(scratch);
        builder.addLine(text, chords, m_part);
        for (const SongVerse& verse : scratch.verses) m_lines += verse.lines;
        m_text.clear();
        m_chords.clear();
    }

private:
    // A comment before the words or without any.
    void addCommentLine(const QString& comment) {
        const QList<SongChord> chords = chordsOfRemark(comment);
        if (!chords.isEmpty())
            m_lines += {SongLine::Kind::Lyrics, {}, chords, m_part};
        else
            m_lines += {SongLine::Kind::Comment, comment, {}, m_part};
    }

    QList<SongLine>& m_lines;
    QString m_part;
    QString m_text;
    // In their order, comments among them as annotations.
    QList<SongChord> m_chords;
};

class OpenLyricsReader {
public:
    OpenLyricsReader(XmlSource& xml, Song& song) : m_xml(xml), m_song(song) {}

    // Reads up to the end of the song whose element has just started.
    void read() {
        const int outer = m_xml.depth();
        m_german =
            m_xml.attribute("chordNotation"_L1).compare("german"_L1, Qt::CaseInsensitive) == 0;
        while (m_xml.next() && !(m_xml.isEnd() && m_xml.depth() == outer)) {
            if (!m_xml.isStart()) continue;
            const QString name = m_xml.name();
            if (name == "properties"_L1)
                readProperties();
            else if (name == "verse"_L1 || name == "instrument"_L1)
                readVerse();
        }
        // The form asks for a verse where a song has none.
        if (m_song.verses.size() == 1 && m_song.verses[0].lines.isEmpty()) m_song.verses.clear();
        nameVerses(m_song);
        setVerseOrder(m_song, m_order);
    }

private:
    void readProperties() {
        const int outer = m_xml.depth();
        while (m_xml.next() && !(m_xml.isEnd() && m_xml.depth() == outer))
            if (m_xml.isStart()) readProperty(m_xml.name());
    }

    void readProperty(const QString& name) {
        // Lists hold the elements that count.
        if (name == "titles"_L1 || name == "authors"_L1 || name == "songbooks"_L1 ||
            name == "themes"_L1 || name == "comments"_L1)
            return;
        const QString type = m_xml.attribute("type"_L1);
        const QString bookName = cleanField(m_xml.attribute("name"_L1));
        const QString bookEntry = cleanField(m_xml.attribute("entry"_L1));
        const QString text = m_xml.elementText();
        const QString value = cleanField(text);
        if (name == "songbook"_L1) {
            const QString known = bookName == "-"_L1 ? QString() : bookName;
            const Songbook book{known.isEmpty() ? value : known, bookEntry};
            if (!book.name.isEmpty() || !book.entry.isEmpty()) m_song.songbooks += book;
        }
        if (value.isEmpty()) return;
        if (name == "title"_L1)
            m_song.titles += value;
        else if (name == "author"_L1)
            m_song.authors += {value, workOfType(type)};
        else if (name == "copyright"_L1)
            m_song.copyright = value;
        else if (name == "cclino"_L1)
            m_song.ccli = ccliDigits(value);
        else if (name == "key"_L1)
            m_song.key = value;
        else if (name == "tempo"_L1)
            m_song.tempo = value;
        else if (name == "timesignature"_L1)
            m_song.time = value;
        else if (name == "verseorder"_L1)
            m_order = value.split(u' ');
        else if (name == "theme"_L1)
            m_song.themes += value;
        else if (name == "comment"_L1)
            takeComment(value);
        else if (name == "transposition"_L1 && value != "0"_L1)
            m_song.unread +=
                u"A transposition by %1 semitones is not applied."_s.arg(value.left(8));
    }

    void takeComment(const QString& comment) {
        if (comment.startsWith("Capo: "_L1))
            m_song.capo = comment.mid(6);
        else if (comment.startsWith("Key: "_L1) && m_song.key.isEmpty())
            m_song.key = comment.mid(5);
        else if (comment.startsWith("Time: "_L1) && m_song.time.isEmpty())
            m_song.time = comment.mid(6);
        else
            m_song.comments += comment;
    }

    static SongAuthor::Work workOfType(const QString& type) {
        if (type == "words"_L1) return SongAuthor::Work::Words;
        if (type == "music"_L1) return SongAuthor::Work::Music;
        if (type == "translation"_L1) return SongAuthor::Work::Translation;
        if (type == "arrangement"_L1) return SongAuthor::Work::Arrangement;
        return SongAuthor::Work::Any;
    }

    void readVerse() {
        const int outer = m_xml.depth();
        SongVerse verse;
        const QString name = cleanField(m_xml.attribute("name"_L1));
        verse.language = cleanField(m_xml.attribute("lang"_L1));
        const QString script = cleanField(m_xml.attribute("translit"_L1));
        if (!script.isEmpty()) verse.language += u'@' + script;
        const auto called = verseName(name, true);
        verse.kind = called ? called->kind : VerseKind::Other;
        verse.name = called ? called->name : name.toLower().replace(u' ', u'_');
        verse.label = called && called->name == name.toLower() ? labelOfName(called->name) : name;
        while (m_xml.next() && !(m_xml.isEnd() && m_xml.depth() == outer)) {
            if (m_xml.isStart() && (m_xml.name() == "lines"_L1 || m_xml.name() == "line"_L1))
                readLines(verse);
            else if (m_xml.token() == QXmlStreamReader::Characters)
                readLooseText(verse);
        }
        // A verse that the damage of the file cut off before its first line.
        if (verse.lines.isEmpty() && !m_xml.problem().isEmpty()) return;
        m_song.verses += verse;
    }

    // Words that stand in a verse without <lines>.
    void readLooseText(SongVerse& verse) {
        for (const QString& line : linesOfText(m_xml.text())) {
            const QString text = cleanField(line);
            if (!text.isEmpty()) verse.lines += {SongLine::Kind::Lyrics, text, {}, {}};
        }
    }

    void readLines(SongVerse& verse) {
        const int outer = m_xml.depth();
        MixedLines lines(verse.lines, cleanField(m_xml.attribute("part"_L1)));
        const QString repeat = cleanField(m_xml.attribute("repeat"_L1));
        while (m_xml.next() && !(m_xml.isEnd() && m_xml.depth() == outer)) {
            const QString name = m_xml.isStart() || m_xml.isEnd() ? m_xml.name() : QString();
            if (m_xml.token() == QXmlStreamReader::Characters)
                lines.addText(m_xml.text());
            else if (m_xml.isStart() ? name == "br"_L1 : name == "line"_L1)
                lines.endLine();
            else if (m_xml.isEnd() && name == "beat"_L1)
                lines.addText(u" "_s);
            else if (m_xml.isStart() && name == "chord"_L1)
                lines.addChord(chordName(), false);
            else if (m_xml.isStart() && name == "comment"_L1)
                lines.addComment(m_xml.elementText());
        }
        lines.endLine();
        if (!repeat.isEmpty() && repeat != "1"_L1)
            verse.lines += {SongLine::Kind::Comment, u"%1x"_s.arg(repeat.left(8)), {}, {}};
    }

    QString chordName() const {
        const QString name = cleanField(m_xml.attribute("name"_L1));
        QString root = cleanField(m_xml.attribute("root"_L1));
        if (root.isEmpty()) return name;
        QString bass = cleanField(m_xml.attribute("bass"_L1));
        if (m_german) {
            root = germanRoot(root);
            bass = germanRoot(bass);
        }
        return root + chordSuffix(cleanField(m_xml.attribute("structure"_L1))) +
               (bass.isEmpty() ? QString() : u'/' + bass);
    }

    XmlSource& m_xml;
    Song& m_song;
    QStringList m_order;
    bool m_german = false;
};

// The marks of song databases in a line: formatting in braces, chords in brackets, slide breaks.
void addMarkedLines(SongVerse& verse, const QString& text) {
    static const QRegularExpression format(u"\\{/?[a-z0-9]{1,8}\\}"_s);
    static const QRegularExpression breaks(u"\\[-{1,4}\\]|\\[-{2}\\}\\{-{2}\\]"_s);
    Song scratch;
    SongBuilder builder(scratch);
    for (QString line : linesOfText(text)) {
        line.remove(format);
        line.remove(breaks);
        const SongLine read = bracketLine(cleanLine(line), false);
        builder.addLine(read.text, read.chords);
    }
    for (const SongVerse& part : scratch.verses) verse.lines += part.lines;
}

}  // namespace

void readOpenLyrics(const QString& text, ExchangeContent& content) {
    XmlSource xml(text);
    while (xml.next()) {
        if (!xml.isStart() || xml.name() != "song"_L1) continue;
        Song song;
        OpenLyricsReader(xml, song).read();
        content.songs += song;
    }
    content.reason = xml.problem();
}

ExchangeForm xmlFormOf(const QString& text, QString& reason) {
    XmlSource xml(text.left(200'000));
    QString root;
    bool inSong = false;
    // A look at the first elements is enough.
    for (int looked = 0; looked < 400 && xml.next(); ++looked) {
        if (!xml.isStart()) continue;
        const QString name = xml.name();
        if (root.isEmpty()) root = name;
        if (name == "song"_L1) {
            inSong = true;
            if (xml.nameSpace().contains("openlyrics"_L1, Qt::CaseInsensitive))
                return ExchangeForm::OpenLyrics;
        } else if (inSong) {
            if (name == "properties"_L1 || name == "verse"_L1) return ExchangeForm::OpenLyrics;
            if (name == "lyrics"_L1 || name == "title"_L1 || name == "author"_L1 ||
                name == "presentation"_L1 || name == "ccli"_L1)
                return ExchangeForm::OpenSong;
        }
    }
    if (root == "html"_L1)
        reason = u"The file is a web page."_s;
    else if (!xml.problem().isEmpty() && (root.isEmpty() || root == "song"_L1))
        reason = xml.problem();
    else
        reason = u"The file is XML of another kind (<%1>)."_s.arg(root.left(40));
    return ExchangeForm::Unknown;
}

void readDatabaseLyrics(const QString& lyrics, Song& song) {
    if (!lyrics.trimmed().startsWith(u'<')) {
        SongBuilder builder(song);
        for (const QString& line : linesOfText(lyrics)) {
            const SongLine read = bracketLine(cleanLine(line), false);
            if (read.text.isEmpty() && read.chords.isEmpty())
                builder.addBlank();
            else
                builder.addLine(read.text, read.chords);
        }
        builder.finish();
        return;
    }
    XmlSource xml(lyrics);
    while (xml.next()) {
        if (!xml.isStart() || xml.name() != "verse"_L1) continue;
        SongVerse verse;
        const QString type = cleanField(xml.attribute("type"_L1));
        const QString number = cleanField(xml.attribute("label"_L1));
        const QString name = cleanField(xml.attribute("name"_L1));
        verse.language = cleanField(xml.attribute("lang"_L1));
        const QString label = name.isEmpty() ? type + number : name;
        const auto called = verseName(label, true);
        verse.kind = called ? called->kind : VerseKind::Other;
        verse.name = called ? called->name : QString();
        // The database counts every kind: "c1" of one chorus is "Chorus 1" there.
        verse.label = called ? labelOfName(called->name) : label;
        addMarkedLines(verse, xml.elementText());
        song.verses += verse;
    }
    if (!xml.problem().isEmpty()) addNote(song.unread, xml.problem());
    nameVerses(song);
}
