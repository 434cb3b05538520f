// What goes out of the set: on paper, as a text file, in a mail, and the charts of its songs.
#include "core/data/database.h"
#include "core/data/paths.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/printing.h"
#include "sets/frm_set_list.h"
#include "sets/frm_song_collection.h"
#include "sets/rules/set_grid.h"

#include <tuple>

namespace {

QString fileLocoOf(const QString& title) {
    Recordset rs = select(QStringLiteral("SELECT fileLoco FROM songs WHERE title = '") + title +
                          QStringLiteral("'"));
    const QString file = rs.Fields("fileloco");
    rs.Close();
    return file;
}

}  // namespace

void frmSetList::printSet() {
    takeFocusOff();
    applySetPrintSettings(*fpSet);
    PrintSheet(*fpSet, 1);
}

void frmSetList::Command3_Click() { printSet(); }

void frmSetList::exportSetAsText() {
    takeFocusOff();
    const QString date = fpSet->GetText(2, 1);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date for this set."));
        return;
    }
    // The folder is the one that the program's last dialog began in.
    CommonDialog& dialog = commonDlg();
    dialog.Flags = CommonDialog::OverwritePrompt;
    dialog.Filter = QStringLiteral("TXT Files|*.txt");
    dialog.FileName = defaultSetName(date);
    if (!dialog.chosen(&CommonDialog::ShowSave)) return;
    QString text;
    for (int row = 1; row <= fpSet->DataRowCnt(); ++row)
        text += fpSet->GetText(1, row) + QStringLiteral("   ") + fpSet->GetText(2, row) +
                QStringLiteral("\r\n");
    // A file that cannot be written ends the command without a word: this is meant.
    std::ignore = replaceFile(dialog.FileName, text.toUtf8());
}

void frmSetList::cmdExportText_Click() { exportSetAsText(); }

void frmSetList::mailSet() { mailSetBlock(*fpSet); }

void frmSetList::cmdEmailSet_Click() { mailSet(); }

void frmSetList::collectSongs() {
    // The colour alone tells which songs have sheet music: this is meant.
    QStringList titles;
    fpSet->Col(2);
    for (int row = 1; row <= fpSet->MaxRows(); ++row) {
        fpSet->Row(row);
        if (fpSet->BackColor() != White) titles.append(fpSet->GetText(2, row));
    }
    if (titles.isEmpty()) {
        messageBox(QStringLiteral("No songs to collect, only songs with a highlighted background "
                                  "color have sheet music on file."),
                   BoxIcon::Information);
        return;
    }
    QString list;
    for (const QString& title : titles) list += fileLocoOf(title) + QLatin1Char('|');
    frmSongCollection::instance().lblHidFile->setText(list);
    frmSongCollection::instance().Show();
}

void frmSetList::cmdCollectSongs_Click() { collectSongs(); }
