#include "maintenance/frm_backup.h"

#include "core/database.h"
#include "core/database_backup.h"
#include "core/frm_mdi.h"
#include "core/paths.h"
#include "core/run_time_error.h"
#include "platform/file_copy.h"
#include "platform/message_box.h"

#include <algorithm>

namespace {

const QString DatabaseFile = QStringLiteral("db1.mdb");

// What can be copied, by the index of its box. The database has no folder.
struct Thing {
    const char* name;
    const char* folder;
};
constexpr Thing Things[] = {{"Database", ""},
                            {"Saved Sets", "\\saved sets"},
                            {"Set Designs", "\\set designs"},
                            {"Schedules", "\\schedules"}};

QString nameOf(const Thing& thing) { return QLatin1String(thing.name); }

bool isDatabase(const Thing& thing) { return !*thing.folder; }

// Asks for a folder by the save dialog: the proposed name tells what to do and is thrown away.
// False after a cancel.
bool chooseFolder(const QString& proposal, QString& folder) {
    CommonDialog& dialog = frmMDI::instance().CommonDlg;
    dialog.Filter.clear();
    dialog.FileName = proposal;
    if (!dialog.chosen(&CommonDialog::ShowSave)) return false;
    folder = folderOf(dialog.FileName);
    return true;
}

void copyOut(const Thing& thing, const QString& folder) {
    const QString own = programFolder() + QLatin1String(thing.folder);
    if (isDatabase(thing))
        backUpDatabase(dbConn, folder + QLatin1Char('/') + DatabaseFile);
    else
        copyFolder(own, folder + QLatin1String(thing.folder));
}

void copyBack(const Thing& thing, const QString& folder) {
    if (isDatabase(thing))
        restoreDatabase(dbConn, folder + QLatin1Char('/') + DatabaseFile);
    else
        // The chosen folder itself holds the files, other than in the backup: this is meant.
        copyFolder(folder, programFolder() + QLatin1String(thing.folder));
}

// The words and the way in which the two commands differ.
struct Direction {
    QString proposal;     // with the thing's name
    QString done;         // the same, followed by the folder
    QString description;  // before the description of a failure
    BoxIcon icon;         // of a failure
    void (*copy)(const Thing& thing, const QString& folder);
};

void copyTicked(const std::array<QCheckBox*, 4>& boxes, const Direction& direction) {
    QString report;
    try {
        for (size_t i = 0; i < boxes.size(); ++i) {
            QString folder;
            if (!boxes[i]->isChecked() ||
                !chooseFolder(direction.proposal.arg(nameOf(Things[i])), folder))
                continue;
            direction.copy(Things[i], folder);
            report += direction.done.arg(nameOf(Things[i])) + folder + QStringLiteral("\r\r");
        }
    } catch (const RunTimeError& error) {
        messageBox(QStringLiteral("Error Number %1\r").arg(error.number()) + direction.description +
                       error.description() + QStringLiteral("\rPlease Contact Lorvanite"),
                   direction.icon, QStringLiteral("Error"));
        return;
    }
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
    copyTicked(ckBU, {QStringLiteral("Copy %1 Here"), QStringLiteral("Copied %1 To: "),
                      QStringLiteral("Description: "), BoxIcon::Critical, copyOut});
}

void frmBackup::cmdRestore_Click() {
    // Neither colon nor picture in a restore's failure: this is meant.
    copyTicked(ckBU, {QStringLiteral("Restore %1 From"), QStringLiteral("Restored %1 To: "),
                      QStringLiteral("Description "), BoxIcon::None, copyBack});
}

void frmBackup::lblReformatDB_Click() { reformatDatabase(); }

void frmBackup::reformatDatabase() {
    const QString warning = QStringLiteral(
        "Clicking 'YES' below will erase all the information in the database.\r\r"
        "PROCEED WITH CAUTION");
    if (messageBox(warning, BoxIcon::None, QStringLiteral("WARNING!"), BoxButtons::YesNo) !=
        BoxAnswer::Yes)
        return;
    // Notes and special music survive: this is meant.
    for (const char* statement :
         {"DELETE * FROM songs", "DELETE * FROM categories", "DELETE * FROM played_on",
          "DELETE * FROM schedule", "DELETE * FROM personell", "DELETE * FROM vacation"}) {
        Recordset rs;
        rs.Open(QLatin1String(statement), dbConn, CursorType::Dynamic, LockType::BatchOptimistic);
    }
    messageBox(QStringLiteral("Your database is empty."), BoxIcon::Information);
}
