// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/run_time_error.h"
#include "mail/mail_hand_over.h"
#include "mail/mail_hands.h"
#include "support/files.h"
#include "support/registry.h"

#include <QFile>

namespace {

// An exported grid, reduced to what the note depends on.
const QByteArray Exported =
    "<!DOCTYPE html>\r\n<HTML><HEAD></HEAD><BODY>\r\n<TABLE BORDER=0>\r\n<TR><TD>Ü 10/05/03"
    "</TD></TR>\r\n</TABLE>\r\n</BODY></HTML>\r\n";

const QString NoPlace = QStringLiteral(
    "The note was not added: \"Clear\" has removed the line for it. Open the message again from "
    "the "
    "window that it came from.");
const QString LeftOut = QStringLiteral(
    "The note in the open panel is not part of this message. Click \"Add\" before you send.");

}  // namespace

class TestMailNote : public MailTest {
    Q_OBJECT

    QByteArray staged() const { return bytesOf(world->path(QStringLiteral("config/email.html"))); }

    frmEmail& handOver() {
        if (!world->isRunning()) world->start();
        write(QStringLiteral("config/email.html"), Exported);
        handOverStagedMail();
        settle();
        return frmEmail::instance();
    }

    // Sends the message to one person, whatever panels are open.
    void sendOver(const MailServer& server) {
        frmEmail& mail = frmEmail::instance();
        mail.txtServer->setText(server.address());
        mail.txtFrom->setText(QStringLiteral("leader@example.org"));
        click(mail.Label5);
        expectSuccess();
        click(mail.cmdSend);
    }

    bool isInList(const QString& line) const {
        return !frmEmail::instance().lstStatus->findItems(line, Qt::MatchExactly).isEmpty();
    }

    QString joined() const { return QString::fromUtf8(Exported).remove(QStringLiteral("\r\n")); }

private Q_SLOTS:
    void handOverShowsTheBodyAndTheNoteButton() {
        world->start();
        QVERIFY(!frmEmail::isLoaded());
        frmEmail& mail = handOver();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdAddNote->isVisible());
        QCOMPARE(mail.txtMsg->toPlainText(), joined());
        // Deliberate: behaviour 166.
        QVERIFY(!(mail.txtMsg->focusPolicy() & Qt::TabFocus));
        QCOMPARE(mailStagingFile(), world->folder() + QStringLiteral("\\config\\email.html"));
    }

    void handOverCanLeaveTheNoteButtonUnchanged() {
        world->start();
        handOverMail(QStringLiteral("<HTML>two pages</HTML>"), NoteButton::AsItWas);
        QVERIFY(frmEmail::instance().isVisible());
        QVERIFY(frmEmail::instance().cmdAddNote->isHidden());
        handOverMail(QStringLiteral("<HTML>one page</HTML>"));
        handOverMail(QStringLiteral("<HTML>two pages</HTML>"), NoteButton::AsItWas);
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
    }

    void secondHandOverReplacesTheFirst() {
        handOver();
        write(QStringLiteral("config/email.html"), "<HTML>second</HTML>\n");
        handOverStagedMail();
        QCOMPARE(frmEmail::instance().txtMsg->toPlainText(), QStringLiteral("<HTML>second</HTML>"));
    }

    void noteOfTwoLinesGetsABreakBetweenThem() {
        frmEmail& mail = handOver();
        click(mail.cmdAddNote);
        QVERIFY(mail.frmNote->isVisible());
        QTest::keyClicks(mail.txtNote, QStringLiteral("Please come early"));
        QTest::keyClick(mail.txtNote, Qt::Key_Return);
        QTest::keyClicks(mail.txtNote, QStringLiteral("and bring tea"));
        click(mail.cmdAttachNote);
        QVERIFY(mail.frmNote->isHidden());
        const QString note = QStringLiteral("Please come early<BR>and bring tea");
        // Deliberate: behaviour 167.
        QCOMPARE(mail.txtNote->toPlainText(), note);
        const QString table = QStringLiteral("<TABLE Width='400' name = note><TR><TD>") + note +
                              QStringLiteral("</TD></TR></TABLE>");
        QString body = joined();
        body.insert(body.indexOf(QStringLiteral("<HTML>")) + 6, table);
        QCOMPARE(mail.txtMsg->toPlainText(), body);
        QByteArray file = Exported;
        file.insert(file.indexOf("<HTML>") + 6, table.toUtf8());
        QCOMPARE(staged(), file);
    }

    void clearRemovesTheNoteAndEveryTableEnd() {
        frmEmail& mail = handOver();
        click(mail.cmdAddNote);
        mail.txtNote->setPlainText(QStringLiteral("ä\nö\nü"));
        click(mail.cmdAttachNote);
        click(mail.cmdAddNote);
        click(mail.cmdClearNote);
        QVERIFY(mail.frmNote->isVisible());
        QCOMPARE(mail.txtNote->toPlainText(), QString());
        // Deliberate: behaviour 165.
        QCOMPARE(mail.txtMsg->toPlainText(),
                 QStringLiteral(
                     "<!DOCTYPE html><TABLE BORDER=0><TR><TD>Ü 10/05/03</TD></TR></BODY></HTML>"));
        QVERIFY(!staged().contains("</TABLE>"));
        QVERIFY(!staged().contains("note"));
    }

    void noteThatHasNoPlaceIsReported() {
        frmEmail& mail = handOver();
        for (int i = 0; i < 2; ++i) {
            click(mail.cmdAddNote);
            QTest::keyClicks(mail.txtNote, QStringLiteral("Bring tea"));
            QVERIFY(!isInList(NoPlace));
            click(mail.cmdAttachNote);
            if (i > 0) break;
            click(mail.cmdAddNote);
            click(mail.cmdClearNote);
        }
        QVERIFY(mail.frmNote->isHidden());
        QVERIFY(!mail.txtMsg->toPlainText().contains(QStringLiteral("Bring tea")));
        QVERIFY(isInList(NoPlace));
    }

    void noteThatIsNotInTheMessageIsReportedAtTheSend() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        MailServer server({});
        frmEmail& mail = handOver();
        click(mail.cmdAddNote);
        QTest::keyClicks(mail.txtNote, QStringLiteral("Bring tea"));
        sendOver(server);
        QVERIFY(!contentOf(server.message(1), QStringLiteral("text/html")).contains("Bring tea"));
        QVERIFY(isInList(LeftOut));
        // It is still there, and can be added.
        QCOMPARE(mail.txtNote->toPlainText(), QStringLiteral("Bring tea"));
        click(mail.cmdAttachNote);
        click(mail.Label5);
        sendOver(server);
        QVERIFY(contentOf(server.message(2), QStringLiteral("text/html")).contains("Bring tea"));
        QVERIFY(!isInList(LeftOut));
    }

    void noteThatIsInTheMessageIsNotReported() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        MailServer server({});
        frmEmail& mail = handOver();
        click(mail.cmdAddNote);
        mail.txtNote->setPlainText(QStringLiteral("Bring\ntea"));
        click(mail.cmdAttachNote);
        click(mail.cmdAddNote);
        sendOver(server);
        QVERIFY(mail.frmNote->isVisible());
        QVERIFY(!isInList(LeftOut));
    }

    void emptyNoteOnlyClosesThePanel() {
        frmEmail& mail = handOver();
        click(mail.cmdAddNote);
        click(mail.cmdAttachNote);
        QVERIFY(mail.frmNote->isHidden());
        QCOMPARE(staged(), Exported);
        QCOMPARE(mail.txtMsg->toPlainText(), joined());
    }

    void cancelAndCloseHideThePanel() {
        frmEmail& mail = handOver();
        for (QWidget* button :
             std::initializer_list<QWidget*>{mail.cmdCancelNote, mail.cmdCloseNote}) {
            click(mail.cmdAddNote);
            mail.txtNote->setPlainText(QStringLiteral("kept"));
            QVERIFY(mail.frmNote->isVisible());
            click(button);
            QVERIFY(mail.frmNote->isHidden());
            QCOMPARE(mail.txtNote->toPlainText(), QStringLiteral("kept"));
            QCOMPARE(staged(), Exported);
        }
    }

    void noteIsInsertedAfterTheFirstSixCharacters() {
        // Deliberate: behaviour 164.
        world->start();
        write(QStringLiteral("config/email.html"), "  <html>x\n");
        handOverStagedMail();
        frmEmail& mail = frmEmail::instance();
        mail.txtNote->setPlainText(QStringLiteral("n"));
        mail.addNote();
        QCOMPARE(staged(), QByteArray("  <htm<TABLE Width='400' name = note><TR><TD>n</TD></TR>"
                                      "</TABLE>l>x\r\n"));
    }

    void missingStagingFileEndsTheProgram() {
        frmEmail& mail = handOver();
        QVERIFY(QFile::remove(world->path(QStringLiteral("config/email.html"))));
        click(mail.cmdAddNote);
        mail.txtNote->setPlainText(QStringLiteral("n"));
        world->answers.runTimeError(RunTimeError::FileNotFound);
        click(mail.cmdAttachNote);
        QCOMPARE(world->endStatus, 1);
    }
};

LORVANITE_TEST(TestMailNote)
#include "test_mail_note.moc"
