// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// SheetMusic: to write, import and save a chord chart, and to assign it to a song.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_assign_panel.h"
#include "ui_sheet_music.h"

#include <QAction>
#include <QListWidget>
#include <QMenu>

#include <array>

class KeptWork;

class SheetMusic : public Form<SheetMusic>, public Ui::SheetMusic, public Ui::AssignPanel {
public:
    SheetMusic();
    ~SheetMusic() override;

    // The note maker's lists: root, accidental, kind, number.
    std::array<QListWidget*, 4> notes;

    QMenu mnuMove;
    QAction mnuSubMove;

    QString pendingChord;  // goes into the next cell that is clicked; empty for none
    QString importMode;    // "title", "chords", "lyrics" or empty

    // Shows the chart of a file. One that cannot be read leaves the grid as it is, without a
    // message.
    void openChart(const QString& path);

    // Adds a page at the end and shows it.
    void addPage();

    // Copies the chart into the transpose window and shows it. The chart is left on its last page.
    void copyToTranspose();

    // Formats every page of the transpose window's copy as a chart.
    void formatPreviewPages();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void wireMenus();
    void wireGrid();
    void wireImport();
    void wirePalette();
    void dressButtons();
    void load();
    void setUpImportList();
    void fillNotes();

    void takeInHand(const QString& chord);
    void setImportMode(const QString& mode);
    void showImportNotes();
    void closeImport();

    void Form_Resize();
    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuAttachToDB_Click();
    void mnuImport_Click();
    void mnuDelPage_Click();
    void mnuPrint_Click();
    void mnuToEmail_Click();
    void mnuToHTML_Click();
    void mnuLyrics_Click();
    void mnuNoteMaker_Click();
    void mnuSubMove_Click();
    void fpSong_Click(int col, int row);
    void fpSong_RightClick(int clickType, int col, int row, int x, int y);
    void fpSong_DragDrop(QWidget* source, int x, int y);
    void picChord_dropped(const QPoint& place);
    void fpAttach_Click(int col, int row);
    void cmdSaveAssigned_Click();
    void cmdCloseAssign_Click();
    void fpLoad_Click(int col, int row);
    void Command2_Click();
    void Command3_Click();
    void FlatBttn2_Click();
    void FlatBttn1_Click();
    void Command11_Click();
    void cmdDone_Click();
    void cmdCancelImport_Click();
    void notes_Click(int index);
    void cmdCh_Click();
    void cmdCLRnotes_Click();
    void Command17_Click();

    QString m_inHand;  // the status text about the chord that waits for its cell
    KeptWork* m_kept = nullptr;
};
