// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/work_hands.h"

#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/song_form.h"
#include "charts/frm_transpose.h"
#include "charts/sheet_music.h"
#include "core/data/database.h"
#include "mail/frm_email.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/unsaved_strip.h"
#include "sets/frm_set_list.h"
#include "sets/rules/set_grid.h"
#include "support/grid_hands.h"
#include "support/world.h"
#include "team/frm_schedule.h"
#include "team/rules/personnel.h"
#include "team/rules/schedule_grid.h"

namespace {

constexpr int SetWorkRow = 3;
constexpr int ChordRow = 5;
constexpr int ChartCol = 3;
constexpr int CopyCol = 4;
constexpr int ScheduleWorkRow = 5;

void typeText(QWidget* field, const QString& text) {
    field->activateWindow();
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
    settle();
}

void openSet(frmMDI& main) { click(main.cmdSetList); }
void typeSet(const QString& word) {
    typeInCell(frmSetList::instance().fpSet, SetColumn::Title, SetWorkRow, word);
}
QString setOnView() { return frmSetList::instance().fpSet->GetText(SetColumn::Title, SetWorkRow); }

void openSchedule(frmMDI& main) { click(main.cmdScheduling); }
void typeSchedule(const QString& word) {
    frmSchedule& w = frmSchedule::instance();
    if (w.fpSchedule->isHidden()) {
        typeInCell(w.fpPickDate, PickDateColumn::StartDate, 1, QStringLiteral("11/22/26"));
        typeInCell(w.fpPickDate, PickDateColumn::Weeks, 1, QStringLiteral("2"));
        click(w.cmdLoadDates);
    }
    typeInCell(w.fpSchedule, ScheduleColumn::Notes, ScheduleWorkRow, word);
}
QString scheduleOnView() {
    const SheetView* grid = frmSchedule::instance().fpSchedule;
    return grid->isHidden() ? QStringLiteral("hidden")
                            : grid->GetText(ScheduleColumn::Notes, ScheduleWorkRow);
}

void typePerson(const QString& word) {
    typeInCell(frmSchedule::instance().fpPerson, 1, PersonRow::LastName, word);
}
QString personOnView() { return frmSchedule::instance().fpPerson->GetText(1, PersonRow::LastName); }

void openChart(frmMDI& main) { click(main.cmdSheetMusic); }
void typeChart(const QString& word) {
    typeInCell(SheetMusic::instance().fpSong, ChartCol, ChordRow, word);
}
QString chartOnView() { return SheetMusic::instance().fpSong->GetText(ChartCol, ChordRow); }

void openTransposed(frmMDI& main) {
    click(main.cmdSheetMusic);
    SheetMusic::instance().mnuTranspose->trigger();
    settle();
}
void typeTransposed(const QString& word) {
    typeInCell(frmTranspose::instance().fpPreview, CopyCol, ChordRow, word);
}
QString transposedOnView() {
    return frmTranspose::instance().fpPreview->GetText(CopyCol, ChordRow);
}

void openSong(frmMDI& main) { click(main.cmdSongMgmt); }
void typeSong(const QString& word) {
    typeInCell(frmSongAdmin::instance().fpSMsong, SongFormColumn::Value, SongRow::Title, word);
}
QString songOnView() { return songValue(*frmSongAdmin::instance().fpSMsong, SongRow::Title); }

void openNotes(frmMDI& main) { click(main.Command1); }
void typeNote(const QString& word) { typeText(frmNotes::instance().txtNote, word); }
QString noteOnView() { return frmNotes::instance().txtNote->toPlainText(); }

void openMail(frmMDI& main) { click(main.cmdEmail); }
void typeMessage(const QString& word) { typeText(frmEmail::instance().txtSubject, word); }
QString messageOnView() { return frmEmail::instance().txtSubject->text(); }

template <typename Window>
FormBase& windowOf() {
    return Window::instance();
}

}  // namespace

const std::vector<WorkHands>& worksOfAllKinds() {
    static const std::vector<WorkHands> works{
        {"set", openSet, typeSet, setOnView, windowOf<frmSetList>},
        {"schedule", openSchedule, typeSchedule, scheduleOnView, windowOf<frmSchedule>},
        {"person", openSchedule, typePerson, personOnView, windowOf<frmSchedule>},
        {"chart", openChart, typeChart, chartOnView, windowOf<SheetMusic>},
        {"transposed chart", openTransposed, typeTransposed, transposedOnView,
         windowOf<frmTranspose>},
        {"song", openSong, typeSong, songOnView, windowOf<frmSongAdmin>},
        {"note", openNotes, typeNote, noteOnView, windowOf<frmNotes>},
        {"message", openMail, typeMessage, messageOnView, windowOf<frmEmail>},
    };
    return works;
}

const WorkHands& workOf(const QString& name) {
    for (const WorkHands& work : worksOfAllKinds())
        if (name == QLatin1String(work.name)) return work;
    qFatal("no work of the kind %s", qPrintable(name));
}

UnsavedStrip* stripOf(const WorkHands& work) {
    const QString start = QStringLiteral("An unsaved %1 of ").arg(QLatin1String(work.name));
    for (UnsavedStrip* strip : work.window().parentWidget()->findChildren<UnsavedStrip*>())
        if (strip->isVisible() && strip->text().startsWith(start)) return strip;
    return nullptr;
}

void addPersonAndPlayedSong() {
    execute(
        QStringLiteral("INSERT INTO personell (fName, lName, role) VALUES ('Ann', 'Lee', 'Bass')"));
    execute(QStringLiteral("INSERT INTO songs (title) VALUES ('Abide')"));
    execute(
        QStringLiteral("INSERT INTO played_on (title, played_date, songID) SELECT 'Abide', "
                       "'11/15/26', ID FROM songs"));
}

QString wordOf(const WorkHands& work) {
    return QStringLiteral("My %1").arg(QLatin1String(work.name));
}

void workEverywhere(frmMDI& main) {
    for (const WorkHands& work : worksOfAllKinds()) {
        work.open(main);
        work.type(wordOf(work));
    }
}
