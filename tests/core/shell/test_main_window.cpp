// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The start, the main window, the splash, the reminder, the help.
#include "charts/sheet_music.h"
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/shell/frm_about.h"
#include "core/shell/frm_splash.h"
#include "reports/frm_history.h"
#include "support/registry.h"
#include "support/world.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBrowser>

#include <algorithm>

namespace {

const QString ReminderStatement =
    QStringLiteral("SELECT * FROM prefs WHERE var_name = 'NotesOnStartUp' [1]");
const QString NotesStatement = QStringLiteral("SELECT * FROM notes [1]");

void addNote(World& world, const QString& text, const QDate& notify) {
    world.sql(QStringLiteral("INSERT INTO notes (post_date, notes, notify_date) "
                             "VALUES ('11/01/26', '%1', '%2')")
                  .arg(text, formatDate(notify)));
}

}  // namespace

class TestMainWindow : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void escapeClosesTheAboutBox() {
        world->start();
        click(world->main().cmdAbout);
        QVERIFY(frmAbout::isLoaded());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        settle();
        QVERIFY(!frmAbout::isLoaded());
    }

    // Deliberate: behaviour 2.
    void withoutThePreferenceTheStartCompletesAndNoReminderShows() {
        world->sql("DELETE FROM prefs WHERE var_name = 'NotesOnStartUp'");
        addNote(*world, "due", today().addDays(5));
        world->start();
        QCOMPARE(world->statements, QStringList{ReminderStatement});
        QVERIFY(world->main().isVisible());
    }

    void reminderIsOffUnlessThePreferenceIsExactlyTrue_data() {
        QTest::addColumn<QString>("value");
        for (const char* value : {"false", "TRUE", "True", "true ", ""})
            QTest::newRow(value) << QString::fromLatin1(value);
    }
    void reminderIsOffUnlessThePreferenceIsExactlyTrue() {
        QFETCH(QString, value);
        world->sql(QStringLiteral("UPDATE prefs SET var_value = '%1' "
                                  "WHERE var_name = 'NotesOnStartUp'")
                       .arg(value));
        addNote(*world, "due", today().addDays(5));
        world->start();
        QVERIFY(world->main().isVisible());
    }

    // Deliberate: behaviour 1.
    void noteForTomorrowShowsAndNoteForTodayDoesNot() {
        addNote(*world, "for today", today());
        addNote(*world, "for tomorrow", today().addDays(1));
        addNote(*world, "for yesterday", today().addDays(-1));
        world->answers.box("for tomorrow\r", QMessageBox::Information, "Reminder Notes");
        world->start();
        QCOMPARE(world->statements, (QStringList{ReminderStatement, NotesStatement}));
    }

    void allDueNotesAreInOneBoxInTableOrder() {
        addNote(*world, "one", today().addDays(9));
        addNote(*world, "two", today().addDays(1));
        addNote(*world, "three <b>&amp;", today().addDays(30));
        world->answers.box("one\rtwo\rthree <b>&amp;\r", QMessageBox::Information,
                           "Reminder Notes");
        world->start();
    }

    void longReminderScrollsAndItsButtonStaysOnTheScreen() {
        QString all;
        for (int i = 1; i <= 80; ++i) {
            const QString note = QStringLiteral("note %1 %2").arg(i).arg(QString(60, u'n'));
            addNote(*world, note, today().addDays(1));
            all += note + QLatin1Char('\n');
        }
        world->answers.custom(QStringLiteral("reminder"), [all](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            const QRect room = box->screen()->availableGeometry();
            const QPushButton* ok = box->findChild<QPushButton*>();
            const QRect button(ok->mapToGlobal(QPoint()), ok->size());
            const auto* scroll = box->findChild<QScrollArea*>();
            const bool scrolls = scroll && scroll->verticalScrollBar()->maximum() > 0;
            box->accept();
            QCOMPARE(box->text(), all);
            QVERIFY2(room.contains(button), qPrintable(QString::number(button.bottom())));
            QVERIFY(scrolls);
        });
        world->start();
    }

    void noteWhoseDateCannotBeReadIsSkipped() {
        world->sql(
            "INSERT INTO notes (notes, notify_date) VALUES ('a', ''), ('b', 'soon'), "
            "('c', NULL), ('d', '12/30/99'), ('e', '12/24/26')");
        world->answers.box("e\r", QMessageBox::Information, "Reminder Notes");
        world->start();
    }

    void splashIsInTheMiddleAndClosesAtAClick() {
        world->start();
        QPointer<frmSplash> splash = world->main().splash;
        QVERIFY(splash && splash->isVisible());
        QCOMPARE(splash->t.interval(), 3000);
        QVERIFY(splash->t.isActive());
        // The main window gets its frame later.
        const QPoint middle = world->main().geometry().center();
        QVERIFY((splash->geometry().center() - middle).manhattanLength() < 8);
        QCOMPARE(splash->lblVersion->text(), QStringLiteral("Version 1.0.0"));
        // The timer is deleted with the splash and cannot fire again.
        QPointer<QTimer> timer(&splash->t);
        click(splash->Image1);
        QVERIFY(!splash);
        QVERIFY(!timer);
    }

    void splashClosesAtAKey() {
        world->start();
        QPointer<frmSplash> splash = world->main().splash;
        QVERIFY(splash && splash->isVisible());
        QTest::keyClick(splash.data(), Qt::Key_Escape);
        settle();
        QVERIFY(!splash);
    }

    void splashIsVisibleWithTheReminderBeforeTheMainWindow() {
        addNote(*world, "due", today().addDays(5));
        bool isSeen = false;
        world->answers.custom("reminder", [&isSeen](QWidget* box) {
            const auto windows = QApplication::topLevelWidgets();
            isSeen = std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
                return qobject_cast<const frmSplash*>(window) && window->isVisible();
            });
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        world->start();
        QVERIFY(isSeen);
    }

    void splashClosesWhenItsTimerFires() {
        world->start();
        QPointer<frmSplash> splash = world->main().splash;
        splash->t.start(10);
        QTRY_VERIFY_WITH_TIMEOUT(!splash, 60000);
    }

    // Deliberate: behaviour 4.
    void resizingMovesOnlyTheAboutButton() {
        world->start();
        frmMDI& main = world->main();
        const QList<QWidget*> others = {main.cmdSetList,    main.cmdSongMgmt,   main.cmdHistory,
                                        main.cmdPastSets,   main.cmdSheetMusic, main.cmdEmail,
                                        main.cmdScheduling, main.Command1,      main.Command10,
                                        main.Command11};
        QList<QRect> before;
        for (const QWidget* button : others) before.append(button->geometry());
        for (const int width : {1100, 1270}) {
            main.resize(width, 700);
            settle();
            for (int i = 0; i < others.size(); ++i) QCOMPARE(others[i]->geometry(), before[i]);
            QCOMPARE(main.cmdAbout->x(), width - main.cmdAbout->width() - 10);
        }
    }

    void noButtonOverlapsAnotherAtTheMinimumWidth() {
        world->start();
        frmMDI& main = world->main();
        main.resize(main.minimumSize());
        settle();
        QVERIFY(main.cmdAbout->x() >= main.Command11->geometry().right());
    }

    void openingAModuleTwiceCreatesNoSecondWindow() {
        world->start();
        click(world->main().cmdAbout);
        click(world->main().cmdAbout);
        QCOMPARE(world->main().mdiArea->subWindowList().size(), 1);
        QVERIFY(frmAbout::isLoaded());
        QCOMPARE(frmAbout::instance().lblVersion->text(), QStringLiteral("Version: 1.0.0"));
    }

    void moduleOpensInTheMiddleFiveHundredTwipsFromTheTop() {
        world->start();
        click(world->main().cmdAbout);
        const QMdiSubWindow* frame = world->main().mdiArea->subWindowList().constFirst();
        QCOMPARE(frame->x(), (world->main().width() - frame->width()) / 2);
        QCOMPARE(frame->y(), 33);
    }

    void minimisedModuleComesBackByItsButton() {
        world->start();
        click(world->main().cmdHistory);
        QMdiSubWindow* frame = world->main().mdiArea->subWindowList().constFirst();
        frame->showMinimized();
        settle();
        QVERIFY(frame->isMinimized());
        click(world->main().cmdHistory);
        QVERIFY(!frame->isMinimized());
        QVERIFY(frmHistory::instance().isVisible());
        QVERIFY(frame->height() > 200);
    }

    void chartWindowKeepsItsWidthAfterAMaximisedOne() {
        world->start();
        click(world->main().cmdHistory);
        world->main().mdiArea->subWindowList().constFirst()->showMaximized();
        settle();
        click(world->main().cmdSheetMusic);
        settle();
        const QMdiSubWindow* frame = world->main().mdiArea->activeSubWindow();
        QVERIFY(frame && frame->widget() == &SheetMusic::instance());
        QVERIFY(!frame->isMaximized());
        QVERIFY(frame->width() < world->main().mdiArea->width());
        QCOMPARE(frame->width(), frame->maximumWidth());
    }

    void cancelledFileDialogWithoutCancelErrorIsQuiet() {
        world->start();
        CommonDialog& dialog = world->main().CommonDlg;
        dialog.FileName = world->path("kept.set");
        world->answers.cancelFile();
        dialog.ShowOpen();
        QCOMPARE(dialog.FileName, world->path("kept.set"));
    }

    void moduleStaysInsideASmallMainWindow() {
        world->start();
        frmMDI& main = world->main();
        main.resize(820, 520);
        settle();
        for (QToolButton* button : {main.cmdAbout, main.Command1}) {
            click(button);
            const QMdiSubWindow* frame = main.mdiArea->activeSubWindow();
            const QRect room(QPoint(), main.mdiArea->viewport()->size());
            QVERIFY2(room.contains(frame->geometry()), qPrintable(frame->windowTitle()));
        }
    }

    void moduleOpenedBesideAMaximisedOneFillsTheRoom() {
        world->start();
        frmMDI& main = world->main();
        click(main.cmdHistory);
        main.mdiArea->activeSubWindow()->showMaximized();
        settle();
        click(main.Command1);
        const QMdiSubWindow* frame = main.mdiArea->activeSubWindow();
        QCOMPARE(frame->geometry().topLeft(), QPoint(0, 0));
        const QRect room(QPoint(), main.mdiArea->viewport()->size());
        QVERIFY(room.contains(frame->geometry()));
    }

    void mainWindowLiesOnItsScreen() {
        world->start();
        settle();
        frmMDI& main = world->main();
        QVERIFY2(main.screen()->availableGeometry().contains(main.frameGeometry()),
                 qPrintable(QString::number(main.frameGeometry().width())));
        QVERIFY(main.cmdAbout->x() >= main.Command11->geometry().right());
    }

    // 1024 x 768, 1280 x 800 with a panel, and a full HD screen at 150 and 200 per cent.
    void mainWindowLiesOnASmallScreen_data() {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("1024 x 768") << 1024 << 768;
        QTest::newRow("1280 x 760") << 1280 << 760;
        QTest::newRow("150 per cent") << 853 << 533;
        QTest::newRow("200 per cent") << 960 << 540;
    }
    void mainWindowLiesOnASmallScreen() {
        QFETCH(int, width);
        QFETCH(int, height);
        QFile file(world->path("screen.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("{\"synchronousWindowSystemEvents\": false, \"screens\": "
                                  "[{\"name\": \"s\", \"x\": 0, \"y\": 0, \"width\": %1, "
                                  "\"height\": %2, \"logicalDpi\": 96, \"logicalBaseDpi\": 96, "
                                  "\"dpr\": 1}]}")
                       .arg(width)
                       .arg(height)
                       .toUtf8());
        file.close();
        QProcess other;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName());
        other.setProcessEnvironment(environment);
        other.start(QCoreApplication::applicationFilePath(),
                    {"test_main_window", "mainWindowLiesOnItsScreen"});
        QVERIFY(other.waitForFinished(120000));
        QVERIFY2(other.exitCode() == 0, other.readAllStandardOutput().constData());
    }

    void closedModuleIsCreatedAgainAtTheNextOpening() {
        world->start();
        click(world->main().cmdAbout);
        click(frmAbout::instance().cmdOK);
        QVERIFY(!frmAbout::isLoaded());
        QVERIFY(world->main().mdiArea->subWindowList().isEmpty());
        click(world->main().cmdAbout);
        QVERIFY(frmAbout::isLoaded());
    }

    // Deliberate: behaviour 3.
    void utilitiesMenuOpensBelowTheBarAtAFixedPlace() {
        world->start();
        frmMDI& main = world->main();
        click(main.Command10);
        QVERIFY(main.mnuUtilities.isVisible());
        const QPoint place = main.picButHold->mapFromGlobal(main.mnuUtilities.pos());
        QCOMPARE(place, QPoint(767, main.Command10->y() + main.Command10->height()));
        QStringList items;
        for (const QAction* item : main.mnuUtilities.actions()) items.append(item->text());
        QCOMPARE(items,
                 (QStringList{"Special Music", "Import Set List", "Backup Files", "CCLI Report",
                              QString(), "Exchange...", QStringLiteral("Find Words\u2026")}));
        QVERIFY(main.mnuUtilities.actions().at(4)->isSeparator());
        main.mnuUtilities.close();
    }

    void helpShowsTheGuideAndFindsInIt() {
        world->start();
        click(world->main().Command11);
        QCOMPARE(world->main().CommonDlg.HelpCommand, 9);
        const auto* help = world->main().findChild<QDialog*>("frmHelp");
        QVERIFY(help && help->isVisible());
        auto* text = help->findChild<QTextBrowser*>("txtGuide");
        auto* find = help->findChild<QLineEdit*>("txtFind");
        QVERIFY(text->toPlainText().size() > 1000);
        QTest::keyClicks(find, "playlist");
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(text->textCursor().selectedText().toLower(), QStringLiteral("playlist"));
    }

    // Deliberate: behaviour 15.
    void cancelledFileDialogEndsItsCommandQuietly() {
        world->start();
        CommonDialog& dialog = world->main().CommonDlg;
        dialog.FileName = QStringLiteral("before.set");
        world->answers.cancelFile();
        QVERIFY(!dialog.chosen(&CommonDialog::ShowOpen));
        QCOMPARE(dialog.FileName, QStringLiteral("before.set"));
    }

    void missingHelpFileIsReported() {
        QFile::remove(world->path("config/LORVANITEHELP.hlp"));
        world->start();
        world->answers.box(QStringLiteral("The help file \"%1/config/LORVANITEHELP.hlp\" is "
                                          "missing.")
                               .arg(world->folder()),
                           QMessageBox::Warning);
        click(world->main().Command11);
    }

    void statusLineShowsTheNewestText() {
        world->start();
        StatusLine* line = world->main().SB;
        for (int i = 1; i <= 100; ++i) line->SimpleText(QStringLiteral("%1%").arg(i));
        QCOMPARE(line->SimpleText(), QStringLiteral("100%"));
        QTRY_COMPARE_WITH_TIMEOUT(line->currentMessage(), QStringLiteral("100%"), 60000);
        QTest::qWait(120);
        line->SimpleText(QStringLiteral("at once"));
        QCOMPARE(line->currentMessage(), QStringLiteral("at once"));
    }

    void closingTheMainWindowUnloadsTheModulesAndEndsTheProcess() {
        world->start();
        click(world->main().cmdAbout);
        world->main().close();
        settle();
        QVERIFY(!frmAbout::isLoaded());
        QCOMPARE(world->endStatus, 0);
    }

    // Deliberate: behaviour 5.
    void missingDatabaseStopsTheStart() {
        QFile::remove(world->path("db1.mdb"));
        world->answers.runTimeError(-2147467259, "db1.mdb");
        atEdge(OnFailure::EndsProgram, [&] { world->start(); });
        QCOMPARE(world->endStatus, 1);
        QVERIFY(!world->isRunning());
        QVERIFY(!QFile::exists(world->path("db1.mdb")));
    }

    void fileThatIsNoDatabaseStopsTheStartAndStaysAsItIs() {
        QFile file(world->path("db1.mdb"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        const QByteArray letter = QByteArray("Dear all, this is a letter.\n").repeated(100);
        file.write(letter);
        file.close();
        world->answers.runTimeError(-2147467259, "not a database");
        atEdge(OnFailure::EndsProgram, [&] { world->start(); });
        QCOMPARE(world->endStatus, 1);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), letter);
    }

    void databaseWithoutATableStopsTheStart() {
        world->sql("DROP TABLE prefs");
        world->answers.runTimeError(-2147217900, "no such table: prefs");
        atEdge(OnFailure::EndsProgram, [&] { world->start(); });
        QCOMPARE(world->endStatus, 1);
    }
};

LORVANITE_TEST(TestMainWindow)
#include "test_main_window.moc"
