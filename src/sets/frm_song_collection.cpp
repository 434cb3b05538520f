// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/frm_song_collection.h"

#include "charts/chart_output.h"
#include "charts/rules/chart_page.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/printing.h"
#include "sets/rules/song_collection.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include <tuple>

namespace {

constexpr int WindowWidth = 4425;  // twips
constexpr int WindowHeight = 2940;

}  // namespace

frmSongCollection::frmSongCollection() {
    setupUi(this);
    lblSngList->setBackgroundRole(QPalette::Base);
    fpT.MaxCols(ChartCols);
    fpT.MaxRows(ChartRows);
    fpSong.GridShowHoriz(false);
    fpSong.GridShowVert(false);
    watchActivation();
    onEvent(this, cmdPrint, &QPushButton::clicked, &frmSongCollection::cmdPrint_Click);
    onEvent(this, Command1, &QPushButton::clicked, &frmSongCollection::Command1_Click);
    addKey(cmdPrint, QKeySequence::Print);
    setDesignSize(QSize(px(WindowWidth), px(WindowHeight)));
    centre();
}

// Coming back from a box or from another program is not an activation.
void frmSongCollection::watchActivation() {
    connect(formArea(), &QMdiArea::subWindowActivated, this, [this](const QMdiSubWindow* window) {
        if (!window) return;
        const bool isActive = window->widget() == this;
        if (isActive && !m_isActive) Form_Activate();
        m_isActive = isActive;
    });
}

// Deliberate: behaviour 78.
void frmSongCollection::Form_Activate() {
    lblSngList->setText(lblSngList->text() + chartNamesOf(lblHidFile->text()));
}

void frmSongCollection::stackCharts() {
    fpSong.MaxRows(0);
    fpSong.MaxCols(0);
    for (const QString& path : chartPathsOf(lblHidFile->text())) {
        // Deliberate: behaviour 77.
        std::ignore = fpT.LoadFromFile(path);
        // This is the visible page of a chart of several.
        CellBlock buffer;
        if (!fpT.SaveBlockToBuffer(1, 1, fpT.MaxCols(), fpT.MaxRows(), buffer))
            messageBox(QStringLiteral("save to buffer failed"));
        const int above = fpSong.MaxRows();
        fpSong.MaxCols(fpT.MaxCols());
        fpSong.MaxRows(above + fpT.MaxRows());
        if (!fpSong.LoadBlockFromBuffer(1, above + 1, buffer))
            messageBox(QStringLiteral("load from buffer failed"));
        fpSong.Row(fpSong.MaxRows());
        fpSong.RowPageBreak(true);
    }
}

void frmSongCollection::layoutCollection() { formatStackedCharts(fpSong); }

void frmSongCollection::printCollection() {
    stackCharts();
    layoutCollection();
    applySetPrintSettings(fpSong);
    PrintSheet(fpSong, 1);
}

void frmSongCollection::cmdPrint_Click() { printCollection(); }

void frmSongCollection::mailCollection() {
    stackCharts();
    layoutCollection();
    // Deliberate: behaviour 78. Several charts leave the button as it was.
    const bool oneChart = chartPathsOf(lblHidFile->text()).size() == 1;
    mailChart(fpSong, oneChart ? NoteButton::Shown : NoteButton::AsItWas);
}

void frmSongCollection::Command1_Click() { mailCollection(); }
