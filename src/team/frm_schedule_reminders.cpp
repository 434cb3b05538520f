// What the special music writes into the schedule of the start-up.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/texts.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

namespace {

// Weeks between two dates as a calendar counts them: the Sundays after `from`, up to `to`.
qint64 weeksBetween(const QDate& from, const QDate& to) {
    const auto week = [](const QDate& date) { return (date.toJulianDay() + 1) / 7; };
    return std::abs(week(to) - week(from));
}

}  // namespace

void frmSchedule::writeReminders() {
    for (int row = FirstDateRow; row <= fpSchedule->MaxRows(); row += WeekRows)
        if (const auto date = parseDate(fpSchedule->GetText(DateColumn, row)))
            writeRemindersOf(row, *date);
}

// A line lands in the date row whatever stands there, so that of two items the later one wins, and
// a note typed there is lost: this is meant.
void frmSchedule::writeRemindersOf(int row, const QDate& date) {
    Recordset rs = select(QStringLiteral("SELECT * FROM special_music"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        if (rs.Fields("remind_schedule") != QLatin1String("Yes")) continue;
        const QDate playDate = toDate(rs.Fields("play_date"));
        if (date > playDate) continue;
        const QString song = rs.Fields("song_name");
        const auto weeks = double(weeksBetween(date, playDate));
        if (weeks <= toNumber(rs.Fields("remind_interval")) && weeks > 0)
            fpSchedule->SetText(NotesColumn, row, QStringLiteral("Rehearse ") + song);
        else if (date == playDate)
            fpSchedule->SetText(NotesColumn, row, QStringLiteral("Perform ") + song);
    }
    rs.Close();
}
