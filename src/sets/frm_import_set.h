// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Import Sets: records sets from elsewhere as played and copies them to the saved sets.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_import_set.h"

class frmImportSet : public Form<frmImportSet>, public Ui::frmImportSet {
public:
    frmImportSet();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The lists of the folder browser.
    QComboBox* Drive1;
    QTreeView* Dir1;
    QListWidget* File1;

    // Records the set in fpSet: its songs replace all that is recorded for its date, without a
    // question. A set without a date or a known song only shows a message with `fileName`. Raises
    // RunTimeError::SubscriptOutOfRange at a 24th title, and what a failing statement raises.
    void importOneSet(const QString& fileName);

private:
    void cmdPrintPast_Click();
};
