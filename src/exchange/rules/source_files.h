// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The files that the user chose to bring in, and what they hold.
#pragma once

#include "exchange/rules/reader.h"

#include <QStringList>

#include <functional>

// A file and its content. The content has a reason where the file could not be read.
struct ImportSource {
    // The path below the chosen folder, or the name of a file that was chosen itself.
    QString file;
    ExchangeContent content;
};

// Called with the number of files done and of all files; false ends the work.
using FilesRead = std::function<bool(int done, int all)>;

// Reads files, and folders with everything below them, each file once. Hidden files, links that
// lead out of a chosen folder, and what is no file (a device, a pipe) are left out of folders.
// Returns nothing if the work was ended. The order is that of the paths, folders sorted by name.
QList<ImportSource> readSources(const QStringList& paths, const FilesRead& progress = {});
