// Copies of files and folders. Paths may be written with either separator.
#pragma once

#include <QString>

// Copies a file over another, which is replaced whole or left as it was. Raises 53 where the source
// is missing, 76 where the target's folder is, 70 where both are the same file or where the
// source cannot be read or the target not written.
void copyFile(const QString& source, const QString& target);

// Copies all that a folder holds, folders in it too, into another folder, which is made where it
// is missing. Files of the same name are overwritten, other files stay. Raises 76 where the
// source or the target's own folder is missing, 70 where the target lies in the source or a file
// cannot be read or written; what was copied before stays.
void copyFolder(const QString& source, const QString& target);
