// The mail library: one letter, sent over SMTP, after a POP3 login where one is asked for.
#pragma once

#include <QObject>
#include <QString>

class MailTalk;

// Everything that a letter and its way are made of. Lists are joined by `Delimiter`.
struct MailLetter {
    // 0: the server names are taken as they are, 1: their form is checked, 2: they must be found
    // by the name service, 3: both. A name that is not found fails the send in any case.
    int SMTPHostValidation = 0;
    // 0: addresses are only kept from breaking out of their line, 1: their form is checked.
    int EmailAddressValidation = 0;
    QString Delimiter = QStringLiteral(";");
    // host, host:port or smtps://host[:port]. Without a port it is 587 with UseAuthentication,
    // else 25; 465 for smtps.
    QString SMTPHost;
    QString From;
    QString FromDisplayName;
    QString Recipient;
    QString RecipientDisplayName;  // in the order of Recipient; left out where the counts differ
    QString ReplyToAddress;
    QString Subject;
    QString Message;
    QString Attachment;   // paths, either separator
    bool AsHTML = false;  // Message is HTML; it goes with a plain text alternative
    QString ContentBase;  // address that links in the message are relative to; empty: none
    int EncodeType = 0;   // 0: MIME; there is no other
    int Priority = 0;     // 1 highest to 5 lowest; 0: none is told
    bool Receipt = false;
    bool UseAuthentication = false;     // log in to the SMTP server
    bool UsePopAuthentication = false;  // log in to the POP3 server first
    QString Username;
    QString Password;
    QString POP3Host;         // host, host:port or pop3s://host[:port]; 110, or 995 for pop3s
    int MaxRecipients = 100;  // with more than these nothing is sent
};

// STARTTLS is used wherever it is offered, and certificates are always checked. A password goes
// over no wire without TLS, the loopback excepted.
//
// config/mail.ini beside the program holds, in its section [mail], the members that
// PersistentSettings keeps, and in [library] what only a text editor changes:
//   CAFile=       a file of further certificates (PEM) to trust, relative to the config folder
//   Timeout=      seconds of silence after which a server is given up; 60
//   AnswerTimeout=  the same for its answer to the whole letter; 300
class poSendMail : public QObject, public MailLetter {
    Q_OBJECT

public:
    // Setting it true reads SMTPHost, POP3Host, From, FromDisplayName and Username as they were
    // kept last; Send then keeps them.
    void PersistentSettings(bool on);
    bool PersistentSettings() const { return m_persistent; }

    // Sends one letter to all recipients or to none, raises Progress and Status on the way and one
    // of the two outcomes at its end, and returns then. Events are pumped meanwhile; the object
    // has to live until it returns. Nothing happens where a send is under way.
    void Send();

    // Breaks off a send that is under way: it fails within some two seconds. A letter that is not
    // handed over whole by then is not delivered.
    void Cancel();

    bool isSending() const { return m_talk != nullptr; }

Q_SIGNALS:
    void Progress(int percent);
    // Why nothing was delivered, or that it is not known whether it was.
    void SendFailed(const QString& explanation);
    void SendSuccesful();
    // One line of the talk, "> " from here and "< " from the server, without passwords.
    void Status(const QString& status);

private:
    void keepSettings() const;

    bool m_persistent = false;
    MailTalk* m_talk = nullptr;  // the send under way
};
