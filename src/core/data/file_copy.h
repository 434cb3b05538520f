// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Copies files and folders. Paths may be written with either separator. A copy has the time of its
// original.
#pragma once

#include <QString>

// Copies a file over another, which is replaced whole or left as it was. Raises
// RunTimeError::FileNotFound if the source is missing, PathNotFound if the target's folder is
// missing, PermissionDenied if both are the same file, the source cannot be read or the target
// cannot be written.
void copyFile(const QString& source, const QString& target);

enum class FolderCopy {
    // Copies everything, hidden files too, and replaces files of the same name.
    Replace,
    // Copies only what is missing in the target. Leaves out hidden files and executables.
    FillIn,
    // Like Replace, but the target changes as a whole once everything is copied: if the copy fails
    // or the process is killed, it is as it was.
    AsOne,
};

// Copies the content of a folder with all its subfolders into another folder, which is created
// if it is missing; files that only the target has are kept.
// Links are followed, except those that lead back into a folder that is being copied. Raises
// RunTimeError::PathNotFound if the source is missing, or with Replace the folder in which the
// target lies (FillIn creates it), PermissionDenied if the target lies in the source or a file
// cannot be read or written. Files that were copied before the error stay.
void copyFolder(const QString& source, const QString& target, FolderCopy how = FolderCopy::Replace);

// Ends a copy into a folder with AsOne that was killed: the folder is as it was before or as it
// would have been after, and nothing else is left beside it.
void finishFolderCopy(const QString& target);
