#include "reports/frm_history.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "platform/desktop/desktop.h"

#include <QtMath>

namespace {

enum Column { CountedSongID = 1, CountedSongTitle, CountedSongTimes };

constexpr int YearsOffered = 10;

// How often a song was played in the year of two digits `yy`.
int timesPlayed(const QString& songID, const QString& yy) {
    int count = 0;
    Recordset rs =
        select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") + songID);
    // The century plays no part; a text that is too short matches no year.
    for (; !rs.EOF_(); rs.MoveNext())
        if (QStringView(rs.Fields("played_date")).mid(6, 2) == yy) ++count;
    rs.Close();
    return count;
}

void showProgress(int done, int total) {
    setStatusText(QStringLiteral("Loading.... %1% Complete").arg(qRound(100.0 * done / total)));
}

}  // namespace

frmHistory::frmHistory() {
    setupUi(this);
    bar = {bar_0, bar_1, bar_2, bar_3, bar_4, bar_5, bar_6, bar_7, bar_8, bar_9, bar_10, bar_11};
    for (HistoryBar* item : bar) item->raise();
    setUpList();
    onEvent(this, cmdLoadYear, &QPushButton::clicked, &frmHistory::cmdLoadYear_Click);
    onEvent(this, fpH, &SheetView::Click, &frmHistory::fpH_Click);
    setDesignSize(size());
    atEdge(onFailure(), [this] { load(); });
}

void frmHistory::setUpList() {
    fpH->MaxCols(CountedSongTimes);
    fpH->MaxRows(0);
    fpH->RowHeadersShow(false);
    fpH->GridShowHoriz(false);
    fpH->GridShowVert(false);
    fpH->ColWidth(CountedSongID, 2.12);
    fpH->ColWidth(CountedSongTitle, 18.12);
    fpH->ColWidth(CountedSongTimes, 11.78);
    fpH->setReadOnly(true);
    fpH->setFillColumn(SheetView::AllColumns);
}

void frmHistory::load() {
    fpH->SetActiveCell(0, 0);
    fpH->Col(CountedSongID);
    fpH->ColHidden(true);
    // One year back and eight ahead, whatever the table holds: this is meant.
    const int thisYear = today().year();
    for (int i = 0; i < YearsOffered; ++i) cmbYear->addItem(QString::number(thisYear - 1 + i));
    cmbYear->setCurrentText(QString::number(thisYear));
    resetBars(HistoryChart::FootAtRest);
    loadYear();
}

void frmHistory::resetBars(int foot) {
    for (int month = 0; month < HistoryChart::Months; ++month) bar[month]->reset(month, foot);
}

void frmHistory::loadYear() {
    fpH->ClearRange(1, 1, -1, -1, true);
    fpH->MaxRows(0);
    Recordset rs = select(QStringLiteral("Select id, title FROM songs ORDER BY title"));
    int total = 0;
    for (; !rs.EOF_(); rs.MoveNext()) ++total;
    if (total >= 1) rs.MoveFirst();
    const QString yy = cmbYear->currentText().mid(2, 2);
    int row = 0;
    for (int done = 1; !rs.EOF_(); rs.MoveNext(), ++done) {
        const QString id = rs.Fields("ID");
        const int count = timesPlayed(id, yy);
        if (count >= 1) {
            fpH->MaxRows(++row);
            fpH->SetText(CountedSongID, row, id);
            fpH->SetText(CountedSongTitle, row, rs.Fields("Title"));
            fpH->SetText(CountedSongTimes, row, QString::number(count));
        }
        showProgress(done, total);
    }
    rs.Close();
    fpH->SetText(CountedSongTitle, 0, QStringLiteral("Song Name"));
    fpH->SetText(CountedSongTimes, 0, QStringLiteral("# Times Played"));
    resetBars(HistoryChart::FootAtRest);
}

void frmHistory::cmdLoadYear_Click() {
    setMousePointer(MousePointer::Hourglass);
    loadYear();
    setMousePointer(MousePointer::Arrow);
}

void frmHistory::fpH_Click(int col, int row) {
    if (row == 0)
        fpH->SortByHead(col);
    else
        chartSong(row);
}

void frmHistory::chartSong(int row) {
    resetBars(HistoryChart::Foot);
    lblSongTit->setText(fpH->GetText(CountedSongTitle, row) + QStringLiteral(" For ") +
                        cmbYear->currentText());
    const QString id = fpH->GetText(CountedSongID, row);
    // Beside the songs there is none to chart.
    if (id.isEmpty()) return;
    // Every year of the song counts, not the title's alone: this is meant.
    std::array<int, HistoryChart::Months> counts{};
    Recordset rs = select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") + id +
                          QStringLiteral(" ORDER BY played_date"));
    for (; !rs.EOF_(); rs.MoveNext()) ++counts[toDate(rs.Fields("played_date")).month() - 1];
    rs.Close();
    for (int month = 0; month < HistoryChart::Months; ++month)
        bar[month]->grow(month, counts[month]);
}
