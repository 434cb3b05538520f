// The note panel.
#include "core/data/texts.h"
#include "mail/frm_email.h"
#include "mail/rules/mail_note.h"
#include "mail/rules/staging_file.h"

void frmEmail::cmdAddNote_Click() {
    frmNote->raise();
    frmNote->show();
    txtNote->setFocus();
}

void frmEmail::hideNote() {
    frmNote->hide();
    frmNote->lower();
}

void frmEmail::cmdAttachNote_Click() { addNote(); }

void frmEmail::cmdClearNote_Click() { clearNote(); }

void frmEmail::addNote() {
    if (!txtNote->toPlainText().isEmpty()) {
        // Deliberate: behaviour 167.
        txtNote->setPlainText(noteWithBreaks(txtNote->toPlainText()));
        restage(linesWithNote(linesOf(mailStagingFile()), txtNote->toPlainText()));
    }
    hideNote();
}

void frmEmail::clearNote() {
    restage(linesWithoutNote(linesOf(mailStagingFile())));
    txtNote->clear();
    frmNote->raise();
}

void frmEmail::restage(const QStringList& lines) {
    writeStagingFile(lines);
    txtMsg->setPlainText(joinedLinesOf(mailStagingFile()));
}
