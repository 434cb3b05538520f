// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The links of songs to charts and sound files, and their mending.
#pragma once

#include "keeping/file_links.h"

// A link and the file that it shall lead to.
struct MendedLink {
    int songId = 0;
    LinkedFile file = LinkedFile::Chart;
    QString path;
};

// The broken links of all songs, by title. Raises what a failing statement raises.
std::vector<BrokenLink> linksToMend();

// Whether the database can hold a path: not with an apostrophe.
bool isPathToStore(const QString& path);

// Sets a copy aside and stores all the links in one transaction. Raises what a failing statement or
// setAside() raises; nothing has changed then.
void mendLinks(const std::vector<MendedLink>& links);
