// The date cells of forms.
#pragma once

class SheetGrid;

// Makes a cell one for dates in the form "mm/dd/yy", with spin buttons. Its text stays.
void setUpDateCell(SheetGrid& grid, int col, int row);
