// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The labels of verses, and the short names by which a verse order calls them.
#pragma once

#include "exchange/rules/song.h"

#include <optional>

struct VerseName {
    VerseKind kind = VerseKind::Verse;
    // "v1", "c", "b2a". A verse without number is "v".
    QString name;
};

// What a label such as "Verse 1", "CHORUS:", "[Pre-Chorus 2]", "Refrain (2x)" or "Strophe 3" calls.
// Nothing for other texts. `shortForms` lets "V1", "C" and "3" be labels too.
std::optional<VerseName> verseName(const QString& label, bool shortForms = false);

// The label without brackets, colon and blanks around it.
QString bareLabel(const QString& label);

// The label of a name: "v1a" is "Verse 1a", "c" is "Chorus". Other names come back as they stand.
QString labelOfName(const QString& name);

// The letter by which names of a kind begin.
QChar letterOf(VerseKind kind);

// Makes the names of a song's verses unique and fills in those that are missing. Translations of a
// verse keep its name.
void nameVerses(Song& song);

// Sets the verse order of a song whose verses are named. An entry is a name, a short form or a
// label; one that no verse has is told in `unread`.
void setVerseOrder(Song& song, const QStringList& entries);
