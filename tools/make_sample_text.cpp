// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the sample's plain texts.
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "make_sample.h"
#include "sets/rules/set_record.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

// A little more than a year, so that it includes an Easter and every Sunday of December.
constexpr int Sundays = 56;

constexpr int FirstDesignRow = 2;
constexpr int MostCategories = 5;

const QLatin1String Reserved("Hymns");
const QLatin1String NoSong("(no song)");

QStringList textLinesOf(const QString& path) {
    try {
        return linesOf(path);
    } catch (const RunTimeError& error) {
        throw SampleError(QStringLiteral("%1: %2").arg(path, error.description()));
    }
}

QStringList trimmed(const QStringList& texts) {
    QStringList result;
    for (const QString& text : texts) result.append(text.trimmed());
    return result;
}

// Easter Sunday of a year in the Gregorian calendar.
QDate easter(int year) {
    const int golden = year % 19;
    const int century = year / 100;
    const int epact = (century - century / 4 - (8 * century + 13) / 25 + 19 * golden + 15) % 30;
    const int moon = epact - (epact / 28) * (1 - (29 / (epact + 1)) * ((21 - golden) / 11));
    const int weekday = (year + year / 4 + moon + 2 - century + century / 4) % 7;
    const int offset = moon - weekday;
    const int month = 3 + (offset + 40) / 44;
    return {year, month, offset + 28 - 31 * (month / 4)};
}

Design readDesign(const QString& path) {
    Design design;
    design.name = QFileInfo(path).completeBaseName();
    int row = FirstDesignRow;
    for (QString label : sampleLines(path)) {
        if (label.endsWith(NoSong))
            label = label.chopped(NoSong.size()).trimmed();
        else
            design.songRows.push_back(row);
        design.labels.append(label == QLatin1String("-") ? QString() : label);
        ++row;
    }
    return design;
}

void readDesigns(Sample& sample) {
    const QDir folder(sample.texts + QStringLiteral("/designs"));
    for (const QString& name : folder.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
        const Design design = readDesign(folder.filePath(name));
        sample.designs[design.name] = design;
    }
    sample.defaultDesign =
        sampleLines(sample.texts + QStringLiteral("/default_design.txt")).value(0);
    if (!sample.designs.contains(sample.defaultDesign))
        throw SampleError(QStringLiteral("no design \"%1\"").arg(sample.defaultDesign));
}

// The sets of each season, in the order of sets.txt.
using Seasons = std::map<QString, std::vector<Service>>;

void checkService(const Sample& sample, const Service& service) {
    const auto design = sample.designs.find(service.design);
    if (design == sample.designs.end())
        throw SampleError(QStringLiteral("sets.txt: no design \"%1\"").arg(service.design));
    if (service.titles.size() != qsizetype(design->second.songRows.size()) ||
        service.titles.size() > MostTitles)
        throw SampleError(
            QStringLiteral("sets.txt: the set of %1 does not have the songs of its design")
                .arg(service.titles.value(0)));
    for (const QString& title : service.titles)
        if (!title.isEmpty() && !sample.find(title))
            throw SampleError(QStringLiteral("sets.txt: no song \"%1\"").arg(title));
}

Seasons readSeasons(const Sample& sample) {
    Seasons seasons;
    Service* service = nullptr;
    for (const QString& line : sampleLines(sample.texts + QStringLiteral("/sets.txt"))) {
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            const QStringList head = trimmed(line.mid(1, line.size() - 2).split(QLatin1Char(':')));
            auto& sets = seasons[head.value(0)];
            sets.push_back({QDate(), head.value(1), {}});
            service = &sets.back();
        } else if (service && !line.isEmpty()) {
            service->titles.append(line == QLatin1String("-") ? QString() : line);
        }
    }
    for (const char* name : {"ordinary", "december", "palm sunday", "easter"})
        if (seasons[QLatin1String(name)].empty())
            throw SampleError(QStringLiteral("sets.txt: no set for %1").arg(QLatin1String(name)));
    for (const auto& [name, sets] : seasons)
        for (const Service& set : sets) checkService(sample, set);
    return seasons;
}

void checkCategories(const Sample& sample) {
    QStringList known = {Reserved};
    for (const QStringList& fields :
         tableOf(sample.texts + QStringLiteral("/categories.txt"), 2, 2))
        known.append(fields[0]);
    for (const SampleSong& song : sample.songs) {
        if (song.categories.isEmpty() || song.categories.size() > MostCategories)
            throw SampleError(QStringLiteral("songs.txt: categories of %1").arg(song.title));
        for (const QString& category : song.categories)
            if (!known.contains(category))
                throw SampleError(QStringLiteral("songs.txt: no category \"%1\"").arg(category));
    }
}

}  // namespace

const SampleSong* Sample::find(const QString& title) const {
    const auto at = std::find_if(songs.begin(), songs.end(),
                                 [&](const SampleSong& song) { return song.title == title; });
    return at == songs.end() ? nullptr : &*at;
}

QStringList sampleLines(const QString& path) {
    QStringList lines = trimmed(textLinesOf(path));
    lines.removeIf([](const QString& line) { return line.startsWith(QLatin1Char('#')); });
    while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

std::vector<QStringList> tableOf(const QString& path, int least, int most) {
    std::vector<QStringList> table;
    for (const QString& line : sampleLines(path)) {
        if (line.isEmpty()) continue;
        table.push_back(trimmed(line.split(QLatin1Char('|'))));
        if (table.back().size() < least || table.back().size() > most)
            throw SampleError(QStringLiteral("%1: \"%2\" has %3 fields")
                                  .arg(path, line)
                                  .arg(table.back().size()));
    }
    return table;
}

int numberOf(const QString& text, const QString& where) {
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok) throw SampleError(QStringLiteral("%1: \"%2\" is not a number").arg(where, text));
    return number;
}

void writeFile(const QString& path, const QByteArray& content) {
    if (!replaceFile(path, content))
        throw SampleError(QStringLiteral("%1 cannot be written").arg(path));
}

void saveGrid(const SheetGrid& grid, const QString& path) {
    if (!grid.SaveToFile(path, false))
        throw SampleError(QStringLiteral("%1 cannot be written").arg(path));
}

void readSongs(Sample& sample) {
    for (const QStringList& fields : tableOf(sample.texts + QStringLiteral("/songs.txt"), 6, 6)) {
        if (sample.find(fields[0]) || fields[0].contains(QLatin1Char('\'')))
            throw SampleError(QStringLiteral("songs.txt: the title %1").arg(fields[0]));
        sample.songs.push_back({fields[0], fields[1], fields[2],
                                trimmed(fields[3].split(QLatin1Char(','))), fields[4], fields[5],
                                QString(), QString()});
    }
    checkCategories(sample);
}

void readServices(Sample& sample) {
    readDesigns(sample);
    const Seasons seasons = readSeasons(sample);
    size_t ordinary = 0;
    for (int week = 1; week <= Sundays; ++week) {
        const QDate date = sample.comingSunday.addDays(-7 * week);
        const auto pick = [&](const char* season, size_t n) {
            const auto& sets = seasons.at(QLatin1String(season));
            return sets[n % sets.size()];
        };
        Service service;
        if (date.month() == 12)
            service = pick("december", size_t(date.day() - 1) / 7);
        else if (date == easter(date.year()))
            service = pick("easter", 0);
        else if (date == easter(date.year()).addDays(-7))
            service = pick("palm sunday", 0);
        else
            service = pick("ordinary", ordinary++);
        service.date = date;
        sample.services.push_back(service);
    }
}
