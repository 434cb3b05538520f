// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work that was not saved, in the folder "unsaved".
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>

#include <optional>
#include <vector>

// What a window works on.
enum class UnsavedKind { Set, Schedule, Chart, TransposedChart, Song, Person, Note, Message };

// Unsaved work as it was at a time.
struct UnsavedEntry {
    UnsavedKind kind = UnsavedKind::Set;
    QDateTime time;  // local
    QString path;    // a grid's file for SheetGrid::LoadFromFile, or a file of fields
};

// Keeps unsaved work in files that only the owner can read, "unsaved/set 20261121T190305123Z.set":
// kind and time, the ending that the grid's own files have, ".json" for fields. Of each kind the
// three newest stay, for 30 days. Can be used in any thread, by one at a time.
class UnsavedStore {
public:
    explicit UnsavedStore(const QString& programFolder);

    // Writes an entry with the time of now and removes `replaced`, an earlier state of the same
    // work, unless it is empty. Entries that are too many or too old are removed. Returns the
    // entry's path. Raises 75 if it cannot be written; `replaced` stays then.
    QString keep(UnsavedKind kind, const QByteArray& content, const QString& replaced = {}) const;

    // The entries of a kind that stay, the newest first.
    std::vector<UnsavedEntry> list(UnsavedKind kind) const;

    // The bytes of an entry's file. Nothing if it cannot be read.
    static std::optional<QByteArray> load(const QString& path);

    // Removes an entry's file. A path outside the folder, or none, changes nothing.
    void discard(const QString& path) const;

private:
    std::vector<UnsavedEntry> all(UnsavedKind kind) const;

    QString m_folder;
};

// A form's fields by their names, and the bytes that they are kept as. Reading gives nothing if the
// bytes are damaged or of a later version.
using FormFields = QMap<QString, QString>;
QByteArray writeFields(const FormFields& fields);
std::optional<FormFields> readFields(const QByteArray& bytes);
