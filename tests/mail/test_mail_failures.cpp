// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/mail_hands.h"
#include "support/registry.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QMdiSubWindow>

namespace {

const QString NothingDelivered = QStringLiteral("Nothing has been delivered.");
const QString NotKnown = QStringLiteral("it is not known whether it was delivered");

QJsonObject faulty(const QString& fault) { return {{QStringLiteral("fault"), fault}}; }

QJsonObject answering(const QString& command, const QJsonValue& answer) {
    return {{QStringLiteral("answers"), QJsonObject{{command, answer}}}};
}

}  // namespace

class TestMailFailures : public MailTest {
    Q_OBJECT

    // Sends over this server and expects that it fails, with no other box.
    void expectFailureOver(const QString& server) {
        frmEmail& mail = openMessage(server);
        mail.txtMsg->setPlainText(QStringLiteral("kept\nwhole"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY(world->answers.isEmpty());
        // The message is unchanged and can be sent again.
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("kept\nwhole"));
        QCOMPARE(mail.txtSubject->text(), QStringLiteral("Sunday"));
        QCOMPARE(mail.fpTo->MaxRows(), 1);
        QVERIFY(mail.cmdSend->isEnabled());
        QCOMPARE(mail.lblProgress->text(), QString());
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(world->endStatus, -1);
    }

    void expectFailureHolds(const QStringList& parts) {
        for (const QString& part : parts)
            QVERIFY2(failure().contains(part),
                     qPrintable(QStringLiteral("\"%1\" is not in: %2").arg(part, failure())));
    }

    // A message that does not fit into the buffers of the connection.
    frmEmail& openLargeMessage(const MailServer& server) {
        frmEmail& mail = openMessage(server.address());
        mail.txtAttach->setText(
            write(QStringLiteral("large.bin"), QByteArray(20 * 1024 * 1024, 'x')));
        return mail;
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
    }

    void refusedMessagesAreNotDelivered_data() {
        QTest::addColumn<QJsonObject>("settings");
        QTest::addColumn<QStringList>("parts");
        QTest::newRow("421 as greeting")
            << faulty(QStringLiteral("greets: 421 too busy"))
            << QStringList{QStringLiteral("421 too busy"), NothingDelivered};
        QTest::newRow("554 as greeting")
            << faulty(QStringLiteral("greets: 554 go away"))
            << QStringList{QStringLiteral("554 go away"), NothingDelivered};
        QTest::newRow("421 to the sender")
            << answering(QStringLiteral("MAIL"), QStringLiteral("421 closing"))
            << QStringList{QStringLiteral("MAIL FROM:<leader@example.org>"),
                           QStringLiteral("421 closing"), NothingDelivered};
        QTest::newRow("450 to a recipient")
            << answering(QStringLiteral("RCPT"),
                         QJsonObject{{QStringLiteral("ann@example.org"),
                                      QStringLiteral("450 mailbox is busy")}})
            << QStringList{QStringLiteral("RCPT TO:<ann@example.org>"),
                           QStringLiteral("450 mailbox is busy"), NothingDelivered};
        QTest::newRow("550 to a recipient")
            << answering(QStringLiteral("RCPT"), QJsonObject{{QStringLiteral("ann@example.org"),
                                                              QStringLiteral("550 no such user")}})
            << QStringList{QStringLiteral("RCPT TO:<ann@example.org>"),
                           QStringLiteral("550 no such user"), NothingDelivered};
        QTest::newRow("552 to the message")
            << answering(QStringLiteral("DATA"), QStringLiteral("552 too large"))
            << QStringList{QStringLiteral("refused the message: 552 too large"), NothingDelivered};
        QTest::newRow("550 to the message, over lines")
            << answering(QStringLiteral("DATA"), QStringLiteral("550-this looks\r\n550 like spam"))
            << QStringList{QStringLiteral("550-this looks\n550 like spam"), NothingDelivered};
    }

    void refusedMessagesAreNotDelivered() {
        QFETCH(QJsonObject, settings);
        QFETCH(QStringList, parts);
        MailServer server(settings);
        expectFailureOver(server.address());
        expectFailureHolds(parts);
        QCOMPARE(server.messages(), 0);
    }

    void oneRefusedRecipientKeepsTheMessageFromAll() {
        // Deliberate: behaviour 175.
        addPerson(QStringLiteral("Ben"), QStringLiteral("Bad"), QStringLiteral("bad@example.org"));
        MailServer server(answering(
            QStringLiteral("RCPT"),
            QJsonObject{{QStringLiteral("bad@example.org"), QStringLiteral("550 unknown")}}));
        frmEmail& mail = openMessage(server.address());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("bad@example.org"), NothingDelivered});
        QCOMPARE(server.messages(), 0);
    }

    void serverThatDoesNotListenIsReported() {
        QString address;
        {
            MailServer gone({});
            address = gone.address();
        }
        expectFailureOver(address);
        expectFailureHolds({QStringLiteral("cannot be reached"), NothingDelivered});
    }

    void unknownServerIsReported() {
        expectFailureOver(QStringLiteral("mail.example.invalid"));
        expectFailureHolds({QStringLiteral("mail.example.invalid"), NothingDelivered});
    }

    void silentServerIsGivenUp() {
        writeLibrarySettings({{QStringLiteral("Timeout"), QStringLiteral("1")}});
        MailServer server(faulty(QStringLiteral("silent")));
        expectFailureOver(server.address());
        expectFailureHolds({QStringLiteral("did not answer in time"), NothingDelivered});
    }

    void connectionLostInTheMiddleOfTheMessageDeliversNothing() {
        MailServer server(faulty(QStringLiteral("closes in data")));
        frmEmail& mail = openLargeMessage(server);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("was lost"), NothingDelivered});
        QVERIFY(server.said().filter(QStringLiteral("whole")).isEmpty());
    }

    void serverThatStallsInTheMiddleOfTheMessageIsGivenUp() {
        writeLibrarySettings({{QStringLiteral("Timeout"), QStringLiteral("5")}});
        MailServer server(faulty(QStringLiteral("stalls in data")));
        frmEmail& mail = openLargeMessage(server);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("did not answer in time"), NothingDelivered});
        QVERIFY(server.hears(QStringLiteral("stalls")));
        server.goOn();
        QVERIFY(server.hears(QStringLiteral("cut off")));
    }

    void missingAnswerToTheMessageLeavesTheOutcomeUnknown() {
        // Deliberate: behaviour 176.
        writeLibrarySettings({{QStringLiteral("AnswerTimeout"), QStringLiteral("2")}});
        MailServer server(faulty(QStringLiteral("silent after data")));
        expectFailureOver(server.address());
        expectFailureHolds({QStringLiteral("did not answer in time"), NotKnown});
        QVERIFY(!failure().contains(NothingDelivered));
        QVERIFY(server.hears(QStringLiteral("whole")));
    }

    void connectionLostAfterTheMessageLeavesTheOutcomeUnknown() {
        MailServer server(faulty(QStringLiteral("closes after data")));
        expectFailureOver(server.address());
        expectFailureHolds({NotKnown});
        QVERIFY(!failure().contains(NothingDelivered));
    }

    void invalidServersAndSendersAreNamed_data() {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("part");
        const QString good = QStringLiteral("127.0.0.1:9");
        const QString me = QStringLiteral("me@example.org");
        QTest::newRow("server with a path") << QStringLiteral("a/b") << me << QStringLiteral("a/b");
        QTest::newRow("server of another kind")
            << QStringLiteral("http://example.org") << me << QStringLiteral("http://example.org");
        QTest::newRow("port too high")
            << QStringLiteral("a:70000") << me << QStringLiteral("a:70000");
        QTest::newRow("blank in server") << QStringLiteral("a b") << me << QStringLiteral("a b");
        QTest::newRow("sender without @")
            << good << QStringLiteral("me") << QStringLiteral("\"me\"");
        QTest::newRow("sender with a bracket")
            << good << QStringLiteral("me>@example.org") << QStringLiteral("me>");
        QTest::newRow("sender with a blank")
            << good << QStringLiteral("me @example.org") << QStringLiteral("me @");
    }

    void invalidServersAndSendersAreNamed() {
        QFETCH(QString, server);
        QFETCH(QString, from);
        QFETCH(QString, part);
        frmEmail& mail = openMessage(server);
        mail.txtFrom->setText(from);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({part});
        QCOMPARE(mail.lstStatus->count(), 0);
    }

    void invalidAddressOfAPersonIsNamed() {
        addPerson(QStringLiteral("Ben"), QStringLiteral("Baker"), QStringLiteral("nobody"));
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("The address \"nobody\" is not valid (Ben Baker).")});
        QVERIFY(server.said().isEmpty());
    }

    void missingAttachmentIsNamed() {
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        const QString there = write(QStringLiteral("there.txt"), "x");
        mail.txtAttach->setText(there + QStringLiteral(";/not/there.pdf;") + world->folder());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("The attachment \"/not/there.pdf\" is missing."),
                            world->folder() + QStringLiteral("\" is not a file.")});
        QVERIFY(!failure().contains(there));
        QVERIFY(server.said().isEmpty());
    }

    void attachmentTruncatedDuringTheSendIsNotDelivered() {
        MailServer server(faulty(QStringLiteral("stalls in data")));
        frmEmail& mail = openLargeMessage(server);
        server.whenItHears(QStringLiteral("stalls"), [&] {
            QFile::resize(mail.txtAttach->text(), 1024 * 1024);
            server.goOn();
        });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("An attachment was changed while it was being sent."),
                            NothingDelivered});
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheWindowDuringTheSendDeliversNothing() {
        MailServer server(faulty(QStringLiteral("stalls in data")));
        frmEmail& mail = openLargeMessage(server);
        QPointer<frmEmail> window(&mail);
        bool isOpenAgain = false;
        server.whenItHears(QStringLiteral("stalls"), [&] {
            qobject_cast<QMdiSubWindow*>(window->parentWidget())->close();
            // The next window is a new one.
            isOpenAgain = &openMail() != window;
        });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("was cancelled"), NothingDelivered});
        settle();
        QVERIFY(isOpenAgain);
        QVERIFY(!window);
        QVERIFY(frmEmail::isLoaded());
        server.goOn();
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheProgramDuringTheSendDeliversNothing() {
        MailServer server(faulty(QStringLiteral("stalls in data")));
        frmEmail& mail = openLargeMessage(server);
        server.whenItHears(QStringLiteral("stalls"), [&] { world->main().close(); });
        // No box is shown after the end of the program.
        click(mail.cmdSend);
        QCOMPARE(world->endStatus, 0);
        server.goOn();
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheWindowBeforeTheAnswerLeavesTheOutcomeUnknown() {
        MailServer server(faulty(QStringLiteral("silent after data")));
        frmEmail& mail = openMessage(server.address());
        server.whenItHears(QStringLiteral("whole"),
                           [&] { qobject_cast<QMdiSubWindow*>(mail.parentWidget())->close(); });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("was cancelled"), NotKnown});
    }
};

LORVANITE_TEST(TestMailFailures)
#include "test_mail_failures.moc"
