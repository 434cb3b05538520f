// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/frm_schedule.h"

#include "platform/grid_view/kept_controls.h"
#include "platform/theme/theme.h"
#include "team/rules/personnel.h"
#include "team/rules/schedule_grid.h"

frmSchedule::frmSchedule() {
    setupUi(this);
    // The panel's form cannot do this: it is created before the other controls, and in the ring of
    // its own tab stops Command4 already follows cmdSend.
    setTabOrder(frmChooseEmail->cmdSend, frmChooseEmail->Command4);
    setUpMenu();
    setUpGrids();
    wire();
    addKey(cmdLoadDates, QKeySequence::New);
    addKey(cmdLoadSched, QKeySequence::Open);
    addKey(cmdSaveSched, QKeySequence::Save);
    addKey(cmdPrintSched, QKeySequence::Print);
    cmdRefresh->setIcon(themedIcon(QStringLiteral("reload")));
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
    m_keptSchedule = keepGrid(
        *this, UnsavedKind::Schedule, *fpSchedule, [this] { showSchedule(true); },
        [this] { return !m_isCompacted; });
    keepPerson();
}

void frmSchedule::wire() {
    onEvent(this, cmbPersonell, &QComboBox::activated, &frmSchedule::cmbPersonell_Click);
    const std::pair<QAbstractButton*, void (frmSchedule::*)()> buttons[] = {
        {cmdAddPlayer, &frmSchedule::cmdAddPlayer_Click},
        {cmdDeletePlayer, &frmSchedule::cmdDeletePlayer_Click},
        {cmdClrPlayer, &frmSchedule::cmdClrPlayer_Click},
        {cmdPrintRoster, &frmSchedule::cmdPrintRoster_Click},
        {cmdLoadDates, &frmSchedule::cmdLoadDates_Click},
        {cmdRefresh, &frmSchedule::cmdRefresh_Click},
        {cmdSaveSched, &frmSchedule::cmdSaveSched_Click},
        {cmdLoadSched, &frmSchedule::cmdLoadSched_Click},
        {cmdClearSched, &frmSchedule::cmdClearSched_Click},
        {cmdEmailSchedule, &frmSchedule::cmdEmailSchedule_Click},
        {cmdPrintSched, &frmSchedule::cmdPrintSched_Click},
        {cmdExportText, &frmSchedule::cmdExportText_Click},
        {frmChooseEmail->cmdSend, &frmSchedule::cmdSend_Click}};
    for (const auto& [button, handler] : buttons)
        onEvent(this, button, &QAbstractButton::clicked, handler);
    // Reacts to the user's click or key, not to a value that the code sets.
    onEvent(this, chkShow, &QCheckBox::clicked, &frmSchedule::chkShow_MouseUp);
    onEvent(this, fpSchedule, &SheetView::Change, &frmSchedule::fpSchedule_Change);
    onEvent(this, fpSchedule, &SheetView::RightClick, &frmSchedule::fpSchedule_RightClick);
    onEvent(this, &mnuDelete, &QAction::triggered, &frmSchedule::mnuDelete_Click);
    onEvent(this, &mnuInsertPlayer, &QAction::triggered, &frmSchedule::mnuInsertPlayer_Click);
    onEvent(this, &mnuInsertWeek, &QAction::triggered, &frmSchedule::mnuInsertWeek_Click);
}

void frmSchedule::setUpMenu() {
    mnuD.setTitle(QStringLiteral("delete"));
    mnuDelete.setText(QStringLiteral("Delete"));
    mnuInsertPlayer.setText(QStringLiteral("Insert Player"));
    mnuInsertWeek.setText(QStringLiteral("Insert Week"));
    mnuD.addActions({&mnuDelete, &mnuInsertPlayer, &mnuInsertWeek});
}

void frmSchedule::setUpGrids() {
    setUpPerson(*fpPerson);
    fpPerson->setFillColumn(1);
    setUpVacation(*fpVacation);
    fpVacation->setFillColumn(SheetView::AllColumns);
    setUpPickDate(*fpPickDate);
    fpPickDate->setFillColumn(PickDateColumn::Weeks);
    setUpSchedule(*fpSchedule);
    // A date in the desktop's font needs more than its width; the others make room for it.
    fpSchedule->setColumnZoom(-1, 0.95);
    fpSchedule->setColumnZoom(ScheduleColumn::Date, 1.15);
    fpSchedule->setFillColumn(SheetView::AllColumns);
    fpSchedule->setWrapColumn(ScheduleColumn::Notes);
    fpSchedule->setTypingStart(ScheduleColumn::Notes, ScheduleRow::FirstDate);
    fpSchedule->setLocked([this](int, int row) { return isHeadRow(*fpSchedule, row); });
    fpTemp.MaxCols(1);
    fpTemp.MaxRows(500);
}

void frmSchedule::paintBars() {
    for (QFrame* bar : {bar1, bar2}) {
        QPalette colours = bar->palette();
        colours.setColor(QPalette::Window, themeColours(palette()).bar);
        bar->setPalette(colours);
    }
}

void frmSchedule::changeEvent(QEvent* event) {
    FormBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) paintBars();
}

void frmSchedule::load() {
    paintBars();
    for (SheetView* grid : {fpPerson, fpVacation, fpPickDate, fpSchedule})
        grid->SetActiveCell(0, 0);
    loadPersonnelList();
    showStartSchedule();
}
