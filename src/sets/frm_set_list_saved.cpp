// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saving the set, recording what was played, loading a saved set.
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/set_record.h"
#include "sets/set_folder.h"

void frmSetList::saveSet() {
    takeFocusOff();
    const QString date = dateOfSet(*fpSet);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date for this set."));
        return;
    }
    if (!holdsKnownTitle(*fpSet)) {
        messageBox(QStringLiteral("Please select at least one song before saving the set list."));
        return;
    }
    const Titles titles = titlesToRecord(*fpSet);
    // Deliberate: behaviour 68.
    if (countRecorded(titles, date) < MostTitles &&
        messageBox(QStringLiteral("Do you wish to set the Last Played field \r"
                                  "for the selected songs to the date you've selected?"),
                   BoxIcon::None, QStringLiteral("Lorvanite"), BoxButtons::YesNo) == BoxAnswer::Yes)
        recordPlayed(titles, date);
    CommonDialog& dialog = commonDlg();
    dialog.Flags = CommonDialog::OverwritePrompt;
    dialog.Filter = QStringLiteral("SET Files|*.set");
    dialog.InitDir = savedSetsFolder();
    dialog.FileName = defaultSetName(date);
    // Deliberate: behaviours 71 and 72.
    if (!dialog.chosen(&CommonDialog::ShowSave) || !fpSet->SaveToFile(dialog.FileName, false))
        return;
    m_kept->saved();
    nameFile(dialog.FileName);
    tellSaved(dialog.FileName);
}

void frmSetList::cmdSaveSetList_Click() { saveSet(); }

void frmSetList::loadSet() {
    takeFocusOff();
    CommonDialog& dialog = commonDlg();
    dialog.Filter = QStringLiteral("SET Files|*.set");
    dialog.InitDir = savedSetsFolder() + QLatin1Char('\\');
    dialog.FileName = QString();
    if (!dialog.chosen(&CommonDialog::ShowOpen)) return;
    m_kept->replaceBy([&] {
        loadSetFile(*fpSet, dialog.FileName);
        setUpDateCell(*fpSet);
        setUpSetWidths(*fpSet);
    });
    nameFile(dialog.FileName);
}

void frmSetList::Command13_Click() { loadSet(); }
