// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The people of the team: their records and the two grids that show one.
#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class SheetGrid;

// The rows of the person's grid, which has one column. Rows 6 and 11 are spacers.
namespace PersonRow {
enum {
    FirstName = 1,
    LastName,
    Role1,
    Role2,
    Role3,
    Address = 7,
    City,
    State,
    Zip,
    Phone = 12,
    Cell,
    Email,
    Last = Email
};
}

// A column of the table personell and the row of the person's grid that shows it.
struct PersonField {
    const char* column;
    int row;
};

// In the order of the table.
inline constexpr std::array<PersonField, 12> PersonFields{{{"fName", PersonRow::FirstName},
                                                           {"lName", PersonRow::LastName},
                                                           {"role", PersonRow::Role1},
                                                           {"role2", PersonRow::Role2},
                                                           {"role3", PersonRow::Role3},
                                                           {"address", PersonRow::Address},
                                                           {"city", PersonRow::City},
                                                           {"state", PersonRow::State},
                                                           {"zip", PersonRow::Zip},
                                                           {"phone", PersonRow::Phone},
                                                           {"cell", PersonRow::Cell},
                                                           {"email", PersonRow::Email}}};

// The size of the grid of vacation days.
constexpr int VacationCols = 3;
constexpr int VacationRows = 12;

// A record of the table, without its number.
struct PersonRecord {
    QStringList fields;  // in the order of PersonFields
    QString vacation;    // dates with ":" between them
    bool isExcluded = false;

    QString firstName() const { return fields.value(0); }
    QString firstRole() const { return fields.value(2); }
    QString fullName() const { return fields.value(0) + QLatin1Char(' ') + fields.value(1); }
};

void setUpPerson(SheetGrid& person);
void setUpVacation(SheetGrid& vacation);

// Empties both grids, except for the last two rows of the person.
void clearShownPerson(SheetGrid& person, SheetGrid& vacation);

// Shows the fields of a record, in the order of PersonFields.
void showFields(SheetGrid& person, const QStringList& fields);

// Shows vacation dates. Raises RunTimeError::TypeMismatch at one that is no date.
void showVacation(SheetGrid& vacation, const QString& dates);

// The dates of the grid, with ":" between them.
QString shownVacation(const SheetGrid& vacation);

// The record of a person; none if there is no such person.
std::optional<PersonRecord> readPerson(int id);

// The full name under which a person is stored; a blank if there is no such person.
QString storedName(int id);

// Adds a person, or replaces the record of one. Raises what a failing statement raises, as the
// functions below do.
void insertPerson(const PersonRecord& person);
void updatePerson(int id, const PersonRecord& person);

void deletePerson(int id);

// Replaces a full name in the finalised rows.
void renameFinalised(const QString& oldName, const QString& newName);
