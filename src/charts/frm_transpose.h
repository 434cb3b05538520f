// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Transpose SheetMusic: a copy of the chart, transposed by semi-tones.
#pragma once

#include "charts/rules/transposer.h"
#include "platform/desktop/form.h"
#include "platform/grid_view/sheet_view.h"
#include "ui_assign_panel.h"
#include "ui_frm_transpose.h"

class KeptWork;

class frmTranspose : public Form<frmTranspose>,
                     public Ui::frmTranspose,
                     public Ui::AssignPanel,
                     public Transposer {
public:
    frmTranspose();

    // Keeps the copy while it is not saved.
    KeptWork* kept = nullptr;

    // Transposes the copy, as it is now, by the distance of Slider1. Passes add up.
    void transposePreview();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void load();

    void Slider1_Scroll(int steps);
    void cmdReset_Click();
    void cmdExportText_Click();
    void cmdEmailSet_Click();
    void Command3_Click();
    void cmdSaveSetList_Click();
    void cmdSaveAssigned_Click();
};
