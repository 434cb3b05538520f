#include "mail/mail_hand_over.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "mail/frm_email.h"

QString mailStagingFile() { return programFolder() + QStringLiteral("\\config\\email.html"); }

void fillMail(const QString& html, NoteButton note) {
    frmEmail& mail = frmEmail::instance();
    mail.txtMsg->setPlainText(html);
    // A prepared body is no station of the Tab key.
    mail.txtMsg->setFocusPolicy(Qt::ClickFocus);
    if (note == NoteButton::Shown) mail.cmdAddNote->setVisible(true);
}

void handOverMail(const QString& html, NoteButton note) {
    fillMail(html, note);
    frmEmail::instance().Show();
}

void handOverStagedMail(NoteButton note) { handOverMail(joinedLinesOf(mailStagingFile()), note); }

void mailSetBlock(const SheetGrid& grid) {
    const bool written = grid.ExportRangeToHTML(1, 1, 2, grid.DataRowCnt(), mailStagingFile(),
                                                false, QStringLiteral("lsl"));
    if (!written) throw RunTimeError(RunTimeError::PathAccess);
    handOverStagedMail();
}
