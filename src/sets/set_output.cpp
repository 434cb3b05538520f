#include "sets/set_output.h"

#include "core/run_time_error.h"
#include "core/sheet_grid.h"
#include "mail/mail_hand_over.h"

void mailBlock(const SheetGrid& grid, int lastCol) {
    const bool written = grid.ExportRangeToHTML(1, 1, lastCol, grid.DataRowCnt(), mailStagingFile(),
                                                false, QStringLiteral("lsl"));
    if (!written) throw RunTimeError(RunTimeError::PathAccess);
    handOverStagedMail();
}

void mailSetBlock(const SheetGrid& grid) { mailBlock(grid, 2); }
