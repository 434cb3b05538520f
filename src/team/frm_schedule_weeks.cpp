// The weeks: a new schedule, typed dates, the pop-up menu.
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "platform/desktop/message_box.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

namespace {

// The one colour of a schedule, that of its head rows.
constexpr int HeadColour = RGB(238, 232, 216);

constexpr int DaysOfWeek = 7;
constexpr int FirstYear = 100;
constexpr int LastYear = 9999;
constexpr double MostWeeks = 1e6;  // beyond the calendar's last year

const QString PersonellHead = QStringLiteral("Personell");

// Raises 6 beyond the calendar's years.
QDate daysLater(const QDate& date, qint64 days) {
    const QDate later = date.addDays(days);
    if (later.year() < FirstYear || later.year() > LastYear)
        throw RunTimeError(RunTimeError::Overflow);
    return later;
}

// Above every row, the head's too.
constexpr int NoBlock = -1;

}  // namespace

void frmSchedule::showSchedule(bool on) {
    QSizePolicy policy = fpSchedule->sizePolicy();
    policy.setRetainSizeWhenHidden(false);
    fpSchedule->setSizePolicy(policy);
    fpSchedule->setVisible(on);
    lblNoSchedule->setVisible(!on);
}

void frmSchedule::setColumnWidths(double notes, double songs, double team) {
    fpSchedule->ColWidth(DateColumn, 8.0);
    fpSchedule->ColWidth(NotesColumn, notes);
    fpSchedule->ColWidth(SongsColumn, songs);
    fpSchedule->ColWidth(TeamColumn, team);
}

void frmSchedule::dropTitle() {
    int col = 0;
    int row = 0;
    int cols = 0;
    int rows = 0;
    if (fpSchedule->GetCellSpan(1, 1, col, row, cols, rows)) fpSchedule->DeleteRows(1, 3);
}

void frmSchedule::writeHead(int row, const QString& headOfTeam) {
    fpSchedule->SetText(DateColumn, row, QStringLiteral("Date"));
    fpSchedule->SetText(NotesColumn, row, QStringLiteral("Rehearsal Notes"));
    fpSchedule->SetText(SongsColumn, row, QStringLiteral("Set List"));
    fpSchedule->SetText(TeamColumn, row, headOfTeam);
    fpSchedule->BlockMode(true);
    fpSchedule->Col(1);
    fpSchedule->Col2(4);
    fpSchedule->Row(row);
    fpSchedule->Row2(row);
    fpSchedule->FontBold(true);
    fpSchedule->BackColor(HeadColour);
    fpSchedule->BlockMode(false);
}

void frmSchedule::writeDates(const QDate& start, double weeks) {
    QDate date = start;
    int row = 1;
    for (int i = 1; i <= weeks; ++i) {
        if (i > 1) row += WeekRows;
        fpSchedule->SetText(DateColumn, row, formatDate(date));
        date = daysLater(date, DaysOfWeek);
        if (i == 1) {
            fpSchedule->SetCellBorder(1, 1, 4, 1, BorderType::Top, Black, BorderStyle::Solid);
        } else {
            fpSchedule->SetCellBorder(1, row - 1, 4, row - 1, BorderType::Bottom, Black,
                                      BorderStyle::Solid);
        }
    }
}

void frmSchedule::writeTitle(const QDate& start, double weeks) {
    fpSchedule->InsertRows(1, 3);
    fpSchedule->AddCellSpan(1, 1, 4, 1);
    fpSchedule->Col(1);
    fpSchedule->Row(1);
    fpSchedule->TypeHAlign(HAlign::Centre);
    fpSchedule->FontSize(14);
    fpSchedule->FontBold(true);
    const QDate end = daysLater(start, DaysOfWeek * qint64(weeks - 1));
    fpSchedule->SetText(1, 1,
                        QStringLiteral("Schedule For: ") + formatDate(start) +
                            QStringLiteral(" to ") + formatDate(end));
}

void frmSchedule::cmdLoadDates_Click() {
    const QString weeksText = fpPickDate->GetText(2, 1);
    const QString startText = fpPickDate->GetText(1, 1);
    showSchedule(true);
    if (weeksText.isEmpty() || startText.isEmpty()) {
        messageBox(
            QStringLiteral("Please select the starting date and the number of weeks to the left."),
            BoxIcon::Information);
        return;
    }
    fpSchedule->ClearRange(1, 1, -1, -1, true);
    dropTitle();
    setColumnWidths(31.0, 26.87, 18.37);
    const double weeks = std::clamp(toNumber(weeksText), -MostWeeks, MostWeeks);
    const QDate start = toDate(startText);
    writeDates(start, weeks);
    // The dates do not stand in their rows yet, so this pass offers those without any vacation
    // day; its cells move down with the title, and cmdRefresh brings the offers of each date. This
    // is meant.
    refreshAvailability();
    fillSetLists(1, int(std::min(weeks, double(fpSchedule->MaxRows()))));
    writeTitle(start, weeks);
    // "Worship Team" tells these weeks from inserted ones, in deleting, inserting and finalising.
    writeHead(FirstHeadRow, QStringLiteral("Worship Team"));
    int row = FirstHeadRow;
    for (int i = 2; i <= weeks; ++i) {
        row += WeekRows;
        writeHead(row, QStringLiteral("Worship Team"));
    }
    showSchedule(true);
}

void frmSchedule::fpSchedule_Change(int col, int row) {
    if (col != DateColumn) return;
    const auto date = parseDate(fpSchedule->GetText(col, row));
    if (date) {
        fpSchedule->SetText(col, row, formatDate(*date));
        return;
    }
    // An emptied date is no date either, and draws the message: this is meant.
    messageBox(QStringLiteral("Format date as mm/dd/yy (06/12/05)"), BoxIcon::Information);
    fpSchedule->SetText(col, row, QString());
}

void frmSchedule::fpSchedule_RightClick(int, int col, int row, int x, int y) {
    fpSchedule->SetActiveCell(col, row);
    mnuD.popup(fpSchedule->mapToGlobal(QPoint(x, y)));
}

// The last content row of the week that a row lies in; NoBlock where no "Personell" head stands at
// or within 17 rows above it. Weeks headed "Worship Team" have none: this is meant. The look goes
// down from above, so that a head or date row finds the week before its own.
int frmSchedule::lastRowOfBlock(int row) const {
    const int from = row <= 18 ? 3 : row - 17;
    for (int h = from; h <= row; ++h)
        if (fpSchedule->GetText(TeamColumn, h) == PersonellHead) return h + ContentRows;
    return NoBlock;
}

void frmSchedule::mnuDelete_Click() {
    const int row = fpSchedule->ActiveRow();
    fpSchedule->SetText(fpSchedule->ActiveCol(), row, QString());
    if (fpSchedule->ActiveCol() != TeamColumn) return;
    const int last = lastRowOfBlock(row);
    for (int i = row; i <= last; ++i) {
        const QString below = fpSchedule->GetText(TeamColumn, i + 1);
        if (!fpSchedule->GetText(TeamColumn, i).isEmpty() || below.isEmpty() ||
            below == PersonellHead)
            continue;
        fpSchedule->SetText(TeamColumn, i, below);
        fpSchedule->SetText(TeamColumn, i + 1, QString());
    }
}

void frmSchedule::mnuInsertPlayer_Click() {
    if (fpSchedule->ActiveCol() != TeamColumn) return;
    const int row = fpSchedule->ActiveRow();
    // The text of the week's last row is written over and lost: this is meant.
    for (int i = lastRowOfBlock(row); i >= row; --i) {
        if (fpSchedule->GetText(TeamColumn, i + 1) == PersonellHead) continue;
        const QString text = fpSchedule->GetText(TeamColumn, i);
        fpSchedule->SetText(TeamColumn, i, QString());
        fpSchedule->SetText(TeamColumn, i + 1, text);
    }
}

void frmSchedule::mnuInsertWeek_Click() {
    const int row = fpSchedule->ActiveRow();
    if (fpSchedule->GetText(DateColumn, row) != QLatin1String("Date")) {
        messageBox(QStringLiteral("Please select a row where the first column name is 'Date'"),
                   BoxIcon::Information);
        return;
    }
    fpSchedule->InsertRows(row, WeekRows);
    writeHead(row, PersonellHead);
    fpSchedule->SetCellBorder(1, row, 4, row, BorderType::Top, Black, BorderStyle::Solid);
    fpSchedule->SetCellBorder(1, row, 3, row + WeekRows, BorderType::Right, Black,
                              BorderStyle::Solid);
}
