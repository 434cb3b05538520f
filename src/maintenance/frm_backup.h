// Backup Files: the database and the folders of documents are copied to a place of the user's
// choice and back; the database can be emptied.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_backup.h"

#include <array>

class frmBackup : public Form<frmBackup>, public Ui::frmBackup {
public:
    frmBackup();

    // What to copy: "Database", "Saved Sets", "Set Designs", "Schedules".
    std::array<QCheckBox*, 4> ckBU;

    // Empties the tables of songs, dates and people after a warning. Notes, special music, the
    // settings and all files stay. Raises what a failing statement raises, with the tables before
    // it empty.
    void reformatDatabase();

private:
    void cmdBack_Click();
    void cmdRestore_Click();
    void lblReformatDB_Click();
};
