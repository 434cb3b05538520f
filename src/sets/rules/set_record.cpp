// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/rules/set_record.h"

#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "sets/rules/set_grid.h"

#include <algorithm>

namespace {

// Deliberate: behaviour 66.
Titles titlesOf(const SheetGrid& set) {
    Titles titles;
    size_t n = 0;
    for (int row = SetRow::FirstTitle; row <= SetRow::LastRecorded; ++row) {
        const QString title = set.GetText(SetColumn::Title, row);
        if (title.isEmpty()) continue;
        if (n == titles.size())
            throw RunTimeError(RunTimeError::SubscriptOutOfRange,
                               QStringLiteral("Subscript out of range: a set has %1 titles at "
                                              "most, and \"%2\" in row %3 is one more. Remove a "
                                              "title from rows %4 to %5.")
                                   .arg(titles.size())
                                   .arg(title)
                                   .arg(row)
                                   .arg(int(SetRow::FirstTitle))
                                   .arg(int(SetRow::LastRecorded)));
        titles[n++] = title;
    }
    return titles;
}

// Deliberate: behaviour 67.
Titles withoutDuplicates(const Titles& titles) {
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
    for (int row = SetRow::FirstTitle; row <= SetRow::LastRecorded; ++row) {
        const QString title = set.GetText(SetColumn::Title, row);
        if (title.isEmpty()) continue;
        Recordset rs = select(QStringLiteral("SELECT title FROM songs WHERE title = '") + title +
                              QStringLiteral("'"));
        found = !rs.EOF_() || found;
        rs.Close();
    }
    return found;
}

Titles titlesToRecord(const SheetGrid& set) { return withoutDuplicates(titlesOf(set)); }

int countRecorded(const Titles& titles, const QString& date) {
    int already = 0;
    Recordset rs = select(QStringLiteral("SELECT * FROM played_on"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        if (rs.Fields("played_date") != date) continue;
        const QString title = rs.Fields("Title");
        already += static_cast<int>(std::count(titles.begin(), titles.end(), title));
    }
    rs.Close();
    return already;
}

// Deliberate: behaviour 69.
void recordPlayed(const Titles& titles, const QString& date) {
    execute(QStringLiteral("DELETE * FROM played_on WHERE played_date = '") + date +
            QStringLiteral("'"));
    // Deliberate: behaviour 70. It is kept from one title to the next.
    QString id;
    for (const QString& title : titles) {
        if (title.isEmpty()) continue;
        Recordset rs = select(QStringLiteral("SELECT ID FROM songs WHERE title = '") + title +
                              QStringLiteral("'"));
        if (!rs.EOF_()) id = rs.Fields("ID");
        rs.Close();
        if (id.isEmpty()) continue;
        execute(QStringLiteral("INSERT INTO played_on (title, played_date, songID) VALUES ('") +
                title + QStringLiteral("', '") + date + QStringLiteral("', ") + id +
                QStringLiteral(")"));
    }
}
