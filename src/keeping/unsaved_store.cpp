// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/unsaved_store.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "keeping/copy_writer.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

constexpr int EntriesKept = 3;
constexpr int DaysOfEntry = 30;
constexpr int FieldsVersion = 1;

const QLatin1String FieldsFormat("lorvanite-fields");
const QLatin1String StampForm("yyyyMMdd'T'HHmmsszzz'Z'");

struct KindName {
    const char* name;
    const char* ending;
};

KindName nameOf(UnsavedKind kind) {
    switch (kind) {
        case UnsavedKind::Set:
            return {"set", ".set"};
        case UnsavedKind::Schedule:
            return {"schedule", ".scd"};
        case UnsavedKind::Chart:
            return {"chart", ".stp"};
        case UnsavedKind::TransposedChart:
            return {"transposed chart", ".stp"};
        case UnsavedKind::Song:
            return {"song", ".json"};
        case UnsavedKind::Person:
            return {"person", ".json"};
        case UnsavedKind::Note:
            return {"note", ".json"};
        case UnsavedKind::Message:
            break;
    }
    return {"message", ".json"};
}

// By the program's calendar. In files' names as UTC, which knows no hour twice.
QDateTime now() {
    const QDateTime clock = QDateTime::currentDateTime();
    return clock.addDays(clock.date().daysTo(today())).toUTC();
}

}  // namespace

UnsavedStore::UnsavedStore(const QString& programFolder)
    : m_folder(programFolder + QStringLiteral("/unsaved")) {}

QString UnsavedStore::keep(UnsavedKind kind, const QByteArray& content,
                           const QString& replaced) const {
    const KindName name = nameOf(kind);
    QString path;
    QDateTime time = now();
    do {
        path = QStringLiteral("%1/%2 %3%4")
                   .arg(m_folder, QLatin1String(name.name), time.toString(StampForm),
                        QLatin1String(name.ending));
        time = time.addMSecs(1);
    } while (QFile::exists(path));
    try {
        makePrivateFolder(m_folder);
    } catch (const RunTimeError& error) {
        throw RunTimeError(RunTimeError::PathAccess, error.description());
    }
    if (!replaceFile(path, content))
        throw RunTimeError(RunTimeError::PathAccess,
                           QStringLiteral("The file \"%1\" cannot be written.")
                               .arg(QDir::toNativeSeparators(path)));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    discard(replaced);
    const std::vector<UnsavedEntry> kept = list(kind);
    for (const UnsavedEntry& entry : all(kind)) {
        const bool stays = std::any_of(kept.begin(), kept.end(),
                                       [&](const auto& other) { return other.path == entry.path; });
        if (!stays) discard(entry.path);
    }
    return path;
}

std::vector<UnsavedEntry> UnsavedStore::list(UnsavedKind kind) const {
    std::vector<UnsavedEntry> entries = all(kind);
    std::erase_if(entries, [](const UnsavedEntry& entry) {
        return entry.time.date().daysTo(today()) > DaysOfEntry;
    });
    if (entries.size() > EntriesKept) entries.resize(EntriesKept);
    return entries;
}

std::vector<UnsavedEntry> UnsavedStore::all(UnsavedKind kind) const {
    const KindName name = nameOf(kind);
    const QString start = QLatin1String(name.name) + QLatin1Char(' ');
    std::vector<UnsavedEntry> entries;
    for (const QFileInfo& file : QDir(m_folder).entryInfoList(QDir::Files)) {
        if (!file.fileName().startsWith(start) ||
            !file.fileName().endsWith(QLatin1String(name.ending)))
            continue;
        QDateTime time =
            QDateTime::fromString(file.completeBaseName().mid(start.size()), StampForm);
        time.setTimeSpec(Qt::UTC);
        if (time.isValid()) entries.push_back({kind, time.toLocalTime(), file.filePath()});
    }
    std::sort(entries.begin(), entries.end(),
              [](const UnsavedEntry& a, const UnsavedEntry& b) { return a.time > b.time; });
    return entries;
}

std::optional<QByteArray> UnsavedStore::load(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    return bytes;
}

void UnsavedStore::discard(const QString& path) const {
    if (QFileInfo(path).path() == m_folder) QFile::remove(path);
}

QByteArray writeFields(const FormFields& fields) {
    QJsonObject values;
    for (auto field = fields.begin(); field != fields.end(); ++field)
        values.insert(field.key(), field.value());
    return QJsonDocument(QJsonObject{{QStringLiteral("format"), FieldsFormat},
                                     {QStringLiteral("version"), FieldsVersion},
                                     {QStringLiteral("fields"), values}})
        .toJson(QJsonDocument::Compact);
}

std::optional<FormFields> readFields(const QByteArray& bytes) {
    const QJsonObject file = QJsonDocument::fromJson(bytes).object();
    if (file.value(QStringLiteral("format")).toString() != FieldsFormat ||
        file.value(QStringLiteral("version")).toInt() != FieldsVersion ||
        !file.value(QStringLiteral("fields")).isObject())
        return std::nullopt;
    FormFields fields;
    const QJsonObject values = file.value(QStringLiteral("fields")).toObject();
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (!value.value().isString()) return std::nullopt;
        fields.insert(value.key(), value.value().toString());
    }
    return fields;
}
