// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The mail window's two lists: the team and the chosen recipients.
#pragma once

#include <QString>

class Recordset;
class SheetGrid;

// The column of either list.
namespace RecipientColumn {
enum { Name = 1 };
}

// Appends everyone with a mail address to the team list. Raises what a failing statement raises.
void listTeam(SheetGrid& team);

void addRecipient(SheetGrid& recipients, const QString& name);
void removeRecipient(SheetGrid& recipients, int row);

// Makes everyone in the team list a recipient, once, in the list's order.
void chooseWholeTeam(SheetGrid& recipients, const SheetGrid& team);
void clearRecipients(SheetGrid& recipients);

// Opens the people with their names and addresses. Raises what a failing statement raises.
[[nodiscard]] Recordset selectPeople();

// Addresses and names, each list joined by semicolons and in the same order. An address may be
// empty.
struct MailingList {
    int people = 0;
    QString addresses;
    QString names;
};

// Looks up each recipient's address among the people; everyone of that name counts, whatever the
// case. Leaves out recipients that are not found. Moves through `people` from its first row.
MailingList mailingListOf(const SheetGrid& recipients, Recordset& people);
