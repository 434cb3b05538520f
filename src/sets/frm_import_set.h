// Import Sets: sets of another place are recorded as played and copied to the saved sets.
#pragma once

#include "platform/desktop/form.h"
#include "ui_frm_import_set.h"

class frmImportSet : public Form<frmImportSet>, public Ui::frmImportSet {
public:
    frmImportSet();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // The browser's lists.
    QComboBox* Drive1;
    QTreeView* Dir1;
    QListWidget* File1;

    // Records the set that fpSet holds: its songs replace the whole record of its date, without a
    // question. A set without a date or a known song is told and left out; `fileName` serves the
    // message alone. Raises 9 at a 24th title, and what a failing statement raises.
    void importOneSet(const QString& fileName);

private:
    void cmdPrintPast_Click();
};
