// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/verse_names.h"

#include "exchange/rules/plain_text.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

// The words for a kind of verse, in lower case and without blanks, hyphens and accents.
const QHash<QString, VerseKind>& verseWords() {
    static const QHash<QString, VerseKind> words = [] {
        QHash<QString, VerseKind> all;
        const auto add = [&](VerseKind kind, std::initializer_list<const char*> names) {
            for (const char* name : names) all.insert(QLatin1String(name), kind);
        };
        add(VerseKind::Verse, {"verse", "vers", "verso", "strophe", "stanza", "couplet", "estrofa",
                               "estrofe", "strofa", "vs", "verset", "zwrotka", "sloka"});
        add(VerseKind::Chorus, {"chorus", "refrain", "refrein", "refren", "refrao", "estribillo",
                                "coro", "chor", "kehrvers", "ritornello", "refrang", "omkvad",
                                "chorusrefrain", "refrainchorus", "antiphon", "endchorus"});
        add(VerseKind::PreChorus, {"prechorus", "prerefrain", "precoro", "prerefrao",
                                   "bridgetochorus", "lift", "channel"});
        add(VerseKind::Bridge, {"bridge", "brucke", "pont", "puente", "ponte", "brug", "bro"});
        add(VerseKind::Intro,
            {"intro", "introduction", "einleitung", "introduccion", "vorspiel", "introducao"});
        add(VerseKind::Ending, {"ending", "outro", "coda", "schluss", "ende", "end", "fin", "tag",
                                "finale", "nachspiel", "final"});
        add(VerseKind::Solo, {"solo", "instrumental", "interlude", "zwischenspiel", "turnaround",
                              "instrument", "interludio", "guitarsolo", "break"});
        add(VerseKind::Middle, {"middle", "mittelteil", "middleeight"});
        add(VerseKind::Other, {"other", "misc", "miscellaneous", "andere", "vamp", "rap", "spoken",
                               "postchorus", "otro", "autre", "descant", "hook", "unknown",
                               "refrain/verse", "breakdown", "reprise", "part", "teil", "section"});
        return all;
    }();
    return words;
}

QString foldedWord(const QString& word) {
    QString folded;
    for (const QChar c : word.normalized(QString::NormalizationForm_D).toLower())
        if (c.isLetter()) folded += c;
    return folded;
}

const QHash<QString, VerseKind>& shortWords() {
    static const QHash<QString, VerseKind> words = {
        {u"v"_s, VerseKind::Verse},     {u"c"_s, VerseKind::Chorus},
        {u"p"_s, VerseKind::PreChorus}, {u"pc"_s, VerseKind::PreChorus},
        {u"b"_s, VerseKind::Bridge},    {u"i"_s, VerseKind::Intro},
        {u"e"_s, VerseKind::Ending},    {u"t"_s, VerseKind::Ending},
        {u"s"_s, VerseKind::Solo},      {u"m"_s, VerseKind::Middle},
        {u"o"_s, VerseKind::Other},     {u""_s, VerseKind::Verse},
        {u"r"_s, VerseKind::Chorus},    {u"ch"_s, VerseKind::Chorus},
        {u"br"_s, VerseKind::Bridge}};
    return words;
}

QString romanAsNumber(const QString& text) {
    static const QStringList romans = {u"I"_s,  u"II"_s,  u"III"_s,  u"IV"_s, u"V"_s,
                                       u"VI"_s, u"VII"_s, u"VIII"_s, u"IX"_s, u"X"_s};
    const qsizetype at = romans.indexOf(text);
    return at < 0 ? text : QString::number(at + 1);
}

// By VerseKind: the letter of a verse's name and the word of its label.
constexpr char KindLetters[] = "vcpbiesmo";
constexpr const char* KindWords[] = {"Verse",  "Chorus", "Pre-Chorus", "Bridge", "Intro",
                                     "Ending", "Solo",   "Middle",     "Other"};

// The first name of a letter that is not taken: "c", "c2", "c3" or "v1", "v2". `start` keeps the
// search short where many were given.
QString freeName(QChar letter, const QSet<QString>& taken, QHash<QChar, int>& start) {
    if (letter != u'v' && !taken.contains(QString(letter))) return letter;
    int& number = start[letter];
    if (number == 0) number = letter == u'v' ? 1 : 2;
    while (taken.contains(letter + QString::number(number))) ++number;
    return letter + QString::number(number);
}

}  // namespace

QString bareLabel(const QString& label) {
    QString bare = cleanField(label);
    const auto strip = [&](QChar open, QChar close) {
        if (bare.size() > 2 && bare.startsWith(open) && bare.endsWith(close))
            bare = bare.sliced(1, bare.size() - 2).trimmed();
    };
    while (bare.endsWith(u':') || bare.endsWith(u'-') || bare.endsWith(u'.')) bare.chop(1);
    strip(u'[', u']');
    strip(u'(', u')');
    strip(u'<', u'>');
    strip(u'{', u'}');
    while (bare.endsWith(u':') || bare.endsWith(u'.')) bare.chop(1);
    return bare.trimmed();
}

std::optional<VerseName> verseName(const QString& label, bool shortForms) {
    const QString bare = bareLabel(label);
    if (bare.isEmpty() || bare.size() > 60) return {};
    // The word, its number, a letter for its part, and a remark: "(2x)", "x2", "- slowly".
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(
            u"(?<word>\\p{L}[\\p{L}\\p{M}'/-]*(?:[ -](?:chorus|refrain|eight|solo|chor))?|)"
            "[ .:#_-]*(?<number>\\d{1,3}|[IVX]{1,4}(?![A-Za-z]))?\\s?(?<part>[a-z](?![\\p{L}\\d]))?"
            "(?<rest>\\s*[:.]?\\s*(?:\\(.*\\)|\\[.*\\]|[xX]\\s?\\d+|\\d+\\s?[xX]|[-\u2013]\\s.*)?)"_s),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(bare);
    if (!match.hasMatch()) return {};
    const QString word = foldedWord(match.captured(u"word"_s));
    QString number = romanAsNumber(match.captured(u"number"_s).toUpper());
    while (number.startsWith(u'0') && number.size() > 1) number.remove(0, 1);
    if (number == "0"_L1) number.clear();
    VerseKind kind;
    if (verseWords().contains(word) && !word.isEmpty())
        kind = verseWords().value(word);
    else if (shortForms && shortWords().contains(word) && !(word.isEmpty() && number.isEmpty()))
        kind = shortWords().value(word);
    else
        return {};
    return VerseName{kind, letterOf(kind) + number + match.captured(u"part"_s).toLower()};
}

QString labelOfName(const QString& name) {
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(u"([vcpbiesmo])(\\d{0,3}[a-z]?)"_s));
    const auto match = form.match(name);
    if (!match.hasMatch()) return name;
    const qsizetype kind = QLatin1StringView(KindLetters).indexOf(match.captured(1)[0]);
    const QString label = QLatin1String(KindWords[kind]);
    return match.captured(2).isEmpty() ? label : label + u' ' + match.captured(2);
}

QChar letterOf(VerseKind kind) { return QLatin1Char(KindLetters[int(kind)]); }

void nameVerses(Song& song) {
    QSet<QString> taken, wanted;
    QHash<QChar, int> start;
    for (const SongVerse& verse : song.verses) wanted += verse.name;
    QSet<QString> translated;
    for (SongVerse& verse : song.verses) {
        const QString key = verse.name + u'\n' + verse.language;
        if (!verse.language.isEmpty() && !verse.name.isEmpty() && taken.contains(verse.name) &&
            !translated.contains(key)) {
            translated += key;
            continue;
        }
        const QChar letter = letterOf(verse.kind);
        if (verse.name.isEmpty() || verse.name == "v"_L1 || taken.contains(verse.name))
            verse.name = freeName(letter, wanted, start);
        taken += verse.name;
        wanted += verse.name;
        translated += verse.name + u'\n' + verse.language;
    }
}

void setVerseOrder(Song& song, const QStringList& entries) {
    QSet<QString> names;
    for (const SongVerse& verse : song.verses) names += verse.name;
    const auto nameOf = [&](const QString& entry) -> QString {
        if (names.contains(entry)) return entry;
        if (names.contains(entry.toLower())) return entry.toLower();
        for (const SongVerse& verse : song.verses)
            if (verse.label.compare(entry, Qt::CaseInsensitive) == 0) return verse.name;
        const auto called = verseName(entry, true);
        if (!called) return {};
        if (names.contains(called->name)) return called->name;
        // "C1" where there is one chorus, "V" where the verses are numbered.
        const QString first(letterOf(called->kind));
        if (called->name == first + u'1' && names.contains(first)) return first;
        if (called->name == first && names.contains(first + u'1')) return first + u'1';
        return {};
    };
    QSet<QString> missing;
    QHash<QString, QString> known;
    for (const QString& entry : entries) {
        if (!known.contains(entry)) known.insert(entry, nameOf(entry));
        const QString name = known.value(entry);
        if (!name.isEmpty()) song.verseOrder += name;
        if (!name.isEmpty() || missing.contains(entry)) continue;
        missing += entry;
        song.unread += u"The verse order names \"%1\", which is not there."_s.arg(entry.left(40));
    }
}
