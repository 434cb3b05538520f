// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/song_builder.h"

#include "exchange/rules/chord_names.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/verse_names.h"

#include <QHash>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

// "Words and Music by A" and the like.
SongAuthor::Work workOf(QString& name, SongAuthor::Work otherwise) {
    static const QRegularExpression credit(
        u"^(?<what>%1(?:\\s?(?:and|und|&|\\+|/)\\s?%1)?|translation|translated|\u00fcbersetzung|"
        "deutsch|arr(?:angement|anged|\\.)?|written|composed|author)(?:\\s+by)?\\s*(?<sign>:)?\\s*"
        "(?=\\S)"_s.arg(u"(?:words?|lyrics?|text|music|musik|melodie|tune|melody)"_s),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = credit.match(name);
    // A name may begin with such a word: only a colon or "by" makes it a credit.
    if (!match.hasMatch() || (!match.hasCaptured(u"sign"_s) &&
                              !match.captured(0).contains(" by"_L1, Qt::CaseInsensitive)))
        return otherwise;
    const QString what = match.captured(u"what"_s).toLower();
    name = name.mid(match.capturedEnd(0)).trimmed();
    if (what.contains("and"_L1) || what.contains("und"_L1) || what.contains(u'&') ||
        what.contains(u'+') || what.contains(u'/'))
        return SongAuthor::Work::Any;
    if (what.startsWith("word"_L1) || what.startsWith("lyric"_L1) || what == "text"_L1)
        return SongAuthor::Work::Words;
    if (what.startsWith("trans"_L1) || what == "deutsch"_L1 || what.startsWith(QChar(0xFC)))
        return SongAuthor::Work::Translation;
    if (what.startsWith("arr"_L1)) return SongAuthor::Work::Arrangement;
    if (what == "written"_L1 || what == "author"_L1) return SongAuthor::Work::Any;
    return SongAuthor::Work::Music;
}

bool areFullNames(const QStringList& pieces) {
    for (const QString& piece : pieces)
        if (!piece.trimmed().contains(u' ')) return false;
    return pieces.size() > 1;
}

}  // namespace

void SongBuilder::startVerse(const QString& label, VerseKind otherwise) {
    SongVerse started;
    const auto called = verseName(label, true);
    started.kind = called ? called->kind : otherwise;
    if (called) started.name = called->name;
    started.label = bareLabel(label);
    m_song->verses += started;
    m_open = true;
}

SongVerse& SongBuilder::verse() {
    if (!m_open) m_song->verses += SongVerse();
    m_open = true;
    return m_song->verses.last();
}

void SongBuilder::addLine(QString text, QList<SongChord> chords, const QString& part) {
    while (!text.isEmpty() && text.back().isSpace()) text.chop(1);
    qsizetype blanks = 0;
    while (blanks < text.size() && text[blanks] == u' ') ++blanks;
    if (text.isEmpty() && !chords.isEmpty()) blanks = chords[0].column;
    for (SongChord& chord : chords) {
        chord.annotation = !isBracketChord(chord.name);
        // A remark needs no blanks below it.
        if (!chord.annotation) blanks = std::min<qsizetype>(blanks, chord.column);
    }
    text.remove(0, std::min(blanks, text.size()));
    for (SongChord& chord : chords) {
        chord.column = std::max(0, chord.column - int(blanks));
        // Never inside of one character of two units.
        if (chord.column > 0 && chord.column < text.size() && text[chord.column].isLowSurrogate())
            --chord.column;
    }
    if (text.isEmpty() && chords.isEmpty()) return;
    spreadChords(chords, int(text.size()));
    verse().lines += {SongLine::Kind::Lyrics, text, chords, part};
}

void SongBuilder::addComment(const QString& text) {
    const QString line = cleanLine(text);
    const QList<SongChord> chords = chordsOfRemark(line);
    if (!chords.isEmpty()) return addLine({}, chords);
    if (!line.trimmed().isEmpty())
        verse().lines += {SongLine::Kind::Comment, line.simplified(), {}, {}};
}

void SongBuilder::addBlank() {
    if (!m_open || m_held) return;
    // The empty line below a label belongs to the label.
    if (hasLines()) m_open = false;
}

bool SongBuilder::hasLines() const {
    return m_open && !m_song->verses.isEmpty() && !m_song->verses.last().lines.isEmpty();
}

void SongBuilder::recallChorus() {
    for (qsizetype i = m_song->verses.size(); i-- > 0;) {
        if (m_song->verses[i].kind != VerseKind::Chorus) continue;
        m_recalls += {m_song->verses.size(), i};
        m_open = false;
        return;
    }
    addComment(u"Chorus"_s);
}

void SongBuilder::label(const QString& label) {
    if (m_open && !hasLines()) m_song->verses.removeLast();
    startVerse(label);
}

bool SongBuilder::isEmptyVerse(VerseKind kind) const {
    return m_open && !hasLines() && m_song->verses.last().kind == kind;
}

void SongBuilder::finish() {
    QHash<QString, qsizetype> labels;
    QHash<qsizetype, qsizetype> places;  // of a verse among those that are kept
    QList<SongVerse> kept;
    QList<qsizetype> order;
    auto recall = m_recalls.cbegin();
    const auto recallsUpTo = [&](qsizetype verses) {
        for (; recall != m_recalls.cend() && recall->first <= verses; ++recall)
            if (places.contains(recall->second)) order += places.value(recall->second);
    };
    for (qsizetype i = 0; i < m_song->verses.size(); ++i) {
        recallsUpTo(i);
        const SongVerse& found = m_song->verses[i];
        const QString label = found.label.toLower();
        if (found.lines.isEmpty() && (label.isEmpty() || labels.contains(label))) {
            if (label.isEmpty()) continue;
            places.insert(i, labels.value(label));
        } else {
            places.insert(i, kept.size());
            if (!label.isEmpty()) labels.insert(label, kept.size());
            kept += found;
        }
        order += places.value(i);
    }
    recallsUpTo(m_song->verses.size());
    m_song->verses = kept;
    nameVerses(*m_song);
    if (order.size() == kept.size() || !m_song->verseOrder.isEmpty()) return;
    for (const qsizetype place : order) m_song->verseOrder += m_song->verses[place].name;
}

void addAuthors(Song& song, const QString& text, SongAuthor::Work work, bool turn) {
    static const QRegularExpression separators(u"[|;\\n]"_s);
    for (const QString& piece : text.split(separators)) {
        QString credit = cleanField(piece);
        const SongAuthor::Work done = workOf(credit, work);
        QStringList names = {credit};
        const QStringList parts = credit.split(u',', Qt::SkipEmptyParts);
        if (turn && parts.size() == 2)
            names = {parts[1].trimmed() + u' ' + parts[0].trimmed()};
        else if (areFullNames(parts))
            names = parts;
        for (const QString& name : names) {
            const QString clean = cleanField(name);
            const SongAuthor author{clean, done};
            if (!clean.isEmpty() && !song.authors.contains(author)) song.authors += author;
        }
    }
}

QString authorNames(const Song& song) {
    QStringList names;
    for (const SongAuthor& author : song.authors)
        if (!names.contains(author.name)) names += author.name;
    return names.join(u", "_s);
}
