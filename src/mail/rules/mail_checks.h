// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The checks that a message has to pass before it is sent.
#pragma once

#include "mail/rules/mail_message.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// Whether a character is a control character or ends a line. None may appear in a header or a
// command.
bool isControl(QChar c);

// A mail server as it was entered.
struct MailHost {
    QString scheme;  // "smtp", "smtps", "pop3" or "pop3s"
    QString host;    // a name, or an address; IPv6 in brackets
    int port = 0;

    // Whether the server runs on this computer.
    bool isLoopback() const;
    bool isEncrypted() const { return scheme.endsWith(QLatin1Char('s')); }
};

// Parses "host", "host:port", "scheme://host" and "scheme://host:port", where scheme is `plain` or
// `plain` + "s". Returns nothing if the text has another form. Unless `checksForm` is true, the
// host is checked only for characters that would break out of a URL.
std::optional<MailHost> mailHostOf(const QString& text, const QString& plain, int plainPort,
                                   int encryptedPort, bool checksForm);

// Whether an address is safe in a command line and, with `checksForm`, has the form of an address.
bool isMailAddress(const QString& address, bool checksForm);

struct Mailbox {
    QString address;
    QString name;
    bool operator==(const Mailbox&) const = default;
};

// The recipients of a message, each pair of name and address once.
std::vector<Mailbox> recipientsOf(const MailMessage& message);

// The first address of a message, the sender's or a recipient's, that only a server with SMTPUTF8
// accepts: the part before the "@" is not ASCII. Empty if there is none.
QString foreignAddressIn(const MailMessage& message);

// The paths of the attachments. A delimiter in the name of an existing file does not split it.
QStringList attachmentsOf(const MailMessage& message);

// Why a message cannot be sent, one sentence per line; empty if it can be.
QString faultsOf(const MailMessage& message);

// The SMTP and the POP3 server of a message; nothing if the text is not a valid server name.
std::optional<MailHost> smtpHostOf(const MailMessage& message);
std::optional<MailHost> popHostOf(const MailMessage& message);
