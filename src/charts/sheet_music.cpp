// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/sheet_music.h"

#include "charts/chart_files.h"
#include "charts/chart_output.h"
#include "charts/chart_view.h"
#include "charts/frm_transpose.h"
#include "charts/rules/chart_page.h"
#include "charts/rules/chart_sheets.h"
#include "charts/rules/song_tie.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/grid_view/kept_controls.h"
#include "platform/theme/theme.h"

#include <algorithm>

namespace {

constexpr int WindowWidth = 12045;   // twips
constexpr int WindowHeight = 7935;   // twips
constexpr int AboveTheGrid = 400;    // twips
constexpr int MinimumHeight = 5400;  // twips
constexpr int Margin = 12;           // pixels

}  // namespace

SheetMusic::SheetMusic() {
    Ui::SheetMusic::setupUi(this);
    notes = {notes_0, notes_1, notes_2, notes_3};
    mnuSubMove.setText(QStringLiteral("Move"));
    mnuMove.setTitle(QStringLiteral("dMove"));
    mnuMove.addAction(&mnuSubMove);
    setUpAssignPanel(frmAssign, *this);
    wireMenus();
    wireGrid();
    wireImport();
    wirePalette();
    dressButtons();
    setMinimumHeight(px(MinimumHeight));
    setDesignSize(QSize(px(WindowWidth), px(WindowHeight)));
    atEdge(onFailure(), [this] { load(); });
    m_kept = keepGrid(*this, UnsavedKind::Chart, *fpSong);
}

SheetMusic::~SheetMusic() { clearStatusText(m_inHand); }

void SheetMusic::wireMenus() {
    onEvent(this, mnuNew, &QAction::triggered, &SheetMusic::mnuNew_Click);
    onEvent(this, mnuOpen, &QAction::triggered, &SheetMusic::mnuOpen_Click);
    onEvent(this, mnuSave, &QAction::triggered, &SheetMusic::mnuSave_Click);
    onEvent(this, mnuAttachToDB, &QAction::triggered, &SheetMusic::mnuAttachToDB_Click);
    onEvent(this, mnuImport, &QAction::triggered, &SheetMusic::mnuImport_Click);
    // mnuClose has no command. Deliberate: behaviour 123.
    onEvent(this, mnuAddPage, &QAction::triggered, &SheetMusic::addPage);
    onEvent(this, mnuDelPage, &QAction::triggered, &SheetMusic::mnuDelPage_Click);
    onEvent(this, mnuPrint, &QAction::triggered, &SheetMusic::mnuPrint_Click);
    onEvent(this, mnuToEmail, &QAction::triggered, &SheetMusic::mnuToEmail_Click);
    onEvent(this, mnuToHTML, &QAction::triggered, &SheetMusic::mnuToHTML_Click);
    onEvent(this, mnuLyrics, &QAction::triggered, &SheetMusic::mnuLyrics_Click);
    onEvent(this, mnuNoteMaker, &QAction::triggered, &SheetMusic::mnuNoteMaker_Click);
    onEvent(this, mnuTranspose, &QAction::triggered, &SheetMusic::copyToTranspose);
    onEvent(this, &mnuSubMove, &QAction::triggered, &SheetMusic::mnuSubMove_Click);
    mnuNew->setShortcut(QKeySequence::New);
    mnuOpen->setShortcut(QKeySequence::Open);
    mnuSave->setShortcut(QKeySequence::Save);
    mnuPrint->setShortcut(QKeySequence::Print);
}

void SheetMusic::wireGrid() {
    onEvent(this, fpSong, &SheetView::Click, &SheetMusic::fpSong_Click);
    onEvent(this, fpSong, &SheetView::RightClick, &SheetMusic::fpSong_RightClick);
    onEvent(this, fpAttach, &SheetView::Click, &SheetMusic::fpAttach_Click);
    onEvent(this, cmdSaveAssigned, &QToolButton::clicked, &SheetMusic::cmdSaveAssigned_Click);
    onEvent(this, cmdCloseAssign, &QToolButton::clicked, &SheetMusic::cmdCloseAssign_Click);
    onEscape(this, frmAssign, &SheetMusic::cmdCloseAssign_Click);
}

void SheetMusic::dressButtons() {
    cmdCh->setIcon(themedIcon(QStringLiteral("chord")));
    cmdCLRnotes->setIcon(themedIcon(QStringLiteral("clear")));
    Command17->setIcon(themedIcon(QStringLiteral("close")));
    Command11->setIcon(themedIcon(QStringLiteral("help")));
    setWindowIcon(themedIcon(QStringLiteral("sheet-music")));
}

void SheetMusic::load() {
    resize(px(WindowWidth), px(WindowHeight));
    const int bar = std::min(menuBar->sizeHint().height(), px(AboveTheGrid));
    menuBar->setGeometry(0, px(AboveTheGrid) - bar, width(), bar);
    setUpChartView(*fpSong);
    fpSong->move((width() - fpSong->width()) / 2, px(AboveTheGrid));
    setUpImportList();
    fillNotes();
}

void SheetMusic::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    Form_Resize();
}

// The user can change the height only.
void SheetMusic::Form_Resize() {
    if (QWidget* frame = parentWidget())
        frame->setFixedWidth(frame->width() + px(WindowWidth) - width());
    fpSong->resize(fpSong->width(), height() - px(AboveTheGrid));
    // The panels stay as high as the grid in front of them.
    for (QWidget* panel : {frmImport, frmAssign})
        panel->resize(panel->width(), height() - panel->y() - Margin);
}

// --- The page ----------------------------------------------------------------------------------

void SheetMusic::addPage() {
    setMousePointer(MousePointer::Hourglass);
    addChartPage(*fpSong, [](const QString& text) { setStatusText(text); });
    setMousePointer(MousePointer::Arrow);
    setStatusText(QString());
}

// Deliberate: behaviour 126.
void SheetMusic::mnuNew_Click() {
    m_kept->replaceBy([this] { clearChartPage(*fpSong); });
    // A chart of several pages still has the others.
    if (fpSong->SheetCount() == 1) nameFile(QString());
}

void SheetMusic::mnuDelPage_Click() {
    if (messageBox(QStringLiteral("Delete the selected page?"), BoxIcon::None,
                   QStringLiteral("Lorvanite"), BoxButtons::YesNo) == BoxAnswer::Yes)
        fpSong->DeleteSheets(fpSong->Sheet(), 1);
}

void SheetMusic::fpSong_Click(int col, int row) {
    if (pendingChord.isEmpty()) return;
    // Whatever the row's role. Deliberate: behaviour 124.
    fpSong->SetText(col, row, pendingChord);
    takeInHand(QString());
}

// Makes a chord wait for the next click, and names it in the status bar; empty for none.
void SheetMusic::takeInHand(const QString& chord) {
    pendingChord = chord;
    clearStatusText(m_inHand);
    m_inHand.clear();
    if (chord.isEmpty()) return;
    m_inHand = QStringLiteral("In hand: %1. Click its cell in the chart.").arg(chord);
    setStatusText(m_inHand);
}

void SheetMusic::fpSong_RightClick(int, int col, int row, int x, int y) {
    fpSong->SetActiveCell(col, row);
    mnuMove.popup(fpSong->mapToGlobal(QPoint(x, y)));
}

void SheetMusic::mnuSubMove_Click() {
    if (fpSong->ActiveCol() < 1 || fpSong->ActiveRow() < 1) return;
    fpSong->Col(fpSong->ActiveCol());
    fpSong->Row(fpSong->ActiveRow());
    takeInHand(fpSong->Text());
    fpSong->Text(QString());
}

void SheetMusic::picChord_dropped(const QPoint& place) {
    const QPoint inGrid = fpSong->mapFromGlobal(place);
    if (fpSong->rect().contains(inGrid)) fpSong_DragDrop(picChord, inGrid.x(), inGrid.y());
}

void SheetMusic::fpSong_DragDrop(QWidget* source, int x, int y) {
    source->move(fpSong->pos() + QPoint(x - source->width() / 2, y - source->height() / 2));
}

// --- Files and songs ---------------------------------------------------------------------------

void SheetMusic::mnuOpen_Click() {
    if (chooseChart(&CommonDialog::ShowOpen)) openChart(commonDlg().FileName);
}

void SheetMusic::openChart(const QString& path) {
    // A chart that cannot be read leaves the grid as it is, without a message.
    m_kept->replaceBy([this, path] {
        if (fpSong->LoadFromFile(path)) nameFile(path);
    });
    fpSong->EditModeReplace(true);
}

void SheetMusic::mnuSave_Click() { saveChart(*fpSong, *this, *m_kept, frmAssign, *this); }

void SheetMusic::mnuAttachToDB_Click() { showAssignPanel(frmAssign, *this); }

void SheetMusic::fpAttach_Click(int, int row) { lblAssignSong->setText(assignTo(*fpAttach, row)); }

void SheetMusic::cmdSaveAssigned_Click() { saveAssigned(*this); }

void SheetMusic::cmdCloseAssign_Click() {
    sendToBottom(frmAssign);
    fpSong->setFocus();
}

// --- Output -------------------------------------------------------------------------------------

void SheetMusic::mnuPrint_Click() { printChart(*fpSong); }

void SheetMusic::mnuToHTML_Click() { exportChart(*fpSong); }

void SheetMusic::mnuLyrics_Click() { saveLyricSheet(*fpSong, *rtb); }

void SheetMusic::mnuToEmail_Click() {
    fpSong->AllowCellOverflow(true);
    // Deliberate: behaviour 149.
    mailChart(*fpSong, fpSong->SheetCount() == 1 ? NoteButton::Shown : NoteButton::AsItWas);
}

// --- The copy for the transpose window ---------------------------------------------------------

void SheetMusic::formatPreviewPages() {
    SheetView* fpPreview = frmTranspose::instance().fpPreview;
    fpPreview->hide();
    setMousePointer(MousePointer::Hourglass);
    doEvents();
    formatChartCopy(*fpPreview);
    fpPreview->show();
    setMousePointer(MousePointer::Arrow);
}

// The slider keeps its position. Deliberate: behaviour 143.
void SheetMusic::copyToTranspose() {
    frmTranspose& window = frmTranspose::instance();
    bool copied = false;
    window.kept->replaceBy([&] {
        copied = copyChart(
            *fpSong, *window.fpPreview, [this] { formatPreviewPages(); },
            [](const QString& text) { messageBox(text); });
    });
    if (copied) window.Show();
}
