#include "mail/po_send_mail.h"

#include "core/data/paths.h"
#include "mail/po_send_mail_talk.h"

#include <QDir>
#include <QEventLoop>
#include <QSettings>
#include <QThread>

#include <algorithm>
#include <memory>

namespace {

struct KeptMember {
    const char* key;
    QString MailLetter::*member;
};

constexpr KeptMember KeptMembers[] = {
    {"mail/SMTPHost", &MailLetter::SMTPHost},
    {"mail/POP3Host", &MailLetter::POP3Host},
    {"mail/From", &MailLetter::From},
    {"mail/FromDisplayName", &MailLetter::FromDisplayName},
    {"mail/Username", &MailLetter::Username},
};

QString settingsFile() { return programFolder() + QStringLiteral("/config/mail.ini"); }

MailWaits waitsIn(const QSettings& settings) {
    MailWaits waits;
    const auto seconds = [&](const char* key, int usual) {
        return std::max(1, settings.value(QLatin1String(key), usual).toInt());
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
    if (m_persistent) keepSettings();
    const QSettings settings(settingsFile(), QSettings::IniFormat);

    // The talk has a thread of its own, since libcurl waits inside its calls; what it tells is
    // handed over to this one.
    MailTalk talk(*this, waitsIn(settings), certificatesIn(settings));
    talk.onProgress = [this](int percent) {
        QMetaObject::invokeMethod(this, [=, this] { Q_EMIT Progress(percent); });
    };
    talk.onStatus = [this](const QString& line) {
        QMetaObject::invokeMethod(this, [=, this] { Q_EMIT Status(line); });
    };
    MailOutcome outcome;
    const std::unique_ptr<QThread> thread(QThread::create([&] { outcome = talk.run(); }));
    QEventLoop loop;
    connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    m_talk = &talk;
    thread->start();
    loop.exec();
    // The loop also ends with the program.
    if (!thread->isFinished()) talk.cancel();
    thread->wait();
    m_talk = nullptr;

    if (outcome.isDelivered)
        Q_EMIT SendSuccesful();
    else
        Q_EMIT SendFailed(outcome.explanation);
}

void poSendMail::Cancel() {
    if (m_talk) m_talk->cancel();
}
