// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the CCLI report of a period takes on 10,000 songs with 200,000 played rows, as a ratio
// to a bare loop that steps the same join with SQLite itself and reads the texts of its rows. Fails
// if a year takes more than 2 times as long, or all years more than 2.5 times.
#include "bare_loop.h"
#include "core/data/dates.h"
#include "core/shell/frm_mdi.h"
#include "reports/frm_ccli.h"
#include "reports/rules/ccli_report.h"

#include <QApplication>

constexpr double MostForAYear = 2;       // one row in twenty is listed
constexpr double MostForAllYears = 2.5;  // every row is

static void bareJoin(sqlite3* db) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db,
                       "SELECT played_on.songID, played_on.played_date, songs.ID, songs.CCLI, "
                       "songs.title FROM songs INNER JOIN played_on ON songs.ID = "
                       "played_on.songID;",
                       -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (const int column : {1, 3, 4}) sqlite3_column_text(statement, column);
    sqlite3_finalize(statement);
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const FilledFolder folder;
    sqlite3_exec(folder.db, "UPDATE songs SET CCLI = 1000000 + ID", nullptr, nullptr, nullptr);
    setToday(QDate(2025, 11, 21));
    frmMDI main;
    main.show();
    frmCCLI& report = frmCCLI::instance();
    report.Show();
    const auto period = [&](const char* name, const char* from, const char* to, double most) {
        report.fpDates->SetText(PeriodColumn::From, 1, QString::fromLatin1(from));
        report.fpDates->SetText(PeriodColumn::To, 1, QString::fromLatin1(to));
        const bool within = compare(
            name, [&] { report.cmdShowReport->click(); }, [&] { bareJoin(folder.db); }, most);
        std::printf("rows listed: %d\n", report.fpCCLI->MaxRows());
        return within;
    };
    const bool year = period("CCLI, a year", "01/01/25", "12/31/25", MostForAYear);
    const bool all = period("CCLI, all years", "01/01/06", "12/31/25", MostForAllYears);
    return year && all ? 0 : 1;
}
