// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/recipient_lists.h"

#include "core/data/database.h"
#include "core/grid/sheet_grid.h"

namespace {

QString personName(const Recordset& person) {
    return person.Fields("fName") + QLatin1Char(' ') + person.Fields("lName");
}

}  // namespace

Recordset selectPeople() {
    return select(QStringLiteral("SELECT fName, lName, email FROM personell"));
}

void listTeam(SheetGrid& team) {
    Recordset people = selectPeople();
    for (; !people.EOF_(); people.MoveNext())
        if (!people.Fields("email").isEmpty()) addRecipient(team, personName(people));
    people.Close();
}

void addRecipient(SheetGrid& recipients, const QString& name) { recipients.AddRow({name}); }

void removeRecipient(SheetGrid& recipients, int row) {
    recipients.DeleteRows(row, 1);
    recipients.MaxRows(recipients.MaxRows() - 1);
}

void chooseWholeTeam(SheetGrid& recipients, const SheetGrid& team) {
    recipients.MaxRows(team.MaxRows());
    for (int row = 1; row <= team.MaxRows(); ++row)
        recipients.SetText(RecipientColumn::Name, row, team.GetText(RecipientColumn::Name, row));
}

void clearRecipients(SheetGrid& recipients) {
    recipients.ClearRange(-1, -1, -1, -1, true);
    recipients.MaxRows(0);
}

MailingList mailingListOf(const SheetGrid& recipients, Recordset& people) {
    MailingList list;
    const bool isAnyone = !people.EOF_();
    for (int row = 1; isAnyone && row <= recipients.MaxRows(); ++row) {
        const QString wanted = recipients.GetText(RecipientColumn::Name, row);
        // Deliberate: behaviours 161 and 162.
        for (; !people.EOF_(); people.MoveNext()) {
            const QString name = personName(people);
            if (name.compare(wanted, Qt::CaseInsensitive) != 0) continue;
            ++list.people;
            list.addresses += people.Fields("email") + QLatin1Char(';');
            list.names += name + QLatin1Char(';');
        }
        people.MoveFirst();
    }
    list.addresses.chop(1);
    list.names.chop(1);
    return list;
}
