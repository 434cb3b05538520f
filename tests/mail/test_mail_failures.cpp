#include "mail/mail_hands.h"
#include "support/registry.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QMdiSubWindow>

namespace {

const QString NothingDelivered = QStringLiteral("Nothing has been delivered.");
const QString NotKnown = QStringLiteral("it is not known whether it is delivered");

QJsonObject faulty(const QString& fault) { return {{QStringLiteral("fault"), fault}}; }

QJsonObject answering(const QString& command, const QJsonValue& answer) {
    return {{QStringLiteral("answers"), QJsonObject{{command, answer}}}};
}

}  // namespace

class TestMailFailures : public MailTest {
    Q_OBJECT

    // Sends over this server, which fails; nothing else may come up.
    void sendInVain(const QString& server) {
        frmEmail& mail = openLetter(server);
        mail.txtMsg->setPlainText(QStringLiteral("kept\nwhole"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY(world->answers.isEmpty());
        // The letter stands as it was, ready for another try.
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

    // Sends a letter that fills every buffer on its way.
    frmEmail& openLargeLetter(const MailServer& server) {
        frmEmail& mail = openLetter(server.address());
        mail.txtAttach->setText(
            write(QStringLiteral("large.bin"), QByteArray(20 * 1024 * 1024, 'x')));
        return mail;
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
    }

    void refusals_data() {
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
        QTest::newRow("552 to the letter")
            << answering(QStringLiteral("DATA"), QStringLiteral("552 too large"))
            << QStringList{QStringLiteral("refused the letter: 552 too large"), NothingDelivered};
        QTest::newRow("550 to the letter, over lines")
            << answering(QStringLiteral("DATA"), QStringLiteral("550-this looks\r\n550 like spam"))
            << QStringList{QStringLiteral("550-this looks\n550 like spam"), NothingDelivered};
    }

    void refusals() {
        QFETCH(QJsonObject, settings);
        QFETCH(QStringList, parts);
        MailServer server(settings);
        sendInVain(server.address());
        expectFailureHolds(parts);
        QCOMPARE(server.letters(), 0);
    }

    void oneRefusedRecipientKeepsTheLetterFromAll() {
        addPerson(QStringLiteral("Ben"), QStringLiteral("Bad"), QStringLiteral("bad@example.org"));
        MailServer server(answering(
            QStringLiteral("RCPT"),
            QJsonObject{{QStringLiteral("bad@example.org"), QStringLiteral("550 unknown")}}));
        frmEmail& mail = openLetter(server.address());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("bad@example.org"), NothingDelivered});
        QCOMPARE(server.letters(), 0);
    }

    void nobodyListens() {
        QString address;
        {
            MailServer gone({});
            address = gone.address();
        }
        sendInVain(address);
        expectFailureHolds({QStringLiteral("cannot be reached"), NothingDelivered});
    }

    void aServerThatIsNotThere() {
        sendInVain(QStringLiteral("mail.example.invalid"));
        expectFailureHolds({QStringLiteral("mail.example.invalid"), NothingDelivered});
    }

    void aServerSilentForGood() {
        writeLibrarySettings({{QStringLiteral("Timeout"), QStringLiteral("1")}});
        MailServer server(faulty(QStringLiteral("silent")));
        sendInVain(server.address());
        expectFailureHolds({QStringLiteral("did not answer in time"), NothingDelivered});
    }

    void aServerThatClosesInTheMiddleOfTheLetter() {
        MailServer server(faulty(QStringLiteral("closes in data")));
        frmEmail& mail = openLargeLetter(server);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("broke off"), NothingDelivered});
        QVERIFY(server.said().filter(QStringLiteral("whole")).isEmpty());
    }

    void aServerThatStallsInTheMiddleOfTheLetter() {
        writeLibrarySettings({{QStringLiteral("Timeout"), QStringLiteral("1")}});
        QJsonObject settings = faulty(QStringLiteral("stalls in data"));
        settings[QStringLiteral("wait")] = 4;
        MailServer server(settings);
        frmEmail& mail = openLargeLetter(server);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("did not answer in time"), NothingDelivered});
        QVERIFY(server.hears(QStringLiteral("cut off")));
    }

    void noAnswerToTheLetterLeavesTheOutcomeUnknown() {
        writeLibrarySettings({{QStringLiteral("Timeout"), QStringLiteral("1")},
                              {QStringLiteral("AnswerTimeout"), QStringLiteral("2")}});
        MailServer server(faulty(QStringLiteral("silent after data")));
        sendInVain(server.address());
        expectFailureHolds({QStringLiteral("did not answer in time"), NotKnown});
        QVERIFY(!failure().contains(NothingDelivered));
        QVERIFY(server.said().contains(QStringLiteral("whole")));
    }

    void aServerThatClosesBehindTheLetterLeavesTheOutcomeUnknown() {
        MailServer server(faulty(QStringLiteral("closes after data")));
        sendInVain(server.address());
        expectFailureHolds({NotKnown});
        QVERIFY(!failure().contains(NothingDelivered));
    }

    void badTexts_data() {
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

    void badTexts() {
        QFETCH(QString, server);
        QFETCH(QString, from);
        QFETCH(QString, part);
        frmEmail& mail = openLetter(server);
        mail.txtFrom->setText(from);
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({part});
        QCOMPARE(mail.lstStatus->count(), 0);
    }

    void aBadAddressOfAPersonIsNamed() {
        addPerson(QStringLiteral("Ben"), QStringLiteral("Baker"), QStringLiteral("nobody"));
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("\"nobody\" is not a mail address (Ben Baker).")});
        QVERIFY(server.said().isEmpty());
    }

    void anAttachmentThatIsNotThereIsNamed() {
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        const QString there = write(QStringLiteral("there.txt"), "x");
        mail.txtAttach->setText(there + QStringLiteral(";/not/there.pdf;") + world->folder());
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("The attachment \"/not/there.pdf\" is missing."),
                            world->folder() + QStringLiteral("\" is not a file.")});
        QVERIFY(!failure().contains(there));
        QVERIFY(server.said().isEmpty());
    }

    void anAttachmentCutDuringTheSendIsNotDelivered() {
        QJsonObject settings = faulty(QStringLiteral("stalls in data"));
        settings[QStringLiteral("wait")] = 1;
        MailServer server(settings);
        frmEmail& mail = openLargeLetter(server);
        QTimer::singleShot(500, this, [&] { QFile::resize(mail.txtAttach->text(), 1024 * 1024); });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("An attachment was changed"), NothingDelivered});
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheWindowInTheMiddleDeliversNothing() {
        QJsonObject settings = faulty(QStringLiteral("stalls in data"));
        settings[QStringLiteral("wait")] = 3;
        MailServer server(settings);
        frmEmail& mail = openLargeLetter(server);
        QPointer<frmEmail> window(&mail);
        bool isOpenAgain = false;
        QTimer::singleShot(500, this, [&] {
            qobject_cast<QMdiSubWindow*>(window->parentWidget())->close();
            // The next window is another one.
            isOpenAgain = &openMail() != window;
        });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("broken off"), NothingDelivered});
        settle();
        QVERIFY(isOpenAgain);
        QVERIFY(!window);
        QVERIFY(frmEmail::isLoaded());
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheProgramInTheMiddleDeliversNothing() {
        QJsonObject settings = faulty(QStringLiteral("stalls in data"));
        settings[QStringLiteral("wait")] = 3;
        MailServer server(settings);
        frmEmail& mail = openLargeLetter(server);
        QTimer::singleShot(500, this, [&] { world->main().close(); });
        // No box comes up: nobody is there.
        click(mail.cmdSend);
        QCOMPARE(world->endStatus, 0);
        QVERIFY(server.hears(QStringLiteral("cut off")));
        QVERIFY(!server.said().contains(QStringLiteral("whole")));
    }

    void closingTheWindowWhileTheServerThinksSaysThatItIsNotKnown() {
        MailServer server(faulty(QStringLiteral("silent after data")));
        frmEmail& mail = openLetter(server.address());
        QTimer::singleShot(1000, this,
                           [&] { qobject_cast<QMdiSubWindow*>(mail.parentWidget())->close(); });
        expectFailure();
        click(mail.cmdSend);
        expectFailureHolds({QStringLiteral("broken off"), NotKnown});
    }
};

LORVANITE_TEST(TestMailFailures)
#include "test_mail_failures.moc"
