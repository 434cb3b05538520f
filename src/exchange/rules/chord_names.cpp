// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/chord_names.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto Root = "(?:[CDFGAE]is|[DG]es|Ces|Fes|As|Es|[A-H][#b\u266f\u266d]?)";

const QRegularExpression& chordPattern() {
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        u"(?<root>%1)(?<suffix>(?:maj|Maj|MAJ|min|Min|MIN|ma|mi|mj|m|M|dim|aug|sus|add|Add|no|"
        "omit|alt|o7|\u00b0|\u00ba|\u00f8|\u2300|\u0394|\u25b3|\\^|\\+|-|[#b\u266f\u266d]|1[0-3]"
        "|[2-79]|\\(|\\)|,|/(?=[0-9]))*)(?:[/\\\\](?<bass>%1))?\\)?"_s.arg(
            QString::fromUtf8(Root))));
    return pattern;
}

// What may be between the chords of a chord line.
bool isBar(const QString& token) {
    static const QRegularExpression bar(QRegularExpression::anchoredPattern(
        u"[|:.\\-/\u2013\u2014%~>_,*\u00b7]+|\\(?[xX]\\s?\\d{1,2}\\)?|\\(?\\d{1,2}[xX]\\)?"_s));
    return bar.match(token).hasMatch();
}

bool isNoChord(const QString& name) {
    static const QRegularExpression none(
        QRegularExpression::anchoredPattern(u"\\(?[nN]\\.?\\s?[cC]\\.?\\)?"_s));
    return none.match(name).hasMatch();
}

struct StructureName {
    const char* suffix;
    const char* structure;
};

// The first suffix of a structure is the one that it is read as.
constexpr StructureName StructureNames[] = {{"5", "power"},
                                            {"m", "min"},
                                            {"min", "min"},
                                            {"mi", "min"},
                                            {"-", "min"},
                                            {"aug", "aug"},
                                            {"+", "aug"},
                                            {"#5", "aug"},
                                            {"dim", "dim"},
                                            {"°", "dim"},
                                            {"7", "dom7"},
                                            {"maj7", "maj7"},
                                            {"M7", "maj7"},
                                            {"ma7", "maj7"},
                                            {"Maj7", "maj7"},
                                            {"Δ", "maj7"},
                                            {"Δ7", "maj7"},
                                            {"mj7", "maj7"},
                                            {"maj", "maj7"},
                                            {"m7", "min7"},
                                            {"min7", "min7"},
                                            {"mi7", "min7"},
                                            {"-7", "min7"},
                                            {"dim7", "dim7"},
                                            {"°7", "dim7"},
                                            {"o7", "dim7"},
                                            {"m7b5", "halfdim7"},
                                            {"ø", "halfdim7"},
                                            {"ø7", "halfdim7"},
                                            {"mmaj7", "minmaj7"},
                                            {"mM7", "minmaj7"},
                                            {"maj7#5", "augmaj7"},
                                            {"7#5", "aug7"},
                                            {"aug7", "aug7"},
                                            {"+7", "aug7"},
                                            {"6", "maj6"},
                                            {"m6", "min6"},
                                            {"9", "dom9"},
                                            {"7b9", "dom9b"},
                                            {"maj9", "maj9"},
                                            {"M9", "maj9"},
                                            {"m9", "min9"},
                                            {"mmaj9", "minmaj9"},
                                            {"9#5", "aug9"},
                                            {"m9b5", "halfdim9"},
                                            {"ø9", "halfdim9"},
                                            {"sus4", "sus4"},
                                            {"sus", "sus4"},
                                            {"4", "sus4"},
                                            {"sus2", "sus2"},
                                            {"2", "sus2"},
                                            {"add9", "add9"},
                                            {"6b", "maj6b"},
                                            {"m6b", "min6b"},
                                            {"7sus4", "4-5-m7"},
                                            {"7sus", "4-5-m7"},
                                            {"11", "3-5-m7-9-11"},
                                            {"13", "3-5-m7-9-13"},
                                            {"m11", "m3-5-m7-9-11"},
                                            {"6/9", "3-5-6-9"},
                                            {"69", "3-5-6-9"},
                                            {"madd9", "m3-5-9"},
                                            {"add2", "2-3-5"},
                                            {"add4", "3-4-5"},
                                            {"7#9", "3-5-m7-a9"},
                                            {"7b5", "3-d5-m7"},
                                            {"9sus4", "4-5-m7-9"},
                                            {"sus2sus4", "2-4-5"},
                                            {"add11", "3-5-11"},
                                            {"maj7#11", "3-5-7-a11"},
                                            {"7#11", "3-5-m7-a11"},
                                            {"maj13", "3-5-7-9-13"}};

// The degrees of a chord, gathered from a suffix.
struct Degrees {
    QString third = u"3"_s;
    QString fifth = u"5"_s;
    QString seventh;
    QStringList others;
};

QString altered(QChar sign, const QString& degree) {
    const bool sharp = sign == u'#' || sign == u'\u266f' || sign == u'+';
    if (sharp) return u'a' + degree;
    return (degree == "5"_L1 || degree == "11"_L1 || degree == "4"_L1 ? u'd' : u'm') + degree;
}

void addNumber(Degrees& degrees, const QString& number, bool major, bool diminished) {
    const QString seventh = major ? u"7"_s : diminished ? u"d7"_s : u"m7"_s;
    if (number == "7"_L1) {
        degrees.seventh = seventh;
    } else if (number == "9"_L1 || number == "11"_L1 || number == "13"_L1) {
        degrees.seventh = seventh;
        if (number != "9"_L1) degrees.others += u"9"_s;
        degrees.others += number;
    } else if (degrees.third == "3"_L1 && (number == "2"_L1 || number == "4"_L1)) {
        degrees.third = number;
    } else if (number != "5"_L1) {
        degrees.others += number;
    }
}

Degrees degreesOf(const QString& suffix) {
    static const QRegularExpression token(
        u"(?<no>no|omit)(?<out>\\d+)|[aA]dd(?<sign>[#b\u266f\u266d]?)(?<add>\\d+)|sus(?<sus>[24]?)|"
        "(?<alt>[#b\u266f\u266d]|[+-](?=5|9|11))(?<degree>\\d+)|"
        "(?<major>maj|Maj|MAJ|ma(?!dd)|mj|M|\u0394|\u25b3|\\^)|(?<minor>min|Min|MIN|mi|m|-)|"
        "(?<dim>dim|\u00b0|\u00ba|o)|(?<half>\u00f8|\u2300)|(?<aug>aug|\\+)|(?<altered>alt)|"
        "(?<number>1[0-3]|\\d)"_s);
    Degrees degrees;
    bool major = false, diminished = false;
    for (auto found = token.globalMatch(suffix); found.hasNext();) {
        const auto match = found.next();
        const auto has = [&](const QString& group) { return match.capturedLength(group) > 0; };
        if (has(u"out"_s)) {
            const QString out = match.captured(u"out"_s);
            if (out == "3"_L1) degrees.third.clear();
            if (out == "5"_L1) degrees.fifth.clear();
        } else if (has(u"add"_s)) {
            const QString added = match.captured(u"add"_s), sign = match.captured(u"sign"_s);
            degrees.others += sign.isEmpty() ? added : altered(sign[0], added);
        } else if (match.captured(0).startsWith("sus"_L1)) {
            degrees.third = has(u"sus"_s) ? match.captured(u"sus"_s) : u"4"_s;
        } else if (has(u"alt"_s)) {
            const QString degree =
                altered(match.captured(u"alt"_s)[0], match.captured(u"degree"_s));
            (degree.mid(1) == "5"_L1 ? degrees.fifth : degrees.others.emplaceBack()) = degree;
        } else if (has(u"major"_s)) {
            major = true;
        } else if (has(u"minor"_s)) {
            degrees.third = u"m3"_s;
        } else if (has(u"dim"_s) || has(u"half"_s)) {
            degrees.third = u"m3"_s;
            degrees.fifth = u"d5"_s;
            diminished = has(u"dim"_s);
            if (!diminished) degrees.seventh = u"m7"_s;
        } else if (has(u"aug"_s) || has(u"altered"_s)) {
            degrees.fifth = u"a5"_s;
            if (has(u"altered"_s)) degrees.others += u"m9"_s;
        } else {
            addNumber(degrees, match.captured(u"number"_s), major, diminished);
        }
    }
    return degrees;
}

QString signOf(const QString& degree) {
    if (degree.startsWith(u'a')) return u'#' + degree.mid(1);
    if (degree.startsWith(u'm') || degree.startsWith(u'd')) return u'b' + degree.mid(1);
    return degree;
}

QString suffixOfFormula(const QStringList& degrees) {
    QString suffix, added;
    const auto has = [&](const char* degree) { return degrees.contains(QLatin1String(degree)); };
    const bool diminished = has("m3") && has("d5") && has("d7");
    if (diminished)
        suffix += u"dim7"_s;
    else if (has("m3"))
        suffix += u'm';
    const bool major = has("7"), minor = has("m7");
    // A diminished seventh sounds like a sixth.
    if (has("6") || (has("d7") && !diminished)) suffix += u'6';
    const bool ninth = has("9");
    const int top = ninth && has("13") ? 13 : ninth && has("11") ? 11 : ninth ? 9 : 7;
    if (major || minor) suffix += (major ? u"maj"_s : QString()) + QString::number(top);
    if (!has("3") && !has("m3")) suffix += has("4") ? u"sus4"_s : has("2") ? u"sus2"_s : u"no3"_s;
    for (const QString& degree : degrees) {
        const QString sign = signOf(degree);
        const bool third = has("3") || has("m3");
        if (diminished && degree == "d5"_L1) continue;
        if (sign == "b5"_L1 || sign == "#5"_L1 ||
            (sign.size() > 1 && !sign[0].isDigit() && sign != "b3"_L1 && sign != "b7"_L1))
            added += sign;
        else if (degree == "9"_L1 || degree == "11"_L1 || degree == "13"_L1)
            added += (major || minor) && degree.toInt() <= top ? QString() : u"add"_s + degree;
        else if (third && (degree == "2"_L1 || degree == "4"_L1))
            added += u"add"_s + degree;
    }
    const bool fifth = has("5") || has("d5") || has("a5");
    suffix += added + (fifth ? QString() : u"no5"_s);
    // A sign right behind the root would be the root's.
    return suffix.startsWith(u'#') || suffix.startsWith(u'b') ? u'(' + suffix + u')' : suffix;
}

}  // namespace

std::optional<ChordParts> chordParts(const QString& name) {
    if (name.size() > 24) return {};
    const QString bare = name.startsWith(u'(') ? name.mid(1) : name;
    const auto match = chordPattern().match(bare);
    if (!match.hasMatch()) return {};
    QString suffix = match.captured(u"suffix"_s);
    while (suffix.endsWith(u')') && suffix.count(u')') > suffix.count(u'(')) suffix.chop(1);
    return ChordParts{match.captured(u"root"_s), suffix, match.captured(u"bass"_s)};
}

bool isBracketChord(const QString& name) {
    if (chordParts(name) || isNoChord(name)) return true;
    static const QRegularExpression loose(QRegularExpression::anchoredPattern(
        u"\\(?(?:(?:[a-h](?:is|es|s|[#b\u266f\u266d])?)|(?:[#b\u266f\u266d]?[1-7](?![0-9]*x))|"
        "(?:do|re|r\u00e9|mi|fa|sol|la|si|ti|DO|RE|MI|FA|SOL|LA|SI|Do|Re|R\u00e9|Mi|Fa|Sol|La|Si|"
        "Ti)[#b\u266f\u266d]?)(?:maj|min|dim|aug|sus|add|m|M|\u00b0|\u00f8|\u0394|\\+|-|"
        "[#b\u266f\u266d]|\\d|\\(|\\))*(?:/[#b\u266f\u266d]?[A-Ha-h1-7][a-z#b\u266f\u266d]{0,3})?\\)?"_s));
    return name.size() <= 24 && loose.match(name).hasMatch();
}

QList<SongChord> chordsOfLine(const QString& line) {
    QList<SongChord> chords;
    int weak = 0, strong = 0;
    for (qsizetype i = 0; i < line.size();) {
        if (line[i].isSpace()) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < line.size() && !line[end].isSpace()) ++end;
        QString token = line.sliced(i, end - i);
        const bool bracketed = token.size() > 2 && token.startsWith(u'[') && token.endsWith(u']');
        if (bracketed) token = token.sliced(1, token.size() - 2);
        if (isNoChord(token)) {
            chords += {int(i), token, false};
            ++strong;
        } else if (chordParts(token)) {
            chords += {int(i), token, false};
            // Words of English.
            ++(token == "As"_L1 ? weak : strong);
        } else if (isBar(token)) {
            if (token.size() > 1 && token.contains(QRegularExpression(u"\\d"_s)))
                chords += {int(i), token, true};
        } else {
            // "G-D-Em" or "|G|D|" is one token of several chords.
            static const QRegularExpression joint(u"[-|:,\u2013>]+"_s);
            const QStringList pieces = token.split(joint);
            if (pieces.size() < 2 || token.size() > 200) return {};
            qsizetype at = 0;
            for (const QString& piece : pieces) {
                if (piece.isEmpty()) continue;
                if (!chordParts(piece)) return {};
                at = token.indexOf(piece, at);
                chords += {int(i + at), piece, false};
                at += piece.size();
                ++strong;
            }
        }
        i = end;
    }
    if (strong == 0 || (weak > 0 && strong < weak)) return {};
    return chords;
}

QList<SongChord> chordsOfRemark(const QString& remark) {
    const QString name = remark.simplified();
    if (isBracketChord(name)) return {{0, name, false}};
    QList<SongChord> chords = chordsOfLine(remark);
    if (chords.size() < 2) return {};
    const int first = chords[0].column;
    for (SongChord& chord : chords) chord.column -= first;
    return chords;
}

void spreadChords(QList<SongChord>& chords, int textEnd) {
    int next = 0;
    for (SongChord& chord : chords) {
        if (chord.column >= textEnd) chord.column = std::max(chord.column, next);
        next = std::max(next, chord.column + int(chord.name.size()) + 1);
    }
}

bool usesGermanChords(const Song& song) {
    for (const SongVerse& verse : song.verses)
        for (const SongLine& line : verse.lines)
            for (const SongChord& chord : line.chords) {
                if (chord.annotation) continue;
                const auto parts = chordParts(chord.name);
                if (!parts) continue;
                if (parts->root.startsWith(u'H') || parts->root.endsWith(u's')) return true;
                if (parts->bass.startsWith(u'H') || parts->bass.endsWith(u's')) return true;
            }
    return false;
}

QString englishRoot(const QString& german) {
    if (german == "B"_L1) return u"Bb"_s;
    if (german == "As"_L1 || german == "Es"_L1) return german[0] + u"b"_s;
    QString root = german;
    if (root.startsWith(u'H')) root[0] = u'B';
    if (root.endsWith("is"_L1)) root = root[0] + u"#"_s;
    if (root.endsWith("es"_L1)) root = root[0] + u"b"_s;
    return root;
}

QString germanRoot(const QString& english) {
    if (english == "B"_L1) return u"H"_s;
    if (english == "Bb"_L1) return u"B"_s;
    if (english == "Ab"_L1 || english == "Eb"_L1) return english[0] + u"s"_s;
    if (english.endsWith(u'#')) return (english[0] == u'B' ? u'H' : english[0]) + u"is"_s;
    if (english.endsWith(u'b')) return english[0] + u"es"_s;
    return english;
}

QString chordStructure(const QString& suffix) {
    QString bare;
    for (const QChar c : suffix)
        if (c != u'(' && c != u')' && c != u',')
            bare += c == u'\u266f' ? u'#' : c == u'\u266d' ? u'b' : c;
    if (bare.isEmpty()) return {};
    for (const StructureName& known : StructureNames)
        if (bare == QString::fromUtf8(known.suffix)) return QString::fromUtf8(known.structure);
    const Degrees degrees = degreesOf(bare);
    QStringList all = {degrees.third, degrees.fifth};
    all += degrees.others;
    all += degrees.seventh;
    all.removeAll(QString());
    all.removeDuplicates();
    const auto number = [](const QString& degree) {
        return degree[0].isDigit() ? degree.toInt() : degree.mid(1).toInt();
    };
    std::stable_sort(all.begin(), all.end(),
                     [&](const QString& a, const QString& b) { return number(a) < number(b); });
    const QString formula = all.join(u'-');
    return formula == "3-5"_L1 ? QString() : formula;
}

QString chordSuffix(const QString& structure) {
    for (const StructureName& known : StructureNames)
        if (structure == QLatin1String(known.structure)) return QString::fromUtf8(known.suffix);
    if (structure == "major"_L1 || structure == "maj"_L1) return {};
    static const QRegularExpression formula(
        QRegularExpression::anchoredPattern(u"[amd]?\\d{1,2}(?:-[amd]?\\d{1,2})*"_s));
    // The third alone is a chord without its fifth; another number is a suffix.
    static const QRegularExpression oneNumber(u"^(?!3$)\\d+$"_s);
    if (!formula.match(structure).hasMatch() || oneNumber.match(structure).hasMatch())
        return structure;
    return suffixOfFormula(structure.split(u'-'));
}
