// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Past Sets: shows a saved set, prints it and mails it.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_past_sets.h"

class frmPastSets : public Form<frmPastSets>, public Ui::frmPastSets {
public:
    frmPastSets();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The lists of the folder browser.
    QComboBox* Drive1;
    QTreeView* Dir1;
    QListWidget* File1;

private:
    void load();
    void setUpWidths();

    void File1_Click();
    void cmdPrintPast_Click();
    void cmdEpastSet_Click();
};
