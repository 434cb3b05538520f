// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Charts and sound files of songs that are no longer where the database says.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// A song with the files that are tied to it, as the table "songs" holds them. A path may be written
// with either separator and with a drive letter of another computer; an empty one is no link.
struct SongFiles {
    int id = 0;
    QString title;
    QString fileLoco;   // the chart
    QString soundFile;  // what the player plays
};

enum class LinkedFile { Chart, Sound };

// A link to a file that is not there.
struct BrokenLink {
    int songId = 0;
    QString title;
    LinkedFile file = LinkedFile::Chart;
    QString path;  // as the database holds it
    // Whole paths with this platform's separators of the files that can be meant: none, the one
    // that it is, or several for the user to choose from.
    QStringList candidates;
};

// The broken links of the songs, in their order, a song's chart before its sound. A candidate is
// the file that has the longest end of the old path below `folder`, the program's: after a move of
// "D:\Lorvanite" this is "sheetmusic\hymns\grace.stp". Without one, every file of the same name
// below the folder is. Names are compared without case. The folders "copies", "unsaved" and
// "delivered" are not searched.
std::vector<BrokenLink> brokenLinks(const std::vector<SongFiles>& songs, const QString& folder);
