// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long a year of the song history takes on 10,000 songs with 200,000 played rows, all of them
// listed, as a ratio to a bare loop that prepares and steps the same statements with SQLite itself.
#include "bare_loop.h"
#include "core/data/dates.h"
#include "core/shell/frm_mdi.h"
#include "reports/frm_history.h"

#include <QApplication>

constexpr double MostTimesTheLoop = 1.2;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const FilledFolder folder;
    // The last year of the played rows, in which every song stands once.
    setToday(QDate(2025, 11, 21));
    frmMDI main;
    main.show();
    frmHistory& history = frmHistory::instance();
    history.Show();
    const bool within = compare(
        "loadYear", [&] { history.loadYear(); },
        [&] {
            bareLoop(folder.db, "Select id, title FROM songs ORDER BY title",
                     "SELECT played_date FROM played_on WHERE songID = ", "", true);
        },
        MostTimesTheLoop);
    std::printf("rows listed: %d\n", history.fpH->MaxRows());
    return within ? 0 : 1;
}
