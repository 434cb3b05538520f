// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The song catalogue: songs, their categories and the dates on which they were played.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_song_admin.h"

#include <QMenu>

class KeptWork;

// The ID in row 1 of fpSMsong is the whole state of the window. If it is empty, "Add/Update" stores
// a new song, otherwise it updates the song shown.
class frmSongAdmin : public Form<frmSongAdmin>, public Ui::frmSongAdmin {
public:
    // Creates the window without its data. Call loadSongMgmt once it is on the screen.
    frmSongAdmin();

    // Fills the combo boxes with the categories, clears the song and its dates, and loads the song
    // list. Raises what a failing statement raises.
    void loadSongMgmt();

    // The context menu of the song's fields. Its item clears the value of the active row.
    QMenu mnuDel;
    QAction mnuDeleteDoIt;

private:
    void setUpGrids();
    void wireSongs();
    void wireCategories();

    void loadSongList();
    void showSong(int col, int row);
    void keepSong();
    void chooseFile(int row);

    // Puts the cursor where the next song or category is typed.
    void startSong();
    void startCategory();

    void clearCategory();
    void showPanel(bool on);

    void fpSongList2_Click(int col, int row);
    void fpSongList2_RightClick(int clickType, int col, int row, int x, int y);
    void fpSMsong_Click(int col, int row);
    void fpSMsong_ButtonClicked(int col, int row, bool buttonDown);
    void fpSMsong_RightClick(int clickType, int col, int row, int x, int y);
    void fpSMsong_MouseUp(int button, int shift, int x, int y);
    void fpdp_Change(int col, int row);
    void cmdAdd_Click();
    void cmdDel_Click();
    void cmdClear_Click();
    void Command12_Click();
    void mnuDeleteDoIt_Click();

    void cmdDefineCat_Click();
    void fpCat_Click(int col, int row);
    void cmdAddCat_Click();
    void cmdDelCat_Click();
    void Command1_Click();
    void Command4_Click();
    void txtCats_Click();

    KeptWork* m_kept = nullptr;
};
