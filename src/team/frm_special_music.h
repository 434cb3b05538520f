// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Special Music Schedule: songs that somebody performs on a date, outside the ordinary set.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_special_music.h"

class frmSpecialMusic : public Form<frmSpecialMusic>, public Ui::frmSpecialMusic {
public:
    frmSpecialMusic();

    // Lists the items of the table, in its own order.
    void loadSpecialMusic();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void wire();
    void setUpGrids();

    void fpSMusic_Click(int col, int row);
    void chkNote_Click();
    void cmdAddCat_Click();
    void cmdDelCat_Click();
    void Command1_Click();
};
