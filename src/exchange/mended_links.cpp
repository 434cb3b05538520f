// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/mended_links.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/texts.h"
#include "core/data/transaction.h"
#include "keeping/copies.h"

using namespace Qt::Literals::StringLiterals;

std::vector<BrokenLink> linksToMend() {
    std::vector<SongFiles> songs;
    Recordset rs = select(u"SELECT ID, title, fileLoco, soundFile FROM songs ORDER BY title"_s);
    for (; !rs.EOF_(); rs.MoveNext())
        songs.push_back({toLong(rs.Fields("ID")), rs.Fields("title"), rs.Fields("fileLoco"),
                         rs.Fields("soundFile")});
    rs.Close();
    return brokenLinks(songs, programFolder());
}

bool isPathToStore(const QString& path) { return !path.contains(u'\''); }

void mendLinks(const std::vector<MendedLink>& links) {
    if (links.empty()) return;
    setAside(programFolder(), today(), SetAsideReason::BeforeMend);
    Transaction transaction(dbConn);
    for (const MendedLink& link : links)
        execute(u"UPDATE songs SET %1 = '"_s.arg(link.file == LinkedFile::Chart ? "fileLoco"_L1
                                                                                : "soundFile"_L1) +
                link.path + u"' WHERE ID = "_s + QString::number(link.songId));
    transaction.commit();
}
