// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the mail library makes of its members beyond those that the mail window sets.
#include "mail/mail_hands.h"
#include "mail/po_send_mail.h"
#include "mail/rules/mail_checks.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QSignalSpy>

using namespace Qt::Literals::StringLiterals;

class TestMailLibrary : public MailTest {
    Q_OBJECT

    static void fillIn(MailMessage& message, const QString& server) {
        message.SMTPHost = server;
        message.From = u"leader@example.org"_s;
        message.Recipient = u"ann@example.org"_s;
        message.Subject = u"Sunday"_s;
        message.Message = u"Dear <b>team</b>,\r\nsee you"_s;
    }

private Q_SLOTS:
    void plainMessageCarriesItsHeaders() {
        MailServer server({});
        poSendMail mail;
        fillIn(mail, server.address());
        mail.Priority = 1;
        mail.Receipt = true;
        mail.ContentBase = u"https://example.org/größe/"_s;
        mail.ReplyToAddress = u"office@example.org"_s;
        QSignalSpy sent(&mail, &poSendMail::SendSuccesful);
        mail.Send();
        QCOMPARE(sent.count(), 1);
        QCOMPARE(server.messages(), 1);
        const QJsonObject message = server.message(1);
        QCOMPARE(partsOf(message), QStringList{u"text/plain|"_s});
        // Without AsHTML the text is as it was given.
        QCOMPARE(QString::fromUtf8(contentOf(message, u"text/plain"_s)).trimmed(), mail.Message);
        QCOMPARE(header(message, u"X-Priority"_s), u"1"_s);
        QCOMPARE(header(message, u"Disposition-Notification-To"_s), u"leader@example.org"_s);
        QCOMPARE(header(message, u"Content-Base"_s), u"\"https://example.org/gr%C3%B6%C3%9Fe/\""_s);
        QCOMPARE(header(message, u"Reply-To"_s), u"office@example.org"_s);
    }

    void priorityOutOfItsRangeIsLeftOut() {
        MailServer server({});
        poSendMail mail;
        fillIn(mail, server.address());
        for (const int priority : {0, 6, -1}) {
            mail.Priority = priority;
            mail.Send();
        }
        QCOMPARE(server.messages(), 3);
        for (int n = 1; n <= 3; ++n) {
            QCOMPARE(header(server.message(n), u"X-Priority"_s), QString());
            QCOMPARE(header(server.message(n), u"Disposition-Notification-To"_s), QString());
            QCOMPARE(header(server.message(n), u"Content-Base"_s), QString());
        }
    }

    void faultsAreNamedBeforeAnythingIsSent_data() {
        QTest::addColumn<QString>("member");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("fault");
        QTest::newRow("POP3 server") << u"POP3Host"_s << u"no server"_s
                                     << u"\"no server\" is not a valid POP3 server name."_s;
        QTest::newRow("user name") << u"Username"_s << u"ann\nQUIT"_s
                                   << u"The user name or the password contains a control "
                                      "character."_s;
        QTest::newRow("password") << u"Password"_s << u"secret\r"_s
                                  << u"The user name or the password contains a control "
                                     "character."_s;
        QTest::newRow("reply address") << u"ReplyToAddress"_s << u"the office"_s
                                       << u"The reply address \"the office\" is not valid."_s;
    }
    void faultsAreNamedBeforeAnythingIsSent() {
        QFETCH(QString, member);
        QFETCH(QString, value);
        QFETCH(QString, fault);
        MailServer server({});
        poSendMail mail;
        fillIn(mail, server.address());
        mail.SMTPHostValidation = mail.EmailAddressValidation = 1;
        mail.UsePopAuthentication = true;
        mail.POP3Host = u"pop.example.org"_s;
        mail.Username = u"ann"_s;
        if (member == "POP3Host"_L1) mail.POP3Host = value;
        if (member == "Username"_L1) mail.Username = value;
        if (member == "Password"_L1) mail.Password = value;
        if (member == "ReplyToAddress"_L1) mail.ReplyToAddress = value;
        QSignalSpy failed(&mail, &poSendMail::SendFailed);
        mail.Send();
        QCOMPARE(failed.count(), 1);
        QVERIFY2(failed[0][0].toString().contains(fault), qPrintable(failed[0][0].toString()));
        QCOMPARE(server.said(), QStringList());
    }

    void attachmentThatCannotBeReadIsNamed() {
        const QTemporaryDir folder;
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner |
                                                         QFile::ExeOwner | QFile::ReadOther |
                                                         QFile::ExeOther));
        const QString path = folder.filePath(u"chart.pdf"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("chart") == 5);
        file.close();
        QVERIFY(file.setPermissions(QFile::WriteOwner));
        MailMessage message;
        fillIn(message, u"mail.example.org"_s);
        message.Attachment = path;
        const QString fault = u"The attachment \"%1\" cannot be read."_s.arg(path);
        QCOMPARE(asOtherUser([&] { return faultsOf(message).contains(fault) ? 1 : 0; }), 1);
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ReadOther));
        QCOMPARE(asOtherUser([&] { return faultsOf(message).isEmpty() ? 1 : 0; }), 1);
    }
};

LORVANITE_TEST(TestMailLibrary)
#include "test_mail_library.moc"
