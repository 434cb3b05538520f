// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The about box.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_about.h"

// Shows the version of the program.
class frmAbout : public Form<frmAbout>, public Ui::frmAbout {
public:
    frmAbout();

private:
    void cmdOK_Click();
};
