// Charts on the disk, and their tie to a song: what both chart windows share.
#pragma once

#include "platform/desktop/common_dialog.h"
#include "ui_assign_panel.h"

class QFrame;
class SheetGrid;

// The dialog for a file of the folder "sheetmusic". The name that its last use, in any window, has
// left is proposed again. False after a cancel.
bool chooseMusicFile(const QString& filter, void (CommonDialog::*show)());

// The same for a chart.
bool chooseChart(void (CommonDialog::*show)());

// Panels are not shown or hidden: they come up over the grid, and go behind it to leave.
void raisePanel(QWidget* panel);
void sendToBottom(QWidget* panel);

// Makes the panel's list of songs ready for use, and sends the panel to the bottom.
void setUpAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel);

// Asks for a file, saves the chart in it, and asks whether to tie it to a song.
void saveChart(const SheetGrid& chart, QFrame* frmAssign, Ui::AssignPanel& panel);

// Lists all songs behind those already listed, and raises the panel for the file that the last
// dialog has left.
void showAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel);

// Ties the panel's file to the active song, or asks for one.
void saveAssigned(const Ui::AssignPanel& panel);
