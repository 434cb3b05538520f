// Who can serve on which date, and what is sung on it.
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "team/frm_schedule.h"
#include "team/rules/schedule_rows.h"

#include <QHash>

namespace {

constexpr int MostLinesOfDrop = 25;

// A person as the offers need one.
struct Person {
    QString vacation;
    bool canServe = false;

    // A date is looked for as a piece of the vacation text, so that an empty date takes out all who
    // have a vacation day: this is meant.
    bool servesOn(const QString& date) const {
        return canServe && (vacation.isEmpty() || !vacation.contains(date));
    }
};

// One line of the drop-downs and the person it names.
struct Offer {
    QString text;
    size_t person = 0;
};

struct Team {
    std::vector<Person> people;
    std::vector<Offer> offers;  // of all people, in the order of the drop-downs
};

// The grid sorts rows; the second column keeps each line's place.
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

// Everyone is read once, and what they offer sorted once: leaving lines out of a sorted list keeps
// its order.
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
        // A row without any text for the vacation is no one's to offer.
        team.people.push_back({vacation, !vacation.isNull() && !excluded});
        const size_t person = team.people.size() - 1;
        team.offers.push_back({rs.Fields("role") + name, person});
        for (const QString& role : {rs.Fields("role2"), rs.Fields("role3")})
            if (!role.isEmpty()) team.offers.push_back({role + name, person});
    }
    rs.Close();
    sortOffers(team.offers);
    return team;
}

bool hasRows(const QString& query) {
    Recordset rs = select(query);
    return !rs.EOF_();
}

[[noreturn]] void failForLackOf(const QString& what) {
    throw RunTimeError(RunTimeError::NoCurrentRecord,
                       QStringLiteral("There is no current record: the database has ") + what);
}

const QString PlayedQuery = QStringLiteral("SELECT title, played_date FROM played_on");

}  // namespace

bool frmSchedule::isAvailabilityKnown() {
    return hasRows(QStringLiteral("SELECT ID FROM personell")) && hasRows(PlayedQuery);
}

int frmSchedule::weeksOfGrid() const { return (fpSchedule->MaxRows() - FirstDateRow) / WeekRows; }

// Every week the grid has room for, on view or not.
void frmSchedule::offerPeople() {
    fpTemp.MaxRows(0);
    const Team team = readTeam();
    const int weeks = weeksOfGrid();
    if (team.people.empty() && weeks > 0)
        failForLackOf(QStringLiteral("no person yet. Enter the first one with \"Add/Update\"."));
    for (int week = 0; week < weeks; ++week) {
        const int dateRow = FirstDateRow + week * WeekRows;
        const QString date = formatDate(fpSchedule->GetText(DateColumn, dateRow));
        std::vector<bool> serves;
        for (const Person& person : team.people) serves.push_back(person.servesOn(date));
        fpTemp.MaxRows(0);
        for (const Offer& offer : team.offers) {
            if (!serves[offer.person]) continue;
            fpTemp.MaxRows(fpTemp.MaxRows() + 1);
            fpTemp.SetText(1, fpTemp.MaxRows(), offer.text);
        }
        offerInWeek(dateRow);
    }
}

// Gives the lines of fpTemp to the 15 drop-downs of a week; their texts stay.
void frmSchedule::offerInWeek(int dateRow) {
    const int count = fpTemp.DataRowCnt();
    QString list;
    for (int row = 1; row <= count; ++row) list += fpTemp.GetText(1, row) + QLatin1Char('\t');
    fpSchedule->BlockMode(true);
    fpSchedule->Col(TeamColumn);
    fpSchedule->Col2(TeamColumn);
    fpSchedule->Row(dateRow);
    fpSchedule->Row2(dateRow + ContentRows - 1);
    fpSchedule->CellType(CellKind::Combo);
    fpSchedule->TypeComboBoxMaxDrop(std::min(count, MostLinesOfDrop));
    fpSchedule->TypeComboBoxList(list);
    fpSchedule->BlockMode(false);
}

// Writes the recorded titles of each week's date into column 3, from its date row on, in the order
// of the table. A sixteenth title stands on the next week's head, and what no title falls on stays.
void frmSchedule::fillSetLists(int firstRow, int weeks) {
    QHash<QString, QStringList> titlesOf;
    const auto dateOfWeek = [&](int week) {
        return formatDate(fpSchedule->GetText(DateColumn, firstRow + week * WeekRows));
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
            fpSchedule->SetText(SongsColumn, row++, title);
    }
}

void frmSchedule::refreshAvailability() {
    offerPeople();
    fillSetLists(FirstDateRow, weeksOfGrid());
}

void frmSchedule::cmdRefresh_Click() { refreshAvailability(); }
