// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/rules/ccli_report.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid.h"

#include <QHash>
#include <QtEndian>

#include <vector>

namespace {

// A date as it is stored, and what it compares as.
struct KnownDate {
    QString text;
    QDate date;
};

// Parses dates by their two-digit year, each text only once. Raises RunTimeError::TypeMismatch if
// a text is not a date.
class ComparableDates {
public:
    const KnownDate& of(QByteArrayView bytes) {
        // Nearly all have the eight characters of "mm/dd/yy", which are quicker to find as a
        // number.
        if (bytes.size() == sizeof(quint64)) {
            const auto key = qFromUnaligned<quint64>(bytes.data());
            const auto known = m_ofEight.constFind(key);
            return known != m_ofEight.cend() ? *known : *m_ofEight.insert(key, parsed(bytes));
        }
        const QByteArray key = bytes.toByteArray();
        const auto known = m_others.constFind(key);
        return known != m_others.cend() ? *known : *m_others.insert(key, parsed(bytes));
    }

private:
    static KnownDate parsed(QByteArrayView bytes) {
        const QString text = QString::fromUtf8(bytes);
        // Deliberate: behaviour 155.
        return {text, toDate(formatDate(toDate(text)))};
    }

    QHash<quint64, KnownDate> m_ofEight;
    QHash<QByteArray, KnownDate> m_others;
};

// What the report shows of a song. Its performances share the texts.
struct ReportedSong {
    QString title;
    QString number;
    bool isKnown = false;
};

// The songs by their IDs, which are mostly small and without many gaps.
class ReportedSongs {
public:
    ReportedSong& operator[](qint64 id) {
        if (id < 0 || id >= MostListed) return m_others[id];
        if (id >= qint64(m_songs.size())) m_songs.resize(size_t(id) + 1);
        return m_songs[size_t(id)];
    }

private:
    static constexpr qint64 MostListed = 200'000;
    std::vector<ReportedSong> m_songs;
    QHash<qint64, ReportedSong> m_others;
};

bool hasPerformance(const QString& songID) {
    Recordset rs =
        select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") + songID);
    return !rs.EOF_();
}

void alignAll(SheetGrid& grid, HAlign align) {
    grid.Col(-1);
    grid.Row(-1);
    grid.TypeHAlign(align);
}

QString reportTitle(const ReportPeriod& period, const QString& song) {
    // Deliberate: behaviour 157.
    if (period.from.isEmpty() && period.to.isEmpty())
        return QStringLiteral("CCLI Report For: ") + song;
    return QStringLiteral("CCLI Report For Time Period: ") + period.from + QStringLiteral(" to ") +
           period.to;
}

}  // namespace

ReportPeriod reportPeriodOf(const SheetGrid& dates) {
    return {dates.GetText(PeriodColumn::From, 1), dates.GetText(PeriodColumn::To, 1)};
}

void writeReportHeads(SheetGrid& report, int row) {
    report.SetText(ReportColumn::Title, row, QStringLiteral("Song Title"));
    report.SetText(ReportColumn::DatePlayed, row, QStringLiteral("Date Played"));
    report.SetText(ReportColumn::Number, row, QStringLiteral("CCLI #"));
}

void clearReport(SheetGrid& report) {
    report.MaxRows(0);
    alignAll(report, HAlign::Left);
}

void listPeriod(SheetGrid& report, const ReportPeriod& period) {
    ComparableDates dates;
    const QDate from = dates.of(period.from.toUtf8()).date;
    const QDate to = dates.of(period.to.toUtf8()).date;
    ReportedSongs songs;
    clearReport(report);
    Recordset rs = select(
        QStringLiteral("SELECT played_on.songID, played_on.played_date, songs.ID, songs.CCLI, "
                       "songs.title FROM songs INNER JOIN played_on ON songs.ID = "
                       "played_on.songID;"));
    const int dateColumn = rs.Column("played_date");
    const int idColumn = rs.Column("ID");
    for (; !rs.EOF_(); rs.MoveNext()) {
        const KnownDate& played = dates.of(rs.Bytes(dateColumn));
        if (played.date < from || played.date > to) continue;
        ReportedSong& song = songs[rs.Number(idColumn)];
        if (!song.isKnown) song = {rs.Fields("Title"), rs.Fields("CCLI"), true};
        // Deliberate: behaviour 153.
        if (!song.number.isEmpty()) report.AddRow({song.title, played.text, song.number});
    }
    rs.Close();
    writeReportHeads(report, 0);
}

void appendNumberedSongs(SheetGrid& songs) {
    // Deliberate: behaviour 156.
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE CCLI > ''"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString id = rs.Fields("ID");
        if (hasPerformance(id)) songs.AddRow({id, rs.Fields("Title"), rs.Fields("CCLI")});
    }
    rs.Close();
}

void listSong(SheetGrid& report, const SheetGrid& songs, int row) {
    clearReport(report);
    const QString id = songs.GetText(NumberedSongColumn::ID, row);
    const QString number = songs.GetText(NumberedSongColumn::Number, row);
    // Deliberate: behaviour 156.
    if (id.isEmpty()) return;
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on WHERE songID = ") + id);
    for (; !rs.EOF_(); rs.MoveNext())
        report.AddRow({rs.Fields("Title"), rs.Fields("played_date"), number});
    rs.Close();
    writeReportHeads(report, 0);
}

void prepareReportForPrint(SheetGrid& report, const ReportPeriod& period, const SheetGrid& songs) {
    // Deliberate: behaviour 157.
    constexpr int rows = PrintedReportRow::Heads;
    alignAll(report, HAlign::Centre);
    report.MaxRows(report.MaxRows() + rows);
    report.InsertRows(1, rows);
    report.AddCellSpan(1, PrintedReportRow::Title, report.MaxCols(), 1);
    const int active = songs.ActiveRow();
    // Row 0 is the head, and not a song.
    const QString song = active < 1 ? QString() : songs.GetText(NumberedSongColumn::Title, active);
    report.SetText(ReportColumn::Title, PrintedReportRow::Title, reportTitle(period, song));
    writeReportHeads(report, PrintedReportRow::Heads);
    report.SetActiveCell(0, 0);
}

QString reportSubject(const ReportPeriod& period) {
    const auto& [from, to] = period;
    if (from.isEmpty() && to.isEmpty()) return QStringLiteral("CCLI Report");
    if (from.isEmpty()) return QStringLiteral("CCLI Report Up To ") + to;
    if (to.isEmpty()) return QStringLiteral("CCLI Report From ") + from;
    // Deliberate: behaviour 158.
    return QStringLiteral("CCLI Report") + from + QStringLiteral(" To ") + to;
}
