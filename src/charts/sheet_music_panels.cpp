// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The panels of the chart window: the import and the note maker.
#include "charts/chart_files.h"
#include "charts/rules/chart_import.h"
#include "charts/rules/chord_palette.h"
#include "charts/sheet_music.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/grid_view/cell_look.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr int NoteHeight = 26;  // pixels
constexpr int MarkSide = 12;    // pixels
constexpr int MarkGap = 4;      // pixels

// The text of the item selected in a list; empty if none is.
QString pickOf(const QListWidget* list) {
    const QList<QListWidgetItem*> picked = list->selectedItems();
    return picked.isEmpty() ? QString() : picked.first()->text();
}

// A small square in the colour of a mark, with room before the caption.
QIcon markIcon(int colour) {
    QPixmap square(MarkSide + MarkGap, MarkSide);
    square.fill(Qt::transparent);
    QPainter(&square).fillRect(0, 0, MarkSide, MarkSide, screenColour(colour));
    return QIcon(square);
}

}  // namespace

// --- The import --------------------------------------------------------------------------------

void SheetMusic::wireImport() {
    onEvent(this, fpLoad, &SheetView::Click, &SheetMusic::fpLoad_Click);
    onEvent(this, Command2, &QPushButton::clicked, &SheetMusic::Command2_Click);
    onEvent(this, Command3, &QPushButton::clicked, &SheetMusic::Command3_Click);
    onEvent(this, FlatBttn2, &QPushButton::clicked, &SheetMusic::FlatBttn2_Click);
    onEvent(this, FlatBttn1, &QPushButton::clicked, &SheetMusic::FlatBttn1_Click);
    onEvent(this, Command11, &QToolButton::clicked, &SheetMusic::Command11_Click);
    onEvent(this, cmdDone, &QPushButton::clicked, &SheetMusic::cmdDone_Click);
    onEvent(this, cmdCancelImport, &QPushButton::clicked, &SheetMusic::cmdCancelImport_Click);
    onEscape(this, frmImport, &SheetMusic::cmdCancelImport_Click);
    const std::pair<QPushButton*, int> marks[] = {
        {Command2, TitleMark}, {Command3, ChordMark}, {FlatBttn2, LyricMark}};
    for (const auto& [button, colour] : marks) button->setIcon(markIcon(colour));
}

void SheetMusic::setUpImportList() {
    fpLoad->MaxCols(ImportColumn::Line);
    fpLoad->MaxRows(ImportRows);
    fpLoad->ColHeadersShow(false);
    fpLoad->RowHeadersShow(false);
    fpLoad->GridShowVert(false);
    fpLoad->setReadOnly(true);
    fpLoad->setSpoken([this](int col, int row) {
        const int colour = fpLoad->formatAt(1, col, row).backColor;
        return colour == TitleMark   ? QStringLiteral("marked as title")
               : colour == ChordMark ? QStringLiteral("marked as chords")
               : colour == LyricMark ? QStringLiteral("marked as lyrics")
                                     : QString();
    });
    fpLoad->setFillColumn(ImportColumn::Line);
    sendToBottom(frmImport);
}

void SheetMusic::mnuImport_Click() {
    if (!chooseMusicFile(QStringLiteral("Text Files(*.txt, *.rtf)|*.txt;*.rtf"),
                         &CommonDialog::ShowOpen))
        return;
    listLines(*fpLoad, commonDlg().FileName);
    fpLoad->scrollToTop();
    setImportMode(importMode);
    showImportNotes();
    raisePanel(frmImport);
}

void SheetMusic::setImportMode(const QString& mode) {
    importMode = mode;
    Command2->setChecked(mode == QLatin1String("title"));
    Command3->setChecked(mode == QLatin1String("chords"));
    FlatBttn2->setChecked(mode == QLatin1String("lyrics"));
}

void SheetMusic::showImportNotes() {
    QStringList notes = importNotes(*fpLoad);
    if (fpSong->DataRowCnt() > 0)
        notes.append(
            QStringLiteral("This page is not empty. The import writes over what is in its place."));
    lblImport->setText(notes.join(QLatin1Char('\n')));
    lblImport->setHidden(notes.isEmpty());
}

void SheetMusic::fpLoad_Click(int col, int row) {
    markLine(*fpLoad, col, row, importMode);
    showImportNotes();
}

void SheetMusic::Command2_Click() { setImportMode(QStringLiteral("title")); }

void SheetMusic::Command3_Click() { setImportMode(QStringLiteral("chords")); }

void SheetMusic::FlatBttn2_Click() { setImportMode(QStringLiteral("lyrics")); }

void SheetMusic::FlatBttn1_Click() {
    clearMarks(*fpLoad);
    setImportMode(QString());
    showImportNotes();
}

void SheetMusic::Command11_Click() {
    messageBox(QStringLiteral("To import a song you must assign the rows  \r"
                              "in the imported song to be a title, chord, or lyric row.  \r"
                              "To do so, click on the Title button, then click on your \r"
                              "imported songs' title.  Click on the Chords button then \r"
                              "click on all of the chord rows in the song.  Do the same \r"
                              "for Lyrics: Click on the Lyric button then click on all \r"
                              "of the lyric lines in the song.  When finished, click done."),
               BoxIcon::Information);
}

void SheetMusic::cmdDone_Click() {
    layMarkedLines(*fpLoad, *fpSong, [this] { addPage(); });
    closeImport();
}

void SheetMusic::cmdCancelImport_Click() { closeImport(); }

void SheetMusic::closeImport() {
    sendToBottom(frmImport);
    fpSong->setFocus();
}

// --- The note maker ----------------------------------------------------------------------------

void SheetMusic::wirePalette() {
    onEvent(this, picChord, &DragPanel::dropped, &SheetMusic::picChord_dropped);
    for (size_t i = 0; i < notes.size(); ++i) {
        connect(notes[i], &QListWidget::itemSelectionChanged, this,
                [this, i] { notes_Click(int(i)); });
    }
    onEvent(this, cmdCh, &QToolButton::clicked, &SheetMusic::cmdCh_Click);
    onEvent(this, cmdCLRnotes, &QToolButton::clicked, &SheetMusic::cmdCLRnotes_Click);
    onEvent(this, Command17, &QToolButton::clicked, &SheetMusic::Command17_Click);
    onEscape(this, picChord, &SheetMusic::Command17_Click);
}

void SheetMusic::fillNotes() {
    const std::array<QStringList, 4> parts = chordParts();
    for (size_t i = 0; i < notes.size(); ++i) {
        for (const QString& text : parts[i]) {
            auto* item = new QListWidgetItem(text, notes[i]);
            item->setSizeHint(QSize(0, NoteHeight));
        }
    }
    picChord->hide();
}

void SheetMusic::mnuNoteMaker_Click() {
    picChord->show();
    // It may have been dropped outside, or lie behind another panel or below a lower window.
    const QPoint farthest(width() - picChord->width(), height() - picChord->height());
    const QPoint most(std::max(farthest.x(), 0), std::max(farthest.y(), fpSong->y()));
    picChord->move(std::clamp(picChord->x(), 0, most.x()),
                   std::clamp(picChord->y(), fpSong->y(), most.y()));
    picChord->raise();
    notes[0]->setFocus();
}

void SheetMusic::Command17_Click() {
    const bool hadFocus = picChord->isAncestorOf(focusWidget());
    picChord->hide();
    if (hadFocus) fpSong->setFocus();
}

void SheetMusic::notes_Click(int index) {
    QListWidget* list = notes.at(size_t(index));
    if (pickOf(list) == ClearMark) list->clearSelection();
}

void SheetMusic::cmdCh_Click() {
    takeInHand(chordOf({pickOf(notes[0]), pickOf(notes[1]), pickOf(notes[2]), pickOf(notes[3])}));
}

void SheetMusic::cmdCLRnotes_Click() {
    for (QListWidget* list : notes) list->clearSelection();
}
