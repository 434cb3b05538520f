// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "soak/chance.h"

#include <QDate>
#include <QDirIterator>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

void Chance::begin(int command) {
    std::seed_seq start{quint32(m_seed), quint32(m_seed >> 32), quint32(command)};
    m_engine.seed(start);
}

int Chance::below(int end) { return int(m_engine() % quint64(end)); }

QString Chance::word() {
    static const QStringList words = {u"Amazing Grace"_s,
                                      u"Be Thou My Vision"_s,
                                      u"Hymns"_s,
                                      u"Praise"_s,
                                      u"Opening"_s,
                                      u"Piano"_s,
                                      u"Drums"_s,
                                      u"G"_s,
                                      u"C#m7/G#"_s,
                                      u"Ab"_s,
                                      u"H"_s,
                                      u"Grüße"_s,
                                      u"naïve café"_s,
                                      u"Господь"_s,
                                      u"主の祈り"_s,
                                      u"שָׁלוֹם"_s,
                                      u"مرحبا"_s,
                                      u"😀🎵"_s,
                                      u"e\u0301"_s,
                                      u"\u200b\u202e"_s,
                                      u"\"quoted\""_s,
                                      u"<b>&amp;</b>"_s,
                                      u"%1 %s %n"_s,
                                      u"a\\b/c"_s,
                                      u"; DROP TABLE songs"_s,
                                      u"-- "_s,
                                      u":"_s,
                                      u","_s,
                                      u"|"_s,
                                      u"*.set"_s,
                                      u"team@example.org"_s,
                                      u"not an address"_s,
                                      u"true"_s,
                                      u"Current"_s,
                                      u"  "_s};
    return of(words);
}

QString Chance::text() {
    switch (below(10)) {
        case 0: {
            const QDate day = QDate(2026, 11, 22).addDays(7 * (below(30) - 15));
            return day.toString(u"MM/dd/yy"_s);
        }
        case 1:
            return of(QStringList{u"1/1/1990"_s, u"12/31/2100"_s, u"02/29/27"_s, u"13/13/26"_s,
                                  u"June 5, 2026"_s, u"2026-11-29"_s, u"0/0/00"_s,
                                  u"11/22/2026"_s});
        case 2:
            return of(QStringList{u"0"_s, u"1"_s, u"-1"_s, u"3"_s, u"7"_s, u"12"_s, u"100"_s,
                                  u"32768"_s, u"2147483648"_s, u"99999999999999999999"_s, u"1.5"_s,
                                  u"1e9"_s, u"٣"_s});
        case 3:
            return QString();
        case 4:
            return QString(200 + below(2000), QChar(u'x'));
        case 5:
            return once(8) ? word() + u"'s "_s + word() : word();
        default: {
            QString line = word();
            for (int more = below(4); more > 0; --more) line += u' ' + word();
            return line;
        }
    }
}

QString Chance::file(const QString& folder) {
    const QString ending = of(QStringList{u".set"_s, u".sdl"_s, u".scd"_s, u".stp"_s, u".txt"_s,
                                          u".rtf"_s, u".html"_s, u".htm"_s, u".mdb"_s, QString()});
    switch (below(8)) {
        case 0:
            return folder + u"/missing/folder/name"_s + ending;
        case 1:
            return folder + u"/db1.mdb/below a file"_s + ending;
        case 2:
            return folder + u"/"_s + of(QStringList{u"saved sets"_s, u"config"_s, u"."_s, u".."_s});
        case 3:
            return folder + u"/new/"_s +
                   of(QStringList{u"Ünïcode"_s, u"a b"_s, QString(300, u'n'), u"%20"_s, u"主"_s}) +
                   ending;
        default:
            break;
    }
    QStringList files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) files += walk.next();
    files.sort();
    QStringList fitting;
    for (const QString& file : files)
        if (file.endsWith(ending)) fitting += file;
    return of(fitting.isEmpty() ? files : fitting);
}
