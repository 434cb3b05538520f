// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/rules/song_tie.h"

#include "core/data/database.h"
#include "core/grid/sheet_grid.h"

namespace {

const QLatin1String SongLocation("Song Location: ");

}  // namespace

void listSongsToTie(SheetGrid& fpAttach) {
    Recordset rs = select(QStringLiteral("SELECT ID, title FROM songs ORDER BY title"));
    // Deliberate: behaviour 128.
    for (; !rs.EOF_(); rs.MoveNext()) fpAttach.AddRow({rs.Fields("ID"), rs.Fields("Title")});
    rs.Close();
}

QString songLocation(const QString& file) { return SongLocation + file; }

QString fileOfSongLocation(const QString& text) { return text.mid(SongLocation.size()); }

QString assignTo(const SheetGrid& fpAttach, int row) {
    return QStringLiteral("Assign To: ") + fpAttach.GetText(AttachColumn::Title, row);
}

bool tieToActiveSong(const SheetGrid& fpAttach, const QString& file) {
    const QString id = fpAttach.GetText(AttachColumn::ID, fpAttach.ActiveRow());
    if (id.toInt() <= 0) return false;
    // Deliberate: behaviour 125.
    execute(QStringLiteral("UPDATE songs SET fileLoco = '") + file +
            QStringLiteral("' WHERE ID = ") + id);
    return true;
}
