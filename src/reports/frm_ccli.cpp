#include "reports/frm_ccli.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/grid/sheet_grid_dates.h"
#include "mail/frm_email.h"
#include "mail/mail_hand_over.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/printing.h"

#include <QHash>

#include <array>

namespace {

enum PeriodColumn { FromLabel = 1, FromDate, ToLabel, ToDate };
enum PickedSongColumn { PickedSongID = 1, PickedSongTitle, PickedSongNumber };
enum ReportColumn { ReportTitle = 1, DatePlayed, ReportNumber };

constexpr int DressRows = 3;

// Dates as the period compares them, taken through their two-digit years: this is meant. Raises 13
// where a text is no date. Few dates stand in many rows, so each text is read once.
class ComparableDates {
public:
    QDate of(const QString& text) {
        const auto known = m_known.constFind(text);
        if (known != m_known.cend()) return *known;
        return *m_known.insert(text, toDate(formatDate(toDate(text))));
    }

private:
    QHash<QString, QDate> m_known;
};

void addRow(SheetGrid& grid, const std::array<QString, 3>& texts) {
    const int row = grid.MaxRows() + 1;
    grid.MaxRows(row);
    for (int i = 0; i < int(texts.size()); ++i) grid.SetText(i + 1, row, texts[i]);
}

void writeReportHeads(SheetGrid& grid, int row) {
    grid.SetText(ReportTitle, row, QStringLiteral("Song Title"));
    grid.SetText(DatePlayed, row, QStringLiteral("Date Played"));
    grid.SetText(ReportNumber, row, QStringLiteral("CCLI #"));
}

bool wasPlayed(const QString& songID) {
    Recordset rs =
        select(QStringLiteral("SELECT played_date FROM played_on WHERE songID = ") + songID);
    return !rs.EOF_();
}

QString subjectFor(const QString& from, const QString& to) {
    if (from.isEmpty() && to.isEmpty()) return QStringLiteral("CCLI Report");
    if (from.isEmpty()) return QStringLiteral("CCLI Report Up To ") + to;
    if (to.isEmpty()) return QStringLiteral("CCLI Report From ") + from;
    // No blank before the date: this is meant.
    return QStringLiteral("CCLI Report") + from + QStringLiteral(" To ") + to;
}

}  // namespace

frmCCLI::frmCCLI() {
    setupUi(this);
    setUpGrids();
    onEvent(this, cmdShowReport, &QPushButton::clicked, &frmCCLI::cmdShowReport_Click);
    onEvent(this, cmdSelectSong, &QPushButton::clicked, &frmCCLI::cmdSelectSong_Click);
    onEvent(this, fpSelectSong, &SheetView::Click, &frmCCLI::fpSelectSong_Click);
    onEvent(this, cmdPrintReport, &QPushButton::clicked, &frmCCLI::cmdPrintReport_Click);
    onEvent(this, FlatBttn1, &QPushButton::clicked, &frmCCLI::FlatBttn1_Click);
    setDesignSize(size());
}

void frmCCLI::setUpGrids() {
    fpDates->MaxCols(ToDate);
    fpDates->MaxRows(1);
    fpDates->ColHeadersShow(false);
    fpDates->RowHeadersShow(false);
    fpDates->SetText(FromLabel, 1, QStringLiteral("From:"));
    fpDates->SetText(ToLabel, 1, QStringLiteral("To:"));
    fpDates->ColWidth(FromLabel, 6);
    fpDates->ColWidth(ToLabel, 4);
    for (int col : {FromDate, ToDate}) {
        setUpDateCells(*fpDates, col, 1);
        fpDates->ColWidth(col, 13);
    }
    fpDates->setFillColumn(SheetView::AllColumns);
    fpDates->SetActiveCell(0, 0);

    for (SheetView* list : {fpSelectSong, fpCCLI}) {
        list->MaxCols(3);
        list->MaxRows(0);
        list->RowHeadersShow(false);
        list->GridShowHoriz(false);
        list->GridShowVert(false);
        list->setReadOnly(true);
        list->setFillColumn(SheetView::AllColumns);
    }
    fpSelectSong->SetText(PickedSongTitle, 0, QStringLiteral("Song Title"));
    fpSelectSong->SetText(PickedSongNumber, 0, QStringLiteral("CCLI #"));
    fpSelectSong->ColWidth(PickedSongID, 2.75);
    fpSelectSong->ColWidth(PickedSongTitle, 16);
    fpSelectSong->ColWidth(PickedSongNumber, 8.25);
    fpSelectSong->Col(PickedSongID);
    fpSelectSong->ColHidden(true);
    writeReportHeads(*fpCCLI, 0);
    fpCCLI->ColWidth(ReportTitle, 20.62);
    fpCCLI->ColWidth(DatePlayed, 9);
    // The title of a printed period runs over all three.
    fpCCLI->ColWidth(ReportNumber, 14);
}

void frmCCLI::clearReport() {
    fpCCLI->ClearRange(1, 1, -1, -1, true);
    fpCCLI->MaxRows(0);
    // What a print has centred stands as before.
    fpCCLI->Col(-1);
    fpCCLI->Row(-1);
    fpCCLI->TypeHAlign(HAlign::Left);
}

void frmCCLI::cmdShowReport_Click() {
    const QString from = fpDates->GetText(FromDate, 1);
    const QString to = fpDates->GetText(ToDate, 1);
    if (from.isEmpty() || to.isEmpty()) {
        messageBox(QStringLiteral("Select a 'From' and 'To' Date."), BoxIcon::Information);
        return;
    }
    ComparableDates dates;
    const QDate fromDate = dates.of(from);
    const QDate toDate = dates.of(to);
    clearReport();
    Recordset rs = select(
        QStringLiteral("SELECT played_on.songID, played_on.played_date, songs.ID, songs.CCLI, "
                       "songs.title FROM songs INNER JOIN played_on ON songs.ID = "
                       "played_on.songID;"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString played = rs.Fields("played_date");
        const QDate date = dates.of(played);
        if (date < fromDate || date > toDate) continue;
        const QString number = rs.Fields("CCLI");
        if (!number.isEmpty()) addRow(*fpCCLI, {rs.Fields("Title"), played, number});
    }
    rs.Close();
    writeReportHeads(*fpCCLI, 0);
}

void frmCCLI::cmdSelectSong_Click() {
    // The songs already listed stay, and stand there once more: this is meant.
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE CCLI > ''"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString id = rs.Fields("ID");
        if (wasPlayed(id)) addRow(*fpSelectSong, {id, rs.Fields("Title"), rs.Fields("CCLI")});
    }
    rs.Close();
    fpSelectSong->setVisible(true);
}

void frmCCLI::fpSelectSong_Click(int, int row) {
    clearReport();
    const QString id = fpSelectSong->GetText(PickedSongID, row);
    const QString number = fpSelectSong->GetText(PickedSongNumber, row);
    // On the heads there is no song; the report is empty all the same: this is meant.
    if (id.isEmpty()) return;
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on WHERE songID = ") + id);
    for (; !rs.EOF_(); rs.MoveNext())
        addRow(*fpCCLI, {rs.Fields("Title"), rs.Fields("played_date"), number});
    rs.Close();
    writeReportHeads(*fpCCLI, 0);
}

void frmCCLI::dressReport() {
    fpCCLI->Col(-1);
    fpCCLI->Row(-1);
    fpCCLI->TypeHAlign(HAlign::Centre);
    fpCCLI->MaxRows(fpCCLI->MaxRows() + DressRows);
    fpCCLI->InsertRows(1, DressRows);
    fpCCLI->AddCellSpan(1, 1, fpCCLI->MaxCols(), 1);
    const QString from = fpDates->GetText(FromDate, 1);
    const QString to = fpDates->GetText(ToDate, 1);
    const int chosen = fpSelectSong->ActiveRow();
    // Where no song was chosen, the list's head is none.
    const QString song = chosen < 1 ? QString() : fpSelectSong->GetText(PickedSongTitle, chosen);
    // The two dates alone decide, also over the report of one song: this is meant.
    const QString title =
        from.isEmpty() && to.isEmpty()
            ? QStringLiteral("CCLI Report For: ") + song
            : QStringLiteral("CCLI Report For Time Period: ") + from + QStringLiteral(" to ") + to;
    fpCCLI->SetText(1, 1, title);
    writeReportHeads(*fpCCLI, DressRows);
    fpCCLI->SetActiveCell(0, 0);
}

void frmCCLI::cmdPrintReport_Click() {
    // The report stays dressed until another one is shown: this is meant.
    dressReport();
    applySetPrintSettings(*fpCCLI);
    PrintSheet(*fpCCLI, 1);
}

void frmCCLI::FlatBttn1_Click() {
    const QString subject = subjectFor(fpDates->GetText(FromDate, 1), fpDates->GetText(ToDate, 1));
    // The numbers and the heads stay behind: this is meant.
    mailSetBlock(*fpCCLI);
    frmEmail::instance().txtSubject->setText(subject);
}
