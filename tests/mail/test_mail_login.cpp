// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/run_time_error.h"
#include "mail/mail_hands.h"
#include "support/registry.h"

#include <QFile>
#include <QJsonArray>

namespace {

const QString User = QStringLiteral("zoë");
const QString Password = QStringLiteral("pässword one");

QJsonObject withLogin(QJsonObject settings = {}) {
    settings[QStringLiteral("login")] = QJsonArray{User, Password};
    return settings;
}

}  // namespace

class TestMailLogin : public MailTest {
    Q_OBJECT

    Certificate m_certificate;

    frmEmail& openWithLogin(const QString& server) {
        frmEmail& mail = openMessage(server);
        click(mail.cmdConfig);
        click(mail.optAuthentication);
        mail.txtUserName->setText(User);
        mail.txtPassword->setText(Password);
        click(mail.cmdCloseConfig);
        return mail;
    }

    frmEmail& openWithPopLogin(const QString& server, const QString& popServer) {
        frmEmail& mail = openMessage(server);
        click(mail.cmdConfig);
        click(mail.optPOPauthentication);
        mail.txtPopServer->setText(popServer);
        mail.txtUserName->setText(User);
        mail.txtPassword->setText(Password);
        return mail;
    }

    void trustCertificate() {
        writeLibrarySettings({{QStringLiteral("CAFile"), m_certificate.file()}});
    }

    QString pref(const QString& name) {
        return world
            ->rows(QStringLiteral("SELECT var_value FROM prefs WHERE var_name = '%1'").arg(name))
            .value(0);
    }

    // No status line and no failure contains the password in any form.
    void verifyPasswordIsHidden(const frmEmail& mail) {
        QStringList texts{failure()};
        for (int i = 0; i < mail.lstStatus->count(); ++i) texts += mail.lstStatus->item(i)->text();
        const QByteArray plain = QByteArray(1, '\0') + User.toUtf8() + '\0' + Password.toUtf8();
        for (const QString& text : texts)
            for (const QByteArray& secret :
                 {Password.toUtf8(), Password.toUtf8().toBase64(), plain.toBase64()})
                QVERIFY2(!text.contains(QString::fromUtf8(secret)), qPrintable(text));
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
    }

    void loginIsSentOverStartTls() {
        trustCertificate();
        MailServer server(withLogin(m_certificate.settings()));
        frmEmail& mail = openWithLogin(server.address(QStringLiteral("localhost")));
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.message(1)[QStringLiteral("login")].toString(), User);
        QCOMPARE(server.said().filter(QStringLiteral("AUTH")),
                 QStringList{QStringLiteral("AUTH PLAIN TLS good")});
        QVERIFY(
            !mail.lstStatus->findItems(QStringLiteral("> STARTTLS"), Qt::MatchExactly).isEmpty());
        verifyPasswordIsHidden(mail);
    }

    void startTlsIsUsedWithoutALoginToo() {
        trustCertificate();
        MailServer server(m_certificate.settings());
        frmEmail& mail = openMessage(server.address());
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(
            !mail.lstStatus->findItems(QStringLiteral("> STARTTLS"), Qt::MatchExactly).isEmpty());
        QCOMPARE(server.messages(), 1);
    }

    void smtpsUsesTlsFromTheStart() {
        trustCertificate();
        QJsonObject settings = withLogin(m_certificate.settings());
        settings[QStringLiteral("smtps")] = true;
        MailServer server(settings);
        frmEmail& mail = openWithLogin(server.address(QStringLiteral("smtps://localhost")));
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
        QCOMPARE(mail.txtServer->text(), server.address(QStringLiteral("smtps://localhost")));
        verifyPasswordIsHidden(mail);
    }

    void untrustedCertificateIsRefused() {
        MailServer server(withLogin(m_certificate.settings()));
        frmEmail& mail = openWithLogin(server.address(QStringLiteral("localhost")));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("is not trusted")), qPrintable(failure()));
        QVERIFY(server.said().isEmpty());
        // Each send verifies the certificate again.
        trustCertificate();
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(QFile::remove(world->path(QStringLiteral("config/mail.ini"))));
        expectFailure();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
    }

    void certificateOfAnotherNameIsRefused() {
        trustCertificate();
        MailServer server(m_certificate.settings());
        frmEmail& mail = openMessage(server.address(QStringLiteral("127.0.0.2")));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(!failure().isEmpty() && server.messages() == 0, qPrintable(failure()));
    }

    void wrongPasswordIsReportedAndHidden() {
        MailServer server(withLogin());
        frmEmail& mail = openWithLogin(server.address());
        mail.txtPassword->setText(QStringLiteral("wrong"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("refused the login")), qPrintable(failure()));
        QCOMPARE(server.messages(), 0);
        QVERIFY(mail.lstStatus->findItems(QStringLiteral("wrong"), Qt::MatchContains).isEmpty());
    }

    void passwordEchoedByTheServerIsHidden() {
        MailServer server({{QStringLiteral("fault"), QStringLiteral("echo")}});
        frmEmail& mail = openWithLogin(server.address());
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("535 no one has the password *** (***)")),
                 qPrintable(failure()));
        verifyPasswordIsHidden(mail);
    }

    void serverWithoutLoginGetsNoMessage() {
        MailServer server({{QStringLiteral("fault"), QStringLiteral("no login")}});
        frmEmail& mail = openWithLogin(server.address());
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("offers no login")), qPrintable(failure()));
        QCOMPARE(server.messages(), 0);
        QVERIFY(server.said().filter(QStringLiteral("MAIL")).isEmpty());
        // The same server accepts the message without a login.
        click(mail.cmdConfig);
        click(mail.optAuthentication);
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
    }

    void passwordIsNotSentUnencrypted() {
        // Not recognised as the loopback, so it counts as a network connection.
        const QString elsewhere = QStringLiteral("127.1");
        MailServer server(withLogin());
        frmEmail& mail = openWithLogin(server.address(elsewhere));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("the password is not sent without one")),
                 qPrintable(failure()));
        QVERIFY(server.said().isEmpty());
        MailServer pop({{QStringLiteral("login"), QJsonArray{User, Password}}},
                       QStringLiteral("pop3_server.py"));
        click(mail.cmdConfig);
        click(mail.optAuthentication);
        click(mail.optPOPauthentication);
        mail.txtPopServer->setText(pop.address(elsewhere));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("the password is not sent without one")),
                 qPrintable(failure()));
        QVERIFY(pop.said().isEmpty());
        QVERIFY(server.said().isEmpty());
    }

    void popLoginPrecedesTheMessage() {
        MailServer pop({{QStringLiteral("login"), QJsonArray{User, Password}}},
                       QStringLiteral("pop3_server.py"));
        MailServer server({});
        frmEmail& mail = openWithPopLogin(server.address(), pop.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(pop.said(), (QStringList{QStringLiteral("USER ") + User,
                                          QStringLiteral("PASS good"), QStringLiteral("NOOP")}));
        QCOMPARE(server.messages(), 1);
        verifyPasswordIsHidden(mail);
        // The lines of both connections, in their order.
        QStringList lines;
        for (int i = 0; i < mail.lstStatus->count(); ++i) lines += mail.lstStatus->item(i)->text();
        QVERIFY(lines.contains(QStringLiteral("> PASS ***")));
        QVERIFY(lines.indexOf(QStringLiteral("> PASS ***")) <
                lines.indexOf(QStringLiteral("> DATA")));
    }

    void refusedPopLoginSendsNothing() {
        MailServer pop({{QStringLiteral("login"), QJsonArray{User, QStringLiteral("other")}}},
                       QStringLiteral("pop3_server.py"));
        MailServer server({});
        frmEmail& mail = openWithPopLogin(server.address(), pop.address());
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("refused the login: -ERR no such login")),
                 qPrintable(failure()));
        QVERIFY(server.said().isEmpty());
        verifyPasswordIsHidden(mail);
    }

    void loginWithoutAUserNameIsNotTried() {
        MailServer server(withLogin());
        frmEmail& mail = openWithLogin(server.address());
        mail.txtUserName->clear();
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("requires a user name")), qPrintable(failure()));
        QVERIFY(server.said().isEmpty());
    }

    void boxesStoreTheirNewState() {
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        QVERIFY(mail.frmConfig->isVisible());
        world->statements.clear();
        for (const QString& state : {QStringLiteral("true"), QStringLiteral("false")}) {
            click(mail.optAuthentication);
            QCOMPARE(pref(QStringLiteral("SMTPauthentication")), state);
            QCOMPARE(mail.optAuthentication->isChecked(), state == QLatin1String("true"));
            mail.optPOPauthentication->setFocus();
            QTest::keyClick(mail.optPOPauthentication, Qt::Key_Space);
            QCOMPARE(pref(QStringLiteral("POPauthentication")), state);
            QCOMPARE(mail.optPOPauthentication->isChecked(), state == QLatin1String("true"));
        }
        // Deliberate: behaviour 172.
        QCOMPARE(
            world->statements,
            (QStringList{QStringLiteral("UPDATE prefs SET var_value = 'true' WHERE var_name = "
                                        "'SMTPauthentication' [3]"),
                         QStringLiteral("UPDATE prefs SET var_value  = 'true' WHERE var_name = "
                                        "'POPauthentication' [3]"),
                         QStringLiteral("UPDATE prefs SET var_value = 'false' WHERE var_name = "
                                        "'SMTPauthentication' [3]"),
                         QStringLiteral("UPDATE prefs SET var_value  = 'false' WHERE var_name = "
                                        "'POPauthentication' [3]")}));
        click(mail.cmdConfig);
        QVERIFY(mail.frmConfig->isHidden());
    }

    void configPassesTheBoxesToTheLibrary() {
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        click(mail.optAuthentication);
        QVERIFY(!mail.poSendMail.UseAuthentication);
        click(mail.cmdCloseConfig);
        QVERIFY(mail.frmConfig->isHidden());
        QVERIFY(mail.poSendMail.UseAuthentication);
        QVERIFY(!mail.poSendMail.UsePopAuthentication);
    }

    void passwordIsRememberedAndForgotten() {
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        mail.txtPassword->setText(Password);
        world->statements.clear();
        click(mail.chkPassword);
        QVERIFY(mail.chkPassword->isChecked());
        QCOMPARE(pref(QStringLiteral("EmailPassRemember")), QStringLiteral("true"));
        // Deliberate: behaviour 168.
        QCOMPARE(pref(QStringLiteral("EmailPassword")), Password);
        QCOMPARE(world->statements.size(), 2);
        world->stop();
        frmEmail& again = openMail();
        QVERIFY(again.chkPassword->isChecked());
        QCOMPARE(again.txtPassword->text(), Password);
        QCOMPARE(again.txtPassword->echoMode(), QLineEdit::Password);
        click(again.cmdConfig);
        click(again.chkPassword);
        QVERIFY(!again.chkPassword->isChecked());
        QCOMPARE(pref(QStringLiteral("EmailPassRemember")), QStringLiteral("false"));
        // Deliberate: behaviour 169.
        QCOMPARE(pref(QStringLiteral("EmailPassword")), Password);
        world->stop();
        QCOMPARE(openMail().txtPassword->text(), QString());
    }

    void rememberingAnEmptyPasswordIsReportedAndTicksTheBox() {
        // Deliberate: behaviour 170.
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        const QStringList before = world->rows(QStringLiteral("SELECT * FROM prefs"));
        world->answers.box(QStringLiteral("Please provide the password to remember."),
                           QMessageBox::Critical);
        click(mail.chkPassword);
        QVERIFY(mail.chkPassword->isChecked());
        QCOMPARE(world->rows(QStringLiteral("SELECT * FROM prefs")), before);
        // The next click unticks it.
        click(mail.chkPassword);
        QVERIFY(!mail.chkPassword->isChecked());
        world->answers.box(QStringLiteral("Please provide the password to remember."),
                           QMessageBox::Critical);
        mail.chkPassword->setFocus();
        QTest::keyClick(mail.chkPassword, Qt::Key_Space);
        QVERIFY(mail.chkPassword->isChecked());
    }

    void passwordBeforeItsFlagInTheTableIsNotRead() {
        // Deliberate: behaviour 171.
        world->sql(
            QStringLiteral("DELETE FROM prefs WHERE var_name LIKE 'EmailPass%';"
                           "INSERT INTO prefs (var_name, var_value) VALUES ('EmailPassword', 'p');"
                           "INSERT INTO prefs (var_name, var_value) VALUES ('EmailPassRemember', "
                           "'true')"));
        const frmEmail& mail = openMail();
        QVERIFY(mail.chkPassword->isChecked());
        QCOMPARE(mail.txtPassword->text(), QString());
    }

    void passwordWithAnApostropheEndsTheProgram() {
        // Deliberate: behaviour 173.
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        mail.txtPassword->setText(QStringLiteral("it's"));
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(mail.chkPassword);
        QCOMPARE(world->endStatus, 1);
    }
};

LORVANITE_TEST(TestMailLogin)
#include "test_mail_login.moc"
