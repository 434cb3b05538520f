// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

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
        const QStringList lines = linesOf(mailStagingFile());
        const QStringList noted = linesWithNote(lines, txtNote->toPlainText());
        restage(noted);
        if (noted == lines)
            poSendMail_Status(QStringLiteral(
                "The note was not added: \"Clear\" has removed the line for it. Open the message "
                "again from the window that it came from."));
    }
    hideNote();
}

bool frmEmail::isNoteLeftOut() const {
    const QString note = txtNote->toPlainText();
    return frmNote->isVisible() && !note.isEmpty() &&
           !txtMsg->toPlainText().contains(noteWithBreaks(note));
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
