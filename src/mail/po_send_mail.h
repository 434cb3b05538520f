// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The mail library: sends one message over SMTP, after a POP3 login if that is required.
#pragma once

#include "mail/rules/mail_message.h"

#include <QObject>
#include <QString>

class MailConnection;

// STARTTLS is used whenever the server offers it, and certificates are always verified. A password
// is sent only over TLS, or to a server on this computer.
//
// config/mail.ini beside the program keeps the members that PersistentSettings names in its section
// [mail], and in [library] some settings that only a text editor changes:
//   CAFile=         a file of additional certificates (PEM) to trust, relative to the config folder
//   Timeout=        how many seconds a server may be silent; 60
//   AnswerTimeout=  how many seconds its answer to the complete message may take; 300
class poSendMail : public QObject, public MailMessage {
    Q_OBJECT

public:
    // true restores SMTPHost, POP3Host, From, FromDisplayName and Username from the last send; Send
    // saves them from then on.
    void PersistentSettings(bool on);
    bool PersistentSettings() const { return m_persistent; }

    // Sends the message to all recipients or to none. Emits Progress and Status during the send and
    // one of the two outcomes at the end, then returns. Events are processed meanwhile; the object
    // must not be deleted until it returns. Does nothing while a send is in progress.
    void Send();

    // Cancels the send in progress, which fails within about two seconds. A message that has not
    // been sent completely by then is not delivered.
    void Cancel();

    bool isSending() const { return m_connection != nullptr; }

Q_SIGNALS:
    void Progress(int percent);
    // The message has been sent completely. The server may take so many seconds to confirm it.
    void AnswerAwaited(int seconds);
    // Why nothing was delivered, or that the outcome is unknown.
    void SendFailed(const QString& explanation);
    void SendSuccesful();
    // One line of the protocol, "> " if sent and "< " if received, with passwords hidden.
    void Status(const QString& status);

private:
    void keepSettings() const;

    bool m_persistent = false;
    MailConnection* m_connection = nullptr;  // of the send in progress
};
