// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/chord_names.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/writer.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamWriter>

using namespace Qt::Literals::StringLiterals;

namespace {

// Whether a verse holds nothing but chords.
bool isInstrumental(const SongVerse& verse) {
    for (const SongLine& line : verse.lines) {
        if (line.kind == SongLine::Kind::Comment || !line.text.isEmpty()) return false;
        for (const SongChord& chord : line.chords)
            if (chord.annotation || !chordParts(chord.name)) return false;
    }
    return !verse.lines.isEmpty();
}

// The form has names for solos and middles without words only.
bool isFormalName(const QString& name, bool instrumental) {
    static const QRegularExpression verse(u"^(?:v[1-9]\\d?|[ipcboe](?:[1-9]\\d?)?)[a-z]?$"_s);
    static const QRegularExpression instrument(u"^[ismoe](?:[1-9]\\d?)?[a-z]?$"_s);
    return (instrumental ? instrument : verse).match(name).hasMatch();
}

// The names of the verses as the form takes them, by those of the song.
QHash<QString, QString> formalNames(const Song& song) {
    QHash<QString, QString> names;
    QSet<QString> taken;
    for (const SongVerse& verse : song.verses)
        if (isFormalName(verse.name, false) || isFormalName(verse.name, true)) taken += verse.name;
    int number = 0;
    for (const SongVerse& verse : song.verses) {
        if (names.contains(verse.name)) continue;
        QString name = verse.name;
        const bool instrument = verse.kind == VerseKind::Solo || verse.kind == VerseKind::Middle;
        if (!isFormalName(name, instrument && isInstrumental(verse))) {
            do name = u'o' + QString::number(++number);
            while (taken.contains(name));
        }
        names.insert(verse.name, name);
    }
    return names;
}

QString asciiAccidentals(QString text) {
    return text.replace(QChar(0x266F), u'#').replace(QChar(0x266D), u'b');
}

class OpenLyricsWriter {
public:
    explicit OpenLyricsWriter(const Song& song)
        : m_song(song),
          m_german(usesGermanChords(song)),
          m_names(formalNames(song)),
          m_xml(&m_bytes) {}

    QByteArray write() {
        m_xml.writeStartDocument();
        newLine();
        m_xml.writeStartElement(u"song"_s);
        m_xml.writeDefaultNamespace(u"http://openlyrics.info/namespace/2009/song"_s);
        m_xml.writeAttribute(u"version"_s, u"0.9"_s);
        m_xml.writeAttribute(u"createdIn"_s, u"Lorvanite"_s);
        if (m_german) m_xml.writeAttribute(u"chordNotation"_s, u"german"_s);
        writeProperties();
        start(u"lyrics"_s);
        for (const SongVerse& verse : m_song.verses) writeVerse(verse);
        if (m_song.verses.isEmpty()) {
            SongVerse empty;
            empty.name = u"v1"_s;
            writeVerse(empty);
        }
        end();
        m_depth = 0;
        newLine();
        m_xml.writeEndElement();
        newLine();
        return m_bytes;
    }

private:
    void newLine() { m_xml.writeCharacters(u'\n' + QString(qsizetype(2) * m_depth, u' ')); }

    void start(const QString& name) {
        ++m_depth;
        newLine();
        m_xml.writeStartElement(name);
    }

    void end() {
        newLine();
        m_xml.writeEndElement();
        --m_depth;
    }

    void element(const QString& name, const QString& text,
                 const QList<std::pair<QString, QString>>& attributes = {}) {
        const QString clean = cleanField(text);
        if (clean.isEmpty()) return;
        ++m_depth;
        newLine();
        m_xml.writeStartElement(name);
        for (const auto& [key, value] : attributes) m_xml.writeAttribute(key, value);
        m_xml.writeCharacters(clean);
        m_xml.writeEndElement();
        --m_depth;
    }

    void list(const QString& name, const QString& item, const QStringList& texts) {
        QStringList filled;
        for (const QString& text : texts)
            if (!cleanField(text).isEmpty()) filled += text;
        if (filled.isEmpty()) return;
        start(name);
        for (const QString& text : filled) element(item, text);
        end();
    }

    void writeProperties() {
        start(u"properties"_s);
        list(u"titles"_s, u"title"_s,
             cleanField(m_song.title()).isEmpty() ? QStringList{u"Untitled"_s} : m_song.titles);
        writeAuthors();
        element(u"copyright"_s, m_song.copyright);
        if (m_song.ccli.toULongLong() > 0) element(u"ccliNo"_s, m_song.ccli);
        writeTempo();
        static const QRegularExpression key(u"^[A-G][#bx]?m?$"_s);
        static const QRegularExpression time(u"^[1-9]\\d?/(?:1|2|4|8|16|32|64)$"_s);
        const bool hasKey = key.match(m_song.key).hasMatch();
        const bool hasTime = time.match(m_song.time).hasMatch();
        if (hasKey) element(u"key"_s, m_song.key);
        if (hasTime) element(u"timeSignature"_s, m_song.time);
        writeOrder();
        writeSongbooks();
        list(u"themes"_s, u"theme"_s, m_song.themes);
        QStringList comments = m_song.comments;
        // What the form has no place for.
        if (!hasTime && !m_song.time.isEmpty()) comments.prepend(u"Time: "_s + m_song.time);
        if (!hasKey && !m_song.key.isEmpty()) comments.prepend(u"Key: "_s + m_song.key);
        if (!m_song.capo.isEmpty()) comments.prepend(u"Capo: "_s + m_song.capo);
        list(u"comments"_s, u"comment"_s, comments);
        end();
    }

    void writeAuthors() {
        if (m_song.authors.isEmpty()) return;
        start(u"authors"_s);
        for (const SongAuthor& author : m_song.authors) {
            QList<std::pair<QString, QString>> type;
            if (author.work == SongAuthor::Work::Words) type = {{u"type"_s, u"words"_s}};
            if (author.work == SongAuthor::Work::Music) type = {{u"type"_s, u"music"_s}};
            if (author.work == SongAuthor::Work::Translation)
                type = {{u"type"_s, u"translation"_s}};
            if (author.work == SongAuthor::Work::Arrangement)
                type = {{u"type"_s, u"arrangement"_s}};
            element(u"author"_s, author.name, type);
        }
        end();
    }

    void writeTempo() {
        bool number = false;
        const int beats = m_song.tempo.toInt(&number);
        const bool bpm = number && beats >= 30 && beats <= 250;
        element(u"tempo"_s, m_song.tempo, {{u"type"_s, bpm ? u"bpm"_s : u"text"_s}});
    }

    void writeOrder() {
        QStringList names;
        for (const QString& entry : m_song.verseOrder) {
            const QString name = m_names.value(entry);
            if (!name.isEmpty()) names += name;
        }
        element(u"verseOrder"_s, names.join(u' '));
    }

    void writeSongbooks() {
        if (m_song.songbooks.isEmpty()) return;
        start(u"songbooks"_s);
        for (const Songbook& book : m_song.songbooks) {
            ++m_depth;
            newLine();
            m_xml.writeEmptyElement(u"songbook"_s);
            const QString name = cleanField(book.name), entry = cleanField(book.entry);
            m_xml.writeAttribute(u"name"_s, name.isEmpty() ? u"-"_s : name);
            if (!entry.isEmpty()) m_xml.writeAttribute(u"entry"_s, entry);
            --m_depth;
        }
        end();
    }

    void writeVerse(const SongVerse& verse) {
        const QString name = m_names.value(verse.name, u"v1"_s);
        const bool instrument = name.startsWith(u's') || name.startsWith(u'm');
        start(instrument ? u"instrument"_s : u"verse"_s);
        m_xml.writeAttribute(u"name"_s, name);
        if (!instrument) writeLanguage(verse.language);
        for (qsizetype i = 0; i < verse.lines.size() || i == 0;) {
            const QString part =
                i < verse.lines.size() ? cleanField(verse.lines[i].part) : QString();
            ++m_depth;
            newLine();
            m_xml.writeStartElement(u"lines"_s);
            if (!part.isEmpty()) m_xml.writeAttribute(u"part"_s, part);
            const qsizetype first = i;
            do {
                if (i > first) m_xml.writeEmptyElement(u"br"_s);
                if (i < verse.lines.size()) writeLine(verse.lines[i]);
                ++i;
            } while (i < verse.lines.size() && cleanField(verse.lines[i].part) == part);
            m_xml.writeEndElement();
            --m_depth;
        }
        end();
    }

    void writeLanguage(const QString& language) {
        static const QRegularExpression tag(u"^[A-Za-z]{1,8}(?:-[A-Za-z0-9]{1,8})*$"_s);
        const QString lang = language.section(u'@', 0, 0), script = language.section(u'@', 1, 1);
        if (!tag.match(lang).hasMatch()) return;
        m_xml.writeAttribute(u"lang"_s, lang);
        if (tag.match(script).hasMatch()) m_xml.writeAttribute(u"translit"_s, script);
    }

    void writeLine(const SongLine& line) {
        if (line.kind == SongLine::Kind::Comment) {
            m_xml.writeTextElement(u"comment"_s, line.text);
            return;
        }
        QString text = line.text;
        qsizetype at = 0;
        for (const SongChord& chord : line.chords) {
            if (chord.column > text.size()) text += QString(chord.column - text.size(), u' ');
            const qsizetype column = std::max<qsizetype>(at, chord.column);
            m_xml.writeCharacters(text.sliced(at, column - at));
            at = column;
            writeChord(chord);
        }
        m_xml.writeCharacters(text.sliced(at));
    }

    void writeChord(const SongChord& chord) {
        const auto parts = chord.annotation ? std::nullopt : chordParts(chord.name);
        if (!parts) {
            const QString name = cleanField(chord.name);
            if (!name.isEmpty()) m_xml.writeTextElement(u"comment"_s, name);
            return;
        }
        const auto root = [&](const QString& name) {
            const QString plain = asciiAccidentals(name);
            return m_german ? englishRoot(plain) : plain;
        };
        m_xml.writeEmptyElement(u"chord"_s);
        m_xml.writeAttribute(u"root"_s, root(parts->root));
        const QString structure = chordStructure(parts->suffix);
        if (!structure.isEmpty()) m_xml.writeAttribute(u"structure"_s, structure);
        if (!parts->bass.isEmpty()) m_xml.writeAttribute(u"bass"_s, root(parts->bass));
    }

    const Song& m_song;
    bool m_german;
    QHash<QString, QString> m_names;
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
    int m_depth = 0;
};

}  // namespace

QByteArray writeOpenLyrics(const Song& song) { return OpenLyricsWriter(song).write(); }
