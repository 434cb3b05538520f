// The settings panel and the send.
#include "core/data/database.h"
#include "mail/frm_email.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"

#include <QMainWindow>
#include <QScrollBar>
#include <QTextDocument>

namespace {

// A box's text to the letter: toPlainText would turn hard blanks into soft ones.
QString textOf(const QTextEdit& box) {
    QString text = box.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text.replace(QChar::LineSeparator, QLatin1Char('\n'));
}

bool isTrue(const QString& value) { return value == QLatin1String("true"); }

// The state that a click on the box is about to bring.
QString coming(const QCheckBox& box) {
    return box.isChecked() ? QStringLiteral("false") : QStringLiteral("true");
}

}  // namespace

void frmEmail::loadSettings() {
    txtServer->setText(poSendMail.SMTPHost);
    txtPopServer->setText(poSendMail.POP3Host);
    txtFrom->setText(poSendMail.From);
    txtFromName->setText(poSendMail.FromDisplayName);
    txtUserName->setText(poSendMail.Username);
    Recordset rs = select(QStringLiteral("SELECT * FROM prefs"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString name = rs.Fields("var_name");
        const QString value = rs.Fields("var_value");
        if (name == QLatin1String("POPauthentication"))
            optPOPauthentication->setChecked(isTrue(value));
        if (name == QLatin1String("SMTPauthentication"))
            optAuthentication->setChecked(isTrue(value));
        if (name == QLatin1String("EmailPassRemember")) chkPassword->setChecked(isTrue(value));
        if (name == QLatin1String("EmailPassword") && chkPassword->isChecked() && !value.isEmpty())
            txtPassword->setText(value);
    }
    rs.Close();
}

void frmEmail::tellAuthentication() {
    poSendMail.UseAuthentication = optAuthentication->isChecked();
    poSendMail.UsePopAuthentication = optPOPauthentication->isChecked();
}

void frmEmail::cmdConfig_Click() {
    tellAuthentication();
    frmConfig->setVisible(frmConfig->isHidden());
    if (frmConfig->isHidden()) return;
    frmConfig->raise();
    txtServer->setFocus();
}

void frmEmail::cmdCloseConfig_Click() {
    tellAuthentication();
    frmConfig->hide();
}

void frmEmail::optAuthentication_MouseDown() {
    storePreference(QStringLiteral("SMTPauthentication"), coming(*optAuthentication));
}

void frmEmail::optPOPauthentication_MouseDown() {
    // The two blanks before the "=" are meant.
    execute(QStringLiteral("UPDATE prefs SET var_value  = '") + coming(*optPOPauthentication) +
            QStringLiteral("' WHERE var_name = 'POPauthentication'"));
}

void frmEmail::chkPassword_MouseDown() {
    if (chkPassword->isChecked()) {
        // The stored password stays in its row: this is meant.
        storePreference(QStringLiteral("EmailPassRemember"), QStringLiteral("false"));
    } else if (!txtPassword->text().isEmpty()) {
        storePreference(QStringLiteral("EmailPassRemember"), QStringLiteral("true"));
        storePreference(QStringLiteral("EmailPassword"), txtPassword->text());
    } else {
        messageBox(QStringLiteral("Please provide the password to remember."), BoxIcon::Critical);
        // The box ticks all the same; the release of the click may have gone to the message.
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
    const QString message = textOf(*txtMsg);
    if (!message.contains(QLatin1String("<HTML>"))) {
        txtTemp->setPlainText(message);
        // The mail always goes as HTML.
        QString broken = message;
        txtMsg->setPlainText(broken.replace(QLatin1Char('\n'), QLatin1String("<BR>\n")));
    }
    Recordset rs = select(QStringLiteral("SELECT fName, lName, email FROM personell"));
    QString addresses;
    QString names;
    const bool isAnyone = !rs.EOF_();
    for (int row = 1; isAnyone && row <= fpTo->MaxRows(); ++row) {
        const QString wanted = fpTo->GetText(1, row);
        // Namesakes all get the mail.
        for (; !rs.EOF_(); rs.MoveNext()) {
            const QString name = rs.Fields("fName") + QLatin1Char(' ') + rs.Fields("lName");
            if (name.compare(wanted, Qt::CaseInsensitive) != 0) continue;
            addresses += rs.Fields("email") + QLatin1Char(';');
            names += name + QLatin1Char(';');
        }
        rs.MoveFirst();
    }
    if (addresses.isEmpty()) {
        // The message keeps its conversion: this is meant.
        messageBox(QStringLiteral("Select at least one recipient."));
        return;
    }
    rs.Close();
    addresses.chop(1);
    names.chop(1);
    cmdSend->setEnabled(false);
    lstStatus->clear();
    setMousePointer(MousePointer::Hourglass);
    setLetter(addresses, names);
    poSendMail.Send();
    txtServer->setText(poSendMail.SMTPHost);
    setMousePointer(MousePointer::Arrow);
    // What was typed or handed over during the send stays.
    if (!txtTemp->document()->isEmpty() && textOf(*txtMsg) == poSendMail.Message)
        txtMsg->setPlainText(textOf(*txtTemp));
    cmdSend->setEnabled(true);
}

void frmEmail::setLetter(const QString& addresses, const QString& names) {
    poSendMail.SMTPHostValidation = 3;
    poSendMail.EmailAddressValidation = 1;
    poSendMail.Delimiter = QStringLiteral(";");
    poSendMail.SMTPHost = txtServer->text();
    poSendMail.From = txtFrom->text();
    poSendMail.FromDisplayName = txtFromName->text();
    poSendMail.Recipient = addresses;
    poSendMail.RecipientDisplayName = names;
    poSendMail.ReplyToAddress = txtFrom->text();
    poSendMail.Subject = txtSubject->text();
    poSendMail.Message = textOf(*txtMsg);
    poSendMail.Attachment = txtAttach->text().trimmed();
    poSendMail.AsHTML = true;
    poSendMail.ContentBase.clear();
    poSendMail.EncodeType = 0;
    poSendMail.Priority = 0;
    poSendMail.Receipt = false;
    tellAuthentication();
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
    // Selecting the last line and then none keeps the list at its end.
    lstStatus->setCurrentRow(lstStatus->count() - 1);
    lstStatus->setCurrentRow(-1);
    lstStatus->scrollToBottom();
}

void frmEmail::poSendMail_SendSuccesful() {
    messageBox(QStringLiteral("Send Successful!"), BoxIcon::None, QStringLiteral("Success"));
    lblProgress->clear();
}

void frmEmail::poSendMail_SendFailed(const QString& explanation) {
    // With the program's end there is no one to tell.
    if (m_isClosed && (!mainWindow() || !mainWindow()->isVisible())) return;
    messageBox(
        QStringLiteral("Your attempt to send mail failed for the following reason(s): \r\n") +
            explanation,
        BoxIcon::Critical, QStringLiteral("Attempt Failed"));
    lblProgress->clear();
    setMousePointer(MousePointer::Arrow);
    cmdSend->setEnabled(true);
}
