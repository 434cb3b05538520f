// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// CCLI Reporting: lists, prints and mails the performances of songs with a CCLI number, for a
// period or for one song.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_ccli.h"

class frmCCLI : public Form<frmCCLI>, public Ui::frmCCLI {
public:
    frmCCLI();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

private:
    void setUpGrids();

    void cmdShowReport_Click();
    void cmdSelectSong_Click();
    void fpSelectSong_Click(int col, int row);
    void cmdPrintReport_Click();
    void FlatBttn1_Click();
};
