// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The wait for the server's answer to the complete message.
#include "core/shell/frm_mdi.h"
#include "mail/mail_hands.h"
#include "platform/desktop/status_line.h"
#include "support/registry.h"

#include <QMdiSubWindow>

using namespace Qt::StringLiterals;

namespace {

const QString Wait300 =
    u"Waiting for the server to confirm the message, for 300 seconds at most. Esc ends the wait."_s;

}  // namespace

class TestMailWait : public MailTest {
    Q_OBJECT

    QString statusBar() { return world->main().SB->SimpleText(); }

    bool isToldToWait(const frmEmail& mail, const QString& text = Wait300) {
        return QTest::qWaitFor(
            [&] {
                return statusBar() == text &&
                       !mail.lstStatus->findItems(text, Qt::MatchExactly).isEmpty();
            },
            60000);
    }

    static QJsonObject faulty(const QString& fault) { return {{u"fault"_s, fault}}; }

    void verifyOutcomeIsUnknown() {
        QVERIFY2(failure().contains(u"was cancelled"_s) &&
                     failure().contains(u"it is not known whether it was delivered"_s),
                 qPrintable(failure()));
        QCOMPARE(statusBar(), QString());
    }

private Q_SLOTS:
    void init() {
        world = std::make_unique<World>();
        addPerson(u"Ann"_s, u"Abel"_s, u"ann@example.org"_s);
    }

    void waitIsToldInTheListAndInTheStatusBar() {
        MailServer server({{u"waits"_s, true}});
        frmEmail& mail = openMessage(server.address());
        bool isTold = false;
        server.whenItHears(u"DATA"_s, [&] {
            isTold = isToldToWait(mail);
            server.goOn();
        });
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(isTold);
        QCOMPARE(statusBar(), QString());
        QCOMPARE(mail.lstStatus->findItems(Wait300, Qt::MatchExactly).size(), 1);
    }

    void waitIsToldWithItsOwnLength_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("seconds");
        QTest::newRow("number") << u"240"_s << u"240"_s;
        QTest::newRow("no number") << u"5min"_s << u"300"_s;
        QTest::newRow("not above zero") << u"-7"_s << u"300"_s;
    }

    void waitIsToldWithItsOwnLength() {
        QFETCH(QString, entry);
        QFETCH(QString, seconds);
        writeLibrarySettings({{u"AnswerTimeout"_s, entry}});
        MailServer server({{u"waits"_s, true}});
        frmEmail& mail = openMessage(server.address());
        bool isTold = false;
        server.whenItHears(u"DATA"_s, [&] {
            isTold = isToldToWait(mail, QString(Wait300).replace(u"300"_s, seconds));
            server.goOn();
        });
        expectSuccess();
        click(mail.cmdSend);
        QVERIFY(isTold);
    }

    void escapeEndsTheWait_data() {
        QTest::addColumn<QString>("focused");
        for (const char* name : {"lstStatus", "txtMsg", "txtSubject", "fpTo", "cmdConfig"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void escapeEndsTheWait() {
        QFETCH(QString, focused);
        MailServer server(faulty(u"silent after data"_s));
        frmEmail& mail = openMessage(server.address());
        bool isTold = false;
        server.whenItHears(u"whole"_s, [&] {
            isTold = isToldToWait(mail);
            auto* widget = mail.findChild<QWidget*>(focused);
            widget->setFocus();
            QTest::keyClick(widget, Qt::Key_Escape);
        });
        expectFailure();
        click(mail.cmdSend);
        QVERIFY(isTold);
        verifyOutcomeIsUnknown();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdSend->isEnabled());
    }

    void closingTheWindowEndsTheWait() {
        MailServer server(faulty(u"silent after data"_s));
        frmEmail& mail = openMessage(server.address());
        server.whenItHears(u"whole"_s, [&] {
            isToldToWait(mail);
            qobject_cast<QMdiSubWindow*>(mail.parentWidget())->close();
        });
        expectFailure();
        click(mail.cmdSend);
        verifyOutcomeIsUnknown();
    }

    void escapeDoesNotStopTheTransfer() {
        MailServer server(faulty(u"stalls in data"_s));
        frmEmail& mail = openMessage(server.address());
        mail.txtAttach->setText(write(u"large.bin"_s, QByteArray(20 * 1024 * 1024, 'x')));
        server.whenItHears(u"stalls"_s, [&] {
            QTest::keyClick(mail.txtSubject, Qt::Key_Escape);
            server.goOn();
        });
        expectSuccess();
        click(mail.cmdSend);
        QCOMPARE(server.messages(), 1);
        // The next send begins without a wait.
        QTest::keyClick(mail.txtSubject, Qt::Key_Escape);
        QVERIFY(mail.isVisible());
    }
};

LORVANITE_TEST(TestMailWait)
#include "test_mail_wait.moc"
