// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/mail_encoding.h"

#include "core/data/paths.h"
#include "core/data/texts.h"
#include "mail/rules/mail_checks.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>
#include <QUuid>

#include <algorithm>

namespace {

constexpr int BytesAnEncodedWord = 39;
constexpr int LongestPlainHeader = 900;  // RFC 5322 allows 998

QString withoutControls(QString text) {
    for (QChar& c : text)
        if (isControl(c)) c = QLatin1Char(' ');
    return text;
}

bool isPlain(const QString& text) {
    return text.size() <= LongestPlainHeader && !text.contains(QLatin1String("=?")) &&
           std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7f; });
}

QByteArray quoted(const QString& text) {
    QByteArray inside = text.toUtf8();
    inside.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + inside + '"';
}

// Never splits a character between two words, since a mail reader may decode each by itself.
QByteArray encodedWords(const QString& text) {
    QByteArray words;
    QByteArray word;
    const auto close = [&] {
        if (!words.isEmpty()) words += "\r\n ";
        words += "=?UTF-8?B?" + word.toBase64() + "?=";
        word.clear();
    };
    for (const uint point : text.toUcs4()) {
        const char32_t character = point;
        const QByteArray bytes = QString::fromUcs4(&character, 1).toUtf8();
        if (word.size() + bytes.size() > BytesAnEncodedWord) close();
        word += bytes;
    }
    close();
    return words;
}

// Mail ends its lines with CR LF.
QByteArray mailText(QString text) {
    text = withUnixLineEnds(text);
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text.toUtf8();
}

// Base64 allows for lines of any length, and its size is known in advance.
void setText(curl_mimepart* part, const QString& text, const char* type) {
    const QByteArray bytes = mailText(text);
    curlLibrary()->mimeData(part, bytes.constData(), size_t(bytes.size()));
    curlLibrary()->mimeType(part, type);
    curlLibrary()->mimeEncoder(part, "base64");
}

QByteArray typeOf(const QString& path) {
    const QString type = QMimeDatabase().mimeTypeForFile(path).name();
    // A nested message must not be encoded; as a plain file it is delivered byte for byte.
    if (type.startsWith(QLatin1String("message/")) || type.startsWith(QLatin1String("multipart/")))
        return "application/octet-stream";
    return type.toLatin1();
}

// An attachment. It stays open, so that a file that replaces it is never mixed into it.
struct OpenFile {
    explicit OpenFile(const QString& path) : file(path) {}
    QFile file;
    qint64 left = 0;  // bytes that are announced but not yet sent
};

size_t readFile(char* buffer, size_t size, size_t count, void* source) {
    auto* open = static_cast<OpenFile*>(source);
    const qint64 wanted = std::min(qint64(size * count), open->left);
    if (wanted == 0) return 0;
    const qint64 got = open->file.read(buffer, wanted);
    // A file that was truncated meanwhile must not be delivered in part.
    if (got <= 0) return CURL_READFUNC_ABORT;
    open->left -= got;
    return size_t(got);
}

void closeFile(void* source) { delete static_cast<OpenFile*>(source); }

bool setFile(curl_mimepart* part, const QString& path) {
    const QString file = resolvedPath(path);
    auto open = std::make_unique<OpenFile>(file);
    if (!open->file.open(QIODevice::ReadOnly)) return false;
    open->left = open->file.size();
    curlLibrary()->mimeDataCb(part, open->left, readFile, nullptr, closeFile, open.get());
    (void)open.release();
    CurlList own;
    append(own, "Content-Disposition: " + attachmentDisposition(QFileInfo(file).fileName()));
    curlLibrary()->mimeHeaders(part, own.release(), 1);
    curlLibrary()->mimeType(part, typeOf(file).constData());
    curlLibrary()->mimeEncoder(part, "base64");
    return true;
}

// Encodes an international domain as ASCII, since not all servers accept it otherwise.
QByteArray plainAddress(const QString& address) {
    const QByteArray domain = QUrl::toAce(address.section(QLatin1Char('@'), -1));
    if (isPlain(address) || domain.isEmpty()) return address.toUtf8();
    return address.section(QLatin1Char('@'), 0, -2).toUtf8() + '@' + domain;
}

}  // namespace

void append(CurlList& list, const QByteArray& line) {
    curl_slist* whole = curlLibrary()->slistAppend(list.get(), line.constData());
    if (!whole) throw std::bad_alloc();
    (void)list.release();
    list.reset(whole);
}

QByteArray encodedHeader(const QString& text) {
    const QString value = withoutControls(text);
    return isPlain(value) ? value.toLatin1() : encodedWords(value);
}

QByteArray encodedMailbox(const QString& address, const QString& name) {
    const QString shown = withoutControls(name).simplified();
    if (shown.isEmpty()) return plainAddress(address);
    return (isPlain(shown) ? quoted(shown) : encodedWords(shown)) + "\r\n <" +
           plainAddress(address) + '>';
}

QByteArray attachmentDisposition(const QString& fileName) {
    const QString name = withoutControls(fileName);
    if (isPlain(name)) return "attachment; filename=" + quoted(name);
    return "attachment;\r\n filename*=UTF-8''" + QUrl::toPercentEncoding(name);
}

CurlList headersOf(const MailMessage& message) {
    CurlList list;
    append(list, "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1());
    append(list, "From: " + encodedMailbox(message.From, message.FromDisplayName));
    if (!message.ReplyToAddress.isEmpty())
        append(list, "Reply-To: " + encodedMailbox(message.ReplyToAddress, {}));
    QByteArrayList boxes;
    for (const Mailbox& box : recipientsOf(message)) boxes += encodedMailbox(box.address, box.name);
    append(list, "To: " + boxes.join(",\r\n "));
    append(list, "Subject: " + encodedHeader(message.Subject));
    append(list, "Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@' +
                     plainAddress(message.From).split('@').last() + '>');
    if (message.Priority >= 1 && message.Priority <= 5)
        append(list, "X-Priority: " + QByteArray::number(message.Priority));
    if (message.Receipt)
        append(list, "Disposition-Notification-To: " + encodedMailbox(message.From, {}));
    if (!message.ContentBase.isEmpty())
        append(list, "Content-Base: \"" + QUrl(message.ContentBase).toEncoded() + '"');
    append(list, "X-Mailer: Lorvanite");
    return list;
}

CurlMime bodyOf(CURL* curl, const MailMessage& message, const QString& plainText) {
    CurlMime mixed(curlLibrary()->mimeInit(curl));
    curl_mimepart* body = curlLibrary()->mimeAddpart(mixed.get());
    if (message.AsHTML) {
        CurlMime alternatives(curlLibrary()->mimeInit(curl));
        setText(curlLibrary()->mimeAddpart(alternatives.get()), plainText,
                "text/plain; charset=utf-8");
        setText(curlLibrary()->mimeAddpart(alternatives.get()), message.Message,
                "text/html; charset=utf-8");
        curlLibrary()->mimeSubparts(body, alternatives.release());
        curlLibrary()->mimeType(body, "multipart/alternative");
        CurlList own;
        append(own, "Content-Disposition: inline");
        curlLibrary()->mimeHeaders(body, own.release(), 1);
    } else {
        setText(body, message.Message, "text/plain; charset=utf-8");
    }
    for (const QString& path : attachmentsOf(message))
        if (!setFile(curlLibrary()->mimeAddpart(mixed.get()), path)) return nullptr;
    return mixed;
}
