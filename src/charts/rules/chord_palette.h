// The four lists of the note maker, and the chord that their picks make.
#pragma once

#include <QChar>
#include <QStringList>

#include <array>

// The last item of each list: picking it takes that list's pick off.
constexpr QChar ClearMark(169);

// The items of the lists: root, accidental, kind and number, each with the clear mark at its end.
std::array<QStringList, 4> chordParts();

// The chord of what is picked in the lists, an empty text where nothing is. Nothing is checked.
QString chordOf(const std::array<QString, 4>& picks);
