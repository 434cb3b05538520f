// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checks.h"
#include "core/grid/grid_difference.h"
#include "core/grid/grid_file.h"

QString checkGridFile(const QByteArray& bytes) {
    const auto read = readGridFile(bytes);
    if (!read) return {};
    const QByteArray written = writeGridFile(*read, false);
    if (written.isEmpty()) return QStringLiteral("what was read cannot be written");
    const auto again = readGridFile(written);
    if (!again) return QStringLiteral("what was written cannot be read");
    const QString difference = differenceOf(*read, *again);
    if (!difference.isEmpty()) return difference;
    if (writeGridFile(*again, false) != written)
        return QStringLiteral("the second writing differs");
    return {};
}
