// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pick Set: the left half finds songs. The right half is the set, which is saved, loaded and
// recorded as played.
#pragma once

#include "platform/desktop/common_dialog.h"
#include "platform/desktop/form.h"
#include "platform/desktop/media.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_set_list.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

#include <array>

class KeptWork;

class frmSetList : public Form<frmSetList>, public Ui::frmSetList {
public:
    frmSetList();
    ~frmSetList() override;

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The row of the song list that was clicked and not yet placed, and the row of the set that was
    // clicked last; 0 for none.
    int selectedSongRow = 0;
    int clickedSetRow = 0;

    // Sets both to 0.
    void forgetRows();

    // "Current Playlist" and "Past Playlist".
    std::array<QRadioButton*, 2> optPlayList;

    QMenu mnuPlaylistPast, mnuPlaylistCurrent;
    QAction mnuPastPlaylist, mnuCurrentPlaylist;
    QMenu mnuSetD;
    QAction mnuSaveDesign, mnuLoadDesign, mnuClearDesign, mnuSetDefault;
    QMenu mnuDel;
    QAction mnuDeleteFPSet, mnuAddRow, mnuDeleteRow;

    // Plays the song in the player's panel. Deliberate: behaviour 74. It goes on playing when the
    // window is closed.
    Media& mm = soundDevice();
    QTimer playerTimer;

    // Empties both category boxes and fills them again if `mode` is "list". Hides the column of
    // the IDs in the song list.
    void loadCategoryCombos(const QString& mode);

    // Lists the songs of the chosen categories in the chosen playlist. Hymns are listed only if
    // one of the categories is "Hymns". Raises what listByCategory raises.
    void searchByCategory();

    // Lists the songs of either playlist whose title contains the text of txtSearch. Raises what
    // listByTitle raises.
    void searchByTitle();

    // Opens the sound file of a row of the list in the player's panel. Raises
    // RunTimeError::NoCurrentRecord if the song no longer exists.
    void openPlayer(int row);

    // Puts the song selected in the list into this row of the set. Raises
    // RunTimeError::NoCurrentRecord if the song no longer exists.
    void placeSong(int row);

    void designSave();
    void designLoad();
    void designClear();
    void designSetDefault();
    void clearSet();

    // Records the songs of the set as played on its date if the user agrees, and saves the set to
    // a file. Raises RunTimeError::SubscriptOutOfRange if the set has more than 23 titles.
    void saveSet();
    void loadSet();

    // Print, export and mail the set as it is in the grid, saved or not.
    void printSet();
    void exportSetAsText();
    void mailSet();

    // Hands over the charts of all highlighted titles to Export Music. Raises what
    // joinedChartPaths raises.
    void collectSongs();

private:
    void wirePicker();
    void wireSet();
    void setUpPlayer();
    void setUpMenus();
    void setUpGrids();
    void load();

    void cmbCat1_Click();
    void cmbCat2_Click();
    void Command8_Click();
    void optPlayList_Click();
    void cmdSearchTitle_Click();
    void fpSongList1_Click(int col, int row);
    void fpSongList1_RightClick(int clickType, int col, int row, int x, int y);
    void mnuPastPlaylist_Click();
    void mnuCurrentPlaylist_Click();
    void fpSet_Click(int col, int row);
    void fpSet_Change(int col, int row);
    void fpSet_RightClick(int clickType, int col, int row, int x, int y);
    void mnuDeleteFPSet_Click();
    void mnuAddRow_Click();
    void mnuDeleteRow_Click();
    void Command6_Click();
    void Command9_Click();
    void Command3_Click();
    void cmdExportText_Click();
    void cmdEmailSet_Click();
    void cmdCollectSongs_Click();
    void cmdPersonellAvail_Click();
    void cmdSaveSetList_Click();
    void Command13_Click();
    void imgPlay_Click();
    void imgPause_Click();
    void imgS_Click();
    void imgClose_Click();
    void closePlayer();
    void playerTimer_Timer();

    // What is done before and after other work comes into the set.
    void takeFocusOff();
    void showInHand();
    bool chooseDesign(void (CommonDialog::*show)());
    void sortSongs(int col);
    void showPlayedDates(const QString& id);
    void movePlaylist(const QString& playlist);
    void pressPlayerButton(QToolButton* pressedLook, const QString& command);

    QString m_inHand;  // the status text about the song that waits for its place
    KeptWork* m_kept = nullptr;
};
