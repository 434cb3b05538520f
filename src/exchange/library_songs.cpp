// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/library_songs.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "sets/rules/set_grid.h"

#include <QHash>
#include <QMap>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString withoutApostrophes(QString text) {
    return text.remove(u'\'').remove(QChar(0x2018)).remove(QChar(0x2019));
}

LibrarySong readSongRow(const Recordset& rs) {
    LibrarySong one;
    one.id = rs.Fields("ID").toInt();
    one.chart = rs.Fields("fileLoco");
    Song& song = one.song;
    song.titles = {cleanField(rs.Fields("title"))};
    addAuthors(song, rs.Fields("artist"));
    song.key = cleanField(rs.Fields("dakey"));
    const QString number = cleanField(rs.Fields("CCLI"));
    song.ccli = ccliDigits(number);
    if (song.ccli.isEmpty() && !number.isEmpty()) song.comments += u"CCLI: "_s + number;
    for (const char* column : {"cat1", "cat2", "cat3", "cat4", "cat5"}) {
        const QString category = cleanField(rs.Fields(column));
        if (!category.isEmpty() && !song.themes.contains(category)) song.themes += category;
    }
    return one;
}

// Adds the chart's verses, and of its head what the catalogue leaves open.
void addChart(Song& song, const Song& chart) {
    song.verses = chart.verses;
    song.verseOrder = chart.verseOrder;
    song.tempo = chart.tempo;
    song.time = chart.time;
    song.capo = chart.capo;
    song.copyright = chart.copyright;
    if (song.key.isEmpty()) song.key = chart.key;
    if (song.ccli.isEmpty()) song.ccli = chart.ccli;
    const QString title = chart.title();
    if (withoutApostrophes(title) == withoutApostrophes(song.title()))
        song.titles = {title};
    else if (!title.isEmpty() && title.compare(song.title(), Qt::CaseInsensitive) != 0)
        song.titles += title;
    const QString written = authorNames(chart);
    const bool same = withoutApostrophes(written) == withoutApostrophes(authorNames(song));
    if (song.authors.isEmpty() || same)
        song.authors = chart.authors;
    else if (!written.isEmpty())
        song.comments += written;
    song.comments += chart.comments;
}

}  // namespace

QList<LibrarySong> librarySongs() {
    QList<LibrarySong> songs;
    Recordset rs = select(u"SELECT * FROM songs ORDER BY title"_s);
    for (; !rs.EOF_(); rs.MoveNext()) songs += readSongRow(rs);
    rs.Close();
    return songs;
}

QList<LibrarySong> librarySongs(const QStringList& titles, QStringList& missing) {
    const QList<LibrarySong> all = librarySongs();
    QHash<QString, const LibrarySong*> byTitle;
    for (const LibrarySong& one : all) {
        const QString name = withoutApostrophes(one.song.title()).toCaseFolded();
        if (!byTitle.contains(name)) byTitle.insert(name, &one);
    }
    QList<LibrarySong> songs;
    QList<const LibrarySong*> taken;
    for (const QString& title : titles) {
        const LibrarySong* found =
            byTitle.value(withoutApostrophes(cleanField(title)).toCaseFolded());
        if (!found) {
            missing += title;
        } else if (!taken.contains(found)) {
            taken += found;
            songs += *found;
        }
    }
    return songs;
}

QStringList titlesOfSetFile(const QString& path) {
    SheetGrid set;
    QStringList titles;
    if (!set.LoadFromFile(path)) return titles;
    for (int row = SetRow::FirstTitle; row <= set.DataRowCnt(); ++row) {
        const QString title = cleanField(set.GetText(SetColumn::Title, row));
        if (!title.isEmpty() && !titles.contains(title)) titles += title;
    }
    return titles;
}

bool loadChart(const LibrarySong& song, SheetGrid& chart) {
    return !song.chart.isEmpty() && chart.LoadFromFile(song.chart);
}

Song wholeSong(const LibrarySong& one, ChartReader& reader, bool& hasChart) {
    Song song = one.song;
    SheetGrid chart;
    hasChart = loadChart(one, chart);
    if (hasChart) addChart(song, reader.read(chart));
    return song;
}

QList<Contact> libraryPeople() {
    QList<Contact> people;
    Recordset rs = select(u"SELECT * FROM personell ORDER BY lName, fName"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        const auto field = [&](const char* column) { return cleanField(rs.Fields(column)); };
        Contact person{field("fName"), field("lName"), {},           field("address"),
                       field("city"),  field("state"), field("zip"), field("phone"),
                       field("cell"),  field("email")};
        for (const char* column : {"role", "role2", "role3"})
            if (const QString role = field(column); !role.isEmpty()) person.roles += role;
        people += person;
    }
    rs.Close();
    return people;
}

QList<PlayedDate> libraryPlayed(const QList<LibrarySong>& songs, int& unreadable) {
    QHash<int, const Song*> byID;
    for (const LibrarySong& one : songs) byID.insert(one.id, &one.song);
    QList<PlayedDate> played;
    Recordset rs = select(
        u"SELECT played_on.songID, played_on.title AS written, played_on.played_date, "
        "songs.title, songs.CCLI FROM played_on LEFT JOIN songs ON songs.ID = "
        "played_on.songID ORDER BY played_on.songID"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        if (!songs.isEmpty() && !byID.contains(rs.Fields("songID").toInt())) continue;
        const auto date = parseDate(rs.Fields("played_date"));
        const QString title = cleanField(rs.Fields("title"));
        if (date)
            played += PlayedDate{title.isEmpty() ? cleanField(rs.Fields("written")) : title,
                                 ccliDigits(rs.Fields("CCLI")), *date};
        else
            ++unreadable;
    }
    rs.Close();
    std::stable_sort(played.begin(), played.end(), [](const PlayedDate& a, const PlayedDate& b) {
        const int order = a.title.compare(b.title, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a.date < b.date;
    });
    return played;
}

QList<ServiceDate> libraryServices(int& unreadable) {
    QMap<QDate, ServiceDate> services;
    Recordset rs = select(u"SELECT * FROM schedule"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        const auto date = parseDate(rs.Fields("pdate"));
        if (!date) {
            ++unreadable;
            continue;
        }
        ServiceDate& service = services[*date];
        service.date = *date;
        service.team += {cleanField(rs.Fields("instrument")), cleanField(rs.Fields("player"))};
    }
    rs.Close();
    const auto serviceOn = [&](const QString& text) {
        const auto date = parseDate(text);
        const auto found = date ? services.find(*date) : services.end();
        return found == services.end() ? nullptr : &*found;
    };
    Recordset played = select(u"SELECT title, played_date FROM played_on"_s);
    for (; !played.EOF_(); played.MoveNext()) {
        ServiceDate* service = serviceOn(played.Fields("played_date"));
        const QString title = cleanField(played.Fields("title"));
        if (service && !service->songs.contains(title)) service->songs += title;
    }
    played.Close();
    Recordset special = select(u"SELECT song_name, play_date FROM special_music"_s);
    for (; !special.EOF_(); special.MoveNext()) {
        ServiceDate* service = serviceOn(special.Fields("play_date"));
        if (!service) continue;
        if (!service->notes.isEmpty()) service->notes += u'\n';
        service->notes += u"Special music: "_s + cleanField(special.Fields("song_name"));
    }
    special.Close();
    return services.values();
}
