// The tour: the road of a set through the real windows, over the sample folder. It leaves a picture
// of each window in build/tour.
#include "catalogue/frm_song_admin.h"
#include "charts/frm_transpose.h"
#include "charts/sheet_music.h"
#include "core/frm_splash.h"
#include "mail/frm_email.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop.h"
#include "platform/theme.h"
#include "reports/frm_history.h"
#include "sets/frm_set_list.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "trees.h"

#include <QMdiSubWindow>
#include <QMessageBox>

class TestTour : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    int pictures = 0;

    void picture(QWidget* widget, const QString& name) {
        settle();
        const QString folder = QStringLiteral(SOURCE_TREE "/build/tour");
        QDir().mkpath(folder);
        const QString file = QStringLiteral("%1/%2-%3.png")
                                 .arg(folder)
                                 .arg(++pictures, 2, 10, QLatin1Char('0'))
                                 .arg(name);
        QVERIFY2(widget->grab().save(file), qPrintable(file));
    }

    int rowOf(SheetView* grid, int col, const QString& text) {
        const int row = grid->SearchCol(col, 1, -1, text);
        if (row < 1) QTest::qFail(qPrintable("no row " + text), __FILE__, __LINE__);
        return row;
    }

    void place(const QString& title, const QString& item) {
        frmSetList& w = frmSetList::instance();
        clickCell(w.fpSongList1, 2, rowOf(w.fpSongList1, 2, title));
        clickCell(w.fpSet, 2, rowOf(w.fpSet, 1, item));
    }

private Q_SLOTS:
    void initTestCase() {
        applyTheme(*qApp);
        QDir(QStringLiteral(SOURCE_TREE "/build/tour")).removeRecursively();
        world = std::make_unique<World>(WorldTree::Sample);
        world->answers.beforeAnswer(
            [this](QWidget* modal) { picture(modal, QStringLiteral("question")); });
    }

    void theProgramGreetsAndReminds() {
        world->answers.custom("reminder", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        world->start();
        world->main().resize(1240, 760);
        picture(&world->main(), QStringLiteral("splash"));
        click(world->main().splash->Image1);
    }

    void theSongsStandInTheirWindow() {
        click(world->main().cmdSongMgmt);
        frmSongAdmin& w = frmSongAdmin::instance();
        QCOMPARE(w.fpSongList2->MaxRows(), 60);
        clickCell(w.fpSongList2, 2, rowOf(w.fpSongList2, 2, QStringLiteral("Amazing Grace")));
        QVERIFY(!w.fpSMsong->GetText(1, 10).isEmpty());
        picture(&world->main(), QStringLiteral("song-admin"));
        click(w.cmdDefineCat);
        picture(&world->main(), QStringLiteral("categories"));
        click(w.Command4);
        w.Unload();
    }

    void nextSundaysSongsArePickedAndPlaced() {
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        QTest::keyClicks(w.cmbCat1->lineEdit(), QStringLiteral("Praise"));
        w.optPlayList[0]->click();
        settle();
        QVERIFY(w.fpSongList1->MaxRows() > 3);
        place(QStringLiteral("Amazing Grace"), QStringLiteral("Opening"));
        const QString other = w.fpSongList1->GetText(2, 1);
        place(other, QStringLiteral("Closing"));
        QCOMPARE(w.fpSet->GetText(2, rowOf(w.fpSet, 1, QStringLiteral("Closing"))), other);
        picture(&world->main(), QStringLiteral("set-list"));
    }

    void theDateIsEnteredAndTheSetSaved() {
        frmSetList& w = frmSetList::instance();
        world->answers.custom("special music", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        typeInCell(w.fpSet, 2, 1, QStringLiteral("11/22/26"));
        world->answers.custom("who serves", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        click(w.cmdPersonellAvail);
        world->answers.question(
            QStringLiteral("Do you wish to set the Last Played field \rfor the selected songs to "
                           "the date you've selected?"),
            QMessageBox::Yes);
        world->answers.fileAsProposed();
        click(w.cmdSaveSetList);
        QVERIFY(QFile::exists(world->path("saved sets/Set For 11_22_26.set")));
        w.optPlayList[0]->click();
        settle();
        const int row = rowOf(w.fpSongList1, 2, QStringLiteral("Amazing Grace"));
        QCOMPARE(world->rows("SELECT count(*) FROM played_on WHERE played_date = '11/22/26'"),
                 QStringList{"2"});
        QVERIFY(row > 0);
        picture(&world->main(), QStringLiteral("set-saved"));
        w.Unload();
    }

    void theNewDatesStandInSongAdmin() {
        click(world->main().cmdSongMgmt);
        frmSongAdmin& w = frmSongAdmin::instance();
        const int row = rowOf(w.fpSongList2, 2, QStringLiteral("Amazing Grace"));
        QCOMPARE(w.fpSongList2->GetText(5, row), QStringLiteral("11/22/26"));
        clickCell(w.fpSongList2, 2, row);
        QVERIFY(columnOf(w.fpdp, 2).contains(QStringLiteral("11/22/26")));
        picture(&world->main(), QStringLiteral("played"));
        w.Unload();
    }

    void chartIsOpenedAndItsCopyTransposed() {
        click(world->main().cmdSheetMusic);
        SheetMusic& w = SheetMusic::instance();
        world->answers.file(world->path("sheetmusic/Amazing Grace.stp"));
        w.mnuOpen->trigger();
        settle();
        QVERIFY(!w.fpSong->GetText(1, 1).isEmpty());
        picture(&world->main(), QStringLiteral("sheet-music"));
        w.mnuTranspose->trigger();
        settle();
        frmTranspose& copy = frmTranspose::instance();
        QTest::keyClick(copy.Slider1, Qt::Key_Right);
        settle();
        QCOMPARE(copy.lblNumSteps->text(), QStringLiteral("Changed By 1 Semi-Tones"));
        picture(&world->main(), QStringLiteral("transpose"));
        copy.Unload();
        w.Unload();
    }

    void weeksArePlanned() {
        click(world->main().cmdScheduling);
        frmSchedule& w = frmSchedule::instance();
        typeInCell(w.fpPickDate, 1, 1, QStringLiteral("11/22/26"));
        typeInCell(w.fpPickDate, 2, 1, QStringLiteral("3"));
        click(w.cmdLoadDates);
        click(w.cmdRefresh);
        QVERIFY(w.fpSchedule->MaxRows() >= 48);
        picture(&world->main(), QStringLiteral("scheduling"));
        w.Unload();
        click(world->main().cmdHistory);
        picture(&world->main(), QStringLiteral("song-history"));
        frmHistory::instance().Unload();
        click(world->main().Command1);
        picture(&world->main(), QStringLiteral("notes"));
        frmNotes::instance().Unload();
        click(world->main().cmdEmail);
        picture(&world->main(), QStringLiteral("e-mail"));
        frmEmail::instance().Unload();
    }

    void aboutAndHelpStand() {
        click(world->main().cmdAbout);
        picture(&world->main(), QStringLiteral("about"));
        click(world->main().Command11);
        picture(world->main().findChild<QWidget*>("frmHelp"), QStringLiteral("help"));
    }

    void cleanupTestCase() { world.reset(); }
};

LORVANITE_TEST(TestTour)
#include "test_tour.moc"
