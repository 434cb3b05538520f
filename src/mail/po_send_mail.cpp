// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/po_send_mail.h"

#include "core/data/paths.h"
#include "core/data/thread_calls.h"
#include "mail/plain_text.h"
#include "mail/rules/curl_library.h"
#include "mail/rules/po_send_mail_connection.h"
#include "mail/rules/typed_text.h"

#include <QDir>
#include <QEventLoop>
#include <QSettings>

#include <thread>

namespace {

struct KeptMember {
    const char* key;
    QString MailMessage::*member;
};

constexpr KeptMember KeptMembers[] = {
    {"mail/SMTPHost", &MailMessage::SMTPHost},
    {"mail/POP3Host", &MailMessage::POP3Host},
    {"mail/From", &MailMessage::From},
    {"mail/FromDisplayName", &MailMessage::FromDisplayName},
    {"mail/Username", &MailMessage::Username},
};

QString settingsFile() { return programFolder() + QStringLiteral("/config/mail.ini"); }

MailWaits waitsIn(const QSettings& settings) {
    MailWaits waits;
    const auto seconds = [&](const char* key, int usual) {
        const int entered = settings.value(QLatin1String(key), usual).toInt();
        return entered > 0 ? entered : usual;
    };
    waits.silence = seconds("library/Timeout", waits.silence);
    waits.answer = seconds("library/AnswerTimeout", waits.answer);
    return waits;
}

QString certificatesIn(const QSettings& settings) {
    const QString file = settings.value(QStringLiteral("library/CAFile")).toString();
    if (file.isEmpty()) return {};
    return QDir(programFolder() + QStringLiteral("/config")).absoluteFilePath(resolvedPath(file));
}

QString plainAlternativeOf(const MailMessage& message) {
    if (!message.AsHTML) return {};
    return message.TypedText.isEmpty() ? plainTextOf(message.Message)
                                       : typedTextAsPlain(message.TypedText);
}

}  // namespace

void poSendMail::PersistentSettings(bool on) {
    m_persistent = on;
    if (!on) return;
    const QSettings settings(settingsFile(), QSettings::IniFormat);
    for (const KeptMember& kept : KeptMembers)
        this->*kept.member = settings.value(QLatin1String(kept.key)).toString();
}

void poSendMail::keepSettings() const {
    QSettings settings(settingsFile(), QSettings::IniFormat);
    for (const KeptMember& kept : KeptMembers)
        if (settings.value(QLatin1String(kept.key)).toString() != this->*kept.member)
            settings.setValue(QLatin1String(kept.key), this->*kept.member);
}

void poSendMail::Send() {
    if (isSending()) return;
    SMTPHost = SMTPHost.trimmed();
    POP3Host = POP3Host.trimmed();
    // Deliberate: behaviour 174.
    if (m_persistent) keepSettings();
    const QSettings settings(settingsFile(), QSettings::IniFormat);

    curlLibrary();  // initialized here, before there is a second thread
    // libcurl blocks, so it runs in a separate thread; its events are delivered to this one. The
    // window may change the members meanwhile: the thread works on a copy.
    MailMessage message = *this;
    if (message.AsHTML && !message.TypedText.isEmpty())
        message.Message = typedTextAsHtml(message.Message);
    ThreadCalls calls;
    MailConnection connection(message, waitsIn(settings), certificatesIn(settings));
    connection.onProgress = [this, &calls](int percent) {
        calls.post([=, this] { Q_EMIT Progress(percent); });
    };
    connection.onStatus = [this, &calls](const QString& line) {
        calls.post([=, this] { Q_EMIT Status(line); });
    };
    connection.onAwaiting = [this, &calls](int seconds) {
        calls.post([=, this] { Q_EMIT AnswerAwaited(seconds); });
    };
    MailOutcome outcome;
    QEventLoop loop;
    m_connection = &connection;
    std::jthread thread([&] {
        outcome = connection.run(plainAlternativeOf(message));
        calls.post([&loop] { loop.quit(); });
    });
    loop.exec();
    // The loop also quits when the application does.
    connection.cancel();
    thread.join();
    m_connection = nullptr;

    if (outcome.isDelivered)
        Q_EMIT SendSuccesful();
    else
        Q_EMIT SendFailed(outcome.explanation);
}

void poSendMail::Cancel() {
    if (m_connection) m_connection->cancel();
}
