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

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace {

// Where the user keeps the copies. Before the first one it is the folder in which the last dialog
// began, or else the home folder.
class CopyPlace {
public:
    QString folder() const {
        for (const QString& place : {m_settings.value(Key).toString(), commonDlg().InitDir})
            if (!place.isEmpty() && QFileInfo(resolvedPath(place)).isDir()) return place;
        return QDir::homePath();
    }

    // Remembers a chosen folder, or the one above it if it is the copy of an item.
    void remember(const BackupItem& item, const QString& chosen) {
        const QFileInfo info(chosen);
        const bool isCopy =
            !item.isDatabase() && info.fileName() == fileNameOf(QLatin1String(item.folder));
        m_settings.setValue(Key, isCopy ? info.path() : chosen);
    }

private:
    const QString Key = QStringLiteral("Backup/Folder");
    QSettings m_settings{programFolder() + QStringLiteral("/config/places.ini"),
                         QSettings::IniFormat};
};

// What distinguishes the two commands.
struct CopyCommand {
    bool restores;
    BackupTexts BackupItem::*texts;
    void (*copy)(const BackupItem& item, const QString& folder);
    const char* button;       // of the dialog
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

// Asks for a folder. A restore begins in the newest copy, in the item's own folder. Empty if the
// dialog was cancelled.
QString chooseFolder(const BackupItem& item, const CopyCommand& command,
                     const QString& newestCopy) {
    CopyPlace place;
    QString start = newestCopy.isEmpty() ? place.folder() : newestCopy;
    const QString copied = resolvedPath(start + QLatin1String(item.folder));
    if (command.restores && QFileInfo(copied).isDir()) start = copied;
    const QString folder =
        CommonDialog::chosenFolder(QLatin1String((item.*command.texts).title),
                                   QLatin1String(command.button), resolvedPath(start));
    // The program's own copies are found without.
    if (!folder.isEmpty() && newestCopy.isEmpty()) place.remember(item, folder);
    return folder;
}

void copyTicked(const frmBackup::Boxes& boxes, const CopyCommand& command) {
    QString report;
    // The newest one from before this command.
    const QString copy = command.restores ? newestCopy(programFolder()) : QString();
    bool isSetAside = !command.restores;
    try {
        for (size_t i = 0; i < boxes.size(); ++i) {
            if (!boxes[i]->isChecked()) continue;
            const BackupItem& item = BackupItems[i];
            // Deliberate: behaviour 180.
            const QString folder = chooseFolder(item, command, copy);
            if (folder.isEmpty()) continue;
            setMousePointer(MousePointer::Hourglass);
            if (!std::exchange(isSetAside, true)) setAsideForRestore();
            command.copy(item, folder);
            setMousePointer(MousePointer::Arrow);
            report += QLatin1String((item.*command.texts).report) + folder + QStringLiteral("\r\r");
        }
    } catch (const RunTimeError& error) {
        setMousePointer(MousePointer::Arrow);
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
    copyTicked(ckBU, {false, &BackupItem::backup, backUpItem, "Back Up",
                      "Description: ", BoxIcon::Critical});
}

void frmBackup::cmdRestore_Click() {
    // Deliberate: behaviour 183.
    copyTicked(ckBU,
               {true, &BackupItem::restore, restoreItem, "Restore", "Description ", BoxIcon::None});
}

void frmBackup::lblReformatDB_Click() { reformatDatabase(); }

void frmBackup::reformatDatabase() {
    const QString warning = QStringLiteral(
        "Clicking 'YES' below will erase all the information in the database.\r\r"
        "PROCEED WITH CAUTION");
    if (messageBox(warning, BoxIcon::None, QStringLiteral("WARNING!"), BoxButtons::YesNo) !=
        BoxAnswer::Yes)
        return;
    setMousePointer(MousePointer::Hourglass);
    try {
        setAside(programFolder(), today(), SetAsideReason::BeforeReset);
    } catch (const RunTimeError& error) {
        setMousePointer(MousePointer::Arrow);
        messageBox(QStringLiteral("The database was not emptied, because it could not be copied "
                                  "first.\r\r") +
                       error.description(),
                   BoxIcon::Exclamation);
        return;
    }
    emptyDatabase();
    setMousePointer(MousePointer::Arrow);
    // Deliberate: behaviour 188.
    messageBox(QStringLiteral("Your database is empty."), BoxIcon::Information);
}
