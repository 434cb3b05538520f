// What the mail library looks at before it talks to anyone.
#pragma once

#include "mail/po_send_mail.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// A server as it was written.
struct MailHost {
    QString scheme;  // "smtp", "smtps", "pop3" or "pop3s"
    QString host;    // a name, or an address; IPv6 in brackets
    int port = 0;

    // The wire to it never leaves this computer.
    bool isLoopback() const;
    bool isEncrypted() const { return scheme.endsWith(QLatin1Char('s')); }
};

// Takes "host", "host:port", "scheme://host" and "scheme://host:port" apart, where scheme is
// `plain` or `plain` + "s". Nothing where the text is none of these; only the characters that
// would break out of an address are looked at unless `checksForm`.
std::optional<MailHost> mailHostOf(const QString& text, const QString& plain, int plainPort,
                                   int encryptedPort, bool checksForm);

// Whether an address may stand in a command line, and with `checksForm` whether it has the form
// of one.
bool isMailAddress(const QString& address, bool checksForm);

struct Mailbox {
    QString address;
    QString name;
    bool operator==(const Mailbox&) const = default;
};

// The recipients of a letter, each pair of name and address once.
std::vector<Mailbox> recipientsOf(const MailLetter& letter);

// The paths of a list. A delimiter in a file's own name does not cut it where the file is there.
QStringList attachmentsOf(const MailLetter& letter);

// What keeps a letter from being sent, one sentence a line; empty where nothing does.
QString faultsOf(const MailLetter& letter);

// The SMTP and the POP3 server of a letter; nothing where they cannot be told from the text.
std::optional<MailHost> smtpHostOf(const MailLetter& letter);
std::optional<MailHost> popHostOf(const MailLetter& letter);
