// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/frm_history.h"

#include "core/data/dates.h"
#include "platform/desktop/desktop.h"
#include "reports/rules/song_history.h"

#include <QtMath>

frmHistory::frmHistory() {
    setupUi(this);
    bar = {bar_0, bar_1, bar_2, bar_3, bar_4, bar_5, bar_6, bar_7, bar_8, bar_9, bar_10, bar_11};
    for (HistoryBar* item : bar) item->raise();
    lblSongTit->setElideMode(Qt::ElideMiddle);  // the year at the end is shown
    setUpList();
    onEvent(this, cmdLoadYear, &QPushButton::clicked, &frmHistory::cmdLoadYear_Click);
    onEvent(this, fpH, &SheetView::Click, &frmHistory::fpH_Click);
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmHistory::setUpList() {
    fpH->MaxCols(HistoryColumn::TimesPlayed);
    fpH->MaxRows(0);
    fpH->RowHeadersShow(false);
    fpH->GridShowHoriz(false);
    fpH->GridShowVert(false);
    fpH->ColWidth(HistoryColumn::SongID, 2.12);
    fpH->ColWidth(HistoryColumn::SongName, 18.12);
    fpH->ColWidth(HistoryColumn::TimesPlayed, 11.78);
    fpH->setReadOnly(true);
    fpH->setClicksBelowRows(true);
    fpH->setFillColumn(SheetView::AllColumns);
}

void frmHistory::load() {
    fpH->SetActiveCell(0, 0);
    fpH->Col(HistoryColumn::SongID);
    fpH->ColHidden(true);
    const int thisYear = today().year();
    cmbYear->addItems(historyYears(thisYear));
    cmbYear->setCurrentText(QString::number(thisYear));
    resetBars(HistoryChart::FootAtRest);
    loadYear();
}

void frmHistory::resetBars(int foot) {
    for (int month = 0; month < HistoryChart::Months; ++month) bar[month]->reset(month, foot);
}

void frmHistory::loadYear() {
    listYear(*fpH, cmbYear->currentText(), [this](int done, int total) {
        setStatusText(QStringLiteral("Loading.... %1% Complete").arg(qRound(100.0 * done / total)),
                      this);
    });
    // Deliberate: behaviour 154.
    resetBars(HistoryChart::FootAtRest);
}

void frmHistory::cmdLoadYear_Click() {
    setMousePointer(MousePointer::Hourglass);
    loadYear();
    setMousePointer(MousePointer::Arrow);
}

void frmHistory::fpH_Click(int col, int row) {
    if (row == 0)
        fpH->SortByHead(col);
    else
        chartSong(row);
}

void frmHistory::chartSong(int row) {
    resetBars(HistoryChart::Foot);
    lblSongTit->setText(fpH->GetText(HistoryColumn::SongName, row) + QStringLiteral(" For ") +
                        cmbYear->currentText());
    const QString id = fpH->GetText(HistoryColumn::SongID, row);
    if (id.isEmpty()) return;
    const auto counts = timesPlayedByMonth(id);
    for (int month = 0; month < HistoryChart::Months; ++month)
        bar[month]->grow(month, counts[month]);
}
