// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where the program keeps its files, and paths as texts. Paths may be written with either
// separator.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;

// The program's own folder, without a trailing separator. It is the folder of the executable, or
// the user's data folder if the executable's folder cannot be written or holds a file ".installed".
// The first call fills it: what is missing in it is copied from the delivered tree, which lies in
// the folder "delivered" beside the executable or beside the executable itself, and the delivered
// files of its folder config are updated. Raises RunTimeError::PermissionDenied if something cannot
// be copied; the next call tries again.
QString programFolder();

// The delivered files of config that programFolder could not update. They stay as they were, and
// the program can work with them.
QStringList filesNotUpdated();

// The executable's folder, if the program keeps its files elsewhere because that folder cannot be
// written; empty otherwise, and for an installed program.
QString readOnlyFolder();

// Whether the folder that programFolder chose cannot be written either.
bool isProgramFolderReadOnly();

// Makes another folder the program's.
void setProgramFolder(const QString& folder);

// The path with the separators of this platform. A file that exists under the given name keeps it.
QString resolvedPath(const QString& path);

// The part of a path after its last separator.
QString fileNameOf(const QString& path);

// The part of a path after its last separator, without the extension.
QString nameOfFile(const QString& path);

// Makes a file name of a text: replaces what separates folders or is reserved on any platform by
// "_", removes the dots at the start, and shortens the name to 200 bytes of UTF-8. A name that
// Windows reserves for a device ("NUL") gets a "_" before it. Empty if nothing remains.
QString safeFileName(const QString& text);

// Whether a path is that of a folder or of anything in it. Both have "/" as separator; the folder
// may end with it, as a root does.
bool liesIn(const QString& path, const QString& folder);

// Replaces a file whole: after the call it holds all of `content`, or what it held before. Returns
// false if it could not be written.
[[nodiscard]] bool replaceFile(const QString& path, const QByteArray& content);

// The same for a content that `write` writes piece by piece. If it returns false, the file keeps
// what it held.
[[nodiscard]] bool replaceFile(const QString& path,
                               const std::function<bool(QIODevice& file)>& write);

// Like replaceFile, for a path whose backslashes are part of names.
[[nodiscard]] bool replacePlainFile(const QString& path, const QByteArray& content);
