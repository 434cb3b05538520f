// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/every_window.h"

#include "catalogue/frm_song_admin.h"
#include "charts/frm_transpose.h"
#include "charts/sheet_music.h"
#include "core/shell/frm_about.h"
#include "exchange/frm_exchange.h"
#include "exchange/frm_find_words.h"
#include "mail/frm_email.h"
#include "maintenance/frm_backup.h"
#include "maintenance/frm_notes.h"
#include "reports/frm_ccli.h"
#include "reports/frm_history.h"
#include "sets/frm_import_set.h"
#include "sets/frm_past_sets.h"
#include "sets/frm_set_list.h"
#include "sets/frm_song_collection.h"
#include "support/grid_hands.h"
#include "team/frm_schedule.h"
#include "team/frm_special_music.h"
#include "trees.h"

namespace {

using Look = std::function<void(const QString&, QWidget*)>;

void lookAtSets(World& world, const Look& look) {
    click(world.main().cmdSetList);
    frmSetList& w = frmSetList::instance();
    w.cmbCat1->setCurrentText(QStringLiteral("Praise"));
    w.optPlayList[0]->click();
    settle();
    look(QStringLiteral("set list"), &w);
    const int sounding = w.fpSongList1->SearchCol(2, 1, -1, QStringLiteral("Amazing Grace"));
    clickCell(w.fpSongList1, 6, sounding);
    look(QStringLiteral("sound player"), &w);
    click(w.imgClose);
    frmSongCollection& songs = frmSongCollection::instance();
    songs.lblSngList->setText(world.path("sheetmusic/Amazing Grace.stp"));
    songs.Show();
    settle();
    look(QStringLiteral("song collection"), &songs);
    songs.Unload();
    w.Unload();
    click(world.main().cmdPastSets);
    frmPastSets& past = frmPastSets::instance();
    past.File1->setCurrentRow(0);
    settle();
    look(QStringLiteral("past sets"), &past);
    past.Unload();
    world.main().mnuImportSet.trigger();
    settle();
    look(QStringLiteral("import set"), &frmImportSet::instance());
    frmImportSet::instance().Unload();
    settle();
}

void lookAtSongs(World& world, const Look& look) {
    click(world.main().cmdSongMgmt);
    frmSongAdmin& w = frmSongAdmin::instance();
    clickCell(w.fpSongList2, 2, 2);
    look(QStringLiteral("song admin"), &w);
    clickCell(w.fpSongList2, 2, 2, Qt::RightButton);
    look(QStringLiteral("categories to give"), &w);
    w.txtCats->dismiss();
    click(w.cmdDefineCat);
    look(QStringLiteral("categories"), &w);
    w.Unload();
    settle();
}

void lookAtCharts(World& world, const Look& look) {
    click(world.main().cmdSheetMusic);
    SheetMusic& w = SheetMusic::instance();
    world.answers.file(world.path("sheetmusic/Amazing Grace.stp"));
    w.mnuOpen->trigger();
    settle();
    look(QStringLiteral("sheet music"), &w);
    w.mnuNoteMaker->trigger();
    settle();
    look(QStringLiteral("note maker"), &w);
    click(w.Command17);
    w.mnuAttachToDB->trigger();
    settle();
    look(QStringLiteral("assign"), &w);
    click(w.cmdCloseAssign);
    world.answers.file(QStringLiteral(SOURCE_TREE "/sample/charts/Amazing Grace.txt"));
    w.mnuImport->trigger();
    settle();
    look(QStringLiteral("import"), &w);
    click(w.cmdDone);
    w.mnuTranspose->trigger();
    settle();
    frmTranspose& copy = frmTranspose::instance();
    look(QStringLiteral("transpose"), &copy);
    copy.Unload();
    w.Unload();
    settle();
}

void lookAtTeam(World& world, const Look& look) {
    click(world.main().cmdScheduling);
    frmSchedule& w = frmSchedule::instance();
    look(QStringLiteral("scheduling"), &w);
    typeInCell(w.fpPickDate, 1, 1, QStringLiteral("11/22/26"));
    typeInCell(w.fpPickDate, 2, 1, QStringLiteral("3"));
    click(w.cmdLoadDates);
    w.cmbPersonell->setCurrentIndex(1);
    Q_EMIT w.cmbPersonell->activated(1);
    settle();
    look(QStringLiteral("schedule"), &w);
    click(w.cmdEmailSchedule);
    look(QStringLiteral("schedule's contents"), &w);
    w.Unload();
    settle();
    world.main().mnuSpecialMusic.trigger();
    settle();
    look(QStringLiteral("special music"), &frmSpecialMusic::instance());
    frmSpecialMusic::instance().Unload();
    settle();
}

void lookAtMail(World& world, const Look& look) {
    click(world.main().cmdEmail);
    frmEmail& w = frmEmail::instance();
    clickCell(w.fpEmail, 1, 1);
    look(QStringLiteral("e-mail"), &w);
    w.cmdAddNote->show();
    settle();
    click(w.cmdAddNote);
    look(QStringLiteral("note above a mail"), &w);
    click(w.cmdCancelNote);
    click(w.cmdConfig);
    look(QStringLiteral("mail settings"), &w);
    w.Unload();
    settle();
}

void lookAtExchange(World& world, const Look& look) {
    world.main().mnuExchange.trigger();
    settle();
    frmExchange& w = frmExchange::instance();
    w.pageBringIn->addPaths({QStringLiteral(SOURCE_TREE "/tests/exchange/samples")});
    settle();
    look(QStringLiteral("bring in"), &w);
    w.tabPages->setCurrentWidget(w.pageTakeOut);
    settle();
    look(QStringLiteral("take out"), &w);
    w.pageTakeOut->lstForms->setCurrentRow(3);
    settle();
    look(QStringLiteral("song book"), &w);
    world.sql(
        QStringLiteral("UPDATE songs SET fileLoco = 'E:\\old\\Amazing Grace.stp' "
                       "WHERE title = 'Amazing Grace'"));
    w.tabPages->setCurrentWidget(w.pageMendLinks);
    settle();
    look(QStringLiteral("mend file links"), &w);
    w.Unload();
    world.main().mnuFindWords.trigger();
    settle();
    frmFindWords& words = frmFindWords::instance();
    QTest::keyClicks(words.txtWords, QStringLiteral("grace how"));
    settle();
    look(QStringLiteral("find words"), &words);
    words.Unload();
    settle();
}

void lookAtTheRest(World& world, const Look& look) {
    click(world.main().cmdHistory);
    clickCell(frmHistory::instance().fpH, 2, 1);
    look(QStringLiteral("song history"), &frmHistory::instance());
    frmHistory::instance().Unload();
    click(world.main().Command1);
    look(QStringLiteral("notes"), &frmNotes::instance());
    frmNotes::instance().Unload();
    world.main().mnuCCLI.trigger();
    settle();
    frmCCLI& report = frmCCLI::instance();
    look(QStringLiteral("CCLI report"), &report);
    click(report.cmdSelectSong);
    look(QStringLiteral("song of the CCLI report"), &report);
    report.Unload();
    world.main().mnuBackupFiles.trigger();
    settle();
    look(QStringLiteral("backup"), &frmBackup::instance());
    frmBackup::instance().Unload();
    click(world.main().cmdAbout);
    look(QStringLiteral("about"), &frmAbout::instance());
    frmAbout::instance().Unload();
    click(world.main().Command11);
    auto* help = world.main().findChild<QWidget*>(QStringLiteral("frmHelp"));
    look(QStringLiteral("help"), help);
    help->close();
    settle();
}

}  // namespace

void lookAtEveryWindow(World& world, const Look& look) {
    look(QStringLiteral("main window"), &world.main());
    lookAtSets(world, look);
    lookAtSongs(world, look);
    lookAtCharts(world, look);
    lookAtTeam(world, look);
    lookAtMail(world, look);
    lookAtExchange(world, look);
    lookAtTheRest(world, look);
}
