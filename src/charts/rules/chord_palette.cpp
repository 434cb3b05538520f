// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/chord_palette.h"

std::array<QStringList, 4> chordParts() {
    std::array<QStringList, 4> parts = {
        QStringList{"C", "D", "E", "F", "G", "A", "B"}, QStringList{"#", "b"},
        QStringList{"Maj", "m", "sus", "dim", "aug"}, QStringList{"2", "4", "5", "7", "9", "11"}};
    for (QStringList& items : parts) items.append(ClearMark);
    return parts;
}

QString chordOf(const std::array<QString, 4>& picks) {
    QString chord;
    for (const QString& pick : picks) chord += pick;
    return chord;
}
