// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The report of the performances of songs with a CCLI number.
#pragma once

#include <QString>

class SheetGrid;

// The one row of the period.
namespace PeriodColumn {
enum { FromLabel = 1, From, ToLabel, To };
}

// The columns of the list of songs with a CCLI number.
namespace NumberedSongColumn {
enum { ID = 1, Title, Number };
}

// The columns of the report.
namespace ReportColumn {
enum { Title = 1, DatePlayed, Number };
}

// The rows that prepareReportForPrint inserts above the report: title, blank row, heads.
namespace PrintedReportRow {
enum { Title = 1, Blank, Heads };
}

// The period as it was entered; empty texts for missing dates.
struct ReportPeriod {
    QString from;
    QString to;
};
ReportPeriod reportPeriodOf(const SheetGrid& dates);

void writeReportHeads(SheetGrid& report, int row);

// Removes all rows, and the alignment that prepareReportForPrint has set.
void clearReport(SheetGrid& report);

// Replaces the report by the performances in a period, both dates included. Raises
// RunTimeError::TypeMismatch if a date cannot be parsed, and what a failing statement raises; the
// rows listed so far stay.
void listPeriod(SheetGrid& report, const ReportPeriod& period);

// Appends the songs that have a CCLI number and were played. Raises what a failing statement
// raises.
void appendNumberedSongs(SheetGrid& songs);

// Replaces the report by all performances of the song in a row of `songs`; the report is empty if
// there is no song. Raises what a failing statement raises.
void listSong(SheetGrid& report, const SheetGrid& songs, int row);

// Centres the report and inserts its title and heads above it. The title names the period, or the
// active song in `songs` if there is no period.
void prepareReportForPrint(SheetGrid& report, const ReportPeriod& period, const SheetGrid& songs);

// The subject of the report's message.
QString reportSubject(const ReportPeriod& period);
