#include "sets/set_record.h"

#include "core/database.h"
#include "core/run_time_error.h"
#include "core/sheet_grid.h"

#include <algorithm>

namespace {

constexpr int FirstTitleRow = 2;
constexpr int LastTitleRow = 25;

// A 24th title has no place, and the command ends there: this is meant.
Titles titlesOf(const SheetGrid& set) {
    Titles titles;
    size_t n = 0;
    for (int row = FirstTitleRow; row <= LastTitleRow; ++row) {
        const QString title = set.GetText(2, row);
        if (title.isEmpty()) continue;
        if (n == titles.size()) throw RunTimeError(RunTimeError::SubscriptOutOfRange);
        titles[n++] = title;
    }
    return titles;
}

// A title that is a piece of what stands above it counts as a double: this is meant.
Titles withoutDoubles(const Titles& titles) {
    Titles uniqueTitles;
    size_t m = 0;
    QString seen;
    for (const QString& title : titles) {
        if (seen.contains(title)) continue;
        seen += title + QLatin1Char('\r');
        uniqueTitles[m++] = title;
    }
    return uniqueTitles;
}

}  // namespace

bool holdsKnownTitle(const SheetGrid& set) {
    bool found = false;
    Recordset rs;
    for (int row = FirstTitleRow; row <= LastTitleRow; ++row) {
        const QString title = set.GetText(2, row);
        if (title.isEmpty()) continue;
        rs.Open(
            QStringLiteral("SELECT title FROM songs WHERE title = '") + title + QStringLiteral("'"),
            dbConn, CursorType::Dynamic, LockType::ReadOnly);
        found = !rs.EOF_() || found;
        rs.Close();
    }
    return found;
}

Titles titlesToRecord(const SheetGrid& set) { return withoutDoubles(titlesOf(set)); }

int countRecorded(const Titles& titles, const QString& date) {
    int already = 0;
    Recordset rs;
    rs.Open(QStringLiteral("SELECT * FROM played_on"), dbConn, CursorType::Dynamic,
            LockType::ReadOnly);
    for (; !rs.EOF_(); rs.MoveNext()) {
        if (rs.Fields("played_date") != date) continue;
        const QString title = rs.Fields("Title");
        already += static_cast<int>(std::count(titles.begin(), titles.end(), title));
    }
    rs.Close();
    return already;
}

// The date belongs to one set: its old record goes whole.
void recordPlayed(const Titles& titles, const QString& date) {
    Recordset rs;
    rs.Open(QStringLiteral("DELETE * FROM played_on WHERE played_date = '") + date +
                QStringLiteral("'"),
            dbConn, CursorType::Dynamic, LockType::Optimistic);
    // Carried from one title to the next: a typed title that is no song's is recorded under the
    // song before it. This is meant.
    QString id;
    for (const QString& title : titles) {
        if (title.isEmpty()) continue;
        rs.Open(
            QStringLiteral("SELECT ID FROM songs WHERE title = '") + title + QStringLiteral("'"),
            dbConn, CursorType::Dynamic, LockType::ReadOnly);
        if (!rs.EOF_()) id = rs.Fields("ID");
        rs.Close();
        if (id.isEmpty()) continue;
        rs.Open(QStringLiteral("INSERT INTO played_on (title, played_date, songID) VALUES ('") +
                    title + QStringLiteral("', '") + date + QStringLiteral("', ") + id +
                    QStringLiteral(")"),
                dbConn, CursorType::Dynamic, LockType::Optimistic);
    }
}
