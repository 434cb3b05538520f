// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The four lists of the note maker, and the chord made from them.
#pragma once

#include <QChar>
#include <QStringList>

#include <array>

// The last item of each list. Selecting it clears the selection of that list.
constexpr QChar ClearMark(169);

// Returns the items of the lists: root, accidental, kind and number, each ending with the clear
// mark.
std::array<QStringList, 4> chordParts();

// Joins the selected items to a chord, unchecked. Returns an empty text if nothing is selected.
QString chordOf(const std::array<QString, 4>& picks);
