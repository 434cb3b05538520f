// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/plain_text.h"
#include "mail/rules/client_name.h"
#include "mail/rules/mail_checks.h"
#include "mail/rules/mail_encoding.h"
#include "mail/rules/typed_text.h"
#include "support/registry.h"

#include <QTest>

class TestMailTexts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void serverNamesAreParsed_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("parsed");
        const auto row = [](const char* text, const char* parsed) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(parsed);
        };
        row("mail.example.org", "smtp mail.example.org 25");
        row(" mail.example.org:2525 ", "smtp mail.example.org 2525");
        row("smtps://mail.example.org", "smtps mail.example.org 465");
        row("SMTPS://mail.example.org:999/", "smtps mail.example.org 999");
        row("smtp://mail.example.org", "smtp mail.example.org 25");
        row("192.168.0.1", "smtp 192.168.0.1 25");
        row("[::1]:26", "smtp [::1] 26");
        row("bücher.example", "smtp bücher.example 25");
        row("my_nas", "smtp my_nas 25");
        for (const char* bad : {"", ":25", "a:", "a:0", "a:65536", "a:123456", "pop3://a", "a/b",
                                "a@b", "a b", "a\r\nb", "-a", "a..b", "a?b", "a#b", "[zz]", "::1"})
            row(bad, "");
    }

    void serverNamesAreParsed() {
        QFETCH(QString, text);
        QFETCH(QString, parsed);
        const auto host = mailHostOf(text, QStringLiteral("smtp"), 25, 465, true);
        QCOMPARE(host ? QStringLiteral("%1 %2 %3").arg(host->scheme, host->host).arg(host->port)
                      : QString(),
                 parsed);
    }

    void loginAndSchemeDecideTheDefaultPort() {
        MailMessage message;
        message.SMTPHost = QStringLiteral("mail.example.org");
        message.POP3Host = QStringLiteral("mail.example.org");
        QCOMPARE(smtpHostOf(message)->port, 25);
        message.UseAuthentication = true;
        QCOMPARE(smtpHostOf(message)->port, 587);
        QCOMPARE(popHostOf(message)->port, 110);
        message.POP3Host = QStringLiteral("pop3s://mail.example.org");
        QCOMPARE(popHostOf(message)->port, 995);
    }

    void onlyTheLoopbackIsTheLoopback() {
        const auto isLoopback = [](const char* text) {
            return mailHostOf(QString::fromLatin1(text), QStringLiteral("smtp"), 25, 465, true)
                ->isLoopback();
        };
        for (const char* text : {"localhost", "LOCALHOST:25", "127.0.0.1", "127.3.2.1", "[::1]"})
            QVERIFY2(isLoopback(text), text);
        for (const char* text :
             {"mail.example.org", "127.example.org", "127.0.0.1.example.org", "localhost.org"})
            QVERIFY2(!isLoopback(text), text);
    }

    void addressesAreChecked_data() {
        QTest::addColumn<bool>("isAddress");
        for (const char* text : {"a@b", "first.last+tag@mail.example.org", "o'neil@example.org",
                                 "zoë@bücher.example", "a@[127.0.0.1]", "a@[IPv6:::1]"})
            QTest::newRow(text) << true;
        for (const char* text :
             {"", "a", "@b", "a@", "a b@c", "a@b c", "a@b@c", "a@b\r\nRCPT TO:<x@y>", "<a@b>",
              "a@b>", "a,b@c", "a;b@c", ".a@b", "a.@b", "a..b@c", "a@-b", "a@b..c", "\"a\"@b"})
            QTest::newRow(text) << false;
    }

    void addressesAreChecked() {
        QFETCH(bool, isAddress);
        QCOMPARE(isMailAddress(QString::fromUtf8(QTest::currentDataTag()), true), isAddress);
    }

    void uncheckedAddressesStillCannotEndTheCommand() {
        QVERIFY(isMailAddress(QStringLiteral("postmaster"), false));
        QVERIFY(!isMailAddress(QStringLiteral("a>\r\nRCPT TO:<b"), false));
        QVERIFY(!isMailAddress(QStringLiteral("a> SIZE=1"), false));
    }

    void foldedHeadersNeverSplitACharacter() {
        QCOMPARE(encodedHeader(QStringLiteral("Sunday, 10/05/03")), QByteArray("Sunday, 10/05/03"));
        QCOMPARE(encodedHeader(QStringLiteral("a\r\nBcc: b")), QByteArray("a  Bcc: b"));
        QCOMPARE(encodedHeader(QStringLiteral("=?x")), QByteArray("=?UTF-8?B?PT94?="));
        const QString text = QStringLiteral("é") + QStringLiteral("🎵東").repeated(60);
        QString read;
        for (const QByteArray& line : encodedHeader(text).split('\n')) {
            const QByteArray word = line.trimmed();
            QVERIFY(word.size() <= 75 && word.startsWith("=?UTF-8?B?") && word.endsWith("?="));
            const QString piece =
                QString::fromUtf8(QByteArray::fromBase64(word.mid(10).chopped(2)));
            QVERIFY(!piece.contains(QChar::ReplacementCharacter));
            read += piece;
        }
        QCOMPARE(read, text);
        QVERIFY(encodedHeader(QString(5000, QLatin1Char('x'))).contains("\r\n "));
    }

    void mailboxesMayBeInAnyLanguage() {
        QCOMPARE(encodedMailbox(QStringLiteral("a@b"), QString()), QByteArray("a@b"));
        QCOMPARE(encodedMailbox(QStringLiteral("a@b"), QStringLiteral("O'Neil, \"A\"")),
                 QByteArray("\"O'Neil, \\\"A\\\"\"\r\n <a@b>"));
        QCOMPARE(encodedMailbox(QStringLiteral("a@bücher.example"), QStringLiteral("Zoë")),
                 QByteArray("=?UTF-8?B?Wm/Dqw==?=\r\n <a@xn--bcher-kva.example>"));
    }

    void fileNamesMayBeInAnyLanguage() {
        QCOMPARE(attachmentDisposition(QStringLiteral("a \"b\" \\c.txt")),
                 QByteArray("attachment; filename=\"a \\\"b\\\" \\\\c.txt\""));
        QCOMPARE(attachmentDisposition(QStringLiteral("ü x.txt")),
                 QByteArray("attachment;\r\n filename*=UTF-8''%C3%BC%20x.txt"));
        QVERIFY(!attachmentDisposition(QStringLiteral("a\r\nX: y")).contains("\r\nX"));
    }

    void htmlIsConvertedToPlainText() {
        QCOMPARE(plainTextOf(QStringLiteral("a<BR>\nb &amp; c&nbsp;&lt;")),
                 QStringLiteral("a\nb & c <\n"));
        QCOMPARE(
            plainTextOf(QStringLiteral(
                "<HTML><TABLE name = note><TR><TD>Come<BR>early</TD></TR></TABLE><TABLE><TR><TD "
                "COLSPAN=2>10/05/03</TD></TR><TR><TD>Offering</TD><TD>Title</TD></TR></TABLE>"
                "</HTML>")),
            QStringLiteral("Come\nearly\n10/05/03\nOffering   Title\n"));
        QCOMPARE(plainTextOf(QString()), QStringLiteral("\n"));
    }

    void typedTextKeepsItsTagsAndEntities_data() {
        QTest::addColumn<QString>("html");
        const auto row = [](const char* typed, const char* html) {
            QTest::newRow(typed) << QString::fromUtf8(html);
        };
        for (const char* kept :
             {"<b>a</b>", "<BR>\n", "<br/>", "<p class='x'>", "<a href=\"http://a/?b=1&c=2\">a</a>",
              "<font color=red size=\"+1\">", "<td nowrap>", "<h1 >", "</ul\n>",
              "&amp; &#220; &#xDC;", "&nbsp;", "<!-- a < b -->", "<!DOCTYPE html>", "a > b"})
            row(kept, kept);
        row("<Sunday> & after", "&lt;Sunday> &amp; after");
        row("AT&T & Co; Q&", "AT&amp;T &amp; Co; Q&amp;");
        row("1 < 2 <3 <- <", "1 &lt; 2 &lt;3 &lt;- &lt;");
        row("a <b c", "a &lt;b c");
        row("<a friend>, <i think so>", "&lt;a friend>, &lt;i think so>");
        row("<ann@example.org>", "&lt;ann@example.org>");
        row("<b <i>x</i>", "&lt;b <i>x</i>");
        row("<bold> <mark> <p\"> <\xc3\xbc>", "&lt;bold> &lt;mark> &lt;p\"> &lt;\xc3\xbc>");
        row("&copy 2026, &#; &;", "&amp;copy 2026, &amp;#; &amp;;");
        row("<<b>>", "&lt;<b>>");
    }

    void typedTextKeepsItsTagsAndEntities() {
        QFETCH(QString, html);
        QCOMPARE(typedTextAsHtml(QString::fromUtf8(QTest::currentDataTag())), html);
    }

    void hugeTypedTextIsConvertedAtOnce() {
        const QString typed = QStringLiteral("<b \"").repeated(20'000);
        QCOMPARE(typedTextAsHtml(typed), QStringLiteral("&lt;b \"").repeated(20'000));
    }

    void onlyATextWithoutAPageIsTyped() {
        QVERIFY(isTypedText(QStringLiteral("a <b>b</b>")));
        QVERIFY(!isTypedText(QStringLiteral("<!DOCTYPE html><html lang=en>")));
        QVERIFY(!isTypedText(QStringLiteral("x<HTML>")));
    }

    void onlyFullHostNamesAreFull() {
        for (const char* name : {"office.example.org", "a.b", "my-pc.lan", "A1.EXAMPLE.ORG"})
            QVERIFY2(isFullHostName(QString::fromLatin1(name)), name);
        for (const char* name :
             {"", "office", "localhost", "localhost.localdomain", "pc.localdomain", "192.0.2.1",
              "office.", ".org", "a..b", "-a.org", "a-.org", "my_pc.org", "a b.org"})
            QVERIFY2(!isFullHostName(QString::fromLatin1(name)), name);
    }

    void clientNameIsAFullNameOrAnAddress() {
        QCOMPARE(addressLiteral(QStringLiteral("192.0.2.1")), QStringLiteral("[192.0.2.1]"));
        QCOMPARE(addressLiteral(QStringLiteral("2001:db8::1")),
                 QStringLiteral("[IPv6:2001:db8::1]"));
        const QString name = clientName();
        QVERIFY2(isFullHostName(name) || isMailAddress(QStringLiteral("a@") + name, true),
                 qPrintable(name));
    }

    void namesMatchTheirAddressesOrAreLeftOut() {
        MailMessage message;
        message.Recipient = QStringLiteral("a@x; ;b@x;a@x");
        message.RecipientDisplayName = QStringLiteral("A;None;B;A");
        const std::vector<Mailbox> all{{QStringLiteral("a@x"), QStringLiteral("A")},
                                       {QStringLiteral("b@x"), QStringLiteral("B")}};
        QVERIFY(recipientsOf(message) == all);
        message.RecipientDisplayName = QStringLiteral("A;B");
        const std::vector<Mailbox> nameless{{QStringLiteral("a@x"), {}},
                                            {QStringLiteral("b@x"), {}}};
        QVERIFY(recipientsOf(message) == nameless);
    }
};

LORVANITE_TEST(TestMailTexts)
#include "test_mail_texts.moc"
