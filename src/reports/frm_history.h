// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Song Play History: lists the songs played in a year and charts the months in which one was
// played.
#pragma once

#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "reports/frm_history_chart.h"
#include "ui_frm_history.h"

#include <array>

class frmHistory : public Form<frmHistory>, public Ui::frmHistory {
public:
    frmHistory();

    OnFailure onFailure() const override { return OnFailure::EndsCommand; }

    // One bar per month; January is 0.
    std::array<HistoryBar*, HistoryChart::Months> bar;

    // Lists the songs played in the year of cmbYear with their counts and resets the bars. Shows
    // its progress in the status bar. Raises what a failing statement raises.
    void loadYear();

private:
    void setUpList();
    void load();
    void resetBars(int foot);
    void chartSong(int row);

    void cmdLoadYear_Click();
    void fpH_Click(int col, int row);
};
