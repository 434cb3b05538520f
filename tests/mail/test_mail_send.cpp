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

// The longest time between two turns of the event loop.
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
    void aPlainBodyGoesOutWithBreaksAndComesBackPlain() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        const QString typed = QStringLiteral("Dear team,\n\nsee you – Ü 東京 🎵\u00a0!\n.\nEnd");
        mail.txtMsg->setPlainText(typed);
        mail.txtSubject->setText(QStringLiteral("Größe und 東京 🎵 ") + QString(80, QChar(u'é')));
        mail.txtFromName->setText(QStringLiteral("Zoë \"the\" Ångström, Leader"));
        world->statements.clear();
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.letters(), 1);
        const QJsonObject letter = server.letter(1);
        QCOMPARE(letter[QStringLiteral("sender")].toString(), QStringLiteral("leader@example.org"));
        QCOMPARE(
            letter[QStringLiteral("recipients")].toArray(),
            (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("jose@example.org")}));
        QCOMPARE(letter[QStringLiteral("to")].toArray(),
                 pairs({{QStringLiteral("Ann Abel"), QStringLiteral("ann@example.org")},
                        {QStringLiteral("José Ñandú"), QStringLiteral("jose@example.org")}}));
        QCOMPARE(letter[QStringLiteral("from")].toArray(),
                 pairs({{QStringLiteral("Zoë \"the\" Ångström, Leader"),
                         QStringLiteral("leader@example.org")}}));
        QCOMPARE(header(letter, QStringLiteral("Subject")), mail.txtSubject->text());
        QCOMPARE(header(letter, QStringLiteral("Reply-To")), QStringLiteral("leader@example.org"));
        QVERIFY(!header(letter, QStringLiteral("Date")).isEmpty());
        QVERIFY(
            header(letter, QStringLiteral("Message-ID")).endsWith(QStringLiteral("@example.org>")));
        QCOMPARE(header(letter, QStringLiteral("X-Priority")), QString());
        QCOMPARE(partsOf(letter),
                 (QStringList{QStringLiteral("text/plain|"), QStringLiteral("text/html|")}));
        QString broken = typed;
        broken.replace(QLatin1Char('\n'), QStringLiteral("<BR>\r\n"));
        QCOMPARE(QString::fromUtf8(contentOf(letter, QStringLiteral("text/html"))), broken);
        QCOMPARE(QString::fromUtf8(contentOf(letter, QStringLiteral("text/plain"))),
                 QStringLiteral("Dear team,\r\n\r\nsee you – Ü 東京 🎵 !\r\n.\r\nEnd\r\n"));
        QCOMPARE(letter[QStringLiteral("defects")].toArray(), QJsonArray());
        QVERIFY(letter[QStringLiteral("longest")].toInt() <= 998);
        // What was typed stands in the box again, and another letter can be sent.
        QCOMPARE(mail.txtMsg->document()->toRawText().replace(QChar::ParagraphSeparator,
                                                              QLatin1Char('\n')),
                 typed);
        QVERIFY(mail.cmdSend->isEnabled());
        QCOMPARE(mail.lblProgress->text(), QString());
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(world->statements,
                 QStringList{QStringLiteral("SELECT fName, lName, email FROM personell [1]")});
    }

    void aBodyFromAHandOverGoesOutUnchanged() {
        addTeam();
        MailServer server({});
        world->start();
        // One line, far longer than a line of mail may be.
        QByteArray html = "<HTML><BODY><TABLE>";
        for (int i = 0; i < 3000; ++i)
            html += "<TR><TD>Offering " + QByteArray::number(i) + "</TD><TD>Lied ü =20 .</TD></TR>";
        html += "</TABLE></BODY></HTML>";
        write(QStringLiteral("config/email.html"), html);
        handOverStagedMail();
        frmEmail& mail = openLetter(server.address());
        mail.txtMsg->setPlainText(QString::fromUtf8(html));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject letter = server.letter(1);
        QCOMPARE(contentOf(letter, QStringLiteral("text/html")), html);
        QVERIFY(letter[QStringLiteral("longest")].toInt() <= 998);
        QCOMPARE(mail.txtMsg->toPlainText(), QString::fromUtf8(html));
        // Readers without HTML see a line a row.
        const QString text = QString::fromUtf8(contentOf(letter, QStringLiteral("text/plain")));
        QVERIFY2(text.startsWith(
                     QStringLiteral("Offering 0   Lied ü =20 .\r\nOffering 1   Lied ü =20 .\r\n")),
                 qPrintable(text.left(100)));
        QCOMPARE(text.count(QStringLiteral("\r\n")), 3000);
    }

    void attachmentsArriveByteForByteWithTheirTypes() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        const QByteArray text = "one\r\n.\r\n..two\nthree\r four";
        const QByteArray bytes = randomBytes(100'001);
        QStringList paths{
            write(QStringLiteral("plain.txt"), text),
            write(QStringLiteral("Größe \"x\" 東京.pdf"), "%PDF-1.4 " + bytes),
            write(QStringLiteral("semi;colon.bin"), bytes),
            write(QStringLiteral("empty.html"), {}),
            write(QStringLiteral("letter.eml"), "From: a@b\r\nSubject: x\r\n\r\nbody"),
            // Either separator will do.
            write(QStringLiteral("config/picture.jpg"), "\xff\xd8\xff" + bytes)
                .replace(QStringLiteral("config/picture"), QStringLiteral("config\\picture")),
        };
        mail.txtAttach->setText(QStringLiteral("  ") + paths.join(QLatin1Char(';')) +
                                QStringLiteral("; "));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject letter = server.letter(1);
        QCOMPARE(partsOf(letter),
                 (QStringList{QStringLiteral("text/plain|"), QStringLiteral("text/html|"),
                              QStringLiteral("text/plain|plain.txt"),
                              QStringLiteral("application/pdf|Größe \"x\" 東京.pdf"),
                              QStringLiteral("application/octet-stream|semi;colon.bin"),
                              QStringLiteral("text/html|empty.html"),
                              QStringLiteral("application/octet-stream|letter.eml"),
                              QStringLiteral("image/jpeg|picture.jpg")}));
        QCOMPARE(contentOf(letter, QStringLiteral("plain.txt")), text);
        QCOMPARE(contentOf(letter, QStringLiteral("Größe \"x\" 東京.pdf")), "%PDF-1.4 " + bytes);
        QCOMPARE(contentOf(letter, QStringLiteral("semi;colon.bin")), bytes);
        QCOMPARE(contentOf(letter, QStringLiteral("empty.html")), QByteArray());
        QCOMPARE(contentOf(letter, QStringLiteral("picture.jpg")), "\xff\xd8\xff" + bytes);
        QCOMPARE(letter[QStringLiteral("defects")].toArray(), QJsonArray());
    }

    void aLargeAttachmentGoesOutWithoutAStall() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        const QByteArray bytes = randomBytes(30 * 1024 * 1024);
        mail.txtAttach->setText(write(QStringLiteral("large.wav"), bytes));
        QStringList progress;
        connect(&mail.poSendMail, &poSendMail::Progress, this,
                [&] { progress += mail.lblProgress->text(); });
        expectSuccess();
        StallWatch watch;
        click(mail.cmdSend);
        QCOMPARE(server.letters(), 1);
        QVERIFY(contentOf(server.letter(1), QStringLiteral("large.wav")) == bytes);
        QVERIFY(progress.size() > 5);
        QVERIFY(std::is_sorted(progress.begin(), progress.end(),
                               [](const QString& a, const QString& b) {
                                   return a.section(QLatin1Char('%'), 0, 0).toInt() <
                                          b.section(QLatin1Char('%'), 0, 0).toInt();
                               }));
        QCOMPARE(progress.last(), QStringLiteral("100% complete"));
        qInfo("longest stall %lld ms", watch.longest());
    }

    void theWindowLivesWhileTheServerThinks() {
        addTeam();
        MailServer server({{QStringLiteral("wait"), 1}});
        frmEmail& mail = openLetter(server.address());
        bool wasDisabled = false;
        QTimer::singleShot(500, &mail, [&] {
            wasDisabled = !mail.cmdSend->isEnabled() && QApplication::overrideCursor();
            click(mail.cmdConfig);
        });
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(wasDisabled);
        QVERIFY(mail.frmConfig->isVisible());
        QVERIFY(mail.cmdSend->isEnabled());
    }

    void whatIsTypedDuringTheSendStays() {
        addTeam();
        MailServer server({{QStringLiteral("wait"), 1}});
        frmEmail& mail = openLetter(server.address());
        QTimer::singleShot(500, &mail, [&] { handOverMail(QStringLiteral("<HTML>next</HTML>")); });
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(contentOf(server.letter(1), QStringLiteral("text/html")), QByteArray("See you"));
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("<HTML>next</HTML>"));
    }

    void everyProtocolLineIsAStatus() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        mail.lstStatus->addItem(QStringLiteral("of an earlier send"));
        expectSuccess();
        click(mail.cmdSend);
        const QStringList lines = statusLines(mail);
        QVERIFY(lines.first().startsWith(QStringLiteral("< 220 ")));
        QVERIFY(lines.contains(QStringLiteral("> RCPT TO:<ann@example.org>")));
        QVERIFY(lines.contains(QStringLiteral("> DATA")));
        QVERIFY(lines.contains(QStringLiteral("< 250 Taken")));
        QVERIFY(mail.lstStatus->selectedItems().isEmpty());
    }

    void aHundredRecipientsGetItAndNotOneMore() {
        for (int i = 1; i <= 100; ++i)
            addPerson(QStringLiteral("P%1").arg(i), QStringLiteral("Täst"),
                      QStringLiteral("p%1@example.org").arg(i));
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.letter(1)[QStringLiteral("recipients")].toArray().size(), 100);
        QCOMPARE(server.letter(1)[QStringLiteral("to")].toArray().at(99),
                 (QJsonArray{QStringLiteral("P100 Täst"), QStringLiteral("p100@example.org")}));
        QVERIFY(server.letter(1)[QStringLiteral("longest")].toInt() <= 998);
        world->sql(
            QStringLiteral("INSERT INTO personell (fName, lName, email) VALUES "
                           "('P1','Täst','other@example.org')"));
        expectFailure();
        click(mail.cmdSend);
        QVERIFY2(failure().contains(QStringLiteral("101 recipients")), qPrintable(failure()));
        QCOMPARE(server.letters(), 1);
    }

    void namesakesAllGetTheMailAndNobodyTwice() {
        addTeam();
        addPerson(QStringLiteral("ann"), QStringLiteral("abel"),
                  QStringLiteral("other@example.org"));
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        clickCell(mail.fpEmail, 1, 1);
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.letter(1)[QStringLiteral("recipients")].toArray(),
                 (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("other@example.org"),
                             QStringLiteral("jose@example.org")}));
    }

    void severalAddressesInOneCellAllGetIt() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"),
                  QStringLiteral("ann@example.org; home@example.org"));
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(
            server.letter(1)[QStringLiteral("recipients")].toArray(),
            (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("home@example.org")}));
    }

    void aPersonDeletedAfterThePickIsLeftOut() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        world->sql(QStringLiteral("DELETE FROM personell WHERE fName = 'Ann'"));
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.letter(1)[QStringLiteral("recipients")].toArray(),
                 QJsonArray{QStringLiteral("jose@example.org")});
        // With the last one gone there is nobody to write to.
        world->sql(QStringLiteral("DELETE FROM personell"));
        world->answers.box(QStringLiteral("Select at least one recipient."));
        click(mail.cmdSend);
        QCOMPARE(server.letters(), 1);
    }

    void anEmptyServerOrSenderIsAskedFor() {
        addTeam();
        frmEmail& mail = openLetter(QString());
        for (int i = 0; i < 2; ++i) {
            world->answers.box(QStringLiteral("Please fill in all email fields"),
                               QMessageBox::Information, QStringLiteral("Missing Information"));
            click(mail.cmdSend);
            mail.txtServer->setText(QStringLiteral("127.0.0.1"));
            mail.txtFrom->clear();
        }
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("See you"));
    }

    void nobodyPickedIsTold() {
        addTeam();
        frmEmail& mail = openLetter(QStringLiteral("127.0.0.1:9"));
        click(mail.Label5);
        mail.txtMsg->setPlainText(QStringLiteral("a\nb"));
        world->answers.box(QStringLiteral("Select at least one recipient."));
        click(mail.cmdSend);
        // The conversion stays in this case.
        QCOMPARE(mail.txtMsg->toPlainText(), QStringLiteral("a<BR>\nb"));
        QVERIFY(mail.cmdSend->isEnabled());
    }

    void lineEndsInNamesAndSubjectAddNoHeader() {
        addPerson(QStringLiteral("Ann\r\nBcc: spy@example.org"), QStringLiteral("Abel\nX: y"),
                  QStringLiteral("ann@example.org"));
        MailServer server({});
        frmEmail& mail = openLetter(server.address());
        mail.poSendMail.FromDisplayName.clear();
        mail.txtSubject->setMaxLength(1000);
        mail.txtFromName->setText(QStringLiteral("Me\r\nX-Spy: 1"));
        mail.txtSubject->setText(QStringLiteral("Sunday\r\nBcc: spy@example.org\r\n\r\nbody"));
        expectSuccess();
        click(mail.cmdSend);
        const QJsonObject letter = server.letter(1);
        QCOMPARE(letter[QStringLiteral("recipients")].toArray(),
                 QJsonArray{QStringLiteral("ann@example.org")});
        QCOMPARE(header(letter, QStringLiteral("Bcc")), QString());
        QCOMPARE(header(letter, QStringLiteral("X-Spy")), QString());
        QCOMPARE(header(letter, QStringLiteral("X")), QString());
        QVERIFY(header(letter, QStringLiteral("Subject")).startsWith(QStringLiteral("Sunday")));
        QCOMPARE(partsOf(letter).size(), 2);
    }

    void settingsAreKeptFromRunToRun() {
        addTeam();
        MailServer server({});
        frmEmail& mail = openLetter(QStringLiteral("  ") + server.address());
        mail.txtPopServer->setText(QStringLiteral("pop.example.org"));
        mail.txtUserName->setText(QStringLiteral("zoë"));
        mail.txtFromName->setText(QStringLiteral("A; \"B\", Ç %1"));
        expectSuccess();
        click(mail.cmdSend);
        // The library's own form of the server's name comes back.
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
