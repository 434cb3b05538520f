// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Backup Files: copies the database and the document folders to a place of the user's choice and
// back, and empties the database.
#pragma once

#include "maintenance/rules/backup_items.h"
#include "platform/desktop/form.h"
#include "ui_frm_backup.h"

#include <array>

class frmBackup : public Form<frmBackup>, public Ui::frmBackup {
public:
    frmBackup();

    using Boxes = std::array<QCheckBox*, BackupIndex::Count>;

    // What to copy, by BackupIndex.
    Boxes ckBU;

    // Empties the database after a warning. Notes, special music, the settings and all files stay.
    // Raises what emptyDatabase raises.
    void reformatDatabase();

private:
    void cmdBack_Click();
    void cmdRestore_Click();
    void lblReformatDB_Click();
};
