// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tests of the song window share.
#pragma once

#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/categories.h"
#include "catalogue/rules/played_dates.h"
#include "catalogue/rules/song_form.h"
#include "catalogue/rules/song_list.h"
#include "core/data/run_time_error.h"
#include "support/grid_hands.h"
#include "support/world.h"

#include <QMdiSubWindow>

#include <sqlite3.h>

class SongAdminTest : public WindowTest {
protected:
    // Starts the program, opens the song window and clears the statement log.
    frmSongAdmin& open() {
        world->start();
        openAgain();
        world->statements.clear();
        return window();
    }

    void openAgain() { click(world->main().cmdSongMgmt); }

    static frmSongAdmin& window() { return frmSongAdmin::instance(); }

    // Clicks the song with this title in the list.
    void showSong(const QString& title) {
        const int row =
            int(columnOf(window().fpSongList2, SongListColumn::Title).indexOf(title)) + 1;
        QVERIFY2(row > 0, qPrintable(title + QStringLiteral(" is not in the list")));
        clickCell(window().fpSongList2, SongListColumn::Title, row);
    }

    void typeInSong(int row, const QString& text) {
        typeInCell(window().fpSMsong, SongFormColumn::Value, row, text);
    }

    static QString songValue(int row) {
        return window().fpSMsong->GetText(SongFormColumn::Value, row);
    }
};

// Locks the database file for as long as it exists, as another program would.
class FileHeld {
public:
    explicit FileHeld(const QString& file) {
        sqlite3_open(file.toUtf8().constData(), &m_db);
        sqlite3_exec(m_db, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    }
    ~FileHeld() { sqlite3_close(m_db); }
    FileHeld(const FileHeld&) = delete;
    FileHeld& operator=(const FileHeld&) = delete;

private:
    sqlite3* m_db = nullptr;
};
