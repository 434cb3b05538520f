// What the windows that show a set or a report share for mail.
#pragma once

class SheetGrid;

// Writes columns 1 to `lastCol`, from row 1 to the last with data, over the mail staging file and
// gives them to the mail window as its prepared body, with its "+ Note" button. Raises 75 where
// the file cannot be written, 53 or 75 where it cannot be read back.
void mailBlock(const SheetGrid& grid, int lastCol);

// The same for the two columns of a set.
void mailSetBlock(const SheetGrid& grid);
