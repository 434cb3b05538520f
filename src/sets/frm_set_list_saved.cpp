// Saving the set, recording what was played, loading a saved set.
#include "core/database.h"
#include "core/frm_mdi.h"
#include "core/paths.h"
#include "core/run_time_error.h"
#include "platform/message_box.h"
#include "sets/frm_set_list.h"
#include "sets/set_grid.h"

namespace {

constexpr int FirstTitleRow = 2;
constexpr int LastTitleRow = 25;
constexpr int MostTitles = 23;

using Titles = std::array<QString, MostTitles>;

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

}  // namespace

bool frmSetList::holdsKnownTitle() {
    bool found = false;
    Recordset rs;
    for (int row = FirstTitleRow; row <= LastTitleRow; ++row) {
        const QString title = fpSet->GetText(2, row);
        if (title.isEmpty()) continue;
        rs.Open(
            QStringLiteral("SELECT title FROM songs WHERE title = '") + title + QStringLiteral("'"),
            dbConn, CursorType::Dynamic, LockType::ReadOnly);
        found = !rs.EOF_() || found;
        rs.Close();
    }
    return found;
}

void frmSetList::saveSet() {
    takeFocusOff();
    const QString date = fpSet->GetText(2, 1);
    if (date.isEmpty()) {
        messageBox(QStringLiteral("Please select a date for this set."));
        return;
    }
    if (!holdsKnownTitle()) {
        messageBox(QStringLiteral("Please select at least one song before saving the set list."));
        return;
    }
    const Titles titles = withoutDoubles(titlesOf(*fpSet));
    // The bound is the list's size, so the question comes in nearly every case: this is meant.
    if (countRecorded(titles, date) < MostTitles &&
        messageBox(QStringLiteral("Do you wish to set the Last Played field \r"
                                  "for the selected songs to the date you've selected?"),
                   BoxIcon::None, QStringLiteral("Lorvanite"), BoxButtons::YesNo) == BoxAnswer::Yes)
        recordPlayed(titles, date);
    CommonDialog& dialog = frmMDI::instance().CommonDlg;
    dialog.Flags = CommonDialog::OverwritePrompt;
    dialog.Filter = QStringLiteral("SET Files|*.set");
    dialog.InitDir = programFolder() + QStringLiteral("\\saved sets");
    dialog.FileName = defaultSetName(date);
    if (dialog.chosen(&CommonDialog::ShowSave)) fpSet->SaveToFile(dialog.FileName, false);
}

void frmSetList::cmdSaveSetList_Click() { saveSet(); }

void frmSetList::loadSet() {
    takeFocusOff();
    CommonDialog& dialog = frmMDI::instance().CommonDlg;
    dialog.Filter = QStringLiteral("SET Files|*.set");
    dialog.InitDir = programFolder() + QStringLiteral("\\saved sets\\");
    dialog.FileName = QString();
    if (!dialog.chosen(&CommonDialog::ShowOpen)) return;
    fpSet->LoadFromFile(dialog.FileName);
    setUpDateCell(*fpSet);
    setUpSetWidths(*fpSet);
}

void frmSetList::Command13_Click() { loadSet(); }
