#include "team/frm_schedule.h"

#include "core/grid/sheet_grid_dates.h"
#include "platform/theme/theme.h"

frmSchedule::frmSchedule() {
    Ui::frmSchedule::setupUi(this);
    setUpChooseEmail();
    setUpMenu();
    setUpPeopleGrids();
    setUpSchedule();
    wirePeople();
    wireSchedule();
    wireOutput();
    cmdRefresh->setIcon(themedIcon(QStringLiteral("reload")));
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmSchedule::wirePeople() {
    onEvent(this, cmbPersonell, &QComboBox::activated, &frmSchedule::cmbPersonell_Click);
    onEvent(this, cmdAddPlayer, &QPushButton::clicked, &frmSchedule::cmdAddPlayer_Click);
    onEvent(this, cmdDeletePlayer, &QPushButton::clicked, &frmSchedule::cmdDeletePlayer_Click);
    onEvent(this, cmdClrPlayer, &QPushButton::clicked, &frmSchedule::cmdClrPlayer_Click);
}

void frmSchedule::wireSchedule() {
    onEvent(this, cmdLoadDates, &QPushButton::clicked, &frmSchedule::cmdLoadDates_Click);
    onEvent(this, cmdRefresh, &QToolButton::clicked, &frmSchedule::cmdRefresh_Click);
    onEvent(this, cmdSaveSched, &QPushButton::clicked, &frmSchedule::cmdSaveSched_Click);
    onEvent(this, cmdLoadSched, &QPushButton::clicked, &frmSchedule::cmdLoadSched_Click);
    onEvent(this, cmdClearSched, &QPushButton::clicked, &frmSchedule::cmdClearSched_Click);
    // Only a person's click or key is heard, not a value that the code sets.
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

void frmSchedule::setUpPeopleGrids() {
    fpPerson->MaxCols(1);
    fpPerson->MaxRows(14);
    fpPerson->ColHeadersShow(false);
    const char* heads[] = {"First Name", "Last Name", "Role 1", "Role 2", "Role 3",
                           " ",          "Address",   "City",   "State",  "Zip",
                           " ",          "Phone",     "Cell",   "e-Mail"};
    for (int row = 1; row <= 14; ++row)
        fpPerson->SetText(0, row, QString::fromLatin1(heads[row - 1]));
    fpPerson->ColWidth(0, 11);
    fpPerson->ColWidth(1, 24);
    fpPerson->EditModeReplace(true);
    fpPerson->setFillColumn(1);

    fpVacation->MaxCols(3);
    fpVacation->MaxRows(12);
    fpVacation->RowHeadersShow(false);
    fpVacation->SetText(1, 0, QStringLiteral("Start Date"));
    for (int col = 2; col <= 3; ++col) fpVacation->SetText(col, 0, QStringLiteral(" "));
    setUpDateCells(*fpVacation, -1, -1);
    fpVacation->ColWidth(-1, 7.0);
    fpVacation->setFillColumn(SheetView::AllColumns);
}

void frmSchedule::setUpSchedule() {
    fpPickDate->MaxCols(2);
    fpPickDate->MaxRows(1);
    fpPickDate->RowHeadersShow(false);
    fpPickDate->SetText(1, 0, QStringLiteral("Start Date"));
    fpPickDate->SetText(2, 0, QStringLiteral("# Weeks"));
    setUpDateCells(*fpPickDate, 1, 1);
    fpPickDate->ColWidth(1, 14);
    fpPickDate->ColWidth(2, 6.75);
    fpPickDate->EditModeReplace(true);
    fpPickDate->setFillColumn(2);

    fpSchedule->MaxCols(4);
    fpSchedule->MaxRows(500);
    fpSchedule->RowHeadersShow(false);
    const char* heads[] = {"Date", "Rehearsal Notes", "Set List", "Personell"};
    for (int col = 1; col <= 4; ++col)
        fpSchedule->SetText(col, 0, QString::fromLatin1(heads[col - 1]));
    fpSchedule->SetCellBorder(1, 1, 1, 500, BorderType::Right, Black, BorderStyle::Solid);
    for (int col : {3, 4})
        fpSchedule->SetCellBorder(col, 1, col, 500, BorderType::Left, Black, BorderStyle::Solid);
    fpSchedule->setColumnZoom(1.2);
    fpSchedule->setFillColumn(2);
    fpSchedule->setWrapColumn(2);

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
