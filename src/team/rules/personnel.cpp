// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/rules/personnel.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/texts.h"
#include "core/grid/sheet_grid.h"
#include "core/grid/sheet_grid_dates.h"

namespace {

// The last row that is emptied before a record is shown.
// Deliberate: behaviour 81.
constexpr int LastClearedRow = PersonRow::Phone;

// The fields, the vacation days and the exclude flag, in the order of the INSERT statement.
QStringList storedValues(const PersonRecord& person) {
    return person.fields + QStringList{person.vacation, person.isExcluded ? QStringLiteral("1")
                                                                          : QStringLiteral("0")};
}

}  // namespace

void setUpPerson(SheetGrid& person) {
    person.MaxCols(1);
    person.MaxRows(PersonRow::Last);
    person.ColHeadersShow(false);
    const char* heads[] = {"First Name", "Last Name", "Role 1", "Role 2", "Role 3",
                           " ",          "Address",   "City",   "State",  "Zip",
                           " ",          "Phone",     "Cell",   "e-Mail"};
    int row = 0;
    for (const char* head : heads) person.SetText(0, ++row, QString::fromLatin1(head));
    person.ColWidth(0, 11);
    person.ColWidth(1, 24);
    person.EditModeReplace(true);
}

void setUpVacation(SheetGrid& vacation) {
    vacation.MaxCols(VacationCols);
    vacation.MaxRows(VacationRows);
    vacation.RowHeadersShow(false);
    vacation.SetText(1, 0, QStringLiteral("Start Date"));
    for (int col = 2; col <= VacationCols; ++col) vacation.SetText(col, 0, QStringLiteral(" "));
    setUpDateCells(vacation, -1, -1);
    vacation.ColWidth(-1, 7.0);
}

void clearShownPerson(SheetGrid& person, SheetGrid& vacation) {
    person.ClearRange(1, 1, 1, LastClearedRow, true);
    vacation.ClearRange(1, 1, VacationCols, VacationRows, true);
}

void showFields(SheetGrid& person, const QStringList& fields) {
    int i = 0;
    for (const PersonField& field : PersonFields) person.SetText(1, field.row, fields[i++]);
}

void showVacation(SheetGrid& vacation, const QString& dates) {
    const QStringList list = dates.isEmpty() ? QStringList() : dates.split(QLatin1Char(':'));
    // Three rows per column; columns beyond the third are not shown.
    // Deliberate: behaviour 80.
    int k = -1;
    for (int col = 1; col <= VacationRows; ++col) {
        for (int row = 1; row <= VacationCols; ++row)
            if (++k < list.size()) vacation.SetText(col, row, formatDate(toDate(list[k])));
    }
}

QString shownVacation(const SheetGrid& vacation) {
    QStringList dates;
    for (int col = 1; col <= VacationCols; ++col) {
        for (int row = 1; row <= VacationRows; ++row) {
            const QString date = vacation.GetText(col, row);
            if (!date.isEmpty()) dates.append(date);
        }
    }
    return dates.join(QLatin1Char(':'));
}

std::optional<PersonRecord> readPerson(int id) {
    const Recordset rs =
        select(QStringLiteral("SELECT * FROM personell WHERE ID = ") + QString::number(id));
    if (rs.EOF_()) return std::nullopt;
    PersonRecord person;
    for (const PersonField& field : PersonFields) person.fields.append(rs.Fields(field.column));
    person.isExcluded = rs.Fields("excludeScheduling") == QLatin1String("1");
    person.vacation = rs.Fields("vDays");
    return person;
}

QString storedName(int id) {
    const Recordset rs = select(QStringLiteral("SELECT fName, lName FROM personell WHERE ID = ") +
                                QString::number(id));
    PersonRecord person;
    if (!rs.EOF_()) person.fields = {rs.Fields("fName"), rs.Fields("lName")};
    return person.fullName();
}

void insertPerson(const PersonRecord& person) {
    execute(QStringLiteral(
                "INSERT INTO personell (fName, lName, role, role2, role3, address, city, state, "
                "zip, phone, cell, email, vDays, excludeScheduling) VALUES ('") +
            storedValues(person).join(QStringLiteral("', '")) + QStringLiteral("')"));
}

void updatePerson(int id, const PersonRecord& person) {
    QString source = QStringLiteral("UPDATE personell SET ");
    for (int i = 0; i < int(PersonFields.size()); ++i)
        source += QLatin1String(PersonFields[size_t(i)].column) + QStringLiteral(" = '") +
                  person.fields[i] + QStringLiteral("', ");
    execute(source + QStringLiteral("vDays = '") + person.vacation +
            QStringLiteral("', excludeScheduling = '") +
            (person.isExcluded ? QLatin1Char('1') : QLatin1Char('0')) +
            QStringLiteral("' WHERE ID = ") + QString::number(id));
}

void deletePerson(int id) {
    execute(QStringLiteral("DELETE * FROM personell WHERE ID = ") + QString::number(id));
}

// Deliberate: behaviours 82 and 83.
void renameFinalised(const QString& oldName, const QString& newName) {
    execute(QStringLiteral("UPDATE schedule SET player = '") + newName +
            QStringLiteral("' WHERE player = '") + oldName + QLatin1Char('\''));
}
