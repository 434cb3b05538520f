// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/mail_hands.h"

#include "support/files.h"
#include "trees.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>
#include <sys/prctl.h>

namespace {

void fail(const QString& why) { QTest::qFail(qPrintable(why), __FILE__, __LINE__); }

}  // namespace

MailServer::MailServer(const QJsonObject& settings, const QString& script) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // The server ends even if the test crashes.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // aiosmtpd is installed for the system's Python, which may not be the first in the path.
    m_process.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(SOURCE_TREE "/tests/mail/") + script, m_folder.path(),
                     QString::fromUtf8(QJsonDocument(settings).toJson(QJsonDocument::Compact))});
    QByteArray line;
    while (!line.endsWith('\n') && m_process.waitForReadyRead(60000)) line += m_process.readLine();
    m_port = line.simplified().split(' ').value(1).toInt();
    if (m_port == 0) fail(script + QStringLiteral(" does not listen"));
}

MailServer::~MailServer() {
    m_process.kill();
    m_process.waitForFinished(60000);
}

QString MailServer::address(const QString& host) const {
    return host + QLatin1Char(':') + QString::number(m_port);
}

QStringList MailServer::said() const {
    return QString::fromUtf8(bytesOf(path(QStringLiteral("said.txt"))))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool MailServer::hears(const QString& command) const {
    return QTest::qWaitFor([&] { return said().contains(command); }, 60000);
}

void MailServer::whenItHears(const QString& command, std::function<void()> act) {
    m_listens.disconnect();
    m_listens.setInterval(10);
    m_listens.callOnTimeout(&m_listens, [this, command, act = std::move(act)] {
        if (!said().contains(command)) return;
        m_listens.stop();
        act();
    });
    m_listens.start();
}

void MailServer::goOn() {
    m_process.write("go on\n");
    m_process.waitForBytesWritten();
}

int MailServer::messages() const {
    return int(QDir(m_folder.path()).entryList({QStringLiteral("message-*.json")}).size());
}

QJsonObject MailServer::message(int n) const {
    return QJsonDocument::fromJson(bytesOf(path(QStringLiteral("message-%1.json").arg(n))))
        .object();
}

QByteArray MailServer::raw(int n) const {
    return bytesOf(path(QStringLiteral("message-%1-raw").arg(n)));
}

Certificate::Certificate() {
    QProcess openssl;
    openssl.start(
        QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
         QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
         QStringLiteral("-addext"), QStringLiteral("subjectAltName=DNS:localhost,IP:127.0.0.1"),
         QStringLiteral("-keyout"), folder.filePath(QStringLiteral("key.pem")),
         QStringLiteral("-out"), file()});
    openssl.waitForFinished(60000);
    if (openssl.exitCode() != 0 || !QFile::exists(file()))
        fail(QStringLiteral("openssl made no certificate"));
}

QJsonObject Certificate::settings() const {
    return {{QStringLiteral("certificate"), file()},
            {QStringLiteral("key"), folder.filePath(QStringLiteral("key.pem"))}};
}

QString header(const QJsonObject& message, const QString& name) {
    for (const QJsonValue& entry : message[QStringLiteral("headers")].toArray())
        if (entry[0].toString().compare(name, Qt::CaseInsensitive) == 0) return entry[1].toString();
    return {};
}

QStringList partsOf(const QJsonObject& message) {
    QStringList parts;
    for (const QJsonValue& part : message[QStringLiteral("parts")].toArray())
        if (part.toObject().contains(QStringLiteral("content")))
            parts += part[QStringLiteral("type")].toString() + QLatin1Char('|') +
                     part[QStringLiteral("name")].toString();
    return parts;
}

QByteArray contentOf(const QJsonObject& message, const QString& typeOrName) {
    for (const QJsonValue& part : message[QStringLiteral("parts")].toArray()) {
        const QString name = part[QStringLiteral("name")].toString();
        if ((name.isEmpty() ? part[QStringLiteral("type")].toString() : name) == typeOrName)
            return bytesOf(part[QStringLiteral("content")].toString());
    }
    fail(QStringLiteral("no part ") + typeOrName);
    return {};
}

void MailTest::addPerson(const QString& first, const QString& last, const QString& address) {
    world->sql(QStringLiteral("INSERT INTO personell (fName, lName, email) VALUES ('%1','%2','%3')")
                   .arg(first, last, address));
}

frmEmail& MailTest::openMail() {
    if (!world->isRunning()) world->start();
    click(world->main().cmdEmail);
    return frmEmail::instance();
}

frmEmail& MailTest::openMessage(const QString& server) {
    frmEmail& mail = openMail();
    mail.txtServer->setText(server);
    mail.txtFrom->setText(QStringLiteral("leader@example.org"));
    mail.txtFromName->setText(QStringLiteral("The Leader"));
    mail.txtSubject->setText(QStringLiteral("Sunday"));
    mail.txtMsg->setPlainText(QStringLiteral("See you"));
    click(mail.Label5);
    return mail;
}

void MailTest::writeLibrarySettings(const QMap<QString, QString>& entries) {
    QString text = QStringLiteral("[library]\n");
    for (auto it = entries.begin(); it != entries.end(); ++it)
        text += it.key() + QLatin1Char('=') + it.value() + QLatin1Char('\n');
    write(QStringLiteral("config/mail.ini"), text.toUtf8());
}

void MailTest::expectFailure() {
    m_failure.clear();
    world->answers.custom(QStringLiteral("failed send"), [this](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        const QString head =
            QStringLiteral("Your attempt to send mail failed for the following reason(s): \n");
        if (!box || box->windowTitle() != QLatin1String("Attempt Failed") ||
            box->icon() != QMessageBox::Critical || !box->text().startsWith(head))
            fail(QStringLiteral("another box: ") + (box ? box->text() : modal->windowTitle()));
        else
            m_failure = box->text().mid(head.size());
        modal->close();
    });
}

void MailTest::expectSuccess() {
    world->answers.box(QStringLiteral("Send Successful!"), QMessageBox::NoIcon,
                       QStringLiteral("Success"));
}

QString MailTest::write(const QString& name, const QByteArray& content) {
    const QString path = world->path(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        fail(QStringLiteral("cannot write ") + path);
    return path;
}
