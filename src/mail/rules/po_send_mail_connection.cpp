// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/po_send_mail_connection.h"

#include "mail/rules/client_name.h"
#include "mail/rules/curl_library.h"
#include "mail/rules/mail_checks.h"
#include "mail/rules/mail_encoding.h"

#include <QFile>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <sys/socket.h>
#include <unistd.h>

namespace {

struct CurlFree {
    void operator()(CURL* curl) const { curlLibrary()->easyCleanup(curl); }
};
using Curl = std::unique_ptr<CURL, CurlFree>;

Curl newCurl() { return Curl(curlLibrary()->easyInit()); }

// How many seconds a server may take to answer QUIT, when the outcome is already certain.
constexpr int LeavingTime = 2;

// Longer replies are cut: a server may send as much as it likes.
constexpr int ShownLines = 100;
constexpr int ExplainedLines = 10;
constexpr int LongestLine = 1000;

const QString Hidden = QStringLiteral("***");

const QString NothingDelivered = QStringLiteral("Nothing has been delivered.");
// Deliberate: behaviour 176.
const QString NotKnown = QStringLiteral(
    "The message was sent completely, but the server did not confirm it: it is not known whether "
    "it was delivered. Ask one of the recipients before you send it again.");

// The reply code at the start of a server's line; 0 if there is none.
int codeOf(const QString& line) {
    bool isNumber = false;
    const int code = line.left(3).toInt(&isNumber);
    return isNumber && code >= 100 ? code : 0;
}

QString unreachable(const QString& server, const QString& detail) {
    return QStringLiteral("The server \"%1\" cannot be reached (%2).").arg(server, detail);
}

QString shortened(const QString& line) {
    return line.size() <= LongestLine ? line : line.left(LongestLine) + QChar(u'\u2026');
}

}  // namespace

MailConnection::MailConnection(const MailMessage& message, const MailWaits& waits,
                               const QString& certificates)
    : m_message(message), m_waits(waits), m_certificates(certificates) {
    if (m_message.Password.isEmpty()) return;
    const QByteArray user = m_message.Username.toUtf8();
    const QByteArray password = m_message.Password.toUtf8();
    m_secrets = {
        QString::fromLatin1((QByteArray(1, '\0') + user + '\0' + password).toBase64()),
        QString::fromLatin1(password.toBase64()),
        m_message.Password,
    };
}

MailOutcome MailConnection::run(const QString& plainText) {
    const QString faults = faultsOf(m_message);
    if (!faults.isEmpty()) return {false, faults};
    if (!curlLibrary())
        return {false, unreachable(m_message.SMTPHost, QStringLiteral("libcurl is not installed")) +
                           QStringLiteral("\r\n") + NothingDelivered};
    if (m_message.UsePopAuthentication) {
        const QString fault = logInToPop();
        if (!fault.isEmpty()) return {false, fault + QLatin1Char(' ') + NothingDelivered};
    }
    return sendMessage(plainText);
}

void MailConnection::prepare(CURL* curl, const MailHost& host, const QString& path, bool logsIn) {
    const auto set = curlLibrary()->easySetopt;
    const QString url =
        QStringLiteral("%1://%2:%3/%4").arg(host.scheme, host.host).arg(host.port).arg(path);
    m_curlSays[0] = '\0';
    m_wantsLogin = logsIn;
    m_isLoggedIn = m_isInLogin = m_isLeaving = m_replyOpen = m_takesUtf8 = false;
    m_replyLines = 0;
    m_command.clear();
    m_reply.clear();
    set(curl, CURLOPT_URL, url.toUtf8().constData());
    set(curl, CURLOPT_PROXY, "");
    set(curl, CURLOPT_NOSIGNAL, 1L);
    set(curl, CURLOPT_QUICK_EXIT, 1L);
    set(curl, CURLOPT_FRESH_CONNECT, 1L);
    set(curl, CURLOPT_FORBID_REUSE, 1L);
    set(curl, CURLOPT_CONNECTTIMEOUT, long(m_waits.silence));
    // transferInfo measures the silence; this timeout must only be longer.
    set(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, long(std::max(m_waits.silence, m_waits.answer)) + 5);
    set(curl, CURLOPT_ERRORBUFFER, m_curlSays);
    set(curl, CURLOPT_VERBOSE, 1L);
    set(curl, CURLOPT_DEBUGFUNCTION, &MailConnection::debug);
    set(curl, CURLOPT_DEBUGDATA, this);
    set(curl, CURLOPT_NOPROGRESS, 0L);
    set(curl, CURLOPT_XFERINFOFUNCTION, &MailConnection::transferInfo);
    set(curl, CURLOPT_XFERINFODATA, this);
    set(curl, CURLOPT_SOCKOPTFUNCTION, &MailConnection::socketOpened);
    set(curl, CURLOPT_SOCKOPTDATA, this);
    set(curl, CURLOPT_CLOSESOCKETFUNCTION, &MailConnection::socketClosed);
    set(curl, CURLOPT_CLOSESOCKETDATA, this);
    set(curl, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    if (!m_certificates.isEmpty())
        set(curl, CURLOPT_CAINFO, QFile::encodeName(m_certificates).constData());
    const bool mustHide = logsIn && !host.isLoopback();
    set(curl, CURLOPT_USE_SSL, long(mustHide ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    if (!logsIn) return;
    set(curl, CURLOPT_USERNAME, m_message.Username.toUtf8().constData());
    set(curl, CURLOPT_PASSWORD, m_message.Password.toUtf8().constData());
}

CURLcode MailConnection::perform(CURL* curl) {
    m_sinceActivity.start();
    const CURLcode code = curlLibrary()->easyPerform(curl);
    // The last bytes may have been sent after the last call of transferInfo.
    curl_off_t sent = 0;
    curlLibrary()->easyGetinfo(curl, CURLINFO_SIZE_UPLOAD_T, &sent);
    if (m_isDataOpen && m_total > 0 && sent >= m_total) m_isAllSent = true;
    return code;
}

QString MailConnection::logInToPop() {
    const MailHost host = *popHostOf(m_message);
    const Curl curl = newCurl();
    const auto set = curlLibrary()->easySetopt;
    prepare(curl.get(), host, {}, true);
    set(curl.get(), CURLOPT_CUSTOMREQUEST, "NOOP");
    set(curl.get(), CURLOPT_NOBODY, 1L);
    const CURLcode code = perform(curl.get());
    return code == CURLE_OK ? QString() : explain(code, m_message.POP3Host);
}

MailOutcome MailConnection::sendMessage(const QString& plainText) {
    const MailHost host = *smtpHostOf(m_message);
    const Curl curl = newCurl();
    const CurlList headers = headersOf(m_message);
    const CurlMime body = bodyOf(curl.get(), m_message, plainText);
    if (!body) return {false, QStringLiteral("An attachment cannot be read. ") + NothingDelivered};
    // Deliberate: behaviour 175. libcurl gives up at the first refused recipient.
    CurlList recipients;
    QStringList seen;
    for (const Mailbox& box : recipientsOf(m_message)) {
        if (seen.contains(box.address, Qt::CaseInsensitive)) continue;
        seen += box.address;
        append(recipients, box.address.toUtf8());
    }
    const QString name = QString::fromLatin1(QUrl::toPercentEncoding(clientName()));
    const auto set = curlLibrary()->easySetopt;
    prepare(curl.get(), host, name, m_message.UseAuthentication);
    set(curl.get(), CURLOPT_PREREQFUNCTION, &MailConnection::beforeRequest);
    set(curl.get(), CURLOPT_PREREQDATA, this);
    set(curl.get(), CURLOPT_MAIL_FROM, m_message.From.toUtf8().constData());
    set(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
    set(curl.get(), CURLOPT_HTTPHEADER, headers.get());
    set(curl.get(), CURLOPT_MIMEPOST, body.get());
    return outcomeOf(perform(curl.get()));
}

// libcurl would send the message without a login if the server offers none, and send any address
// whether the server understands it or not.
int MailConnection::beforeRequest(void* connection, char*, char*, int, int) {
    const auto* self = static_cast<MailConnection*>(connection);
    const bool isRefused = (self->m_wantsLogin && !self->m_isLoggedIn) ||
                           (!self->m_takesUtf8 && !foreignAddressIn(self->m_message).isEmpty());
    return isRefused ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

int MailConnection::transferInfo(void* connection, curl_off_t, curl_off_t, curl_off_t total,
                                 curl_off_t sent) {
    auto* self = static_cast<MailConnection*>(connection);
    if (self->m_isLeaving) {
        // The outcome is certain.
        if (self->m_sinceActivity.elapsed() <= qint64(LeavingTime) * 1000) return 0;
        self->shutDownSockets();
        return 1;
    }
    if (sent != self->m_sent) self->m_sinceActivity.start();
    self->m_sent = sent;
    if (self->m_isDataOpen && total > 0) {
        self->m_total = total;
        self->m_isAllSent = sent >= total;
        if (self->m_isAllSent && self->m_dataAnswer == 0 && !self->m_isAwaiting) {
            self->m_isAwaiting = true;
            if (self->onAwaiting) self->onAwaiting(self->m_waits.answer);
        }
        const int percent = int(std::min<curl_off_t>(100, sent * 100 / total));
        if (percent != self->m_percent && self->onProgress) self->onProgress(percent);
        self->m_percent = percent;
    }
    const int patience = self->m_isAllSent ? self->m_waits.answer : self->m_waits.silence;
    if (self->m_cancelled)
        self->m_stopped = Stopped::ByUser;
    else if (self->m_sinceActivity.elapsed() > qint64(patience) * 1000)
        self->m_stopped = Stopped::BySilence;
    if (self->m_stopped == Stopped::No) return 0;
    self->shutDownSockets();
    return 1;
}

int MailConnection::socketOpened(void* connection, curl_socket_t socket, curlsocktype) {
    static_cast<MailConnection*>(connection)->m_sockets.push_back(socket);
    return CURL_SOCKOPT_OK;
}

int MailConnection::socketClosed(void* connection, curl_socket_t socket) {
    std::erase(static_cast<MailConnection*>(connection)->m_sockets, socket);
    return ::close(socket);
}

// Without this, libcurl would send QUIT to a server that does not answer and wait for the reply.
void MailConnection::shutDownSockets() {
    for (const curl_socket_t socket : m_sockets) ::shutdown(socket, SHUT_RDWR);
}

int MailConnection::debug(CURL*, curl_infotype type, char* text, size_t size, void* connection) {
    auto* self = static_cast<MailConnection*>(connection);
    if (type != CURLINFO_TEXT) self->m_sinceActivity.start();
    if (type != CURLINFO_HEADER_IN && type != CURLINFO_HEADER_OUT) return 0;
    const QString lines = QString::fromUtf8(text, qsizetype(size));
    for (QString line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        if (type == CURLINFO_HEADER_IN)
            self->received(line);
        else
            self->sending(line);
    }
    return 0;
}

QString MailConnection::withoutSecrets(QString line) const {
    for (const QString& secret : m_secrets) line.replace(secret, Hidden);
    return line;
}

void MailConnection::received(const QString& line) {
    const QString shown = shortened(withoutSecrets(line));
    m_replyLines = m_replyOpen ? m_replyLines + 1 : 1;
    const int code = codeOf(line);
    const bool isLast = code == 0 || line.mid(3, 1) != QLatin1String("-");
    if (onStatus && (isLast || m_replyLines <= ShownLines)) onStatus(QStringLiteral("< ") + shown);
    if (m_isLeaving) return;
    if (!m_replyOpen)
        m_reply = shown;
    else if (isLast || m_replyLines <= ExplainedLines)
        m_reply += QStringLiteral("\r\n") + shown;
    m_replyOpen = !isLast;
    if (line.mid(4).trimmed().compare(QLatin1String("SMTPUTF8"), Qt::CaseInsensitive) == 0)
        m_takesUtf8 = true;
    if (m_replyOpen) return;
    // During a login, only "334" and "+" ask for another line.
    if (code != 334 && !line.startsWith(QLatin1String("+ "))) m_isInLogin = false;
    if (code == 235) m_isLoggedIn = true;
    if (code == 354 && m_command == QLatin1String("DATA"))
        m_isDataOpen = true;
    else if (m_isDataOpen && m_dataAnswer == 0)
        m_dataAnswer = code;
}

void MailConnection::sending(const QString& line) {
    static const QRegularExpression login(QStringLiteral("^(AUTH \\S+|PASS|APOP)"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = login.match(line);
    QString shown = withoutSecrets(line);
    if (match.hasMatch())
        shown =
            match.captured(1) + (line == match.captured(1) ? QString() : QLatin1Char(' ') + Hidden);
    else if (m_isInLogin)
        shown = Hidden;
    if (match.hasMatch()) m_isInLogin = true;
    // The reply to QUIT says nothing about the message.
    m_isLeaving = line.compare(QLatin1String("QUIT"), Qt::CaseInsensitive) == 0;
    if (!m_isLeaving) {
        m_command = shown;
        m_reply.clear();
    }
    if (onStatus) onStatus(QStringLiteral("> ") + shown);
}

QString MailConnection::explain(CURLcode code, const QString& server) const {
    if (m_stopped == Stopped::ByUser) return QStringLiteral("The send was cancelled.");
    if (m_stopped == Stopped::BySilence)
        return QStringLiteral("The server \"%1\" did not answer in time.").arg(server);
    if (code == CURLE_ABORTED_BY_CALLBACK && m_wantsLogin && !m_isLoggedIn)
        return QStringLiteral(
                   "The server \"%1\" offers no login. Untick the authentication if none is "
                   "required.")
            .arg(server);
    if (const QString foreign = foreignAddressIn(m_message);
        code == CURLE_ABORTED_BY_CALLBACK && !m_takesUtf8 && !foreign.isEmpty())
        return QStringLiteral(
                   "The server \"%1\" does not accept the address \"%2\": before the @, only "
                   "letters without accents are allowed.")
            .arg(server, foreign);
    if (code == CURLE_ABORTED_BY_CALLBACK)
        return QStringLiteral("An attachment was changed while it was being sent.");
    const QString detail =
        withoutSecrets(m_curlSays[0] ? QString::fromUtf8(m_curlSays)
                                     : QString::fromUtf8(curlLibrary()->easyStrerror(code)));
    switch (code) {
        case CURLE_COULDNT_RESOLVE_HOST:
            return QStringLiteral(
                       "The server \"%1\" was not found, or there is no network connection.")
                .arg(server);
        case CURLE_COULDNT_CONNECT:
            return unreachable(server, detail);
        case CURLE_OPERATION_TIMEDOUT:
            return QStringLiteral("The server \"%1\" did not answer in time.").arg(server);
        case CURLE_USE_SSL_FAILED:
            return QStringLiteral(
                       "The server \"%1\" offers no encrypted connection, and the "
                       "password is not sent without one.")
                .arg(server);
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CACERT_BADFILE:
            return QStringLiteral("The certificate of the server \"%1\" is not trusted (%2).")
                .arg(server, detail);
        default:
            break;
    }
    const bool isRefused = codeOf(m_reply) >= 400 || m_reply.startsWith(QLatin1String("-ERR"));
    if (!isRefused)
        return QStringLiteral("The connection to the server \"%1\" was lost (%2).")
            .arg(server, detail);
    if (code == CURLE_LOGIN_DENIED)
        return QStringLiteral("The server \"%1\" refused the login: %2").arg(server, m_reply);
    if (m_isDataOpen)
        return QStringLiteral("The server \"%1\" refused the message: %2").arg(server, m_reply);
    if (m_command.isEmpty())
        return QStringLiteral("The server \"%1\" refused the connection: %2").arg(server, m_reply);
    return QStringLiteral("The server \"%1\" refused \"%2\": %3").arg(server, m_command, m_reply);
}

MailOutcome MailConnection::outcomeOf(CURLcode code) const {
    // The server's answer to the message counts, even if QUIT fails.
    if (m_dataAnswer >= 200 && m_dataAnswer < 300) return {true, {}};
    const bool isNotKnown = m_isAllSent && m_dataAnswer == 0;
    QString explanation = explain(code, m_message.SMTPHost);
    return {false,
            explanation + QStringLiteral("\r\n") + (isNotKnown ? NotKnown : NothingDelivered)};
}
