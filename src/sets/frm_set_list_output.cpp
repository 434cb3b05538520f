// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What leaves the set: prints, a text file, a mail, and the charts of its songs.
#include "core/data/paths.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/paper/printing.h"
#include "sets/frm_set_list.h"
#include "sets/frm_song_collection.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/song_collection.h"

void frmSetList::printSet() {
    takeFocusOff();
    applySetPrintSettings(*fpSet);
    PrintSheet(*fpSet, 1);
}

void frmSetList::Command3_Click() { printSet(); }

void frmSetList::exportSetAsText() {
    takeFocusOff();
    const QString date = dateOfSet(*fpSet);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date for this set."));
        return;
    }
    // It starts in the folder of the last dialog of the program.
    CommonDialog& dialog = commonDlg();
    dialog.Flags = CommonDialog::OverwritePrompt;
    dialog.Filter = QStringLiteral("TXT Files|*.txt");
    dialog.FileName = defaultSetName(date);
    if (!dialog.chosen(&CommonDialog::ShowSave)) return;
    // Deliberate: behaviour 71.
    if (replaceFile(dialog.FileName, setAsText(*fpSet).toUtf8())) tellSaved(dialog.FileName);
}

void frmSetList::cmdExportText_Click() { exportSetAsText(); }

void frmSetList::mailSet() { mailSetBlock(*fpSet); }

void frmSetList::cmdEmailSet_Click() { mailSet(); }

void frmSetList::collectSongs() {
    const QStringList titles = highlightedTitles(*fpSet);
    if (titles.isEmpty()) {
        messageBox(QStringLiteral("No songs to collect, only songs with a highlighted background "
                                  "color have sheet music on file."),
                   BoxIcon::Information);
        return;
    }
    const QString paths = joinedChartPaths(titles);
    frmSongCollection::instance().lblHidFile->setText(paths);
    frmSongCollection::instance().Show();
}

void frmSetList::cmdCollectSongs_Click() { collectSongs(); }
