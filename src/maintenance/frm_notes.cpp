// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/frm_notes.h"

#include "core/data/database.h"
#include "core/grid/sheet_grid_dates.h"
#include "maintenance/rules/notes.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/raw_text.h"
#include "platform/grid_view/kept_controls.h"

frmNotes::frmNotes() {
    setupUi(this);
    setUpGrids();
    onEvent(this, fpNotes, &SheetView::Click, &frmNotes::fpNotes_Click);
    onEvent(this, cmdAdd, &QPushButton::clicked, &frmNotes::cmdAdd_Click);
    onEvent(this, cmdDelete, &QPushButton::clicked, &frmNotes::cmdDelete_Click);
    onEvent(this, cmdClr, &QPushButton::clicked, &frmNotes::cmdClr_Click);
    onEvent(this, chkReminder, &QCheckBox::clicked, &frmNotes::chkReminder_Click);
    addKey(cmdAdd, QKeySequence::Save);
    setDesignSize(size());
    load();
    keepNote();
}

// A note that was deleted since can be stored as a new one.
void frmNotes::keepNote() {
    KeptControls controls;
    controls.add(QStringLiteral("txtNote"), txtNote);
    controls.add(QStringLiteral("chkNotify"), chkNotify);
    controls.add(QStringLiteral("fpNotifyUntil"), fpNotifyUntil);
    controls.add(QStringLiteral("hidID"), hidID);
    m_kept = keepControls(*this, UnsavedKind::Note, controls, [this] {
        if (fpNotes->SearchCol(NoteColumn::ID, 1, -1, hidID->text()) < 1) hidID->clear();
    });
}

void frmNotes::setUpGrids() {
    fpNotes->MaxCols(NoteColumn::NotifyUntil);
    fpNotes->RowHeadersShow(false);
    fpNotes->GridShowHoriz(false);
    fpNotes->GridShowVert(false);
    fpNotes->SetText(NoteColumn::Date, 0, QStringLiteral("Date"));
    fpNotes->SetText(NoteColumn::Note, 0, QStringLiteral("Note"));
    fpNotes->SetText(NoteColumn::NotifyUntil, 0, QStringLiteral("Notify Until"));
    fpNotes->ColWidth(NoteColumn::Date, 10);
    fpNotes->ColWidth(NoteColumn::Note, 40);
    fpNotes->ColWidth(NoteColumn::NotifyUntil, 13);
    fpNotes->setReadOnly(true);
    fpNotes->setFillColumn(NoteColumn::Note);
    fpNotifyUntil->MaxCols(NotifyUntilCell::Column);
    fpNotifyUntil->MaxRows(NotifyUntilCell::Row);
    fpNotifyUntil->ColHeadersShow(false);
    fpNotifyUntil->RowHeadersShow(false);
    setUpDateCells(*fpNotifyUntil, NotifyUntilCell::Column, NotifyUntilCell::Row);
    fpNotifyUntil->setFillColumn(NotifyUntilCell::Column);
}

void frmNotes::load() {
    fpNotes->Col(NoteColumn::ID);
    fpNotes->ColHidden(true);
    loadNotes();
    chkReminder->setChecked(preference(QStringLiteral("NotesOnStartUp")) == QLatin1String("false"));
}

void frmNotes::loadNotes() {
    listNotes(*fpNotes);
    clearEditor();
}

void frmNotes::clearEditor() {
    txtNote->clear();
    chkNotify->setChecked(false);
    fpNotifyUntil->SetText(NotifyUntilCell::Column, NotifyUntilCell::Row, QString());
    hidID->clear();
}

void frmNotes::fpNotes_Click(int col, int row) {
    if (row == 0) {
        fpNotes->SortByHead(col);
        return;
    }
    m_kept->replaceBy([&] { showNote(row); });
}

void frmNotes::showNote(int row) {
    clearEditor();
    hidID->setText(fpNotes->GetText(NoteColumn::ID, row));
    txtNote->setPlainText(fpNotes->GetText(NoteColumn::Note, row));
    const QString date = fpNotes->GetText(NoteColumn::NotifyUntil, row);
    if (date.isEmpty()) return;
    chkNotify->setChecked(true);
    fpNotifyUntil->SetText(NotifyUntilCell::Column, NotifyUntilCell::Row, date);
}

void frmNotes::cmdAdd_Click() {
    const QString note = rawTextOf(*txtNote->document());
    QString until;
    if (chkNotify->isChecked() &&
        !fpNotifyUntil->GetText(NotifyUntilCell::Column, NotifyUntilCell::Row, until)) {
        messageBox(QStringLiteral("Please enter the date (mm/dd/yy) to be notified until."),
                   BoxIcon::Information);
        return;
    }
    if (hidID->text().isEmpty())
        addNote(note, until);
    else
        updateNote(hidID->text(), note, until);
    m_kept->saved();
    m_kept->replaceBy([this] { loadNotes(); });
    setStatusText(QStringLiteral("The note is stored."));
}

void frmNotes::cmdDelete_Click() {
    const int row = fpNotes->ActiveRow();
    const QString id = row < 1 ? QString() : fpNotes->GetText(NoteColumn::ID, row);
    if (id.isEmpty()) {
        messageBox(QStringLiteral("Select a note to delete first."), BoxIcon::Information);
        return;
    }
    deleteNote(id);
    m_kept->replaceBy([this] { loadNotes(); });
}

void frmNotes::cmdClr_Click() {
    m_kept->replaceBy([this] { clearEditor(); });
}

void frmNotes::chkReminder_Click() {
    const QString wanted =
        chkReminder->isChecked() ? QStringLiteral("false") : QStringLiteral("true");
    storePreference(QStringLiteral("NotesOnStartUp"), wanted);
}
