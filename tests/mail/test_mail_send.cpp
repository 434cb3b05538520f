// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/mail_hand_over.h"
#include "mail/mail_hands.h"
#include "support/grid_hands.h"
#include "support/registry.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QRandomGenerator>

namespace {

QJsonArray pairs(const QList<QPair<QString, QString>>& list) {
    QJsonArray all;
    for (const auto& [name, address] : list) all.append(QJsonArray{name, address});
    return all;
}

QByteArray randomBytes(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator dice(7);
    for (char& byte : bytes) byte = char(dice.bounded(256));
    return bytes;
}

// Measures the longest time between two turns of the event loop.
class StallWatch : public QObject {
public:
    StallWatch() {
        m_since.start();
        m_turns.setInterval(1);
        connect(&m_turns, &QTimer::timeout, this,
                [this] { m_longest = std::max(m_longest, m_since.restart()); });
        m_turns.start();
    }
    qint64 longest() const { return m_longest; }

private:
    QElapsedTimer m_since;
    QTimer m_turns;
    qint64 m_longest = 0;
};

}  // namespace

class TestMailSend : public MailTest {
    Q_OBJECT

    void addTeam() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        addPerson(QStringLiteral("José"), QStringLiteral("Ñandú"),
                  QStringLiteral("jose@example.org"));
    }

    QStringList statusLines(const frmEmail& mail) const {
        QStringList lines;
        for (int i = 0; i < mail.lstStatus->count(); ++i) lines += mail.lstStatus->item(i)->text();
        return lines;
    }

private Q_SLOTS:
    void plainBodyIsSentWithBreaksAndShownPlainAgain() {
        // Deliberate: behaviour 163.
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        const QString typed = QStringLiteral("Dear team,\n\nsee you – Ü 東京 🎵\u00a0!\n.\nEnd");
        mail.txtMsg->setPlainText(typed);
        mail.txtSubject->setText(QStringLiteral("Größe und 東京 🎵 ") + QString(80, QChar(u'é')));
        mail.txtFromName->setText(QStringLiteral("Zoë \"the\" Ångström, Leader"));
        world->statements.clear();
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
        const QJsonObject message = server.message(1);
        QCOMPARE(message[QStringLiteral("sender")].toString(),
                 QStringLiteral("leader@example.org"));
        QCOMPARE(
            message[QStringLiteral("recipients")].toArray(),
            (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("jose@example.org")}));
        QCOMPARE(message[QStringLiteral("to")].toArray(),
                 pairs({{QStringLiteral("Ann Abel"), QStringLiteral("ann@example.org")},
                        {QStringLiteral("José Ñandú"), QStringLiteral("jose@example.org")}}));
        QCOMPARE(message[QStringLiteral("from")].toArray(),
                 pairs({{QStringLiteral("Zoë \"the\" Ångström, Leader"),
                         QStringLiteral("leader@example.org")}}));
        QCOMPARE(header(message, QStringLiteral("Subject")), mail.txtSubject->text());
        QCOMPARE(header(message, QStringLiteral("Reply-To")), QStringLiteral("leader@example.org"));
        QVERIFY(!header(message, QStringLiteral("Date")).isEmpty());
        QVERIFY(header(message, QStringLiteral("Message-ID"))
                    .endsWith(QStringLiteral("@example.org>")));
        QCOMPARE(header(message, QStringLiteral("X-Priority")), QString());
        QCOMPARE(partsOf(message),
                 (QStringList{QStringLiteral("text/plain|"), QStringLiteral("text/html|")}));
        QString broken = typed;
        broken.replace(QLatin1Char('\n'), QStringLiteral("<BR>\r\n"));
        QCOMPARE(QString::fromUtf8(contentOf(message, QStringLiteral("text/html"))), broken);
        QCOMPARE(QString::fromUtf8(contentOf(message, QStringLiteral("text/plain"))),
                 QStringLiteral("Dear team,\r\n\r\nsee you – Ü 東京 🎵 !\r\n.\r\nEnd\r\n"));
        QCOMPARE(message[QStringLiteral("defects")].toArray(), QJsonArray());
        QVERIFY(message[QStringLiteral("longest")].toInt() <= 998);
        // The box shows the typed text again, and another message can be sent.
        QCOMPARE(mail.txtMsg->document()->toRawText().replace(QChar::ParagraphSeparator,
                                                              QLatin1Char('\n')),
                 typed);
        QVERIFY(mail.cmdSend->isEnabled());
        QCOMPARE(mail.lblProgress->text(), QString());
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(world->statements,
                 QStringList{QStringLiteral("SELECT fName, lName, email FROM personell [1]")});
    }

    void typedBracketsAndAmpersandsArrive() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        mail.txtMsg->clear();
        QTest::keyClicks(mail.txtMsg, QStringLiteral("See you <Sunday> & after"));
        QTest::keyClick(mail.txtMsg, Qt::Key_Return);
        QTest::keyClicks(mail.txtMsg, QStringLiteral("<b>1 < 2</b> &lt; AT&T"));
        const QString typed = mail.txtMsg->toPlainText();
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        QCOMPARE(
            contentOf(message, QStringLiteral("text/html")),
            QByteArray("See you &lt;Sunday> &amp; after<BR>\r\n<b>1 &lt; 2</b> &lt; AT&amp;T"));
        QCOMPARE(contentOf(message, QStringLiteral("text/plain")),
                 QByteArray("See you <Sunday> & after\r\n<b>1 < 2</b> &lt; AT&T\r\n"));
        QCOMPARE(mail.txtMsg->toPlainText(), typed);
    }

    void plainTextHasNoBreaksOfAnEarlierTry() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        mail.txtMsg->setPlainText(QStringLiteral("a\nb"));
        click(mail.Label5);
        world->answers.box(QStringLiteral("Select at least one recipient."));
        click(mail.cmdSend);
        click(mail.Label5);
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(contentOf(server.message(1), QStringLiteral("text/plain")),
                 QByteArray("a\r\nb\r\n"));
    }

    void handedOverBodyIsSentUnchanged() {
        addTeam();
        MailServer server({});
        world->start();
        // One line, much longer than mail allows.
        QByteArray html = "<HTML><BODY><TABLE>";
        for (int i = 0; i < 3000; ++i)
            html += "<TR><TD>Offering " + QByteArray::number(i) + "</TD><TD>Lied ü =20 .</TD></TR>";
        html += "</TABLE></BODY></HTML>";
        write(QStringLiteral("config/email.html"), html);
        handOverStagedMail();
        frmEmail& mail = openMessage(server.address());
        mail.txtMsg->setPlainText(QString::fromUtf8(html));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        QCOMPARE(contentOf(message, QStringLiteral("text/html")), html);
        QVERIFY(message[QStringLiteral("longest")].toInt() <= 998);
        QCOMPARE(mail.txtMsg->toPlainText(), QString::fromUtf8(html));
        // The plain text has one line per row.
        const QString text = QString::fromUtf8(contentOf(message, QStringLiteral("text/plain")));
        QVERIFY2(text.startsWith(
                     QStringLiteral("Offering 0   Lied ü =20 .\r\nOffering 1   Lied ü =20 .\r\n")),
                 qPrintable(text.left(100)));
        QCOMPARE(text.count(QStringLiteral("\r\n")), 3000);
    }

    void attachmentsArriveByteForByteWithTheirTypes() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        const QByteArray text = "one\r\n.\r\n..two\nthree\r four";
        const QByteArray bytes = randomBytes(100'001);
        QStringList paths{
            write(QStringLiteral("plain.txt"), text),
            write(QStringLiteral("Größe \"x\" 東京.pdf"), "%PDF-1.4 " + bytes),
            write(QStringLiteral("semi;colon.bin"), bytes),
            write(QStringLiteral("empty.html"), {}),
            write(QStringLiteral("message.eml"), "From: a@b\r\nSubject: x\r\n\r\nbody"),
            // Either separator is accepted.
            write(QStringLiteral("config/picture.jpg"), "\xff\xd8\xff" + bytes)
                .replace(QStringLiteral("config/picture"), QStringLiteral("config\\picture")),
        };
        mail.txtAttach->setText(QStringLiteral("  ") + paths.join(QLatin1Char(';')) +
                                QStringLiteral("; "));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        QCOMPARE(partsOf(message),
                 (QStringList{QStringLiteral("text/plain|"), QStringLiteral("text/html|"),
                              QStringLiteral("text/plain|plain.txt"),
                              QStringLiteral("application/pdf|Größe \"x\" 東京.pdf"),
                              QStringLiteral("application/octet-stream|semi;colon.bin"),
                              QStringLiteral("text/html|empty.html"),
                              QStringLiteral("application/octet-stream|message.eml"),
                              QStringLiteral("image/jpeg|picture.jpg")}));
        QCOMPARE(contentOf(message, QStringLiteral("plain.txt")), text);
        QCOMPARE(contentOf(message, QStringLiteral("Größe \"x\" 東京.pdf")), "%PDF-1.4 " + bytes);
        QCOMPARE(contentOf(message, QStringLiteral("semi;colon.bin")), bytes);
        QCOMPARE(contentOf(message, QStringLiteral("empty.html")), QByteArray());
        QCOMPARE(contentOf(message, QStringLiteral("picture.jpg")), "\xff\xd8\xff" + bytes);
        QCOMPARE(message[QStringLiteral("defects")].toArray(), QJsonArray());
    }

    void windowStaysResponsiveWhileALargeAttachmentIsSent() {
        addTeam();
        MailServer server({{QStringLiteral("fault"), QStringLiteral("stalls in data")}});
        frmEmail& mail = openMessage(server.address());
        const QByteArray bytes = randomBytes(30 * 1024 * 1024);
        mail.txtAttach->setText(write(QStringLiteral("large.wav"), bytes));
        QStringList progress;
        connect(&mail.poSendMail, &poSendMail::Progress, this,
                [&] { progress += mail.lblProgress->text(); });
        // The server reads on only after a click in the window.
        server.whenItHears(QStringLiteral("stalls"), [&] {
            click(mail.cmdConfig);
            server.goOn();
        });
        expectSuccess();
        QElapsedTimer whole;
        whole.start();
        StallWatch watch;
        click(mail.cmdSend);
        const qint64 longest = watch.longest();
        QVERIFY2(longest < whole.elapsed() / 2,
                 qPrintable(QStringLiteral("%1 of %2 ms").arg(longest).arg(whole.elapsed())));
        QVERIFY(mail.frmConfig->isVisible());
        QCOMPARE(server.messages(), 1);
        QVERIFY(contentOf(server.message(1), QStringLiteral("large.wav")) == bytes);
        QVERIFY(progress.size() > 5);
        QVERIFY(std::is_sorted(progress.begin(), progress.end(),
                               [](const QString& a, const QString& b) {
                                   return a.section(QLatin1Char('%'), 0, 0).toInt() <
                                          b.section(QLatin1Char('%'), 0, 0).toInt();
                               }));
        QCOMPARE(progress.last(), QStringLiteral("100% complete"));
    }

    void windowStaysResponsiveUntilTheServerAnswers() {
        addTeam();
        MailServer server({{QStringLiteral("waits"), true}});
        frmEmail& mail = openMessage(server.address());
        bool wasDisabled = false;
        server.whenItHears(QStringLiteral("DATA"), [&] {
            wasDisabled = !mail.cmdSend->isEnabled() && QApplication::overrideCursor();
            click(mail.cmdConfig);
            server.goOn();
        });
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(wasDisabled);
        QVERIFY(mail.frmConfig->isVisible());
        QVERIFY(mail.cmdSend->isEnabled());
    }

    void bodyHandedOverDuringTheSendIsKept() {
        addTeam();
        MailServer server({{QStringLiteral("waits"), true}});
        frmEmail& mail = openMessage(server.address());
        server.whenItHears(QStringLiteral("DATA"), [&] {
            handOverMail(QStringLiteral("<HTML>next</HTML>"));
            server.goOn();
        });
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(contentOf(server.message(1), QStringLiteral("text/html")), QByteArray("See you"));
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("<HTML>next</HTML>"));
    }

    void everyProtocolLineIsAStatus() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        mail.lstStatus->addItem(QStringLiteral("left by an earlier send"));
        expectSuccess();
        click(mail.cmdSend);
        const QStringList lines = statusLines(mail);
        QVERIFY(lines.first().startsWith(QStringLiteral("< 220 ")));
        QVERIFY(lines.contains(QStringLiteral("> RCPT TO:<ann@example.org>")));
        QVERIFY(lines.contains(QStringLiteral("> DATA")));
        QVERIFY(lines.contains(QStringLiteral("< 250 Taken")));
        QVERIFY(mail.lstStatus->selectedItems().isEmpty());
    }

    void messageGoesToAHundredRecipientsAtMost() {
        for (int i = 1; i <= 100; ++i)
            addPerson(QStringLiteral("P%1").arg(i), QStringLiteral("Täst"),
                      QStringLiteral("p%1@example.org").arg(i));
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.message(1)[QStringLiteral("recipients")].toArray().size(), 100);
        QCOMPARE(server.message(1)[QStringLiteral("to")].toArray().at(99),
                 (QJsonArray{QStringLiteral("P100 Täst"), QStringLiteral("p100@example.org")}));
        QVERIFY(server.message(1)[QStringLiteral("longest")].toInt() <= 998);
        world->sql(
            QStringLiteral("INSERT INTO personell (fName, lName, email) VALUES "
                           "('P1','Täst','other@example.org')"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("101 recipients")), qPrintable(failure()));
        QCOMPARE(server.messages(), 1);
    }

    void namesakesAllGetTheMessageAndNobodyGetsItTwice() {
        // Deliberate: behaviours 160 and 162.
        addTeam();
        addPerson(QStringLiteral("ann"), QStringLiteral("abel"),
                  QStringLiteral("other@example.org"));
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        clickCell(mail.fpEmail, RecipientColumn::Name, 1);
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.message(1)[QStringLiteral("recipients")].toArray(),
                 (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("other@example.org"),
                             QStringLiteral("jose@example.org")}));
    }

    void allAddressesOfAPersonGetTheMessage() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"),
                  QStringLiteral("ann@example.org; home@example.org"));
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(
            server.message(1)[QStringLiteral("recipients")].toArray(),
            (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("home@example.org")}));
    }

    void personDeletedAfterBeingChosenIsLeftOut() {
        // Deliberate: behaviour 161.
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        world->sql(QStringLiteral("DELETE FROM personell WHERE fName = 'Ann'"));
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.message(1)[QStringLiteral("recipients")].toArray(),
                 QJsonArray{QStringLiteral("jose@example.org")});
        // Nobody is left.
        world->sql(QStringLiteral("DELETE FROM personell"));
        world->answers.box(QStringLiteral("Select at least one recipient."));
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
    }

    void personWhoLostTheAddressAfterBeingChosenIsReported() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        world->sql(QStringLiteral("UPDATE personell SET email = ''"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("None of the recipients has a mail address.")),
                 qPrintable(failure()));
        QVERIFY(server.said().isEmpty());
    }

    void emptyServerOrSenderIsReported() {
        addTeam();
        frmEmail& mail = openMessage(QString());
        for (int i = 0; i < 2; ++i) {
            world->answers.box(QStringLiteral("Please fill in all email fields"),
                               QMessageBox::Information, QStringLiteral("Missing Information"));
            click(mail.cmdSend);
            mail.txtServer->setText(QStringLiteral("127.0.0.1"));
            mail.txtFrom->clear();
        }
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("See you"));
    }

    void missingRecipientsAreReported() {
        addTeam();
        frmEmail& mail = openMessage(QStringLiteral("127.0.0.1:9"));
        click(mail.Label5);
        mail.txtMsg->setPlainText(QStringLiteral("a\nb"));
        world->answers.box(QStringLiteral("Select at least one recipient."));
        click(mail.cmdSend);
        // Deliberate: behaviour 163.
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("a<BR>\nb"));
        QVERIFY(mail.cmdSend->isEnabled());
    }

    void lineEndsInNamesAndSubjectAddNoHeader() {
        addPerson(QStringLiteral("Ann\r\nBcc: spy@example.org"), QStringLiteral("Abel\nX: y"),
                  QStringLiteral("ann@example.org"));
        MailServer server({});
        frmEmail& mail = openMessage(server.address());
        mail.poSendMail.FromDisplayName.clear();
        mail.txtSubject->setMaxLength(1000);
        mail.txtFromName->setText(QStringLiteral("Me\r\nX-Spy: 1"));
        mail.txtSubject->setText(QStringLiteral("Sunday\r\nBcc: spy@example.org\r\n\r\nbody"));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject message = server.message(1);
        QCOMPARE(message[QStringLiteral("recipients")].toArray(),
                 QJsonArray{QStringLiteral("ann@example.org")});
        QCOMPARE(header(message, QStringLiteral("Bcc")), QString());
        QCOMPARE(header(message, QStringLiteral("X-Spy")), QString());
        QCOMPARE(header(message, QStringLiteral("X")), QString());
        QVERIFY(header(message, QStringLiteral("Subject")).startsWith(QStringLiteral("Sunday")));
        QCOMPARE(partsOf(message).size(), 2);
    }

    void settingsAreNotSavedWithoutASend() {
        // Deliberate: behaviour 174.
        frmEmail& mail = openMail();
        click(mail.cmdConfig);
        QTest::keyClicks(mail.txtServer, QStringLiteral("mail.example.org"));
        click(mail.cmdCloseConfig);
        world->stop();
        QCOMPARE(openMail().txtServer->text(), QString());
    }

    void settingsAreRestoredAtTheNextStart() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openMessage(QStringLiteral("  ") + server.address());
        mail.txtPopServer->setText(QStringLiteral("pop.example.org"));
        mail.txtUserName->setText(QStringLiteral("zoë"));
        mail.txtFromName->setText(QStringLiteral("A; \"B\", Ç %1"));
        expectSuccess();
        click(mail.cmdSend);
        // The library has trimmed the server's name.
        QCOMPARE(mail.txtServer->text(), server.address());
        world->stop();
        frmEmail& again = openMail();
        QCOMPARE(again.txtServer->text(), server.address());
        QCOMPARE(again.txtPopServer->text(), QStringLiteral("pop.example.org"));
        QCOMPARE(again.txtFrom->text(), QStringLiteral("leader@example.org"));
        QCOMPARE(again.txtFromName->text(), QStringLiteral("A; \"B\", Ç %1"));
        QCOMPARE(again.txtUserName->text(), QStringLiteral("zoë"));
        QCOMPARE(again.txtPassword->text(), QString());
    }
};

LORVANITE_TEST(TestMailSend)
#include "test_mail_send.moc"
