#include "mail/po_send_mail_message.h"

#include "core/data/paths.h"
#include "core/data/texts.h"
#include "mail/po_send_mail_checks.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>
#include <QUrl>
#include <QUuid>

#include <algorithm>

namespace {

constexpr int BytesAnEncodedWord = 39;
constexpr int LongestPlainHeader = 900;  // a line may have 998

QString withoutControls(QString text) {
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
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

// Words of whole characters, since a reader may decode each by itself.
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

// Line ends as mail has them.
QByteArray mailText(QString text) {
    text = withUnixLineEnds(text);
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text.toUtf8();
}

// Base64 keeps lines of any length, and its length is known before it is sent.
void setText(curl_mimepart* part, const QString& text, const char* type) {
    const QByteArray bytes = mailText(text);
    curl_mime_data(part, bytes.constData(), size_t(bytes.size()));
    curl_mime_type(part, type);
    curl_mime_encoder(part, "base64");
}

QByteArray typeOf(const QString& path) {
    const QString type = QMimeDatabase().mimeTypeForFile(path).name();
    // A letter inside a letter must not be encoded, and this one is sent byte for byte.
    if (type.startsWith(QLatin1String("message/")) || type.startsWith(QLatin1String("multipart/")))
        return "application/octet-stream";
    return type.toLatin1();
}

// An attachment, held open from the start so that a new file of its name is never mixed into it.
struct OpenFile {
    explicit OpenFile(const QString& path) : file(path) {}
    QFile file;
    qint64 left = 0;  // bytes that were announced and are not sent yet
};

size_t readFile(char* buffer, size_t size, size_t count, void* source) {
    auto* open = static_cast<OpenFile*>(source);
    const qint64 wanted = std::min(qint64(size * count), open->left);
    if (wanted == 0) return 0;
    const qint64 got = open->file.read(buffer, wanted);
    // A file that was cut meanwhile is not delivered as a half.
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
    curl_mime_data_cb(part, open->left, readFile, nullptr, closeFile, open.get());
    (void)open.release();
    CurlList own;
    append(own, "Content-Disposition: " + attachmentDisposition(QFileInfo(file).fileName()));
    curl_mime_headers(part, own.release(), 1);
    curl_mime_type(part, typeOf(file).constData());
    curl_mime_encoder(part, "base64");
    return true;
}

void addLines(const QTextFrame::iterator& from, const QTextFrame::iterator& end,
              QStringList& lines) {
    for (auto it = from; it != end; ++it) {
        const auto* table = qobject_cast<const QTextTable*>(it.currentFrame());
        if (!it.currentFrame()) {
            // An empty paragraph before a table is the document's own.
            auto next = it;
            if (it.currentBlock().length() == 1 && (++next).currentFrame()) continue;
            lines += it.currentBlock().text().replace(QChar::LineSeparator, QLatin1Char('\n'));
        } else if (!table) {
            addLines(it.currentFrame()->begin(), it.currentFrame()->end(), lines);
        } else {
            for (int row = 0; row < table->rows(); ++row) {
                QStringList cells;
                for (int col = 0; col < table->columns(); ++col) {
                    const QTextTableCell cell = table->cellAt(row, col);
                    if (cell.row() != row || cell.column() != col) continue;
                    QStringList inside;
                    addLines(cell.begin(), cell.end(), inside);
                    cells += inside.join(QLatin1Char('\n'));
                }
                lines += cells.join(QStringLiteral("   "));
            }
        }
    }
}

// An address as all servers take it: a domain of any language in its plain form.
QByteArray plainAddress(const QString& address) {
    const QByteArray domain = QUrl::toAce(address.section(QLatin1Char('@'), -1));
    if (isPlain(address) || domain.isEmpty()) return address.toUtf8();
    return address.section(QLatin1Char('@'), 0, -2).toUtf8() + '@' + domain;
}

}  // namespace

void append(CurlList& list, const QByteArray& line) {
    curl_slist* whole = curl_slist_append(list.get(), line.constData());
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

QString plainTextOf(const QString& html) {
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(html);
    QStringList lines;
    addLines(document.rootFrame()->begin(), document.rootFrame()->end(), lines);
    QString text = lines.join(QLatin1Char('\n'));
    text.replace(QChar::Nbsp, QLatin1Char(' '));
    text.remove(QChar::ObjectReplacementCharacter);
    return text.trimmed() + QLatin1Char('\n');
}

CurlList headersOf(const MailLetter& letter) {
    CurlList list;
    append(list, "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1());
    append(list, "From: " + encodedMailbox(letter.From, letter.FromDisplayName));
    if (!letter.ReplyToAddress.isEmpty())
        append(list, "Reply-To: " + encodedMailbox(letter.ReplyToAddress, {}));
    QByteArrayList boxes;
    for (const Mailbox& box : recipientsOf(letter)) boxes += encodedMailbox(box.address, box.name);
    append(list, "To: " + boxes.join(",\r\n "));
    append(list, "Subject: " + encodedHeader(letter.Subject));
    append(list, "Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@' +
                     plainAddress(letter.From).split('@').last() + '>');
    if (letter.Priority >= 1 && letter.Priority <= 5)
        append(list, "X-Priority: " + QByteArray::number(letter.Priority));
    if (letter.Receipt)
        append(list, "Disposition-Notification-To: " + encodedMailbox(letter.From, {}));
    if (!letter.ContentBase.isEmpty())
        append(list, "Content-Base: \"" + QUrl(letter.ContentBase).toEncoded() + '"');
    append(list, "X-Mailer: Lorvanite");
    return list;
}

CurlMime bodyOf(CURL* curl, const MailLetter& letter) {
    CurlMime mixed(curl_mime_init(curl));
    curl_mimepart* body = curl_mime_addpart(mixed.get());
    if (letter.AsHTML) {
        CurlMime alternatives(curl_mime_init(curl));
        setText(curl_mime_addpart(alternatives.get()), plainTextOf(letter.Message),
                "text/plain; charset=utf-8");
        setText(curl_mime_addpart(alternatives.get()), letter.Message, "text/html; charset=utf-8");
        curl_mime_subparts(body, alternatives.release());
        curl_mime_type(body, "multipart/alternative");
        CurlList own;
        append(own, "Content-Disposition: inline");
        curl_mime_headers(body, own.release(), 1);
    } else {
        setText(body, letter.Message, "text/plain; charset=utf-8");
    }
    for (const QString& path : attachmentsOf(letter))
        if (!setFile(curl_mime_addpart(mixed.get()), path)) return nullptr;
    return mixed;
}
