// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the song list and the category search take on 10,000 songs with 200,000 played rows, as
// ratios to a bare loop that prepares and steps the same statements with SQLite itself.
#include "bare_loop.h"
#include "catalogue/frm_song_admin.h"
#include "core/shell/frm_mdi.h"
#include "sets/frm_set_list.h"

#include <QApplication>

constexpr double MostTimesTheLoop = 1.2;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const FilledFolder folder;
    frmMDI main;
    main.show();

    frmSongAdmin& songs = frmSongAdmin::instance();
    songs.Show();
    const bool listed = compare(
        "loadSongList", [&] { songs.Command12->click(); },
        [&] {
            bareLoop(folder.db, "SELECT * FROM songs ORDER BY title",
                     "SELECT played_date FROM played_on WHERE (songID = ", ")", true);
        },
        MostTimesTheLoop);

    frmSetList& sets = frmSetList::instance();
    sets.Show();
    sets.cmbCat1->setEditText(QStringLiteral("Praise"));
    const bool found = compare(
        "searchByCategory", [&] { sets.searchByCategory(); },
        [&] {
            bareLoop(folder.db,
                     "SELECT * FROM songs WHERE (cat1 = 'Praise') OR (cat2 = 'Praise') OR (cat3 = "
                     "'Praise') OR (cat4 = 'Praise') OR (cat5 = 'Praise') ORDER BY title;",
                     "SELECT DISTINCT played_date FROM played_on WHERE (songID = ",
                     ") ORDER BY played_date DESC", false);
        },
        MostTimesTheLoop);
    std::printf("rows listed: %d and %d\n", songs.fpSongList2->MaxRows(),
                sets.fpSongList1->MaxRows());
    return listed && found ? 0 : 1;
}
