// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/frm_ccli.h"

#include "core/grid/sheet_grid_dates.h"
#include "mail/frm_email.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/printing.h"
#include "reports/rules/ccli_report.h"

frmCCLI::frmCCLI() {
    setupUi(this);
    setUpGrids();
    onEvent(this, cmdShowReport, &QPushButton::clicked, &frmCCLI::cmdShowReport_Click);
    onEvent(this, cmdSelectSong, &QPushButton::clicked, &frmCCLI::cmdSelectSong_Click);
    onEvent(this, fpSelectSong, &SheetView::Click, &frmCCLI::fpSelectSong_Click);
    onEvent(this, cmdPrintReport, &QPushButton::clicked, &frmCCLI::cmdPrintReport_Click);
    onEvent(this, FlatBttn1, &QPushButton::clicked, &frmCCLI::FlatBttn1_Click);
    addKey(cmdPrintReport, QKeySequence::Print);
    setDesignSize(size());
}

void frmCCLI::setUpGrids() {
    fpDates->MaxCols(PeriodColumn::To);
    fpDates->MaxRows(1);
    fpDates->ColHeadersShow(false);
    fpDates->RowHeadersShow(false);
    fpDates->SetText(PeriodColumn::FromLabel, 1, QStringLiteral("From:"));
    fpDates->SetText(PeriodColumn::ToLabel, 1, QStringLiteral("To:"));
    fpDates->ColWidth(PeriodColumn::FromLabel, 6);
    fpDates->ColWidth(PeriodColumn::ToLabel, 4);
    for (int col : {PeriodColumn::From, PeriodColumn::To}) {
        setUpDateCells(*fpDates, col, 1);
        fpDates->ColWidth(col, 13);
    }
    fpDates->setFillColumn(SheetView::AllColumns);
    fpDates->setLocked([](int col, int) {
        return col == PeriodColumn::FromLabel || col == PeriodColumn::ToLabel;
    });
    fpDates->SetActiveCell(0, 0);

    for (SheetView* list : {fpSelectSong, fpCCLI}) {
        list->MaxCols(ReportColumn::Number);
        list->MaxRows(0);
        list->RowHeadersShow(false);
        list->GridShowHoriz(false);
        list->GridShowVert(false);
        list->setReadOnly(true);
        list->setFillColumn(SheetView::AllColumns);
    }
    fpSelectSong->setClicksBelowRows(true);
    fpSelectSong->SetText(NumberedSongColumn::Title, 0, QStringLiteral("Song Title"));
    fpSelectSong->SetText(NumberedSongColumn::Number, 0, QStringLiteral("CCLI #"));
    fpSelectSong->ColWidth(NumberedSongColumn::ID, 2.75);
    fpSelectSong->ColWidth(NumberedSongColumn::Title, 16);
    fpSelectSong->ColWidth(NumberedSongColumn::Number, 8.25);
    fpSelectSong->Col(NumberedSongColumn::ID);
    fpSelectSong->ColHidden(true);
    writeReportHeads(*fpCCLI, 0);
    fpCCLI->ColWidth(ReportColumn::Title, 20.62);
    fpCCLI->ColWidth(ReportColumn::DatePlayed, 9);
    // Wide enough for the title of a printed period, which spans all three columns.
    fpCCLI->ColWidth(ReportColumn::Number, 14);
}

void frmCCLI::cmdShowReport_Click() {
    const ReportPeriod period = reportPeriodOf(*fpDates);
    if (period.from.isEmpty() || period.to.isEmpty()) {
        messageBox(QStringLiteral("Select a 'From' and 'To' Date."), BoxIcon::Information);
        return;
    }
    listPeriod(*fpCCLI, period);
}

void frmCCLI::cmdSelectSong_Click() {
    appendNumberedSongs(*fpSelectSong);
    fpSelectSong->setVisible(true);
}

void frmCCLI::fpSelectSong_Click(int, int row) { listSong(*fpCCLI, *fpSelectSong, row); }

void frmCCLI::cmdPrintReport_Click() {
    prepareReportForPrint(*fpCCLI, reportPeriodOf(*fpDates), *fpSelectSong);
    applySetPrintSettings(*fpCCLI);
    PrintSheet(*fpCCLI, 1);
}

void frmCCLI::FlatBttn1_Click() {
    const QString subject = reportSubject(reportPeriodOf(*fpDates));
    // Deliberate: behaviour 159.
    mailSetBlock(*fpCCLI);
    frmEmail::instance().txtSubject->setText(subject);
}
