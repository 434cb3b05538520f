// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The links on the ground of a program without songs.
#include "core/shell/welcome_links.h"
#include "exchange/frm_exchange.h"
#include "maintenance/frm_backup.h"
#include "support/registry.h"
#include "support/world.h"

#include <QDialog>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>

class TestFirstSteps : public WindowTest {
    Q_OBJECT

    // Starts the program.
    WelcomeLinks* linksOf() {
        world->start();
        return world->main().welcome;
    }

private Q_SLOTS:
    void linksAreOfferedInTheMiddleOfAnEmptyProgram() {
        WelcomeLinks* links = linksOf();
        QVERIFY(links);
        QVERIFY(links->isVisible());
        QCOMPARE(links->lnkFirstSunday->text(), QStringLiteral("Your first Sunday"));
        QCOMPARE(links->lnkExchange->text(), QStringLiteral("Coming from another program"));
        QCOMPARE(links->lnkRestore->text(), QStringLiteral("Bring back a copy"));
        const QPoint middle = world->main().mdiArea->rect().center();
        QVERIFY((links->geometry().center() - middle).manhattanLength() <= 2);
        world->main().resize(1000, 600);
        settle();
        const QPoint moved = world->main().mdiArea->rect().center();
        QVERIFY(moved != middle);
        QVERIFY((links->geometry().center() - moved).manhattanLength() <= 2);
    }

    void withSongsThereAreNoLinks() {
        world->sql("INSERT INTO songs (title) VALUES ('Alpha')");
        QVERIFY(!linksOf());
    }

    void linksGoWithTheFirstWindow() {
        QVERIFY(linksOf());
        click(world->main().cmdAbout);
        QVERIFY(!world->main().welcome);
        world->main().mdiArea->closeAllSubWindows();
        settle();
        QVERIFY(!world->main().welcome);
        // They come again at the next start until there are songs.
        world->stop();
        QVERIFY(linksOf());
    }

    void firstSundayOpensTheGuideAtItsChapter() {
        click(linksOf()->lnkFirstSunday);
        auto* guide = world->main().findChild<QDialog*>(QStringLiteral("frmHelp"));
        QVERIFY(guide);
        QVERIFY(guide->isVisible());
        const auto* text = guide->findChild<QTextBrowser*>(QStringLiteral("txtGuide"));
        QCOMPARE(text->textCursor().block().text(), QStringLiteral("Your first Sunday"));
        QVERIFY(text->cursorRect().top() >= 0);
        QVERIFY(text->cursorRect().bottom() <= text->viewport()->height());
        // The links stay while no window is open.
        QVERIFY(world->main().welcome);
        guide->close();
    }

    void otherLinksOpenTheirWindows() {
        click(linksOf()->lnkExchange);
        QVERIFY(frmExchange::isLoaded());
        world->stop();
        WelcomeLinks* links = linksOf();
        links->lnkRestore->setFocus();
        QTest::keyClick(links->lnkRestore, Qt::Key_Space);
        settle();
        QVERIFY(frmBackup::isLoaded());
    }
};

LORVANITE_TEST(TestFirstSteps)
#include "test_first_steps.moc"
