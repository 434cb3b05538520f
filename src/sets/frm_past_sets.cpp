// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/frm_past_sets.h"

#include "mail/mail_hand_over.h"
#include "platform/desktop/desktop.h"
#include "platform/paper/printing.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "sets/set_folder.h"

frmPastSets::frmPastSets() {
    setupUi(this);
    Drive1 = browser->Drive1;
    Dir1 = browser->Dir1;
    File1 = browser->File1;
    browser->chkNewest->show();
    browser->followFolder();
    setUpSet(*fpSetPast);
    fpSetPast->setReadOnly(true);
    fpSetPast->setFillColumn(SheetView::AllColumns);
    onEvent(this, browser, &FolderBrowser::FileClick, &frmPastSets::File1_Click);
    onEvent(this, cmdPrintPast, &QPushButton::clicked, &frmPastSets::cmdPrintPast_Click);
    onEvent(this, cmdEpastSet, &QPushButton::clicked, &frmPastSets::cmdEpastSet_Click);
    addKey(cmdPrintPast, QKeySequence::Print);
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmPastSets::load() {
    fpSetPast->SetActiveCell(0, 0);
    if (frmSetList::isLoaded()) frmSetList::instance().forgetRows();
    setUpWidths();
    browseSavedSets(*browser);
}

void frmPastSets::setUpWidths() {
    fpSetPast->ColWidth(SetColumn::Label, 20.62);
    fpSetPast->ColWidth(SetColumn::Title, 35.75);
}

void frmPastSets::File1_Click() {
    loadSetFile(*fpSetPast, browser->FilePath());
    doEvents();
    fpSetPast->SetActiveCell(0, 0);
    setUpWidths();
}

void frmPastSets::cmdPrintPast_Click() {
    applySetPrintSettings(*fpSetPast);
    PrintSheet(*fpSetPast, 1);
}

void frmPastSets::cmdEpastSet_Click() {
    // Deliberate: behaviour 75.
    if (dateOfSet(*fpSetPast).isEmpty()) return;
    mailSetBlock(*fpSetPast);
}
