// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Notes: lists and edits dated notes, and turns the reminders at the start of the program off.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_notes.h"

class KeptWork;

class frmNotes : public Form<frmNotes>, public Ui::frmNotes {
public:
    // Raises what a failing statement raises, and RunTimeError::NoCurrentRecord if prefs has no row
    // "NotesOnStartUp".
    frmNotes();

    // Lists all notes in the order of the table and clears the editor. Raises what a failing
    // statement raises.
    void loadNotes();

private:
    void setUpGrids();
    void load();

    void fpNotes_Click(int col, int row);
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdClr_Click();
    void chkReminder_Click();

    void showNote(int row);
    void clearEditor();
    void keepNote();

    KeptWork* m_kept = nullptr;
};
