// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/availability.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "team/rules/schedule_grid.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace {

constexpr int MostLinesOfDropDown = 25;

const QString PlayedQuery = QStringLiteral("SELECT title, played_date FROM played_on");

// What the offers need of a person.
struct TeamMember {
    QString vacation;
    bool canServe = false;

    // An empty date is a part of every vacation text.
    // Deliberate: behaviours 86 and 87.
    bool servesOn(const QString& date) const {
        return canServe && (vacation.isEmpty() || !vacation.contains(date));
    }
};

// One item of the drop-down lists and the person it names.
struct Offer {
    QString text;
    size_t member = 0;
};

struct Team {
    std::vector<TeamMember> members;
    std::vector<Offer> offers;  // of all members, in the order of the drop-down lists
};

// Sorts as a grid does. The second column holds the index before the sort.
void sortOffers(std::vector<Offer>& offers) {
    SheetGrid grid;
    grid.MaxCols(2);
    grid.MaxRows(int(offers.size()));
    for (size_t i = 0; i < offers.size(); ++i) {
        grid.SetText(1, int(i) + 1, offers[i].text);
        grid.SetText(2, int(i) + 1, QString::number(i));
    }
    grid.SortKey(1, 1);
    grid.SortKeyOrder(1, SortOrder::Ascending);
    grid.Sort(-1, -1, -1, -1, SortBy::Rows);
    std::vector<Offer> sorted;
    for (int row = 1; row <= grid.MaxRows(); ++row)
        sorted.push_back(offers[size_t(toLong(grid.GetText(2, row)))]);
    offers = std::move(sorted);
}

// Reads the people once and sorts their offers once: the offers of a date are a part of the sorted
// list, in the same order.
Team readTeam() {
    Team team;
    Recordset rs = select(
        QStringLiteral("SELECT fName, lName, role, role2, role3, vDays, excludeScheduling FROM "
                       "personell ORDER BY role"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString name =
            QLatin1Char(':') + rs.Fields("fName") + QLatin1Char(' ') + rs.Fields("lName");
        const QString vacation = rs.Fields("vDays");
        const bool excluded = rs.Fields("excludeScheduling") != QLatin1String("0");
        // A person whose vacation is NULL is not offered.
        team.members.push_back({vacation, !vacation.isNull() && !excluded});
        const size_t member = team.members.size() - 1;
        team.offers.push_back({rs.Fields("role") + name, member});
        for (const QString& role : {rs.Fields("role2"), rs.Fields("role3")})
            if (!role.isEmpty()) team.offers.push_back({role + name, member});
    }
    rs.Close();
    sortOffers(team.offers);
    return team;
}

bool hasRows(const QString& query) {
    const Recordset rs = select(query);
    return !rs.EOF_();
}

[[noreturn]] void failForLackOf(const QString& what) {
    throw RunTimeError(RunTimeError::NoCurrentRecord,
                       QStringLiteral("There is no current record: the database has ") + what);
}

// The number of weeks that the grid has room for, used or not.
int weeksOf(const SheetGrid& schedule) {
    return (schedule.MaxRows() - ScheduleRow::FirstDate) / WeekRows;
}

// Lists in column 1 of `offers` what is offered on a date.
void listOffers(SheetGrid& offers, const Team& team, const QString& date) {
    std::vector<bool> serves;
    for (const TeamMember& member : team.members) serves.push_back(member.servesOn(date));
    offers.MaxRows(0);
    for (const Offer& offer : team.offers)
        if (serves[offer.member]) offers.AddRow({offer.text});
}

// Gives the items of `offers` to the 15 drop-down lists of a week. The texts of the cells stay.
// Deliberate: behaviour 88.
void offerInWeek(SheetGrid& schedule, const SheetGrid& offers, int dateRow) {
    const int count = offers.DataRowCnt();
    QString list;
    for (int row = 1; row <= count; ++row) list += offers.GetText(1, row) + QLatin1Char('\t');
    schedule.BlockMode(true);
    schedule.Col(ScheduleColumn::Team);
    schedule.Col2(ScheduleColumn::Team);
    schedule.Row(dateRow);
    schedule.Row2(dateRow + ContentRows - 1);
    schedule.CellType(CellKind::Combo);
    schedule.TypeComboBoxMaxDrop(std::min(count, MostLinesOfDropDown));
    schedule.TypeComboBoxList(list);
    schedule.BlockMode(false);
}

void offerPeople(SheetGrid& schedule, SheetGrid& offers) {
    offers.MaxRows(0);
    const Team team = readTeam();
    const int weeks = weeksOf(schedule);
    if (team.members.empty() && weeks > 0)
        failForLackOf(QStringLiteral("no person yet. Enter the first one with \"Add/Update\"."));
    for (int week = 1; week <= weeks; ++week) {
        listOffers(offers, team,
                   formatDate(schedule.GetText(ScheduleColumn::Date, dateRowOf(week))));
        offerInWeek(schedule, offers, dateRowOf(week));
    }
}

void refreshSetListOf(SheetGrid& schedule, int row, const QString& date) {
    Recordset rs =
        select(QStringLiteral("SELECT played_date, title FROM played_on WHERE played_date = '") +
               date + QLatin1Char('\''));
    for (; !rs.EOF_(); rs.MoveNext())
        schedule.SetText(ScheduleColumn::Songs, row++, rs.Fields("title"));
}

}  // namespace

bool isAvailabilityKnown() {
    return hasRows(QStringLiteral("SELECT ID FROM personell")) && hasRows(PlayedQuery);
}

void updateAvailability(SheetGrid& schedule, SheetGrid& offers) {
    offerPeople(schedule, offers);
    fillSetLists(schedule, ScheduleRow::FirstDate, weeksOf(schedule));
}

// The titles have the order of the table. What no title is written over stays.
// Deliberate: behaviours 94 and 95.
void fillSetLists(SheetGrid& schedule, int firstRow, int weeks) {
    QHash<QString, QStringList> titlesOf;
    const auto dateOfWeek = [&](int week) {
        return formatDate(schedule.GetText(ScheduleColumn::Date, firstRow + week * WeekRows));
    };
    for (int week = 0; week < weeks; ++week) titlesOf.insert(dateOfWeek(week), {});
    Recordset rs = select(PlayedQuery);
    if (rs.EOF_() && weeks > 0)
        failForLackOf(QStringLiteral(
            "no song recorded as played yet. Save the first set with its date in \"Set List\"."));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString date = rs.Fields("played_date");
        const auto titles = titlesOf.find(date);
        if (titles != titlesOf.end() && !date.isNull()) titles->append(rs.Fields("title"));
    }
    rs.Close();
    for (int week = 0; week < weeks; ++week) {
        int row = firstRow + week * WeekRows;
        for (const QString& title : titlesOf.value(dateOfWeek(week)))
            schedule.SetText(ScheduleColumn::Songs, row++, title);
    }
}

void refreshSetLists(SheetGrid& schedule) {
    const int last = schedule.DataRowCnt();
    for (int row = 1; row <= last; ++row) {
        const auto date = parseDate(schedule.GetText(ScheduleColumn::Date, row));
        if (!date) continue;
        try {
            refreshSetListOf(schedule, row, formatDate(*date));
        } catch (const RunTimeError&) {
            // Deliberate: behaviour 105.
            continue;
        }
    }
}
