#include "maintenance/frm_backup.h"

#include "core/data/database.h"
#include "core/data/database_backup.h"
#include "core/data/file_copy.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

namespace {

// What a command proposes as the file's name, and what it reports before the folder.
struct Words {
    const char* proposal;
    const char* report;
};

// What can be copied, by the index of its box. The database has no folder.
struct Thing {
    const char* folder;
    Words out;
    Words back;
};
constexpr Thing Things[] = {
    {"",
     {"Copy Database Here", "Copied Database To: "},
     {"Restore Database From", "Restored Database To: "}},
    {"\\saved sets",
     {"Copy Saved Sets Here", "Copied Saved Sets To: "},
     {"Restore Saved Sets From", "Restored Saved Sets To: "}},
    {"\\set designs",
     {"Copy Set Designs Here", "Copied Set Designs To: "},
     {"Restore Set Designs From", "Restored Set Designs To: "}},
    {"\\schedules",
     {"Copy Schedules Here", "Copied Schedules To: "},
     {"Restore Schedules From", "Restored Schedules To: "}},
};

bool isDatabase(const Thing& thing) { return !*thing.folder; }

QString databaseIn(const QString& folder) { return folder + QStringLiteral("/db1.mdb"); }

// Asks for a folder by the save dialog: the proposed name tells what to do and is thrown away.
// False after a cancel.
bool chooseFolder(const QString& proposal, QString& folder) {
    CommonDialog& dialog = commonDlg();
    dialog.Filter.clear();
    dialog.FileName = proposal;
    if (!dialog.chosen(&CommonDialog::ShowSave)) return false;
    folder = folderOf(dialog.FileName);
    return true;
}

void copyOut(const Thing& thing, const QString& folder) {
    const QString own = programFolder() + QLatin1String(thing.folder);
    if (isDatabase(thing))
        backUpDatabase(dbConn, databaseIn(folder));
    else
        copyFolder(own, folder + QLatin1String(thing.folder));
}

void copyBack(const Thing& thing, const QString& folder) {
    if (isDatabase(thing))
        restoreDatabase(dbConn, databaseIn(folder));
    else
        // The chosen folder itself holds the files, other than in the backup: this is meant.
        copyFolder(folder, programFolder() + QLatin1String(thing.folder));
}

// In what the two commands differ.
struct Command {
    Words Thing::*words;
    void (*copy)(const Thing& thing, const QString& folder);
    const char* description;  // before the description of a failure
    BoxIcon icon;             // of a failure
};

void copyTicked(const std::array<QCheckBox*, 4>& boxes, const Command& command) {
    QString report;
    try {
        for (size_t i = 0; i < boxes.size(); ++i) {
            const Words& words = Things[i].*command.words;
            QString folder;
            if (!boxes[i]->isChecked() || !chooseFolder(QLatin1String(words.proposal), folder))
                continue;
            command.copy(Things[i], folder);
            report += QLatin1String(words.report) + folder + QStringLiteral("\r\r");
        }
    } catch (const RunTimeError& error) {
        messageBox(QStringLiteral("Error Number %1\r").arg(error.number()) +
                       QLatin1String(command.description) + error.description() +
                       QStringLiteral("\rPlease Contact Lorvanite"),
                   command.icon, QStringLiteral("Error"));
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
    copyTicked(ckBU, {&Thing::out, copyOut, "Description: ", BoxIcon::Critical});
}

void frmBackup::cmdRestore_Click() {
    // Neither colon nor picture in a restore's failure: this is meant.
    copyTicked(ckBU, {&Thing::back, copyBack, "Description ", BoxIcon::None});
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
        execute(QLatin1String(statement), LockType::BatchOptimistic);
    }
    messageBox(QStringLiteral("Your database is empty."), BoxIcon::Information);
}
