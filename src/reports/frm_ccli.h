// CCLI Reporting: the performances of the songs that carry a CCLI number, for a period of dates or
// for one song, on the screen, on paper and as a mail.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_frm_ccli.h"

class frmCCLI : public Form<frmCCLI>, public Ui::frmCCLI {
public:
    frmCCLI();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

private:
    void setUpGrids();
    void clearReport();
    void dressReport();

    void cmdShowReport_Click();
    void cmdSelectSong_Click();
    void fpSelectSong_Click(int col, int row);
    void cmdPrintReport_Click();
    void FlatBttn1_Click();
};
