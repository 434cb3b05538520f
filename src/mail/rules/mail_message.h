// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A message with everything that sending it needs.
#pragma once

#include <QString>

// The members keep the names that poSendMail has for them. Lists are joined by `Delimiter`.
struct MailMessage {
    // 0: server names are not checked, 1: their form is checked, 2: the name service has to know
    // them, 3: both. A server name that cannot be resolved makes the send fail in any case.
    int SMTPHostValidation = 0;
    // 0: addresses are checked only for characters that would end the command line, 1: their form
    // is checked.
    int EmailAddressValidation = 0;
    QString Delimiter = QStringLiteral(";");
    // host, host:port or smtps://host[:port]. The default port is 587 with UseAuthentication,
    // otherwise 25; for smtps it is 465.
    QString SMTPHost;
    QString From;
    QString FromDisplayName;
    QString Recipient;
    QString RecipientDisplayName;  // in the order of Recipient; ignored if the counts differ
    QString ReplyToAddress;
    QString Subject;
    QString Message;
    QString Attachment;   // paths, with either separator
    bool AsHTML = false;  // Message is HTML; it is sent with a plain text alternative
    // The text as it was typed, if Message was made from it; empty: Message is sent unchanged.
    QString TypedText;
    QString ContentBase;  // the address that links in the message are relative to; empty: none
    int EncodeType = 0;   // 0: MIME; there is no other
    int Priority = 0;     // 1 (highest) to 5 (lowest); 0: no priority header
    bool Receipt = false;
    bool UseAuthentication = false;     // log in to the SMTP server
    bool UsePopAuthentication = false;  // log in to the POP3 server first
    QString Username;
    QString Password;
    QString POP3Host;         // host, host:port or pop3s://host[:port]; port 110, or 995 for pop3s
    int MaxRecipients = 100;  // a message to more recipients is not sent
};
