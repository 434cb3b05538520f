// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/frm_special_music.h"

#include "core/data/dates.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid_dates.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "team/rules/special_music.h"

#include <QStyleOptionButton>

namespace {

// The blanks in the caption of chkNote that make room for txtInterval.
constexpr int GapBlanks = 11;

}  // namespace

frmSpecialMusic::frmSpecialMusic() {
    setupUi(this);
    setUpGrids();
    wire();
    addKey(cmdAddCat, QKeySequence::Save);
    setDesignSize(size());
    atEdge(onFailure(), [this] { loadSpecialMusic(); });
}

void frmSpecialMusic::wire() {
    onEvent(this, fpSMusic, &SheetView::Click, &frmSpecialMusic::fpSMusic_Click);
    onEvent(this, chkNote, &QCheckBox::toggled, &frmSpecialMusic::chkNote_Click);
    onEvent(this, cmdAddCat, &QPushButton::clicked, &frmSpecialMusic::cmdAddCat_Click);
    onEvent(this, cmdDelCat, &QPushButton::clicked, &frmSpecialMusic::cmdDelCat_Click);
    onEvent(this, Command1, &QPushButton::clicked, &frmSpecialMusic::Command1_Click);
}

void frmSpecialMusic::setUpGrids() {
    fpDate->MaxCols(1);
    fpDate->MaxRows(1);
    fpDate->ColHeadersShow(false);
    fpDate->RowHeadersShow(false);
    setUpDateCells(*fpDate, 1, 1);
    fpDate->setFillColumn(1);

    setUpSpecialMusic(*fpSMusic);
    fpSMusic->setReadOnly(true);
    fpSMusic->setFillColumn(SheetView::AllColumns);
    fpDate->SetActiveCell(0, 0);
    fpSMusic->SetActiveCell(0, 0);
}

// Places txtInterval in the gap of the caption.
void frmSpecialMusic::resizeEvent(QResizeEvent* event) {
    FormBase::resizeEvent(event);
    QString before = chkNote->text();
    before.truncate(before.indexOf(QLatin1String("  ")));
    before.remove(QLatin1Char('&'));
    const QString gap(GapBlanks, QLatin1Char(' '));
    QStyleOptionButton option;
    option.initFrom(chkNote);
    const QRect text =
        chkNote->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, chkNote);
    const int width = chkNote->fontMetrics().horizontalAdvance(gap) - 4;
    const int left = text.left() + chkNote->fontMetrics().horizontalAdvance(before) + 2;
    const int height = txtInterval->sizeHint().height();
    txtInterval->setGeometry(left, (chkNote->height() - height) / 2, width, height);
}

void frmSpecialMusic::loadSpecialMusic() { listSpecialMusic(*fpSMusic); }

void frmSpecialMusic::fpSMusic_Click(int, int row) {
    const QString id = fpSMusic->GetText(SpecialMusicColumn::ID, row);
    if (id.isEmpty()) return;
    lblHidID->setText(id);
    txtTitle->setText(fpSMusic->GetText(SpecialMusicColumn::Title, row));
    fpDate->SetText(1, 1, fpSMusic->GetText(SpecialMusicColumn::PlayOn, row));
    // Deliberate: behaviour 118.
    if (fpSMusic->GetText(SpecialMusicColumn::Reminder, row) != QLatin1String("Yes")) return;
    chkNote->setChecked(true);
    txtInterval->setText(fpSMusic->GetText(SpecialMusicColumn::Weeks, row));
}

void frmSpecialMusic::chkNote_Click() { txtInterval->setEnabled(chkNote->isChecked()); }

void frmSpecialMusic::cmdAddCat_Click() {
    const QString date = formatDate(fpDate->GetText(1, 1));
    if (txtTitle->text().isEmpty()) {
        messageBox(QStringLiteral("Please provide a song title"), BoxIcon::Information);
        return;
    }
    const QString flag = chkNote->isChecked() ? QStringLiteral("Yes") : QStringLiteral("No");
    if (chkNote->isChecked() && txtInterval->text().isEmpty()) {
        // Deliberate: behaviour 99.
        messageBox(QStringLiteral(
            "Provide the number of weeks to set a reminder in the schedule to continute"));
        return;
    }
    if (txtInterval->text().isEmpty()) txtInterval->setText(QStringLiteral("0"));
    const SpecialMusicItem item{txtTitle->text(), date, flag, txtInterval->text()};
    if (lblHidID->text().isEmpty())
        insertSpecialMusic(item);
    else
        updateSpecialMusic(item);
    loadSpecialMusic();
    setStatusText(QStringLiteral("Stored: ") + txtTitle->text());
    // The fields and lblHidID are left as they are.
    // Deliberate: behaviour 119.
}

void frmSpecialMusic::cmdDelCat_Click() {
    if (lblHidID->text().isEmpty()) return;
    deleteSpecialMusic(toLong(lblHidID->text()));
    loadSpecialMusic();
}

void frmSpecialMusic::Command1_Click() {
    txtTitle->setText(QString());
    fpDate->SetText(1, 1, QString());
    chkNote->setChecked(false);
    txtInterval->setText(QString());
    lblHidID->setText(QString());
}
