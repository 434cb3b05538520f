// Pick Set: songs are found on the left and laid into the set on the right, which is saved,
// loaded, and recorded as played.
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

class frmSetList : public Form<frmSetList>, public Ui::frmSetList {
public:
    frmSetList();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // "Current Playlist" and "Past Playlist".
    std::array<QRadioButton*, 2> optPlayList;

    QMenu mnuPlaylistPast, mnuPlaylistCurrent;
    QAction mnuPastPlaylist, mnuCurrentPlaylist;
    QMenu mnuSetD;
    QAction mnuSaveDesign, mnuLoadDesign, mnuClearDesign, mnuSetDefault;
    QMenu mnuDel;
    QAction mnuDeleteFPSet, mnuAddRow, mnuDeleteRow;

    // Plays what the player's panel shows. The sound goes on when the window is left.
    Media& mm = soundDevice();
    QTimer playerTimer;

    // Fills both category boxes for "list"; "manage" only gathers the names. Either way column 1
    // of the song list is hidden afterwards.
    void loadCategoryCombos(const QString& mode);

    // Lists the songs of the chosen categories in the chosen playlist. "Hymns" hide themselves in
    // every search that does not name them.
    void searchByCategory();

    // Lists the songs whose title holds the text of txtSearch, whatever their playlist.
    void searchByTitle();

    // Shows the player's panel with the song of a row of the list, its sound file open. Raises
    // 3021 where the song is no more.
    void openPlayer(int row);

    // Puts the song that was clicked in the list into this row of the set.
    void placeSong(int row);

    void designSave();
    void designLoad();
    void designClear();
    void designSetDefault();
    void clearSet();

    // Records the songs of the set as played on its date, if wanted, and writes the set's file.
    void saveSet();
    void loadSet();

    // The set as it stands, saved or not: on paper, as a text file of a line a row, in a mail.
    void printSet();
    void exportSetAsText();
    void mailSet();

    // Hands the charts of all highlighted titles over to Export Music. Raises 3021 where a title
    // is no song's.
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
    void playerTimer_Timer();

    void takeFocusOff();
    bool chooseDesign(void (CommonDialog::*show)());
    void showPlayedDates(const QString& id);
    void movePlaylist(const QString& statement);
    void pressPlayerButton(QToolButton* pressedLook, const QString& command);
};
