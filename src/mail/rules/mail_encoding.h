// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The encoding of a message for the mail server. Lists and bodies can be made only if curlLibrary()
// is not null.
#pragma once

#include "mail/rules/curl_library.h"
#include "mail/rules/mail_message.h"

#include <QByteArray>

#include <memory>

struct CurlListFree {
    void operator()(curl_slist* list) const { curlLibrary()->slistFreeAll(list); }
};
using CurlList = std::unique_ptr<curl_slist, CurlListFree>;

struct CurlMimeFree {
    void operator()(curl_mime* mime) const { curlLibrary()->mimeFree(mime); }
};
using CurlMime = std::unique_ptr<curl_mime, CurlMimeFree>;

void append(CurlList& list, const QByteArray& line);

// Encodes a header's value: plain ASCII as it is, anything else as folded encoded words. Line ends
// and other control characters become blanks, so that no header can be injected.
QByteArray encodedHeader(const QString& text);

// Encodes a name and an address for a header.
QByteArray encodedMailbox(const QString& address, const QString& name);

// The Content-Disposition value of an attachment; the name may be in any language.
QByteArray attachmentDisposition(const QString& fileName);

// The headers of a message.
CurlList headersOf(const MailMessage& message);

// The body of a message with its attachments, which are streamed from their files during the send.
// `plainText` is the alternative to an HTML message. Null if an attachment cannot be opened.
CurlMime bodyOf(CURL* curl, const MailMessage& message, const QString& plainText);
