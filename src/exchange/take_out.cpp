// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/take_out.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "exchange/rules/csv_table.h"
#include "reports/rules/ccli_report.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MostNamed = 20;  // titles in a note

// Names of files that differ even where case does not count.
class FileNames {
public:
    FileNames(const QString& folder, const char* extension)
        : m_folder(folder), m_extension(u'.' + QLatin1String(extension)) {}

    QString pathFor(const QString& text) {
        QString name = safeFileName(text);
        if (name.isEmpty()) name = u"Untitled"_s;
        QString free = name;
        for (int n = 2; m_taken.contains(free.toCaseFolded()); ++n) free = name + u" (%1)"_s.arg(n);
        m_taken += free.toCaseFolded();
        return m_folder + u'/' + free + m_extension;
    }

private:
    QString m_folder;
    QString m_extension;
    QSet<QString> m_taken;
};

QString namesIn(const QStringList& names) {
    QStringList shown = names.mid(0, MostNamed);
    if (names.size() > MostNamed) shown += u"and %1 more"_s.arg(names.size() - MostNamed);
    return shown.join(u", "_s);
}

void noteUnreadable(TakeOutResult& result, int count) {
    if (count == 0) return;
    result.isPartial = true;
    result.notes += (count == 1 ? u"%1 entry has no date that can be read, and is left out."_s
                                : u"%1 entries have no date that can be read, and are left "
                                  "out."_s)
                        .arg(count);
}

// Replaces a file whole. Other than replaceFile it does not wait for the disk, which would take
// longer than all else where there are thousands of files.
bool replaceQuickly(const QString& path, const QByteArray& bytes) {
    const QString part = path + u".part"_s;
    QFile file(part);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && file.error() == QFileDevice::NoError;
    file.close();
    std::error_code error;
    if (written) std::filesystem::rename(part.toStdU16String(), path.toStdU16String(), error);
    if (written && !error) return true;
    QFile::remove(part);
    return false;
}

class TakingOut {
public:
    TakingOut(const TakeOutOrder& order, const ExchangeProgress& progress)
        : m_order(order), m_progress(progress) {}

    TakeOutResult run();

private:
    void writeSongs();
    void writeCalendars();
    void writePersonCalendars(const QList<ServiceDate>& services, const QDateTime& stamp);
    void writeBook();
    QByteArray ccliReport();
    bool mayWrite(const QStringList& paths);
    bool write(const QString& path, const QByteArray& bytes);

    const TakeOutOrder& m_order;
    const ExchangeProgress& m_progress;
    TakeOutResult m_result;
};

TakeOutResult TakingOut::run() {
    int unreadable = 0;
    switch (m_order.form) {
        case TakeOutForm::ChordPro:
        case TakeOutForm::OpenLyrics:
        case TakeOutForm::Text:
            writeSongs();
            break;
        case TakeOutForm::SongsCsv: {
            QList<Song> songs;
            for (const LibrarySong& one : m_order.songs) songs += one.song;
            write(m_order.target, writeSongsCsv(songs));
            break;
        }
        case TakeOutForm::PlayedCsv: {
            QList<PlayedDate> played;
            if (m_order.allSongs || !m_order.songs.isEmpty())
                played = libraryPlayed(m_order.allSongs ? QList<LibrarySong>() : m_order.songs,
                                       unreadable);
            write(m_order.target, writePlayedCsv(played));
            break;
        }
        case TakeOutForm::CcliReport:
            write(m_order.target, ccliReport());
            break;
        case TakeOutForm::PeopleCsv:
            write(m_order.target, writePeopleCsv(libraryPeople()));
            break;
        case TakeOutForm::Calendar:
        case TakeOutForm::PersonCalendars:
            writeCalendars();
            break;
        case TakeOutForm::SongBook:
            writeBook();
            break;
    }
    noteUnreadable(m_result, unreadable);
    return m_result;
}

// Whether nothing is in the way of these files.
bool TakingOut::mayWrite(const QStringList& paths) {
    for (const QString& path : paths)
        if (QFileInfo::exists(path)) m_result.existing += path;
    return m_order.replace || m_order.dryRun || m_result.existing.isEmpty();
}

bool TakingOut::write(const QString& path, const QByteArray& bytes) {
    if (!m_order.dryRun && !replaceQuickly(path, bytes)) {
        m_result.problem = u"%1 could not be written."_s.arg(QDir::toNativeSeparators(path));
        return false;
    }
    m_result.files += path;
    return true;
}

void TakingOut::writeSongs() {
    FileNames names(m_order.target, takeOutForm(m_order.form).file);
    QStringList paths;
    for (const LibrarySong& one : m_order.songs) paths += names.pathFor(one.song.title());
    if (!mayWrite(paths)) return;
    ChartReader reader;
    QStringList bare, lost;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const LibrarySong& one = m_order.songs[i];
        bool hasChart = false;
        const Song song = wholeSong(one, reader, hasChart);
        if (!hasChart) (one.chart.isEmpty() ? bare : lost) += song.title();
        const QByteArray bytes = m_order.form == TakeOutForm::ChordPro     ? writeChordPro({song})
                                 : m_order.form == TakeOutForm::OpenLyrics ? writeOpenLyrics(song)
                                                                           : writeSongText(song);
        if (!write(paths[i], bytes)) break;
        m_result.cancelled = !m_progress(int(i + 1), int(paths.size()));
        if (m_result.cancelled) break;
    }
    if (!bare.isEmpty()) m_result.notes += u"Without a chart, so without words: "_s + namesIn(bare);
    if (lost.isEmpty()) return;
    m_result.isPartial = true;
    m_result.notes += u"The chart is missing or damaged, so without words: "_s + namesIn(lost);
}

QByteArray TakingOut::ccliReport() {
    SheetGrid report;
    report.MaxCols(ReportColumn::Number);
    listPeriod(report, {formatDate(m_order.from), formatDate(m_order.to)});
    QList<QStringList> rows;
    for (int row = 1; row <= report.MaxRows(); ++row)
        rows += {report.GetText(ReportColumn::Title, row),
                 toDate(report.GetText(ReportColumn::DatePlayed, row)).toString(Qt::ISODate),
                 report.GetText(ReportColumn::Number, row)};
    std::stable_sort(rows.begin(), rows.end(), [](const QStringList& a, const QStringList& b) {
        const int order = a[0].compare(b[0], Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a[1] < b[1];
    });
    rows.prepend({u"Song Title"_s, u"Date Played"_s, u"CCLI #"_s});
    return csvBytes(rows);
}

void TakingOut::writeCalendars() {
    int unreadable = 0;
    const QList<ServiceDate> services = libraryServices(unreadable);
    noteUnreadable(m_result, unreadable);
    if (services.isEmpty()) {
        m_result.problem = u"No schedule has been finalised yet."_s;
        return;
    }
    const QDateTime stamp = QDateTime(today(), QTime::currentTime()).toUTC();
    if (m_order.form == TakeOutForm::Calendar)
        write(m_order.target, writeCalendar(services, stamp));
    else
        writePersonCalendars(services, stamp);
}

void TakingOut::writePersonCalendars(const QList<ServiceDate>& services, const QDateTime& stamp) {
    QStringList people;
    for (const ServiceDate& service : services)
        for (const ServiceDate::Assignment& one : service.team)
            if (!one.person.isEmpty() && !people.contains(one.person, Qt::CaseInsensitive))
                people += one.person;
    people.sort(Qt::CaseInsensitive);
    FileNames names(m_order.target, takeOutForm(m_order.form).file);
    QStringList paths;
    for (const QString& person : people) paths += names.pathFor(person);
    if (!mayWrite(paths)) return;
    for (qsizetype i = 0; i < people.size(); ++i) {
        if (!write(paths[i], writeCalendar(services, stamp, people[i]))) return;
        m_result.cancelled = !m_progress(int(i + 1), int(people.size()));
        if (m_result.cancelled) return;
    }
}

void TakingOut::writeBook() {
    bool cancelled = false;
    const SongBookContent content =
        makeSongBook({m_order.bookTitle.isEmpty() ? u"Song Book"_s : m_order.bookTitle,
                      m_order.songs, m_order.paper},
                     [&](int done, int all) {
                         cancelled = !m_progress(done, all);
                         return !cancelled;
                     });
    m_result.cancelled = cancelled;
    m_result.problem = content.problem;
    if (!content.withoutChart.isEmpty())
        m_result.notes += u"Without a chart that can be read, so not in the book: "_s +
                          namesIn(content.withoutChart);
    if (cancelled || !content.problem.isEmpty()) return;
    if (content.pdf.isEmpty())
        m_result.problem = u"None of the songs has a chart that can be read."_s;
    else
        write(m_order.target, content.pdf);
}

}  // namespace

const QList<TakeOutFormInfo>& takeOutForms() {
    static const QList<TakeOutFormInfo> forms = {
        {TakeOutForm::ChordPro, "chordpro", "Songs as ChordPro", "cho", nullptr, true, false},
        {TakeOutForm::OpenLyrics, "openlyrics", "Songs as OpenLyrics", "xml", nullptr, true, false},
        {TakeOutForm::Text, "text", "Songs as plain text with chords", "txt", nullptr, true, false},
        {TakeOutForm::SongBook, "songbook", "Song book as one PDF", "pdf", "Song Book", true,
         false},
        {TakeOutForm::SongsCsv, "songs", "List of songs (CSV)", "csv", "Songs", true, false},
        {TakeOutForm::PlayedCsv, "played", "Played dates (CSV)", "csv", "Played Dates", true,
         false},
        {TakeOutForm::CcliReport, "ccli", "CCLI report of a period (CSV)", "csv", "CCLI Report",
         false, true},
        {TakeOutForm::PeopleCsv, "people", "People (CSV)", "csv", "People", false, false},
        {TakeOutForm::Calendar, "calendar", "Schedule as a calendar", "ics", "Schedule", false,
         false},
        {TakeOutForm::PersonCalendars, "calendars", "Schedule as one calendar for each person",
         "ics", nullptr, false, false},
    };
    return forms;
}

const TakeOutFormInfo& takeOutForm(TakeOutForm form) {
    const auto& forms = takeOutForms();
    return *std::find_if(forms.begin(), forms.end(),
                         [form](const TakeOutFormInfo& info) { return info.form == form; });
}

SetSongs songsOfSetFile(const QString& path, bool byTitle) {
    SetSongs of;
    of.songs = librarySongs(titlesOfSetFile(path), of.missing);
    if (!byTitle) return of;
    QSet<int> ids;
    for (const LibrarySong& one : of.songs) ids += one.id;
    of.songs = librarySongs();
    of.songs.removeIf([&](const LibrarySong& one) { return !ids.contains(one.id); });
    return of;
}

QString takeOutSummary(const TakeOutOrder& order, const TakeOutResult& result) {
    const QString verb = order.dryRun ? u"would be"_s : u"were"_s;
    const QString place = QDir::toNativeSeparators(order.target);
    if (takeOutForm(order.form).stem)
        return result.files.isEmpty() ? u"Nothing was written."_s
               : order.dryRun         ? u"%1 would be written."_s.arg(place)
                                      : u"%1 was written."_s.arg(place);
    if (result.files.size() == 1)
        return (order.dryRun ? u"1 file would be written to %1."_s : u"1 file was written to %1."_s)
            .arg(place);
    return u"%1 files %2 written to %3."_s.arg(QString::number(result.files.size()), verb, place);
}

TakeOutResult takeOut(const TakeOutOrder& order, const ExchangeProgress& progress) {
    return TakingOut(order, progress).run();
}
