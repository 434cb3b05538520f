// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/chord_names.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/verse_names.h"
#include "exchange/rules/writer.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString unicodeEscape(QChar c) {
    return u"\\u%1"_s.arg(ushort(c.unicode()), 4, 16, QLatin1Char('0'));
}

// Characters that would be read as marks, as \uXXXX.
QString escapedText(const QString& text, QStringView marks) {
    QString escaped;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        const bool tag = c == u'<' && (next.isLetter() || next == u'/');
        const bool slash = c == u'\\' && (next == u'u' || next.isNull());
        escaped += marks.contains(c) || tag || slash ? unicodeEscape(c) : QString(c);
    }
    return escaped;
}

QString directiveLine(const QString& name, const QString& value) {
    const QString clean = cleanField(value);
    if (clean.isEmpty()) return {};
    return u'{' + name + u": "_s + escapedText(clean, u"{}[]") + u"}\n"_s;
}

QString chordProLine(const SongLine& line) {
    QString text;
    qsizetype at = 0;
    const auto upTo = [&](qsizetype column) {
        text += escapedText(line.text.sliced(at, std::min(column, line.text.size()) - at), u"[]");
        at = std::min(column, line.text.size());
    };
    qsizetype beyond = line.text.size();
    for (const SongChord& chord : line.chords) {
        upTo(std::max<qsizetype>(at, chord.column));
        for (; beyond < chord.column; ++beyond) text += u' ';
        const QString name = escapedText(cleanField(chord.name), u"[]");
        if (!name.isEmpty()) text += (chord.annotation ? u"[*"_s : u"["_s) + name + u']';
    }
    upTo(line.text.size());
    // What would be a directive, a remark, a label or a line of chords is marked by its first
    // letter.
    const QString trimmed = text.trimmed();
    const bool mark = trimmed.startsWith(u'{') || trimmed.startsWith(u'#');
    const bool label = line.chords.isEmpty()
                           ? verseName(trimmed) || !chordsOfLine(trimmed).isEmpty()
                           : trimmed.left(trimmed.indexOf(u'[')).contains(u':');
    const bool marked = trimmed.startsWith("\\u"_L1);
    if (!trimmed.isEmpty() && !marked && (mark || label)) {
        const qsizetype first = text.indexOf(trimmed[0]);
        text.replace(first, 1, unicodeEscape(trimmed[0]));
    }
    if (text.endsWith(u'\\')) text = text.chopped(1) + unicodeEscape(u'\\');
    return text + u'\n';
}

QString sectionOf(VerseKind kind, const QString& label) {
    if (kind == VerseKind::Chorus) return u"chorus"_s;
    if (kind == VerseKind::Bridge) return u"bridge"_s;
    // The label of a verse names its kind if it can.
    return kind == VerseKind::Verse || verseName(label) ? u"verse"_s : u"part"_s;
}

QString chordProVerse(const SongVerse& verse) {
    QString label = cleanField(verse.label);
    if (label.isEmpty() && verse.kind != VerseKind::Verse) label = labelOfName(verse.name);
    const QString section = sectionOf(verse.kind, label);
    if (!verse.language.isEmpty()) label += u" (%1)"_s.arg(verse.language);
    QString text = directiveLine(u"start_of_"_s + section, label);
    if (text.isEmpty()) text = u"{start_of_%1}\n"_s.arg(section);
    QString part;
    for (const SongLine& line : verse.lines) {
        if (line.part != part && !line.part.isEmpty())
            text += directiveLine(u"comment"_s, line.part);
        part = line.part;
        text += line.kind == SongLine::Kind::Comment ? directiveLine(u"comment"_s, line.text)
                                                     : chordProLine(line);
    }
    return text + u"{end_of_%1}\n"_s.arg(section);
}

QString authorDirective(SongAuthor::Work work) {
    switch (work) {
        case SongAuthor::Work::Words:
            return u"lyricist"_s;
        case SongAuthor::Work::Music:
            return u"composer"_s;
        case SongAuthor::Work::Translation:
            return u"meta: translator"_s;
        case SongAuthor::Work::Arrangement:
            return u"arranger"_s;
        case SongAuthor::Work::Any:
            break;
    }
    return u"artist"_s;
}

QString chordProSong(const Song& song) {
    QString text = directiveLine(u"title"_s, song.title());
    for (const QString& title : song.titles.mid(1)) text += directiveLine(u"meta: title"_s, title);
    for (const SongAuthor& author : song.authors)
        text += directiveLine(authorDirective(author.work), author.name);
    text += directiveLine(u"key"_s, song.key);
    text += directiveLine(u"time"_s, song.time);
    text += directiveLine(u"tempo"_s, song.tempo);
    text += directiveLine(u"capo"_s, song.capo);
    text += directiveLine(u"copyright"_s, song.copyright);
    text += directiveLine(u"ccli"_s, song.ccli);
    // A ";" at the end keeps commas inside of a theme.
    if (!song.themes.isEmpty())
        text += directiveLine(u"keywords"_s, song.themes.join(u"; "_s) + u';');
    for (const Songbook& book : song.songbooks) {
        if (book.name.isEmpty())
            text += directiveLine(u"number"_s, book.entry);
        else
            text += directiveLine(
                u"book"_s, book.entry.isEmpty() ? book.name : book.name + u" #"_s + book.entry);
    }
    for (const QString& comment : song.comments) text += directiveLine(u"x_comment"_s, comment);
    text += directiveLine(u"x_verse_order"_s, song.verseOrder.join(u' '));
    for (const SongVerse& verse : song.verses) text += u'\n' + chordProVerse(verse);
    return text;
}

}  // namespace

QByteArray writeChordPro(const QList<Song>& songs) {
    QStringList texts;
    for (const Song& song : songs) texts += chordProSong(song);
    return texts.join(u"\n{new_song}\n"_s).toUtf8();
}
