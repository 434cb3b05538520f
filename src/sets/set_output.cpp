#include "sets/set_output.h"

#include "core/run_time_error.h"
#include "core/sheet_grid.h"
#include "mail/mail_hand_over.h"

void applySetPrintSettings(SheetGrid& grid) {
    grid.PrintBorder(false);
    grid.PrintMarginTop(720);
    grid.PrintMarginBottom(720);
    grid.PrintOrientation(PrintOrientations::Portrait);
    grid.PrintSmartPrint(true);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.PrintGrid(false);
    grid.PrintUseDataMax(true);
    grid.PrintColor(true);
    grid.PrintScalingMethod(PrintScaling::AsItIs);
    grid.PrintType(PrintTypes::All);
}

void mailSetBlock(const SheetGrid& grid) {
    const bool written = grid.ExportRangeToHTML(1, 1, 2, grid.DataRowCnt(), mailStagingFile(),
                                                false, QStringLiteral("lsl"));
    if (!written) throw RunTimeError(RunTimeError::PathAccess);
    handOverStagedMail();
}
