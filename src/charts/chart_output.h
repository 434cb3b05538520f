// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Output of a chart: on paper, as HTML, in a message, and as a lyric sheet. Shared by both chart
// windows. All functions take a grid with the pages of a chart and change it only as described.
#pragma once

#include "mail/mail_hand_over.h"

class QTextEdit;
class SheetGrid;

// Prints all pages, each on a separate sheet of paper, and shows page 1. Stops with a message box
// at a page without cells: page 1 keeps the rows added so far, and the page without cells is shown.
void printChart(SheetGrid& chart);

// Asks for a file and writes the page shown to it as HTML. If the user cancels, the grid lines stay
// hidden.
void exportChart(SheetGrid& chart);

// Hands all pages, down to the last row with data, to the mail window as a prepared body. Raises
// RunTimeError::FileNotFound if there is no staging file, RunTimeError::PathAccess if it cannot be
// read. Stops like printChart.
void mailChart(SheetGrid& chart, NoteButton note);

// Asks for a file, erases the chords of the page shown, adds its lyrics to `rtb` and writes the
// whole text as RTF. If the user cancels, the chords are kept and the grid lines stay hidden.
void saveLyricSheet(SheetGrid& chart, QTextEdit& rtb);
