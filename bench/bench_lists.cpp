// How long the song list and the category search take on 10,000 songs with 200,000 played rows, as
// ratios to a bare loop that prepares and steps the same statements with SQLite itself.
#include "catalogue/frm_song_admin.h"
#include "core/database.h"
#include "core/frm_mdi.h"
#include "core/paths.h"
#include "platform/desktop.h"
#include "sets/frm_set_list.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <sqlite3.h>

namespace {

constexpr int Rounds = 7;

void fill(const QString& file) {
    sqlite3* db = nullptr;
    sqlite3_open(file.toUtf8().constData(), &db);
    sqlite3_exec(db,
                 "BEGIN;"
                 "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) "
                 "INSERT INTO songs (title, artist, dakey, cat1, cat2, playlist) SELECT "
                 "printf('Song number %05d', (i * 7919) % 10000), 'Artist', 'G', 'Praise', "
                 "'Prayer', 'Current' FROM n;"
                 "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 199999) "
                 "INSERT INTO played_on (title, played_date, songID) SELECT 'Song', "
                 "printf('%02d/%02d/%02d', 1 + i * 7 % 12, 1 + i * 11 % 28, i / 10000 + 6), "
                 "1 + i % 10000 FROM n;"
                 "INSERT INTO categories (name) VALUES ('Praise');"
                 "COMMIT;",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

int stepAll(sqlite3* db, const std::string& source) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, source.c_str(), -1, &statement, nullptr);
    int rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) ++rows;
    sqlite3_finalize(statement);
    return rows;
}

// Walks the songs of one statement and, for each, all rows of a second one about its ID.
void bareLoop(sqlite3* db, const char* songs, const std::string& before, const std::string& after,
              bool walksTwice) {
    if (walksTwice) stepAll(db, songs);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, songs, -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const auto* id = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        stepAll(db, before + id + after);
    }
    sqlite3_finalize(statement);
}

double seconds(const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Both in turn, so that a change of the machine's speed meets both.
void compare(const char* name, const std::function<void()>& ours,
             const std::function<void()>& bare) {
    std::vector<double> a;
    std::vector<double> b;
    std::vector<double> ratios;
    for (int round = 0; round < Rounds; ++round) {
        a.push_back(seconds(ours));
        b.push_back(seconds(bare));
        ratios.push_back(a.back() / b.back());
    }
    std::printf("%-18s %7.1f ms, bare loop %7.1f ms, ratio %.2f\n", name, median(a) * 1000,
                median(b) * 1000, median(ratios));
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("db1.mdb"));
    QFile::copy(QStringLiteral(PROGRAM_TREE "/db1.mdb"), file);
    fill(file);
    setProgramFolder(folder.path());
    setEndOfProcess([](int) {});
    frmMDI main;
    main.show();
    sqlite3* db = nullptr;
    sqlite3_open(file.toUtf8().constData(), &db);

    frmSongAdmin& songs = frmSongAdmin::instance();
    songs.Show();
    compare(
        "loadSongList", [&] { songs.Command12->click(); },
        [&] {
            bareLoop(db, "SELECT * FROM songs ORDER BY title",
                     "SELECT played_date FROM played_on WHERE (songID = ", ")", true);
        });

    frmSetList& sets = frmSetList::instance();
    sets.Show();
    sets.cmbCat1->setEditText(QStringLiteral("Praise"));
    compare(
        "searchByCategory", [&] { sets.searchByCategory(); },
        [&] {
            bareLoop(db,
                     "SELECT * FROM songs WHERE (cat1 = 'Praise') OR (cat2 = 'Praise') OR (cat3 = "
                     "'Praise') OR (cat4 = 'Praise') OR (cat5 = 'Praise') ORDER BY title;",
                     "SELECT DISTINCT played_date FROM played_on WHERE (songID = ",
                     ") ORDER BY played_date DESC", false);
        });
    sqlite3_close(db);
    std::printf("rows listed: %d and %d\n", songs.fpSongList2->MaxRows(),
                sets.fpSongList1->MaxRows());
    return 0;
}
