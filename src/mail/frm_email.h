// e-Mail Package: recipients are picked among the team, a note and attachments are added, and the
// mail is sent.
#pragma once

#include "mail/po_send_mail.h"
#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_email.h"

class frmEmail : public Form<frmEmail>, public Ui::frmEmail {
public:
    frmEmail();

    // The mail library. It lives with the window.
    ::poSendMail poSendMail;

    // Everyone with an address into fpEmail.
    void loadPeople();

    // What the mail library and prefs keep into the boxes.
    void loadSettings();

    // The note panel's "Add" and "Clear": rewrite the staging file and read it back as the body.
    void addNote();
    void clearNote();

    // Sends the letter to all recipients.
    void sendMail();

protected:
    // Closing the window breaks off a send; nothing half is delivered.
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void wireWindow();
    void wireLibrary();
    void setUpGrids();
    void load();
    void placePanels();
    void tellAuthentication();
    void rewriteStagingFile(const QStringList& lines);
    void setLetter(const QString& addresses, const QString& names);

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
    void poSendMail_SendSuccesful();
    void poSendMail_SendFailed(const QString& explanation);

    bool m_isClosed = false;
};
