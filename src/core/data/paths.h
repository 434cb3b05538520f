// Where the program's files are. Paths may be written with either separator.
#pragma once

#include <QString>

// The program's own folder, without a trailing separator. It is the executable's folder, or the
// user's data folder where the executable's cannot be written or holds a file ".installed". What
// is missing in it is filled from the delivered tree, which lies beside the executable or there in
// the folder "delivered"; the delivered files of config are kept up to date.
QString programFolder();

// Makes another folder the program's.
void setProgramFolder(const QString& folder);

// Copies a folder with all below it, without executables and hidden files; each file comes whole
// or not at all. Files that stand at the target already are kept.
void copyTree(const QString& from, const QString& to);

// The path with this platform's separators. A file that exists under the name as given keeps it.
QString resolvedPath(const QString& path);

// The name behind the last separator of either kind.
QString fileNameOf(const QString& path);

// The path up to that separator, without it; empty where there is none.
QString folderOf(const QString& path);

// Makes a file name of a text: replaces what separates folders or is reserved on any platform by
// "_", removes the dots at the start, and shortens the name to 200 bytes of UTF-8. A name that
// Windows reserves for a device ("NUL") gets a "_" before it. Empty if nothing remains.
QString safeFileName(const QString& text);

// Whether a path is that of a folder or of anything below it. Both have "/" as separator; the
// folder may end with it, as a root does.
bool liesIn(const QString& path, const QString& folder);

// Replaces a file whole: after the call the file holds all of `content`, or what it held before.
// False where it could not be written.
bool replaceFile(const QString& path, const QByteArray& content);
