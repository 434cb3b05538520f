// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/frm_backup.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "keeping/copies.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <QFileInfo>

#include <utility>

namespace {

// Asks for a folder by the save dialog, which starts in `start` or, if that is empty, where it was
// last. False if the dialog was cancelled.
bool chooseFolder(const QString& proposal, const QString& start, QString& folder) {
    CommonDialog& dialog = commonDlg();
    dialog.Filter.clear();
    dialog.FileName = proposal;
    // Other windows rely on what they find.
    const QString last = dialog.InitDir;
    if (!start.isEmpty()) dialog.InitDir = start;
    const bool isChosen = dialog.chosen(&CommonDialog::ShowSave);
    dialog.InitDir = last;
    if (!isChosen) return false;
    // Deliberate: behaviour 180.
    folder = folderOf(dialog.FileName);
    return true;
}

// What distinguishes the two commands.
struct CopyCommand {
    bool restores;
    BackupTexts BackupItem::*texts;
    void (*copy)(const BackupItem& item, const QString& folder);
    const char* description;  // ahead of the description of a failure
    BoxIcon icon;             // of a failure
};

// Sets aside what is about to be replaced. Its failure does not stop a restore, which may be the
// user's only way out.
void setAsideForRestore() {
    try {
        setAside(programFolder(), today(), SetAsideReason::BeforeRestore);
    } catch (const RunTimeError& error) {
        setStatusText(QStringLiteral("What is replaced could not be set aside. ") +
                      error.description());
    }
}

// The folder in which the dialog of a restore starts: the item's in the newest copy.
QString proposedSource(const BackupItem& item, const QString& copy) {
    const QString folder = copy + QLatin1String(item.folder);
    return copy.isEmpty() || !QFileInfo(resolvedPath(folder)).isDir() ? copy : folder;
}

void copyTicked(const frmBackup::Boxes& boxes, const CopyCommand& command) {
    QString report;
    // The newest one from before this command.
    const QString copy = command.restores ? newestCopy(programFolder()) : QString();
    bool isSetAside = !command.restores;
    try {
        for (size_t i = 0; i < boxes.size(); ++i) {
            const BackupTexts& texts = BackupItems[i].*command.texts;
            QString folder;
            if (!boxes[i]->isChecked() ||
                !chooseFolder(QLatin1String(texts.proposal), proposedSource(BackupItems[i], copy),
                              folder))
                continue;
            if (!std::exchange(isSetAside, true)) setAsideForRestore();
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
    copyTicked(ckBU, {false, &BackupItem::backup, backUpItem, "Description: ", BoxIcon::Critical});
}

void frmBackup::cmdRestore_Click() {
    // Deliberate: behaviour 183.
    copyTicked(ckBU, {true, &BackupItem::restore, restoreItem, "Description ", BoxIcon::None});
}

void frmBackup::lblReformatDB_Click() { reformatDatabase(); }

void frmBackup::reformatDatabase() {
    const QString warning = QStringLiteral(
        "Clicking 'YES' below will erase all the information in the database.\r\r"
        "PROCEED WITH CAUTION");
    if (messageBox(warning, BoxIcon::None, QStringLiteral("WARNING!"), BoxButtons::YesNo) !=
        BoxAnswer::Yes)
        return;
    try {
        setAside(programFolder(), today(), SetAsideReason::BeforeReset);
    } catch (const RunTimeError& error) {
        messageBox(QStringLiteral("The database was not emptied, because it could not be copied "
                                  "first.\r\r") +
                       error.description(),
                   BoxIcon::Exclamation);
        return;
    }
    emptyDatabase();
    // Deliberate: behaviour 188.
    messageBox(QStringLiteral("Your database is empty."), BoxIcon::Information);
}
