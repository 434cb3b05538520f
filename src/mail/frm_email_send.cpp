// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The settings panel and the sending.
#include "core/data/database.h"
#include "mail/frm_email.h"
#include "mail/rules/mail_preferences.h"
#include "mail/rules/typed_text.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/kept_work.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/raw_text.h"

#include <QMainWindow>
#include <QScrollBar>

#include <utility>

void frmEmail::loadSettings() {
    txtServer->setText(poSendMail.SMTPHost);
    txtPopServer->setText(poSendMail.POP3Host);
    txtFrom->setText(poSendMail.From);
    txtFromName->setText(poSendMail.FromDisplayName);
    txtUserName->setText(poSendMail.Username);
    const MailPreferences stored = mailPreferences();
    optPOPauthentication->setChecked(stored.usePopAuthentication);
    optAuthentication->setChecked(stored.useAuthentication);
    chkPassword->setChecked(stored.rememberPassword);
    if (!stored.password.isEmpty()) txtPassword->setText(stored.password);
}

void frmEmail::applyAuthentication() {
    poSendMail.UseAuthentication = optAuthentication->isChecked();
    poSendMail.UsePopAuthentication = optPOPauthentication->isChecked();
}

void frmEmail::cmdConfig_Click() {
    applyAuthentication();
    frmConfig->setVisible(frmConfig->isHidden());
    if (frmConfig->isHidden()) return;
    frmConfig->raise();
    txtServer->setFocus();
}

void frmEmail::cmdCloseConfig_Click() {
    applyAuthentication();
    frmConfig->hide();
}

void frmEmail::optAuthentication_MouseDown() {
    storeUseAuthentication(!optAuthentication->isChecked());
}

void frmEmail::optPOPauthentication_MouseDown() {
    storeUsePopAuthentication(!optPOPauthentication->isChecked());
}

void frmEmail::chkPassword_MouseDown() {
    if (chkPassword->isChecked()) {
        forgetPassword();
    } else if (!txtPassword->text().isEmpty()) {
        rememberPassword(txtPassword->text());
    } else {
        messageBox(QStringLiteral("Please provide the password to remember."), BoxIcon::Critical);
        // Deliberate: behaviour 170. The box may have swallowed the release of the mouse button.
        chkPassword->setDown(false);
        chkPassword->setChecked(true);
    }
}

void frmEmail::cmdSend_Click() {
    sendMail();
    if (m_isClosed) parentWidget()->deleteLater();
}

void frmEmail::sendMail() {
    if (txtServer->text().isEmpty() || txtFrom->text().isEmpty()) {
        messageBox(QStringLiteral("Please fill in all email fields"), BoxIcon::Information,
                   QStringLiteral("Missing Information"));
        return;
    }
    txtTemp->clear();
    const QString message = rawTextOf(*txtMsg->document());
    if (!message.contains(QLatin1String("<HTML>"))) {
        txtTemp->setPlainText(message);
        // Deliberate: behaviour 163.
        QString broken = message;
        txtMsg->setPlainText(broken.replace(QLatin1Char('\n'), QLatin1String("<BR>\n")));
    }
    Recordset people = selectPeople();
    const MailingList list = mailingListOf(*fpTo, people);
    if (list.people == 0) {
        // Deliberate: behaviour 163.
        messageBox(QStringLiteral("Select at least one recipient."));
        return;
    }
    people.Close();
    cmdSend->setEnabled(false);
    lstStatus->clear();
    if (isNoteLeftOut())
        poSendMail_Status(
            QStringLiteral("The note in the open panel is not part of this message. Click \"Add\" "
                           "before you send."));
    setMousePointer(MousePointer::Hourglass);
    fillLibrary(list);
    poSendMail.Send();
    txtServer->setText(poSendMail.SMTPHost);
    setMousePointer(MousePointer::Arrow);
    // A text that was typed or handed over during the send is kept.
    if (!txtTemp->document()->isEmpty() && rawTextOf(*txtMsg->document()) == poSendMail.Message)
        txtMsg->setPlainText(rawTextOf(*txtTemp->document()));
    if (std::exchange(m_wasSent, false)) m_kept->saved();
    cmdSend->setEnabled(true);
}

void frmEmail::fillLibrary(const MailingList& list) {
    poSendMail.SMTPHostValidation = 3;
    poSendMail.EmailAddressValidation = 1;
    poSendMail.Delimiter = QStringLiteral(";");
    poSendMail.SMTPHost = txtServer->text();
    poSendMail.From = txtFrom->text();
    poSendMail.FromDisplayName = txtFromName->text();
    poSendMail.Recipient = list.addresses;
    poSendMail.RecipientDisplayName = list.names;
    poSendMail.ReplyToAddress = txtFrom->text();
    poSendMail.Subject = txtSubject->text();
    poSendMail.Message = rawTextOf(*txtMsg->document());
    poSendMail.Attachment = txtAttach->text().trimmed();
    const QString typed = rawTextOf(*txtTemp->document());
    poSendMail.TypedText = isTypedText(typed) ? typed : QString();
    poSendMail.AsHTML = true;
    poSendMail.ContentBase.clear();
    poSendMail.EncodeType = 0;
    poSendMail.Priority = 0;
    poSendMail.Receipt = false;
    applyAuthentication();
    poSendMail.Username = txtUserName->text();
    poSendMail.Password = txtPassword->text();
    poSendMail.POP3Host = txtPopServer->text();
    poSendMail.MaxRecipients = 100;
}

void frmEmail::poSendMail_Progress(int percent) {
    lblProgress->setText(QString::number(percent) + QStringLiteral("% complete"));
}

void frmEmail::poSendMail_Status(const QString& status) {
    lstStatus->addItem(status);
    // Selecting the last line scrolls to it; then no line stays selected.
    lstStatus->setCurrentRow(lstStatus->count() - 1);
    lstStatus->setCurrentRow(-1);
    lstStatus->scrollToBottom();
}

void frmEmail::poSendMail_AnswerAwaited(int seconds) {
    m_isWaiting = true;
    const QString text =
        QStringLiteral(
            "Waiting for the server to confirm the message, for %1 seconds at most. Esc ends the "
            "wait.")
            .arg(seconds);
    poSendMail_Status(text);
    setStatusText(text);
}

void frmEmail::endWait() {
    if (m_isWaiting) setStatusText(QString());
    m_isWaiting = false;
}

void frmEmail::poSendMail_SendSuccesful() {
    endWait();
    m_wasSent = true;
    messageBox(QStringLiteral("Send Successful!"), BoxIcon::None, QStringLiteral("Success"));
    lblProgress->clear();
}

void frmEmail::poSendMail_SendFailed(const QString& explanation) {
    endWait();
    // When the program ends, there is no window to show the box.
    if (m_isClosed && (!mainWindow() || !mainWindow()->isVisible())) return;
    messageBox(
        QStringLiteral("Your attempt to send mail failed for the following reason(s): \r\n") +
            explanation,
        BoxIcon::Critical, QStringLiteral("Attempt Failed"));
    lblProgress->clear();
    setMousePointer(MousePointer::Arrow);
    cmdSend->setEnabled(true);
}
