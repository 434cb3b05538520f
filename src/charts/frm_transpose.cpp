#include "charts/frm_transpose.h"

#include "charts/chart_files.h"
#include "charts/chart_output.h"
#include "charts/chart_view.h"
#include "charts/sheet_music.h"
#include "core/data/database.h"
#include "platform/theme/theme.h"

namespace {

constexpr int PanelMargin = 24;  // pixels

// The value of a row of the table of keys; raises 3021 where there is none.
QString noteValueOf(const QString& colName) {
    Recordset rs = select(QStringLiteral("SELECT noteValue FROM transpose WHERE colName = '") +
                          colName + QStringLiteral("'"));
    const QString value = rs.Fields("noteValue");
    rs.Close();
    return value;
}

// The row of a distance in semi-tones.
QString keyOf(int distance) {
    // Without a distance the row of the positions is written as it stands: this is meant.
    if (distance == 0) return QStringLiteral("rootnote");
    return (distance < 0 ? QStringLiteral("n") : QStringLiteral("p")) +
           QString::number(qAbs(distance));
}

}  // namespace

frmTranspose::frmTranspose() {
    Ui::frmTranspose::setupUi(this);
    setUpAssignPanel(frmAssign, *this);
    onEvent(this, Slider1, &QSlider::actionTriggered, &frmTranspose::Slider1_Scroll);
    onEvent(this, cmdReset, &QPushButton::clicked, &frmTranspose::cmdReset_Click);
    onEvent(this, cmdExportText, &QPushButton::clicked, &frmTranspose::cmdExportText_Click);
    onEvent(this, cmdEmailSet, &QPushButton::clicked, &frmTranspose::cmdEmailSet_Click);
    onEvent(this, Command3, &QPushButton::clicked, &frmTranspose::Command3_Click);
    onEvent(this, cmdSaveSetList, &QPushButton::clicked, &frmTranspose::cmdSaveSetList_Click);
    onEvent(this, cmdSaveAssigned, &QToolButton::clicked, &frmTranspose::cmdSaveAssigned_Click);
    // The panel's close button and its list carry no command here: this is meant.
    Image1->setPixmap(themedIcon(QStringLiteral("transpose")).pixmap(Image1->size()));
    setWindowIcon(themedIcon(QStringLiteral("transpose")));
    setUpChartView(*fpPreview);
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmTranspose::load() { setRootNotes(noteValueOf(QStringLiteral("rootnote"))); }

void frmTranspose::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    frmAssign->setGeometry(
        fpPreview->geometry().adjusted(PanelMargin, PanelMargin, -PanelMargin, -PanelMargin));
}

// The control reports each move that the user makes, before it takes the new value on.
void frmTranspose::Slider1_Scroll(int) {
    if (Slider1->sliderPosition() == Slider1->value()) return;
    lblNumSteps->setText(QStringLiteral("Changed By ") +
                         QString::number(Slider1->sliderPosition()) +
                         QStringLiteral(" Semi-Tones"));
    transposePreview();
}

void frmTranspose::transposePreview() {
    setKeyNotes(noteValueOf(keyOf(Slider1->sliderPosition())));
    transposeChart(*fpPreview);
}

void frmTranspose::cmdReset_Click() {
    SheetMusic::instance().copyToTranspose();
    lblNumSteps->setText(QString());
    Slider1->setValue(0);
}

void frmTranspose::cmdExportText_Click() { exportChart(*fpPreview); }

// The mail window's button for notes is never shown from here: this is meant.
void frmTranspose::cmdEmailSet_Click() { mailChart(*fpPreview, NoteButton::AsItWas); }

void frmTranspose::Command3_Click() { printChart(*fpPreview); }

void frmTranspose::cmdSaveSetList_Click() { saveChart(*fpPreview, frmAssign, *this); }

void frmTranspose::cmdSaveAssigned_Click() { saveAssigned(*this); }
