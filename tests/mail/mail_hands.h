// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Mail servers on this computer, and what a person does in the mail window.
#pragma once

#include "mail/frm_email.h"
#include "support/world.h"

#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

// A server in a separate process, on a free port. It ends with this object.
class MailServer {
public:
    // `script`: "smtp_server.py" or "pop3_server.py", which document their settings.
    explicit MailServer(const QJsonObject& settings,
                        const QString& script = QStringLiteral("smtp_server.py"));
    ~MailServer();

    // "127.0.0.1:port", or "localhost:port"; the certificate is valid for both.
    QString address(const QString& host = QStringLiteral("127.0.0.1")) const;

    // The commands that it has received.
    QStringList said() const;

    // Waits until it has received a command.
    bool hears(const QString& command) const;

    // Runs something once it has received a command, during a send.
    void whenItHears(const QString& command, std::function<void()> act);

    // Lets a server that waits go on.
    void goOn();

    int messages() const;

    // The n-th message, from 1, as the server has parsed it.
    QJsonObject message(int n) const;
    QByteArray raw(int n) const;

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QProcess m_process;
    QTimer m_listens;
    int m_port = 0;
};

// A self-signed certificate for "localhost" and 127.0.0.1.
struct Certificate {
    Certificate();
    QString file() const { return folder.filePath(QStringLiteral("certificate.pem")); }
    QJsonObject settings() const;
    QTemporaryDir folder;
};

// The value of a header; empty if there is none.
QString header(const QJsonObject& message, const QString& name);

// The parts with content, each as "type|name".
QStringList partsOf(const QJsonObject& message);

// The content of the part with this type or, for attachments, this name.
QByteArray contentOf(const QJsonObject& message, const QString& typeOrName);

class MailTest : public WindowTest {
    Q_OBJECT

protected:
    void addPerson(const QString& first, const QString& last, const QString& address);

    // Opens the mail window by its button.
    frmEmail& openMail();

    // Opens it with a message to everyone, to be sent over this server.
    frmEmail& openMessage(const QString& server);

    // Writes the section [library] of config/mail.ini.
    void writeLibrarySettings(const QMap<QString, QString>& entries);

    // Expects the box of a failed send; failure() is its text below the first line.
    void expectFailure();
    QString failure() const { return m_failure; }
    void expectSuccess();

    QString write(const QString& name, const QByteArray& content);

private:
    QString m_failure;
};
