// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// ChordPro: directives in braces, chords in brackets within the lyrics.
#include "exchange/rules/chord_names.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

const QHash<QString, QString>& shortDirectives() {
    static const QHash<QString, QString> names = {{u"t"_s, u"title"_s},
                                                  {u"st"_s, u"subtitle"_s},
                                                  {u"su"_s, u"subtitle"_s},
                                                  {u"a"_s, u"artist"_s},
                                                  {u"author"_s, u"artist"_s},
                                                  {u"authors"_s, u"artist"_s},
                                                  {u"artists"_s, u"artist"_s},
                                                  {u"k"_s, u"key"_s},
                                                  {u"c"_s, u"comment"_s},
                                                  {u"ci"_s, u"comment"_s},
                                                  {u"cb"_s, u"comment"_s},
                                                  {u"gc"_s, u"comment"_s},
                                                  {u"guitar_comment"_s, u"comment"_s},
                                                  {u"comment_italic"_s, u"comment"_s},
                                                  {u"comment_box"_s, u"comment"_s},
                                                  {u"highlight"_s, u"comment"_s},
                                                  {u"soc"_s, u"start_of_chorus"_s},
                                                  {u"eoc"_s, u"end_of_chorus"_s},
                                                  {u"sov"_s, u"start_of_verse"_s},
                                                  {u"eov"_s, u"end_of_verse"_s},
                                                  {u"sob"_s, u"start_of_bridge"_s},
                                                  {u"eob"_s, u"end_of_bridge"_s},
                                                  {u"sot"_s, u"start_of_tab"_s},
                                                  {u"eot"_s, u"end_of_tab"_s},
                                                  {u"sog"_s, u"start_of_grid"_s},
                                                  {u"eog"_s, u"end_of_grid"_s},
                                                  {u"soh"_s, u"start_of_highlight"_s},
                                                  {u"eoh"_s, u"end_of_highlight"_s},
                                                  {u"sop"_s, u"start_of_part"_s},
                                                  {u"eop"_s, u"end_of_part"_s},
                                                  {u"ns"_s, u"new_song"_s},
                                                  {u"ccli_song"_s, u"ccli"_s},
                                                  {u"ccli_number"_s, u"ccli"_s},
                                                  {u"ccli_song_number"_s, u"ccli"_s},
                                                  {u"cclisong"_s, u"ccli"_s},
                                                  {u"topic"_s, u"keywords"_s},
                                                  {u"topics"_s, u"keywords"_s},
                                                  {u"theme"_s, u"keywords"_s},
                                                  {u"themes"_s, u"keywords"_s},
                                                  {u"tag"_s, u"keywords"_s},
                                                  {u"tags"_s, u"keywords"_s},
                                                  {u"keyword"_s, u"keywords"_s},
                                                  {u"x_sbp_tags"_s, u"keywords"_s},
                                                  {u"bpm"_s, u"tempo"_s},
                                                  {u"writer"_s, u"artist"_s},
                                                  {u"writers"_s, u"artist"_s},
                                                  {u"flow"_s, u"x_verse_order"_s},
                                                  {u"order"_s, u"x_verse_order"_s}};
    return names;
}

// Directives of layout and diagrams, which say nothing of the song.
bool isLayout(const QString& name) {
    static const QSet<QString> layout = {u"define"_s,
                                         u"chord"_s,
                                         u"new_page"_s,
                                         u"np"_s,
                                         u"npp"_s,
                                         u"new_physical_page"_s,
                                         u"column_break"_s,
                                         u"colb"_s,
                                         u"columns"_s,
                                         u"col"_s,
                                         u"grid"_s,
                                         u"g"_s,
                                         u"no_grid"_s,
                                         u"ng"_s,
                                         u"diagrams"_s,
                                         u"titles"_s,
                                         u"pagetype"_s,
                                         u"ccli_license"_s,
                                         u"sorttitle"_s,
                                         u"sortartist"_s,
                                         u"duration"_s,
                                         u"pagesize"_s,
                                         u"transpose"_s,
                                         u"titlesalign"_s,
                                         u"end_of_verse"_s,
                                         u"midi"_s,
                                         u"ccli_license_number"_s,
                                         u"copyright_year"_s};
    static const QRegularExpression font(
        u"^(?:text|chord|tab|chorus|title|toc|footer|label|grid|"
        "lyrics|comment)?(?:font|size|colou?r|fill)$"_s);
    return layout.contains(name) || font.match(name).hasMatch() || name.startsWith(u'+') ||
           name.startsWith("x_"_L1);
}

struct Directive {
    QString name;
    QString value;
    bool hasColon = false;
};

Directive directiveOf(const QString& inside) {
    const QString text = inside.trimmed();
    qsizetype end = 0;
    while (end < text.size() && text[end] != u':' && !text[end].isSpace()) ++end;
    Directive directive;
    directive.name = text.left(end).toLower();
    directive.hasColon = end < text.size() && text[end] == u':';
    QString value = text.mid(end).trimmed();
    if (value.startsWith(u':')) {
        value = value.mid(1).trimmed();
        directive.hasColon = true;
    }
    directive.value = value;
    // A selector names an instrument: {comment-guitar: ...}.
    const qsizetype selector = directive.name.indexOf(u'-');
    if (selector > 0) directive.name.truncate(selector);
    directive.name = shortDirectives().value(directive.name, directive.name);
    return directive;
}

// The label in {start_of_verse: Verse 1} and {start_of_verse label="Verse 1"}.
QString sectionLabel(const QString& value) {
    static const QRegularExpression labelled(u"label\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|(\\S+))"_s);
    const auto match = labelled.match(value);
    if (!match.hasMatch()) return cleanField(value);
    return cleanField(match.captured(1) + match.captured(2) + match.captured(3));
}

// The unit that "\uXXXX" at a place names; null where there is none, or a control character.
QChar escapedUnit(QStringView line, qsizetype at) {
    if (at + 6 > line.size() || line[at] != u'\\' || line[at + 1] != u'u') return {};
    bool good = false;
    const uint unit = line.sliced(at + 2, 4).toUInt(&good, 16);
    return good && unit >= 0x20 ? QChar(char16_t(unit)) : QChar();
}

// An escaped character, with the length it takes. The text is empty if there is none.
struct Escape {
    QString text;
    qsizetype length = 0;
};

Escape escapeAt(QStringView line, qsizetype at) {
    const QChar unit = escapedUnit(line, at);
    if (unit.isNull()) return {};
    Escape escape{QString(unit), 6};
    if (unit.isHighSurrogate() && escapedUnit(line, at + 6).isLowSurrogate())
        escape = {escape.text + escapedUnit(line, at + 6), 12};
    // What no text may hold stays as it is written. The dot keeps a blank from being an end.
    escape.text = cleanLine(escape.text + u'.').chopped(1);
    return escape;
}

bool hasTitleDirective(const QString& text) {
    static const QRegularExpression title(
        u"^\\s*\\{\\s*(?:t|title)\\s*[:\\s]"_s,
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption);
    return title.match(text).hasMatch();
}

QString unescaped(const QString& text) {
    if (!text.contains("\\u"_L1)) return text;
    QString plain;
    for (qsizetype i = 0; i < text.size();) {
        const Escape escape = escapeAt(text, i);
        plain += escape.text.isEmpty() ? QString(text[i]) : escape.text;
        i += escape.text.isEmpty() ? 1 : escape.length;
    }
    return plain;
}

class ChordProReader {
public:
    ChordProReader(ExchangeContent& content, bool titled)
        : m_content(content), m_titled(titled), m_builder(m_song) {}

    void read(const QStringList& lines) {
        QString joined;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            m_line = int(i) + 1;
            const QString line = cleanLine(lines[i]);
            // A backslash at the end joins the next line.
            if (line.endsWith(u'\\') && i + 1 < lines.size()) {
                joined += line.chopped(1);
                continue;
            }
            readLine(joined.isEmpty() ? line : joined + line.trimmed());
            joined.clear();
        }
        flushChordLine();
        finishSong();
    }

private:
    void readLine(const QString& line) {
        const QString trimmed = line.trimmed();
        if (!m_skipped.isEmpty()) return skipSection(trimmed);
        if (trimmed.startsWith(u'#')) return;
        if (trimmed.isEmpty()) {
            flushChordLine();
            m_header = m_header && !m_seenTitle;
            return m_builder.addBlank();
        }
        if (trimmed.startsWith(u'{') && readDirectives(trimmed)) return;
        if (m_header && readHeader(trimmed)) return;
        readSongLine(line);
    }

    // Lines at the top of a file without a title directive: title, artist, "Key: G".
    bool readHeader(const QString& line) {
        static const QRegularExpression flow(u"^(?:Flow|Order|Sequence)\\s*:\\s*"_s,
                                             QRegularExpression::CaseInsensitiveOption);
        const auto order = flow.match(line);
        if (order.hasMatch() && !m_titled)
            return setProperty(u"x_verse_order"_s, line.mid(order.capturedEnd(0)));
        if (m_titled || line.contains(u'[') || verseName(line) || !chordsOfLine(line).isEmpty()) {
            m_header = !m_titled && takeCreditLine(m_song, line);
            return m_header;
        }
        if (takeCreditLine(m_song, line)) return true;
        if (!m_seenTitle) {
            m_song.titles += line;
            m_seenTitle = true;
            return true;
        }
        if (m_song.authors.isEmpty() && m_song.verses.isEmpty() && line.size() < 80) {
            addAuthors(m_song, line);
            return true;
        }
        m_header = false;
        return false;
    }

    // Lines of one or more directives. False for a text in braces that is none.
    bool readDirectives(const QString& line) {
        flushChordLine();
        QString rest = line;
        while (rest.startsWith(u'{')) {
            qsizetype end = rest.indexOf(u'}');
            const qsizetype inner = rest.indexOf(u'{', 1);
            // Braces inside of a comment.
            if (inner > 0 && inner < end) end = rest.lastIndexOf(u'}');
            const QString inside = rest.sliced(1, (end < 0 ? rest.size() : end) - 1);
            if (end < 0 && !isKnown(directiveOf(inside).name)) break;
            readDirective(inside);
            rest = end < 0 ? QString() : rest.mid(end + 1).trimmed();
        }
        if (!rest.isEmpty() && rest.size() < line.size()) readSongLine(rest);
        return rest.size() < line.size();
    }

    // A file may nest {meta: meta meta ...} without end.
    static bool isMeta(const QString& value) {
        return value.startsWith("meta"_L1, Qt::CaseInsensitive);
    }

    static bool isKnown(const QString& name) {
        static const QSet<QString> known = {
            u"title"_s,     u"subtitle"_s, u"artist"_s,   u"key"_s,  u"comment"_s,    u"ccli"_s,
            u"composer"_s,  u"lyricist"_s, u"arranger"_s, u"time"_s, u"tempo"_s,      u"capo"_s,
            u"copyright"_s, u"meta"_s,     u"keywords"_s, u"book"_s, u"footer"_s,     u"new_song"_s,
            u"chorus"_s,    u"number"_s,   u"album"_s,    u"year"_s, u"translator"_s, u"image"_s};
        return known.contains(name) || name.startsWith("start_of_"_L1) ||
               name.startsWith("end_of_"_L1);
    }

    void readDirective(const QString& inside) {
        const Directive directive = directiveOf(inside);
        const QString value = cleanField(unescaped(directive.value));
        if (directive.name == "comment"_L1 || directive.name.startsWith("start_of_"_L1))
            m_header = false;
        if (directive.name == "meta"_L1 && !isMeta(directive.value)) {
            readDirective(directive.value);
        } else if (directive.name == "new_song"_L1) {
            finishSong();
        } else if (directive.name == "comment"_L1) {
            readComment(directive.value);
        } else if (directive.name == "chorus"_L1) {
            m_builder.recallChorus();
        } else if (directive.name.startsWith("start_of_"_L1)) {
            startSection(directive.name.mid(9), sectionLabel(unescaped(directive.value)));
        } else if (directive.name.startsWith("end_of_"_L1)) {
            m_builder.holdOpen(false);
            m_builder.endVerse();
        } else if (!setProperty(directive.name, value) && !isLayout(directive.name)) {
            readUnknown(inside, directive);
        }
    }

    void readUnknown(const QString& inside, const Directive& directive) {
        if (verseName(inside))
            m_builder.label(inside);
        else if (!directive.hasColon)
            m_builder.addComment(inside);
        else
            addNote(m_song.unread,
                    u"Line %1: {%2} is not known."_s.arg(m_line).arg(cleanField(inside).left(60)));
    }

    bool setProperty(const QString& name, const QString& value) {
        if (name == "x_comment"_L1) m_song.comments += value;
        if (!isKnown(name) && name != "x_verse_order"_L1) return false;
        if (value.isEmpty()) return true;
        if (name == "title"_L1) {
            // A title may also come late.
            if (!m_song.verses.isEmpty() && !m_song.titles.isEmpty()) finishSong();
            m_song.titles += value;
        } else if (name == "subtitle"_L1) {
            m_subtitles += value;
        } else if (name == "artist"_L1) {
            addAuthors(m_song, value);
        } else if (name == "composer"_L1) {
            addAuthors(m_song, value, SongAuthor::Work::Music);
        } else if (name == "lyricist"_L1) {
            addAuthors(m_song, value, SongAuthor::Work::Words);
        } else if (name == "translator"_L1) {
            addAuthors(m_song, value, SongAuthor::Work::Translation);
        } else if (name == "arranger"_L1) {
            addAuthors(m_song, value, SongAuthor::Work::Arrangement);
        } else if (name == "key"_L1) {
            if (m_song.key.isEmpty()) m_song.key = keyOf(value);
        } else if (name == "time"_L1) {
            if (m_song.time.isEmpty()) m_song.time = value;
        } else if (name == "tempo"_L1) {
            if (m_song.tempo.isEmpty()) m_song.tempo = value;
        } else if (name == "capo"_L1) {
            m_song.capo = value;
        } else if (name == "ccli"_L1) {
            m_song.ccli = ccliDigits(value);
        } else if (name == "copyright"_L1) {
            m_song.copyright = value;
        } else if (name == "footer"_L1) {
            if (!takeCreditLine(m_song, value)) m_song.comments += value;
        } else if (name == "keywords"_L1) {
            m_song.themes += splitList(value, value.contains(u';') ? u";" : u",;");
        } else if (name == "book"_L1) {
            const qsizetype mark = value.lastIndexOf(" #"_L1);
            m_song.songbooks +=
                {mark < 0 ? value : value.left(mark), mark < 0 ? QString() : value.mid(mark + 2)};
        } else if (name == "number"_L1) {
            m_song.songbooks += {QString(), value};
        } else if (name == "x_verse_order"_L1) {
            static const QRegularExpression separators(u"[\\s,;]+"_s);
            static const QRegularExpression commas(u"\\s*[,;]\\s*"_s);
            m_order = value.split(value.contains(u',') ? commas : separators, Qt::SkipEmptyParts);
        } else if (name == "image"_L1) {
            addNote(m_song.unread, u"Line %1: a picture was left out."_s.arg(m_line));
        } else {
            m_song.comments += name + u": "_s + value;
        }
        return true;
    }

    static QString keyOf(QString value) {
        if (value.startsWith(u'[') && value.endsWith(u']')) value = value.mid(1).chopped(1);
        return value;
    }

    void readComment(const QString& value) {
        const QString text = cleanField(value);
        if (verseName(text)) return m_builder.label(text);
        if (takeCreditLine(m_song, text)) return;
        const SongLine line = bracketLine(cleanLine(value), true);
        if (!line.chords.isEmpty())
            m_builder.addLine(line.text, line.chords);
        else
            m_builder.addComment(line.text);
    }

    void startSection(const QString& kind, const QString& label) {
        static const QSet<QString> skipped = {u"tab"_s, u"abc"_s,      u"ly"_s,
                                              u"svg"_s, u"musicxml"_s, u"textblock"_s};
        if (skipped.contains(kind)) {
            m_skipped = kind;
            addNote(m_song.unread,
                    u"Line %1: a section \"%2\" was left out."_s.arg(m_line).arg(kind));
            return;
        }
        if (kind == "grid"_L1 || kind == "highlight"_L1) return;
        const auto called = verseName(kind);
        QString shown = label;
        if (shown.isEmpty()) {
            shown = kind == "part"_L1 ? QString() : kind;
            shown.replace(u'_', u' ');
            if (called) shown = called->name == "v"_L1 ? QString() : labelOfName(called->name);
        }
        // The label may have come before as a comment.
        if (!(called && label.isEmpty() && m_builder.isEmptyVerse(called->kind))) {
            m_builder.endVerse();
            if (!shown.isEmpty())
                m_builder.startVerse(shown, called ? called->kind : VerseKind::Other);
        }
        m_builder.holdOpen(true);
    }

    void skipSection(const QString& line) {
        if (!line.startsWith(u'{')) return;
        const QString name = directiveOf(line.mid(1, line.size() - 2)).name;
        if (name.startsWith("end_of_"_L1)) m_skipped.clear();
    }

    void readSongLine(const QString& line) {
        m_header = false;
        if (!line.contains(u'[')) {
            const QList<SongChord> chords = chordsOfLine(line);
            if (!chords.isEmpty()) {
                flushChordLine();
                m_chordLine = chords;
                return;
            }
            if (verseName(line)) {
                flushChordLine();
                return m_builder.label(line);
            }
            const SongLine plain = bracketLine(line, true);
            m_builder.addLine(plain.text, std::exchange(m_chordLine, {}));
            return;
        }
        flushChordLine();
        QString rest = line;
        takeLabel(rest);
        if (rest.trimmed().isEmpty()) return;
        const SongLine read = bracketLine(rest, true);
        m_builder.addLine(read.text, read.chords);
    }

    // "[Verse 1]" and "Intro:" at the start of a line of chords.
    void takeLabel(QString& line) {
        static const QRegularExpression bracketed(u"^\\s*\\[([^\\[\\]]*)\\]"_s);
        const auto match = bracketed.match(line);
        if (match.hasMatch() && verseName(match.captured(1))) {
            m_builder.label(match.captured(1));
            line.remove(0, match.capturedEnd(0));
            return;
        }
        static const QRegularExpression plain(
            u"^\\s*([^\\[\\]:]{1,30}):\\s*(?=(?:[\\s|/-]*\\[[^\\]]*\\])"
            "+[\\s|/-]*$)"_s);
        const auto prefix = plain.match(line);
        if (prefix.hasMatch() && verseName(prefix.captured(1))) {
            m_builder.label(prefix.captured(1));
            line.remove(0, prefix.capturedEnd(0));
        }
    }

    void flushChordLine() {
        if (!m_chordLine.isEmpty()) m_builder.addLine({}, std::exchange(m_chordLine, {}));
    }

    void finishSong() {
        flushChordLine();
        m_builder.finish();
        for (const QString& subtitle : m_subtitles) {
            if (subtitle.startsWith(u'('))
                m_song.titles += subtitle;
            else if (m_song.authors.isEmpty())
                addAuthors(m_song, subtitle);
            else
                m_song.comments += subtitle;
        }
        if (!m_order.isEmpty()) m_song.verseOrder.clear();
        setVerseOrder(m_song, m_order);
        m_song.themes.removeDuplicates();
        Song empty;
        empty.unread = m_song.unread;
        if (!(m_song == empty)) m_content.songs += m_song;
        m_song = Song();
        m_builder = SongBuilder(m_song);
        m_subtitles.clear();
        m_order.clear();
    }

    ExchangeContent& m_content;
    // The file names its title in a directive.
    bool m_titled;
    Song m_song;
    SongBuilder m_builder;
    QStringList m_subtitles;
    QStringList m_order;
    QList<SongChord> m_chordLine;
    QString m_skipped;
    bool m_header = true;
    bool m_seenTitle = false;
    int m_line = 0;
};

}  // namespace

SongLine bracketLine(const QString& source, bool escapes) {
    static const QRegularExpression markup(
        u"</?(?:b|i|u|s|big|small|sub|sup|tt|span|sym|strut)(?:\\s[^<>]*)?/?>"_s);
    static const QRegularExpression bars(u"^[|:.\\-/_%\\s]*$"_s);
    QString line = source;
    if (escapes && line.contains(u'<')) line.remove(markup);
    SongLine read;
    read.text.reserve(line.size());
    bool closed = true;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (escapes && line[i] == u'\\') {
            if (const Escape escape = escapeAt(line, i); !escape.text.isEmpty()) {
                read.text += escape.text;
                i += escape.length - 1;
                continue;
            }
        }
        const qsizetype end = line[i] == u'[' && closed ? line.indexOf(u']', i) : -1;
        const qsizetype inner = end < 0 ? -1 : line.lastIndexOf(u'[', end);
        if (inner != i) {
            // Without an end, or with another bracket before it, a bracket is text.
            if (line[i] == u'[' && end < 0) closed = false;
            read.text += line[i];
            continue;
        }
        const int column = int(read.text.size());
        QString inside = line.sliced(i + 1, end - i - 1);
        if (escapes) inside = unescaped(inside);
        i = end;
        const bool marked = inside.startsWith(u'*');
        if (marked) inside.remove(0, 1);
        const QString name = cleanField(inside);
        if (bars.match(name).hasMatch()) continue;
        if (marked || isBracketChord(name)) {
            read.chords += {column, name, marked};
            continue;
        }
        QList<SongChord> several = chordsOfLine(inside);
        if (several.isEmpty()) several = {{0, name, true}};
        for (SongChord& chord : several) {
            chord.column += column;
            read.chords += chord;
        }
    }
    return read;
}

void readChordPro(const QString& text, ExchangeContent& content) {
    ChordProReader(content, hasTitleDirective(text)).read(linesOfText(text));
}

bool looksLikeChordPro(const QString& text) {
    static const QRegularExpression directive(
        u"^\\s*\\{\\s*(?:t|title|st|subtitle|artist|composer|key|c|ci|cb|comment(?:_\\w+)?|soc|sov|"
        "sob|sot|start_of_\\w+|define|ns|new_song|capo|tempo|time|meta|ccli|copyright)"
        "(?:-[\\w!]+)?\\s*(?::|\\}|\\s\\S)"_s,
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption);
    const QString start = text.left(200'000);
    if (directive.match(start).hasMatch()) return true;
    // Text with lines of chords may have a bracket here and there.
    static const QRegularExpression bracket(u"\\[([^\\[\\]\\n]{1,12})\\]"_s);
    static const QRegularExpression words(u"\\p{L}{2}"_s);
    int bracketed = 0, chordLines = 0;
    for (const QString& line : linesOfText(start)) {
        int chords = 0;
        for (auto found = bracket.globalMatch(line); found.hasNext();)
            chords += isBracketChord(found.next().captured(1));
        bracketed += chords > 1 || (chords == 1 && QString(line).remove(bracket).contains(words));
        chordLines += !line.contains(u'[') && !chordsOfLine(line).isEmpty();
    }
    return bracketed > chordLines;
}
