// Real mail servers on the loopback, and what a person does with the mail window.
#pragma once

#include "mail/frm_email.h"
#include "support/world.h"

#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

// A server of its own process, on a free port, gone with this object.
class MailServer {
public:
    // `script`: "smtp_server.py" or "pop3_server.py"; its settings are told there.
    explicit MailServer(const QJsonObject& settings,
                        const QString& script = QStringLiteral("smtp_server.py"));
    ~MailServer();

    // "127.0.0.1:port", or "localhost:port", which a certificate names too.
    QString address(const QString& host = QStringLiteral("127.0.0.1")) const;

    // The commands it has heard.
    QStringList said() const;

    // Waits until it has heard a command.
    bool hears(const QString& command) const;

    int letters() const;

    // The n-th letter, from 1, as the server's script has parsed it.
    QJsonObject letter(int n) const;
    QByteArray raw(int n) const;

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};

// A certificate of its own for "localhost" and 127.0.0.1, made with the openssl command.
struct Certificate {
    Certificate();
    QString file() const { return folder.filePath(QStringLiteral("certificate.pem")); }
    QJsonObject settings() const;
    QTemporaryDir folder;
};

// The value of a header of a letter; the empty text where it has none.
QString header(const QJsonObject& letter, const QString& name);

// The parts of a letter that hold content, "type|name" each.
QStringList partsOf(const QJsonObject& letter);

// The content of the part of this type or, for attachments, of this name.
QByteArray contentOf(const QJsonObject& letter, const QString& typeOrName);

class MailTest : public WindowTest {
    Q_OBJECT

protected:
    void addPerson(const QString& first, const QString& last, const QString& address);

    // Opens the mail window as a click on its button does.
    frmEmail& openMail();

    // Opens it for a letter to everyone, over this server.
    frmEmail& openLetter(const QString& server);

    // Writes the library's own section of config/mail.ini.
    void writeLibrarySettings(const QMap<QString, QString>& entries);

    // Expects the box of a failed send; failure() is its text behind the head line, once sent.
    void expectFailure();
    QString failure() const { return m_failure; }
    void expectSuccess();

    QString write(const QString& name, const QByteArray& content);

private:
    QString m_failure;
};
