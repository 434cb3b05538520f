// What the windows that show a set or a report share for mail.
#pragma once

class SheetGrid;

// Writes the two columns of a set, from row 1 to the last with data, over the mail staging file
// and gives them to the mail window as its prepared body, with its "+ Note" button. Raises 75
// where the file cannot be written, 53 or 75 where it cannot be read back.
void mailSetBlock(const SheetGrid& grid);
