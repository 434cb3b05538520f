// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Servers that refuse, close, say nothing or talk nonsense, at each step of the protocol.
#include "mail/mail_hands.h"
#include "support/registry.h"

#include <QElapsedTimer>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QString NoDelivery = u"Nothing has been delivered."_s;
const QString UnknownOutcome = u"it is not known whether it was delivered"_s;

QJsonObject scripted(const QJsonObject& replies, const QString& greeting = u"220 here"_s) {
    return {{u"fault"_s, u"scripted"_s}, {u"replies"_s, replies}, {u"greeting"_s, greeting}};
}

}  // namespace

class TestMailServers : public MailTest {
    Q_OBJECT

    void send(const MailServer& server) { click(openMessage(server.address()).cmdSend); }

    void sendAndFail(const MailServer& server, const QStringList& parts) {
        expectFailure();
        send(server);
        for (const QString& part : parts)
            QVERIFY2(failure().contains(part),
                     qPrintable(u"\"%1\" is not in: %2"_s.arg(part, failure())));
        QCOMPARE(failure().contains(UnknownOutcome), parts.contains(UnknownOutcome));
        QCOMPARE(server.messages(), 0);
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        addPerson(u"Ann"_s, u"Abel"_s, u"ann@example.org"_s);
    }

    void refusalAtAnyStepDeliversNothing_data() {
        QTest::addColumn<QJsonObject>("replies");
        QTest::addColumn<QString>("part");
        QTest::newRow("to both greetings")
            << QJsonObject{{u"EHLO"_s, u"502 what"_s}, {u"HELO"_s, u"554 no"_s}} << u"554 no"_s;
        for (const QString& code : {u"451"_s, u"554"_s}) {
            for (const QString& word : {u"MAIL"_s, u"RCPT"_s, u"DATA"_s})
                QTest::addRow("%s to %s", qPrintable(code), qPrintable(word))
                    << QJsonObject{{word, code + u"-this\r\n"_s + code + u" that"_s}}
                    << u"%1-this\n%1 that"_s.arg(code);
            QTest::addRow("%s to the message", qPrintable(code))
                << QJsonObject{{u"."_s, code + u" never"_s}}
                << u"refused the message: "_s + code + u" never"_s;
        }
    }

    void refusalAtAnyStepDeliversNothing() {
        QFETCH(QJsonObject, replies);
        QFETCH(QString, part);
        const MailServer server(scripted(replies));
        sendAndFail(server, {u"refused"_s, part, NoDelivery});
    }

    void closingAtAnyStepDeliversNothing_data() {
        QTest::addColumn<QString>("word");
        for (const char* word : {"EHLO", "MAIL", "RCPT", "DATA"})
            QTest::newRow(word) << QString::fromLatin1(word);
    }

    void closingAtAnyStepDeliversNothing() {
        QFETCH(QString, word);
        const MailServer server(scripted({{word, QJsonValue()}}));
        sendAndFail(server, {u"was lost"_s, NoDelivery});
    }

    void silenceAtAnyStepIsGivenUp_data() { closingAtAnyStepDeliversNothing_data(); }

    void silenceAtAnyStepIsGivenUp() {
        QFETCH(QString, word);
        writeLibrarySettings({{u"Timeout"_s, u"2"_s}});
        const MailServer server(scripted({{word, QString()}}));
        sendAndFail(server, {u"did not answer in time"_s, NoDelivery});
    }

    void replyToAnEarlierCommandIsNotTheReason() {
        const MailServer server(scripted({{u"EHLO"_s, u"502 what"_s}, {u"MAIL"_s, QJsonValue()}}));
        sendAndFail(server, {u"was lost"_s, NoDelivery});
        QVERIFY2(!failure().contains(u"502"_s), qPrintable(failure()));
    }

    void messageIsNotOpenUntilItIsAskedFor_data() {
        QTest::addColumn<QJsonObject>("settings");
        QTest::newRow("354 as greeting") << scripted({}, u"354 go on"_s);
        QTest::newRow("354 to EHLO")
            << scripted({{u"EHLO"_s, u"354 go on"_s}, {u"HELO"_s, u"354 go on"_s}});
        QTest::newRow("354 to the sender") << scripted({{u"MAIL"_s, u"354 go on"_s}});
        QTest::newRow("250 to DATA") << scripted({{u"DATA"_s, u"250 done"_s}});
    }

    void messageIsNotOpenUntilItIsAskedFor() {
        QFETCH(QJsonObject, settings);
        const MailServer server(settings);
        sendAndFail(server, {NoDelivery});
    }

    void popServerCannotPretendADelivery() {
        const QString user = u"zoe"_s;
        const QString password = u"secret"_s;
        const MailServer pop({{u"login"_s, QJsonArray{user, password}},
                              {u"capabilities"_s, QJsonArray{u"354 X"_s, u"250 Y"_s}}},
                             u"pop3_server.py"_s);
        const MailServer server(scripted({{u"MAIL"_s, u"550 no"_s}}));
        frmEmail& mail = openMessage(server.address());
        mail.optPOPauthentication->setChecked(true);
        mail.txtPopServer->setText(pop.address());
        mail.txtUserName->setText(user);
        mail.txtPassword->setText(password);
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(NoDelivery), qPrintable(failure()));
        QVERIFY(world->answers.isEmpty());
    }

    void repliesMayComeByteByByte() {
        QJsonObject settings = scripted({}, u"220-here\r\n220-is\r\n220 the server"_s);
        settings[u"dribbles"_s] = true;
        const MailServer server(settings);
        expectSuccess();
        send(server);
        QCOMPARE(server.messages(), 1);
    }

    void hugeRepliesAreCutInTheWindow() {
        const QString line = QString(30, u'x');
        const QString greeting = u"220-{20000*y}\r\n{3000*220-"_s + line + u"\r\n}220 here"_s;
        const QString refusal = u"{2000*554-"_s + line + u"\r\n}554 end"_s;
        const MailServer server(scripted({{u"RCPT"_s, refusal}}, greeting));
        sendAndFail(server, {u"refused"_s, u"554-"_s + line, NoDelivery});
        QVERIFY2(failure().size() < 2000, qPrintable(QString::number(failure().size())));
        const QListWidget& list = *frmEmail::instance().lstStatus;
        QVERIFY2(list.count() < 500, qPrintable(QString::number(list.count())));
        for (int i = 0; i < list.count(); ++i) QVERIFY(list.item(i)->text().size() < 1100);
    }

    void replyWithoutAnEndIsGivenUp() {
        const MailServer server(scripted({}, u"{50000*220-and so on\r\n}220 here"_s));
        sendAndFail(server, {u"was lost"_s, NoDelivery});
        QVERIFY(frmEmail::instance().lstStatus->count() < 500);
    }

    void silenceAfterQuitDoesNotDelayTheOutcome() {
        const MailServer server(scripted({{u"QUIT"_s, QString()}}));
        QElapsedTimer elapsed;
        elapsed.start();
        expectSuccess();
        send(server);
        QCOMPARE(server.messages(), 1);
        QVERIFY(elapsed.elapsed() < 40'000);
    }

    void silenceAfterQuitKeepsTheReason() {
        const MailServer server(
            scripted({{u"RCPT"_s, u"550 no such user"_s}, {u"QUIT"_s, QString()}}));
        sendAndFail(server, {u"550 no such user"_s, NoDelivery});
    }

    void clientGivesAFullNameOrAnAddress() {
        const MailServer server({{u"fault"_s, u"wants full name"_s}});
        expectSuccess();
        send(server);
        QCOMPARE(server.messages(), 1);
    }

    void addressInAnotherAlphabetNeedsAServerThatTakesIt() {
        addPerson(u"Zoë"_s, u"Zahn"_s, u"zoë@bücher.example"_s);
        const MailServer plain(scripted({}));
        sendAndFail(plain, {u"zoë@bücher.example"_s, NoDelivery});
        QVERIFY(plain.said().filter(u"MAIL"_s).isEmpty());
        const MailServer other({});
        frmEmail& mail = frmEmail::instance();
        mail.txtServer->setText(other.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(other.message(1)[u"recipients"_s].toArray().size(), 2);
    }

    void addressInAnotherAlphabetsDomainGoesToAnyServer() {
        addPerson(u"Zoë"_s, u"Zahn"_s, u"zoe@bücher.example"_s);
        const MailServer server(scripted({}));
        expectSuccess();
        send(server);
        QCOMPARE(server.messages(), 1);
        QVERIFY(server.said().join(u'\n').contains(u"<zoe@xn--bcher-kva.example>"_s));
    }

    void oddFileNamesArrive() {
        const MailServer server({});
        frmEmail& mail = openMessage(server.address());
        const QStringList names{u".hidden"_s,       u"-rf"_s,           u"100%.txt"_s,
                                u"=?utf-8?Q?x?="_s, u"it's, a \"b\""_s, u"trailing."_s,
                                QString(80, u'東'), QString(250, u'x')};
        QStringList paths;
        for (const QString& name : names) paths += write(name, name.toUtf8());
        mail.txtAttach->setText(paths.join(u';'));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        for (const QString& name : names) QCOMPARE(contentOf(message, name), name.toUtf8());
        QCOMPARE(message[u"defects"_s].toArray(), QJsonArray());
        QVERIFY(message[u"longest"_s].toInt() <= 998);
    }

    void longLinesAndLeadingDotsArrive() {
        const MailServer server({});
        frmEmail& mail = openMessage(server.address());
        const QString typed = QString(5000, u'.') + u"\n..\n.\n"_s + u"ä "_s.repeated(1000);
        mail.txtMsg->setPlainText(typed);
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        QString sent = QString::fromUtf8(contentOf(message, u"text/plain"_s));
        QCOMPARE(sent.replace(u"\r\n"_s, u"\n"_s), typed + u'\n');
        QVERIFY(message[u"longest"_s].toInt() <= 998);
    }
};

LORVANITE_TEST(TestMailServers)
#include "test_mail_servers.moc"
