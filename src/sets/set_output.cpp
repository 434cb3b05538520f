#include "sets/set_output.h"

#include "core/run_time_error.h"
#include "core/sheet_grid.h"
#include "mail/mail_hand_over.h"

void mailSetBlock(const SheetGrid& grid) {
    const bool written = grid.ExportRangeToHTML(1, 1, 2, grid.DataRowCnt(), mailStagingFile(),
                                                false, QStringLiteral("lsl"));
    if (!written) throw RunTimeError(RunTimeError::PathAccess);
    handOverStagedMail();
}
