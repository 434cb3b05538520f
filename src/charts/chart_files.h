// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saving and opening charts and assigning them to songs. Shared by both chart windows.
#pragma once

#include "platform/desktop/common_dialog.h"
#include "ui_assign_panel.h"

class FormBase;
class KeptWork;
class QFrame;
class SheetGrid;

// Asks for a file, beginning in the folder "sheetmusic" and with the name `proposed`. Returns false
// if the user cancels; FileName is then what it was before.
bool chooseMusicFile(const QString& filter, void (CommonDialog::*show)(),
                     const QString& proposed = QString());

// Does the same for a chart file.
bool chooseChart(void (CommonDialog::*show)());

// Panels are neither shown nor hidden: they are raised above the grid, and lowered behind it to
// leave. A lowered panel is disabled.
void raisePanel(QWidget* panel);
void sendToBottom(QWidget* panel);

// Sets up the panel's list of songs and lowers the panel.
void setUpAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel);

// Asks for a file, saves the chart in it, and asks whether to assign it to a song. `window` gets
// the name of the file.
void saveChart(const SheetGrid& chart, FormBase& window, KeptWork& kept, QFrame* frmAssign,
               Ui::AssignPanel& panel);

// Adds all songs to the list and raises the panel for the file that the last dialog has left.
void showAssignPanel(QFrame* frmAssign, Ui::AssignPanel& panel);

// Assigns the panel's file to the active song, or asks the user to select one.
void saveAssigned(const Ui::AssignPanel& panel);
