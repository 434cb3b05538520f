// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The roster: a list of the whole team for paper.
#pragma once

class SheetGrid;

namespace RosterColumn {
enum {
    FirstName = 1,
    LastName,
    Address,
    City,
    State,
    Zip,
    Phone,
    Cell,
    Email,
    Role1,
    Role2,
    Role3,
    VacationDays,
    Last = VacationDays
};
}

// Gives a grid the columns of the roster and no rows.
void setUpRoster(SheetGrid& roster);

// Adds a row with the record of a person. Raises RunTimeError::NoCurrentRecord if there is no such
// person.
void addToRoster(SheetGrid& roster, int id);

// Sets all print settings of the roster.
void setRosterPrint(SheetGrid& roster);
