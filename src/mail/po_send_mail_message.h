// A letter as the text that goes over the wire.
#pragma once

#include "mail/po_send_mail.h"

#include <QByteArray>

#include <curl/curl.h>
#include <memory>

struct CurlListFree {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, CurlListFree>;

struct CurlMimeFree {
    void operator()(curl_mime* mime) const { curl_mime_free(mime); }
};
using CurlMime = std::unique_ptr<curl_mime, CurlMimeFree>;

void append(CurlList& list, const QByteArray& line);

// A text for a header's value: as it stands where it is plain, else in encoded words, folded. Line
// ends and other controls become blanks, so that no header can be slipped in.
QByteArray encodedHeader(const QString& text);

// A name and address as they stand in a header.
QByteArray encodedMailbox(const QString& address, const QString& name);

// The value of a header that tells an attachment's name in any language.
QByteArray attachmentDisposition(const QString& fileName);

// What a reader without HTML sees: the cells of a row side by side, one row a line.
QString plainTextOf(const QString& html);

// The headers of the letter, and its body with text, HTML and attachments, streamed from their
// files as they are sent. Null where an attachment cannot be read (any more).
CurlList headersOf(const MailLetter& letter);
CurlMime bodyOf(CURL* curl, const MailLetter& letter);
