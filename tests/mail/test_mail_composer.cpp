// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/run_time_error.h"
#include "mail/mail_hands.h"
#include "platform/desktop/desktop.h"
#include "support/grid_hands.h"
#include "support/registry.h"

#include <QDir>
#include <QLineEdit>
#include <QMdiSubWindow>

namespace {

QString row(int number) {
    const QString two = QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    return QStringLiteral("Name") + two + QStringLiteral(" Test");
}

}  // namespace

class TestMailComposer : public MailTest {
    Q_OBJECT

private Q_SLOTS:
    void peopleWithoutAnAddressAreNotListed() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        addPerson(QStringLiteral("Ben"), QStringLiteral("Baker"), QString());
        addPerson(QStringLiteral("Zoë"), QStringLiteral("Ångström"),
                  QStringLiteral("z@example.org"));
        world->sql(QStringLiteral("INSERT INTO personell (fName, lName) VALUES ('No','Cell')"));
        world->start();
        world->statements.clear();
        frmEmail& mail = openMail();
        QCOMPARE(columnOf(mail.fpEmail, RecipientColumn::Name),
                 (QStringList{QStringLiteral("Ann Abel"), QStringLiteral("Zoë Ångström")}));
        QCOMPARE(mail.fpTo->MaxRows(), 0);
        QCOMPARE(mail.fpTo->GetText(RecipientColumn::Name, 0), QStringLiteral("Recipient(s):"));
        QCOMPARE(world->statements,
                 (QStringList{QStringLiteral("SELECT fName, lName, email FROM personell [1]"),
                              QStringLiteral("SELECT * FROM prefs [1]")}));
    }

    void windowOpensCentredWithoutTheNoteButton() {
        frmEmail& mail = openMail();
        QVERIFY(mail.isVisible());
        QVERIFY(mail.cmdAddNote->isHidden());
        QVERIFY(mail.frmNote->isHidden());
        QVERIFY(mail.frmConfig->isHidden());
        QVERIFY(mail.txtTemp->isHidden());
        QCOMPARE(mail.windowTitle(), QStringLiteral("e-Mail Package"));
        const QWidget* frame = mail.parentWidget();
        QCOMPARE(frame->x(), (world->main().width() - frame->width()) / 2);
        QCOMPARE(frame->y(), 500 / 15);
        // A second click activates the same window.
        frmEmail* before = &mail;
        QCOMPARE(&openMail(), before);
    }

    void secondClickAddsTheNameAgain() {
        // Deliberate: behaviour 160.
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        addPerson(QStringLiteral("Cy"), QStringLiteral("Cole"), QStringLiteral("cy@example.org"));
        frmEmail& mail = openMail();
        clickCell(mail.fpEmail, RecipientColumn::Name, 2);
        clickCell(mail.fpEmail, RecipientColumn::Name, 2);
        clickCell(mail.fpEmail, RecipientColumn::Name, 1);
        const QString ann = QStringLiteral("Ann Abel");
        const QString cy = QStringLiteral("Cy Cole");
        QCOMPARE(columnOf(mail.fpTo, RecipientColumn::Name), (QStringList{cy, cy, ann}));
        clickCell(mail.fpTo, RecipientColumn::Name, 2);
        QCOMPARE(columnOf(mail.fpTo, RecipientColumn::Name), (QStringList{cy, ann}));
        clickCell(mail.fpTo, RecipientColumn::Name, 1);
        clickCell(mail.fpTo, RecipientColumn::Name, 1);
        QCOMPARE(mail.fpTo->MaxRows(), 0);
    }

    void keyboardAddsNames() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        frmEmail& mail = openMail();
        mail.fpEmail->setFocus();
        mail.fpEmail->SetActiveCell(RecipientColumn::Name, 1);
        mail.fpEmail->flush();
        QTest::keyClick(mail.fpEmail, Qt::Key_Return);
        QCOMPARE(columnOf(mail.fpTo, RecipientColumn::Name),
                 QStringList{QStringLiteral("Ann Abel")});
        mail.Label5->setFocus();
        QTest::keyClick(mail.Label5, Qt::Key_Space);
        QCOMPARE(mail.Label5->text(), QStringLiteral("All <="));
    }

    void clicksOnTheHeadsSortAndAddNobody() {
        addPerson(QStringLiteral("Cy"), QStringLiteral("Cole"), QStringLiteral("cy@example.org"));
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        frmEmail& mail = openMail();
        clickCell(mail.fpEmail, RecipientColumn::Name, 0);
        QCOMPARE(mail.fpTo->MaxRows(), 0);
        QCOMPARE(mail.fpEmail->GetText(RecipientColumn::Name, 1), QStringLiteral("Ann Abel"));
        clickCell(mail.fpTo, RecipientColumn::Name, 0);
        QCOMPARE(mail.fpTo->MaxRows(), 0);
    }

    void allAndThenAllBackLeavesNobody() {
        for (int i = 1; i <= 12; ++i)
            addPerson(row(i).section(QLatin1Char(' '), 0, 0), QStringLiteral("Test"),
                      QStringLiteral("p%1@example.org").arg(i));
        frmEmail& mail = openMail();
        clickCell(mail.fpEmail, RecipientColumn::Name, 3);
        QCOMPARE(mail.Label5->text(), QStringLiteral("All =>"));
        click(mail.Label5);
        QCOMPARE(columnOf(mail.fpTo, RecipientColumn::Name),
                 columnOf(mail.fpEmail, RecipientColumn::Name));
        QCOMPARE(mail.fpTo->MaxRows(), 12);
        QCOMPARE(mail.Label5->text(), QStringLiteral("All <="));
        click(mail.Label5);
        QCOMPARE(mail.fpTo->MaxRows(), 0);
        QCOMPARE(mail.Label5->text(), QStringLiteral("All =>"));
    }

    void captionOfAllDoesNotFollowTheList() {
        // Deliberate: behaviour 160.
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        frmEmail& mail = openMail();
        click(mail.Label5);
        clickCell(mail.fpTo, RecipientColumn::Name, 1);
        QCOMPARE(mail.fpTo->MaxRows(), 0);
        QCOMPARE(mail.Label5->text(), QStringLiteral("All <="));
    }

    void twoAttachmentsOfOneDialogAreJoined() {
        const QString one = write(QStringLiteral("one.txt"), "1");
        const QString two = write(QStringLiteral("two.txt"), "2");
        const QString third = write(QStringLiteral("saved sets/dritter – Ü.txt"), "3");
        frmEmail& mail = openMail();
        world->answers.file(QStringLiteral("\"%1\" \"%2\"").arg(one, two));
        click(mail.cmdBrowse);
        QCOMPARE(mail.txtAttach->text(), one + QLatin1Char(';') + two);
        // Another choice is appended.
        world->answers.file(third);
        click(mail.cmdBrowse);
        QCOMPARE(mail.txtAttach->text(), QStringList({one, two, third}).join(QLatin1Char(';')));
        const auto& seen = world->answers.fileDialogs().at(0);
        QCOMPARE(seen.title, QStringLiteral("Select File Attachment(s)"));
        QCOMPARE(seen.proposed, QString());
        QCOMPARE(seen.filters.size(), 3);
        QCOMPARE(seen.filters.at(0), QStringLiteral("All Files (*.*)"));
        QCOMPARE(seen.filters.at(2), QStringLiteral("Images (*.bmp *.jpg *.gif)"));
        QVERIFY(!seen.saves);
        // The shared dialog is reset for its next user.
        QCOMPARE(world->main().CommonDlg.Flags, 0);
    }

    void cancelledDialogLeavesTheBoxUnchanged() {
        frmEmail& mail = openMail();
        mail.txtAttach->setText(QStringLiteral("/as/it/was"));
        world->answers.cancelFile();
        click(mail.cmdBrowse);
        QCOMPARE(mail.txtAttach->text(), QStringLiteral("/as/it/was"));
        QCOMPARE(world->main().CommonDlg.Flags, 0);
    }

    void closingDiscardsBodyAndRecipients() {
        addPerson(QStringLiteral("Ann"), QStringLiteral("Abel"), QStringLiteral("ann@example.org"));
        openMail().txtMsg->setPlainText(QStringLiteral("gone"));
        click(frmEmail::instance().Label5);
        qobject_cast<QMdiSubWindow*>(frmEmail::instance().parentWidget())->close();
        settle();
        QVERIFY(!frmEmail::isLoaded());
        frmEmail& mail = openMail();
        QCOMPARE(mail.txtMsg->toPlainText(), QString());
        QCOMPARE(mail.fpTo->MaxRows(), 0);
    }

    void failingStatementEndsTheProgram() {
        world->start();
        world->sql(QStringLiteral("DROP TABLE personell"));
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(world->main().cmdEmail);
        QCOMPARE(world->endStatus, 1);
    }

    void everyControlHasAnAccessibleName() {
        frmEmail& mail = openMail();
        const auto widgets = mail.findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            const bool takesKeys = widget->focusPolicy() & Qt::TabFocus;
            if (!takesKeys || widget == mail.txtTemp ||
                widget->objectName().startsWith(QLatin1String("qt_")))
                continue;
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            QVERIFY2(!widget->accessibleName().isEmpty() || (button && !button->text().isEmpty()),
                     qPrintable(widget->objectName()));
        }
    }
};

LORVANITE_TEST(TestMailComposer)
#include "test_mail_composer.moc"
