// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Export Music: prints or mails the charts of a set's songs as one document.
#pragma once

#include "core/grid/sheet_grid.h"
#include "platform/desktop/form.h"
#include "ui_frm_song_collection.h"

class frmSongCollection : public Form<frmSongCollection>, public Ui::frmSongCollection {
public:
    frmSongCollection();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The chart loaded last, and all charts one below the other.
    SheetGrid fpT;
    SheetGrid fpSong;

    // Print and mail the charts in lblHidFile, which holds their paths, each with a "|" behind it.
    // mailCollection raises RunTimeError::FileNotFound if there is no staging file,
    // RunTimeError::PathAccess if it cannot be read.
    void printCollection();
    void mailCollection();

    // Sets the sizes, the font and the joined rows of the stacked charts.
    void layoutCollection();

private:
    void watchActivation();
    void stackCharts();

    void Form_Activate();
    void cmdPrint_Click();
    void Command1_Click();

    bool m_isActive = false;
};
