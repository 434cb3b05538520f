// The talk with the servers, held in a thread of its own.
#pragma once

#include "mail/po_send_mail.h"

#include <QElapsedTimer>
#include <QStringList>

#include <atomic>
#include <curl/curl.h>
#include <functional>
#include <vector>

struct MailHost;

// How long a server may be silent, in seconds.
struct MailWaits {
    int silence = 60;
    int answer = 300;  // to the whole letter: some look through the attachments first
};

struct MailOutcome {
    bool isDelivered = false;
    QString explanation;  // why not, or that it is not known; empty where it is delivered
};

// One send. Everything but cancel is called in the thread that holds the talk.
class MailTalk {
public:
    // `certificates`: a file of further certificates to trust; empty for none.
    MailTalk(const MailLetter& letter, const MailWaits& waits, const QString& certificates);

    // Set before run; called in its thread.
    std::function<void(int percent)> onProgress;
    std::function<void(const QString& line)> onStatus;

    // Checks, logs in, sends; blocks until the outcome stands.
    MailOutcome run();

    // From any thread: run ends soon, and a letter that is not handed over whole is not delivered.
    void cancel() { m_cancelled = true; }

private:
    enum class Stopped { No, ByUser, BySilence };

    static int debug(CURL*, curl_infotype type, char* text, size_t size, void* talk);
    static int transferInfo(void* talk, curl_off_t, curl_off_t, curl_off_t total, curl_off_t sent);
    static int socketOpened(void* talk, curl_socket_t socket, curlsocktype);
    static int socketClosed(void* talk, curl_socket_t socket);
    static int beforeRequest(void* talk, char*, char*, int, int);

    void hangUp();
    void prepare(CURL* curl, const MailHost& host, const QString& path, bool logsIn);
    CURLcode perform(CURL* curl);
    QString logInToPop();
    MailOutcome sendLetter();

    void heard(const QString& line);
    void said(const QString& line);
    QString withoutSecrets(QString line) const;
    QString explain(CURLcode code, const QString& server) const;
    MailOutcome outcomeOf(CURLcode code) const;

    const MailLetter m_letter;
    const MailWaits m_waits;
    const QString m_certificates;
    QStringList m_secrets;  // texts that no status line may hold
    std::atomic<bool> m_cancelled = false;
    char m_curlSays[CURL_ERROR_SIZE] = {};

    // Where the talk stands.
    QElapsedTimer m_sinceHeard;
    Stopped m_stopped = Stopped::No;
    std::vector<curl_socket_t> m_sockets;
    QString m_command;         // what was said last
    QString m_reply;           // the server's last whole answer, as status lines
    bool m_replyOpen = false;  // more lines of it follow
    bool m_isInLogin = false;  // what is said is secret
    bool m_isLoggedIn = false;
    bool m_isLeaving = false;
    bool m_wantsLogin = false;
    bool m_isDataOpen = false;  // the server has asked for the letter
    bool m_isAllSent = false;
    int m_dataAnswer = 0;  // the code with which it took or refused the letter
    curl_off_t m_sent = 0;
    curl_off_t m_total = 0;
    int m_percent = -1;
};
