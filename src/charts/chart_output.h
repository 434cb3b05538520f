// What goes out of a chart: on paper, as a page of HTML, in a mail, and as a lyric sheet. Both
// chart windows share it. All work on a grid of a chart's pages and leave it as it was but for
// what they name.
#pragma once

#include "mail/mail_hand_over.h"

class QTextEdit;
class SheetGrid;

// Prints all pages, each on a sheet of its own, and puts page 1 on view. Stops at a page without a
// cell: a box tells so, page 1 keeps the rows added so far, and that page is on view.
void printChart(SheetGrid& chart);

// Asks for a file and writes the page on view to it as HTML. After a cancel the grid's lines stay
// hidden.
void exportChart(SheetGrid& chart);

// Gives all pages, down to the last row with data, to the mail window as its prepared body. Raises
// 53 where there is no staging file to read, 75 where it cannot be read. Stops as printChart does.
void mailChart(SheetGrid& chart, NoteButton note);

// Asks for a file, erases the chords of the page on view, adds its lyrics to `rtb` and writes all
// of that as RTF. After a cancel the chords stand and the grid's lines stay hidden.
void saveLyricSheet(SheetGrid& chart, QTextEdit& rtb);
