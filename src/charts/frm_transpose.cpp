// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/frm_transpose.h"

#include "charts/chart_files.h"
#include "charts/chart_output.h"
#include "charts/chart_view.h"
#include "charts/sheet_music.h"
#include "platform/grid_view/kept_controls.h"
#include "platform/theme/theme.h"

namespace {

constexpr int PanelMargin = 24;  // pixels

}  // namespace

frmTranspose::frmTranspose() {
    Ui::frmTranspose::setupUi(this);
    setUpAssignPanel(frmAssign, *this);
    onEvent(this, Slider1, &MoveSlider::moved, &frmTranspose::Slider1_Scroll);
    onEvent(this, cmdReset, &QPushButton::clicked, &frmTranspose::cmdReset_Click);
    onEvent(this, cmdExportText, &QPushButton::clicked, &frmTranspose::cmdExportText_Click);
    onEvent(this, cmdEmailSet, &QPushButton::clicked, &frmTranspose::cmdEmailSet_Click);
    onEvent(this, Command3, &QPushButton::clicked, &frmTranspose::Command3_Click);
    onEvent(this, cmdSaveSetList, &QPushButton::clicked, &frmTranspose::cmdSaveSetList_Click);
    onEvent(this, cmdSaveAssigned, &QToolButton::clicked, &frmTranspose::cmdSaveAssigned_Click);
    // cmdCloseAssign and fpAttach have no command here. Deliberate: behaviour 130.
    Image1->setPixmap(themedIcon(QStringLiteral("transpose")).pixmap(Image1->size()));
    setWindowIcon(themedIcon(QStringLiteral("transpose")));
    setUpChartView(*fpPreview);
    addKey(cmdSaveSetList, QKeySequence::Save);
    addKey(Command3, QKeySequence::Print);
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
    kept = keepGrid(*this, UnsavedKind::TransposedChart, *fpPreview);
}

void frmTranspose::load() { loadRootNotes(); }

void frmTranspose::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    frmAssign->setGeometry(
        fpPreview->geometry().adjusted(PanelMargin, PanelMargin, -PanelMargin, -PanelMargin));
}

void frmTranspose::Slider1_Scroll(int steps) {
    lblNumSteps->setText(QStringLiteral("Changed By ") + QString::number(steps) +
                         QStringLiteral(" Semi-Tones"));
    transposePreview();
}

void frmTranspose::transposePreview() {
    loadKeyNotes(Slider1->sliderPosition());
    // The copy as it is now. Deliberate: behaviour 141.
    transposeChart(*fpPreview);
}

void frmTranspose::cmdReset_Click() {
    SheetMusic::instance().copyToTranspose();
    lblNumSteps->setText(QString());
    Slider1->setValue(0);
}

void frmTranspose::cmdExportText_Click() { exportChart(*fpPreview); }

// Deliberate: behaviour 149.
void frmTranspose::cmdEmailSet_Click() { mailChart(*fpPreview, NoteButton::AsItWas); }

void frmTranspose::Command3_Click() { printChart(*fpPreview); }

void frmTranspose::cmdSaveSetList_Click() { saveChart(*fpPreview, *this, *kept, frmAssign, *this); }

void frmTranspose::cmdSaveAssigned_Click() { saveAssigned(*this); }
