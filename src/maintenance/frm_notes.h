// Notes: short dated notes, and up to which day the program reminds of each at its start.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_notes.h"

class frmNotes : public Form<frmNotes>, public Ui::frmNotes {
public:
    // Raises what a failing statement raises, 3021 where the reminders' setting has no row.
    frmNotes();

    // Lists all notes in the table's order and empties the editor.
    void loadNotes();

private:
    void setUpGrids();
    void load();

    void fpNotes_Click(int col, int row);
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdClr_Click();
    void chkReminder_Click();

    void clearEditor();
    void addNote(const QString& note, const QString& date);
    void updateNote(const QString& note, const QString& date);
};
