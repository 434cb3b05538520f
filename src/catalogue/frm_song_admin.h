// The song catalogue: songs, their categories, the dates on which they were played.
#pragma once

#include "core/data/database.h"
#include "platform/desktop/form.h"
#include "ui_frm_song_admin.h"

#include <QMenu>

// The ID in row 1 of fpSMsong is the whole of the window's state: empty means that the next
// "Add/Update" stores a new song, filled that it changes the song on view.
class frmSongAdmin : public Form<frmSongAdmin>, public Ui::frmSongAdmin {
public:
    // The window as it opens, without its data. Call loadSongMgmt once it is on the screen.
    frmSongAdmin();

    // Fills the pick lists from the categories, empties the song and the dates, and fills the
    // song list. Raises what a failing statement raises.
    void loadSongMgmt();

    // Pops up over the song's fields; its item empties the value of the active row.
    QMenu mnuDel;
    QAction mnuDeleteDoIt;

private:
    void setUpGrids();
    void wireSongs();
    void wireCategories();

    void loadSongList();
    void showSong(int col, int row);
    void showDates(const QString& songID);
    void storeDates(const QString& title, const QString& songID);
    void offerSpareRow();
    void chooseFile(int row);

    void loadCategories();
    void clearCategory();
    void showPanel(bool on);

    // A statement that changes the database.

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
};
