// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/mail_hand_over.h"

#include "core/data/texts.h"
#include "mail/frm_email.h"

void fillMail(const QString& html, NoteButton note) {
    frmEmail& mail = frmEmail::instance();
    mail.loadMessage(html);
    // Deliberate: behaviour 166.
    mail.txtMsg->setFocusPolicy(Qt::ClickFocus);
    if (note == NoteButton::Shown) mail.cmdAddNote->setVisible(true);
}

void handOverMail(const QString& html, NoteButton note) {
    fillMail(html, note);
    frmEmail::instance().Show();
}

void handOverStagedMail(NoteButton note) { handOverMail(joinedLinesOf(mailStagingFile()), note); }

void mailSetBlock(const SheetGrid& grid) {
    stageSetBlock(grid);
    handOverStagedMail();
}
