// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The connection to the mail servers. It blocks, so it is used in a separate thread.
#pragma once

#include "mail/rules/mail_message.h"

#include <QElapsedTimer>
#include <QStringList>

#include <atomic>
#include <curl/curl.h>
#include <functional>
#include <vector>

struct MailHost;

// How many seconds a server may be silent.
struct MailWaits {
    int silence = 60;
    int answer = 300;  // after the complete message: some servers scan the attachments first
};

struct MailOutcome {
    bool isDelivered = false;
    QString explanation;  // why not, or that the outcome is unknown; empty if it is delivered
};

// Sends one message. All members but cancel belong to the thread that calls run.
class MailConnection {
public:
    // `certificates`: a file of additional certificates to trust; empty for none.
    MailConnection(const MailMessage& message, const MailWaits& waits, const QString& certificates);

    // Set these before run; they are called in its thread.
    std::function<void(int percent)> onProgress;
    std::function<void(const QString& line)> onStatus;
    // The message has been sent completely; the server may take so many seconds to confirm it.
    std::function<void(int seconds)> onAwaiting;

    // Checks the message, logs in and sends it; blocks until the outcome is certain. `plainText` is
    // the alternative to an HTML message.
    MailOutcome run(const QString& plainText);

    // May be called from any thread. run returns soon, and a message that has not been sent
    // completely by then is not delivered.
    void cancel() { m_cancelled = true; }

private:
    enum class Stopped { No, ByUser, BySilence };

    static int debug(CURL*, curl_infotype type, char* text, size_t size, void* connection);
    static int transferInfo(void* connection, curl_off_t, curl_off_t, curl_off_t total,
                            curl_off_t sent);
    static int socketOpened(void* connection, curl_socket_t socket, curlsocktype);
    static int socketClosed(void* connection, curl_socket_t socket);
    static int beforeRequest(void* connection, char*, char*, int, int);

    void shutDownSockets();
    void prepare(CURL* curl, const MailHost& host, const QString& path, bool logsIn);
    CURLcode perform(CURL* curl);
    QString logInToPop();
    MailOutcome sendMessage(const QString& plainText);

    void received(const QString& line);
    void sending(const QString& line);
    QString withoutSecrets(QString line) const;
    QString explain(CURLcode code, const QString& server) const;
    MailOutcome outcomeOf(CURLcode code) const;

    const MailMessage m_message;
    const MailWaits m_waits;
    const QString m_certificates;
    QStringList m_secrets;  // texts that must not appear in a status line
    std::atomic<bool> m_cancelled = false;
    char m_curlSays[CURL_ERROR_SIZE] = {};

    // The state of the protocol.
    QElapsedTimer m_sinceActivity;
    Stopped m_stopped = Stopped::No;
    std::vector<curl_socket_t> m_sockets;
    QString m_command;         // the last one sent
    QString m_reply;           // the server's reply to it, as status lines
    int m_replyLines = 0;      // the number of its lines so far
    bool m_replyOpen = false;  // more lines of the reply follow
    bool m_isInLogin = false;  // what is sent is secret
    bool m_isLoggedIn = false;
    bool m_isLeaving = false;
    bool m_wantsLogin = false;
    bool m_takesUtf8 = false;   // the server accepts addresses in any alphabet
    bool m_isDataOpen = false;  // the server has asked for the message
    bool m_isAllSent = false;
    bool m_isAwaiting = false;  // onAwaiting was called
    int m_dataAnswer = 0;       // the code with which it accepted or refused the message
    curl_off_t m_sent = 0;
    curl_off_t m_total = 0;
    int m_percent = -1;
};
