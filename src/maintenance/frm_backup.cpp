// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/frm_backup.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

namespace {

// Asks for a folder by the save dialog. False if the dialog was cancelled.
bool chooseFolder(const QString& proposal, QString& folder) {
    CommonDialog& dialog = commonDlg();
    dialog.Filter.clear();
    dialog.FileName = proposal;
    if (!dialog.chosen(&CommonDialog::ShowSave)) return false;
    // Deliberate: behaviour 180.
    folder = folderOf(dialog.FileName);
    return true;
}

// What distinguishes the two commands.
struct CopyCommand {
    BackupTexts BackupItem::*texts;
    void (*copy)(const BackupItem& item, const QString& folder);
    const char* description;  // ahead of the description of a failure
    BoxIcon icon;             // of a failure
};

void copyTicked(const frmBackup::Boxes& boxes, const CopyCommand& command) {
    QString report;
    try {
        for (size_t i = 0; i < boxes.size(); ++i) {
            const BackupTexts& texts = BackupItems[i].*command.texts;
            QString folder;
            if (!boxes[i]->isChecked() || !chooseFolder(QLatin1String(texts.proposal), folder))
                continue;
            command.copy(BackupItems[i], folder);
            report += QLatin1String(texts.report) + folder + QStringLiteral("\r\r");
        }
    } catch (const RunTimeError& error) {
        // Deliberate: behaviour 184.
        messageBox(QStringLiteral("Error Number %1\r").arg(error.number()) +
                       QLatin1String(command.description) + error.description() +
                       QStringLiteral("\rPlease Contact Lorvanite"),
                   command.icon, QStringLiteral("Error"));
        return;
    }
    // Deliberate: behaviour 189.
    if (!report.isEmpty()) messageBox(report, BoxIcon::None, QStringLiteral("Copy(s) Sucessfull!"));
}

}  // namespace

frmBackup::frmBackup() {
    setupUi(this);
    ckBU = {ckBU_0, ckBU_1, ckBU_2, ckBU_3};
    onEvent(this, cmdBack, &QPushButton::clicked, &frmBackup::cmdBack_Click);
    onEvent(this, cmdRestore, &QPushButton::clicked, &frmBackup::cmdRestore_Click);
    onEvent(this, lblReformatDB, &QPushButton::clicked, &frmBackup::lblReformatDB_Click);
    setDesignSize(size());
}

void frmBackup::cmdBack_Click() {
    copyTicked(ckBU, {&BackupItem::backup, backUpItem, "Description: ", BoxIcon::Critical});
}

void frmBackup::cmdRestore_Click() {
    // Deliberate: behaviour 183.
    copyTicked(ckBU, {&BackupItem::restore, restoreItem, "Description ", BoxIcon::None});
}

void frmBackup::lblReformatDB_Click() { reformatDatabase(); }

void frmBackup::reformatDatabase() {
    const QString warning = QStringLiteral(
        "Clicking 'YES' below will erase all the information in the database.\r\r"
        "PROCEED WITH CAUTION");
    if (messageBox(warning, BoxIcon::None, QStringLiteral("WARNING!"), BoxButtons::YesNo) !=
        BoxAnswer::Yes)
        return;
    emptyDatabase();
    // Deliberate: behaviour 188.
    messageBox(QStringLiteral("Your database is empty."), BoxIcon::Information);
}
