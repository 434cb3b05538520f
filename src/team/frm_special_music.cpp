#include "team/frm_special_music.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid_dates.h"
#include "platform/desktop/message_box.h"

#include <QStyleOptionButton>

namespace {

enum MusicColumn { IdColumn = 1, TitleColumn, PlayOnColumn, ReminderColumn, IntervalColumn };

constexpr int GapBlanks = 11;

}  // namespace

frmSpecialMusic::frmSpecialMusic() {
    setupUi(this);
    setUpGrids();
    wire();
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

    fpSMusic->MaxCols(5);
    fpSMusic->MaxRows(0);
    fpSMusic->RowHeadersShow(false);
    fpSMusic->GridShowHoriz(false);
    fpSMusic->GridShowVert(false);
    const struct {
        int col;
        const char* head;
        double width;
    } columns[] = {{TitleColumn, "Title", 20.37},
                   {PlayOnColumn, "Play On", 7.37},
                   {ReminderColumn, "Reminder", 6.87}};
    for (const auto& column : columns) {
        fpSMusic->SetText(column.col, 0, QString::fromLatin1(column.head));
        fpSMusic->ColWidth(column.col, column.width);
    }
    for (int col : {IdColumn, IntervalColumn}) {
        fpSMusic->Col(col);
        fpSMusic->ColHidden(true);
    }
    fpSMusic->setReadOnly(true);
    fpSMusic->setFillColumn(SheetView::AllColumns);
    fpDate->SetActiveCell(0, 0);
    fpSMusic->SetActiveCell(0, 0);
}

// The box of the weeks stands in the gap of the caption.
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

void frmSpecialMusic::loadSpecialMusic() {
    fpSMusic->MaxRows(0);
    Recordset rs = select(QStringLiteral("SELECT * FROM special_music"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const int row = fpSMusic->MaxRows() + 1;
        fpSMusic->MaxRows(row);
        fpSMusic->SetText(IdColumn, row, rs.Fields("ID"));
        fpSMusic->SetText(TitleColumn, row, rs.Fields("song_name"));
        fpSMusic->SetText(PlayOnColumn, row, rs.Fields("play_date"));
        fpSMusic->SetText(ReminderColumn, row, rs.Fields("remind_schedule"));
        fpSMusic->SetText(IntervalColumn, row, rs.Fields("remind_interval"));
    }
    rs.Close();
}

void frmSpecialMusic::fpSMusic_Click(int, int row) {
    const QString id = fpSMusic->GetText(IdColumn, row);
    if (id.isEmpty()) return;
    lblHidID->setText(id);
    txtTitle->setText(fpSMusic->GetText(TitleColumn, row));
    fpDate->SetText(1, 1, fpSMusic->GetText(PlayOnColumn, row));
    // A "No" leaves the tick and the weeks of the item clicked before: this is meant.
    if (fpSMusic->GetText(ReminderColumn, row) != QLatin1String("Yes")) return;
    chkNote->setChecked(true);
    txtInterval->setText(fpSMusic->GetText(IntervalColumn, row));
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
        messageBox(QStringLiteral(
            "Provide the number of weeks to set a reminder in the schedule to continute"));
        return;
    }
    if (txtInterval->text().isEmpty()) txtInterval->setText(QStringLiteral("0"));
    const QString title = txtTitle->text();
    const QString interval = txtInterval->text();
    if (lblHidID->text().isEmpty()) {
        execute(QStringLiteral("INSERT INTO special_music (song_name, play_date, remind_schedule, "
                               "remind_interval) VALUES ('") +
                title + QStringLiteral("', '") + date + QStringLiteral("', '") + flag +
                QStringLiteral("', '") + interval + QStringLiteral("');"));
    } else {
        // Every item becomes this one: this is meant.
        execute(QStringLiteral("UPDATE special_music SET song_name = '") + title +
                QStringLiteral("', play_date = '") + date +
                QStringLiteral("', remind_schedule = '") + flag +
                QStringLiteral("', remind_interval = '") + interval + QLatin1Char('\''));
    }
    loadSpecialMusic();
}

void frmSpecialMusic::cmdDelCat_Click() {
    if (lblHidID->text().isEmpty()) return;
    execute(QStringLiteral("DELETE FROM special_music WHERE ID = ") +
            QString::number(toLong(lblHidID->text())));
    loadSpecialMusic();
}

void frmSpecialMusic::Command1_Click() {
    txtTitle->setText(QString());
    fpDate->SetText(1, 1, QString());
    chkNote->setChecked(false);
    txtInterval->setText(QString());
    lblHidID->setText(QString());
}
