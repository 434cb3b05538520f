// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// e-Mail Package: sends a message with attachments to members of the team.
#pragma once

#include "mail/po_send_mail.h"
#include "mail/rules/recipient_lists.h"
#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_email.h"

class KeptWork;

class frmEmail : public Form<frmEmail>, public Ui::frmEmail {
public:
    frmEmail();

    // The mail library.
    ::poSendMail poSendMail;

    // Lists everyone with a mail address in fpEmail and clears the recipients.
    void loadPeople();

    // Fills the settings panel from the mail library and the table prefs.
    void loadSettings();

    // "Add" and "Clear" of the note panel: rewrite the staging file and read it back into txtMsg.
    // Raise what linesOf and writeStagingFile raise.
    void addNote();
    void clearNote();

    // Writes a prepared body into txtMsg. The message before it is kept if it was not sent.
    void loadMessage(const QString& text);

    // Sends the message to all recipients and returns when the outcome has been shown.
    void sendMail();

protected:
    // Cancels a send in progress.
    void closeEvent(QCloseEvent* event) override;
    // Escape ends the wait for the server's answer.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void connectControls();
    void connectLibrary();
    void setUpGrids();
    void load();
    void placePanels();
    void keepMessage();
    void applyAuthentication();
    void restage(const QStringList& lines);
    void fillLibrary(const MailingList& list);
    bool isNoteLeftOut() const;
    void endWait();

    void fpEmail_Click(int col, int row);
    void fpTo_Click(int col, int row);
    void Label5_Click();
    void cmdBrowse_Click();
    void cmdAddNote_Click();
    void cmdAttachNote_Click();
    void cmdClearNote_Click();
    void hideNote();
    void cmdConfig_Click();
    void cmdCloseConfig_Click();
    void optAuthentication_MouseDown();
    void optPOPauthentication_MouseDown();
    void chkPassword_MouseDown();
    void cmdSend_Click();
    void poSendMail_Progress(int percent);
    void poSendMail_Status(const QString& status);
    void poSendMail_AnswerAwaited(int seconds);
    void poSendMail_SendSuccesful();
    void poSendMail_SendFailed(const QString& explanation);

    KeptWork* m_kept = nullptr;
    bool m_isClosed = false;
    bool m_wasSent = false;
    bool m_isWaiting = false;  // for the server's answer to the complete message
};
