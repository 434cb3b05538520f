// Export Music: the charts of a set's songs, printed or mailed as one document.
#pragma once

#include "core/grid/sheet_grid.h"
#include "platform/desktop/form.h"
#include "ui_frm_song_collection.h"

class frmSongCollection : public Form<frmSongCollection>, public Ui::frmSongCollection {
public:
    frmSongCollection();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The chart that was opened last, and all charts one under the other.
    SheetGrid fpT;
    SheetGrid fpSong;

    // Print and mail the charts whose paths stand in lblHidFile, each path with a "|" behind it.
    // The mail shows the "+ Note" button for one chart alone, and raises 53 where there is no
    // staging file to read, 75 where it cannot be read.
    void printCollection();
    void mailCollection();

    // Gives the stacked charts their sizes, font and joined rows.
    void layoutCollection();

private:
    void watchActivation();
    QStringList chartPaths() const;
    void stackCharts();

    void Form_Activate();
    void cmdPrint_Click();
    void Command1_Click();

    bool m_isActive = false;
};
