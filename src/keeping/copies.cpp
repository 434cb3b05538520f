// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/copies.h"

#include "core/data/run_time_error.h"
#include "keeping/copy_writer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <set>
#include <tuple>
#include <vector>

namespace {

constexpr int DaysKept = 10;
constexpr int MonthsKept = 12;
constexpr size_t SetAsideKept = 10;
constexpr int WaitForOther = 60'000;  // milliseconds
constexpr int WaitPiece = 100;

// After this time a lock of another computer counts as left behind.
constexpr std::chrono::milliseconds StaleTime = std::chrono::hours(1);

const QLatin1String Unfinished(".unfinished");
const QLatin1String Removed(".removed");

struct CopyFolder {
    QString path;
    QDate day;
    bool ofDay = false;  // false for one that was set aside
    QDateTime made;
};

QString copiesFolder(const QString& folder) { return folder + QStringLiteral("/copies"); }

// The complete copies, the newest first.
std::vector<CopyFolder> complete(const QString& folder) {
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4}-\\d{2}-\\d{2})( before [a-z]+( \\(\\d+\\))?)?$"));
    std::vector<CopyFolder> copies;
    const auto entries = QDir(copiesFolder(folder)).entryInfoList(QDir::Dirs);
    for (const QFileInfo& entry : entries) {
        const QRegularExpressionMatch match = form.match(entry.fileName());
        const QDate day = QDate::fromString(match.captured(1), Qt::ISODate);
        if (day.isValid())
            copies.push_back(
                {entry.filePath(), day, match.capturedLength(2) == 0, entry.lastModified()});
    }
    std::stable_sort(copies.begin(), copies.end(), [](const CopyFolder& a, const CopyFolder& b) {
        return std::tie(a.day, a.made) > std::tie(b.day, b.made);
    });
    return copies;
}

// Held while copies are made or removed.
class CopiesLock {
public:
    explicit CopiesLock(const QString& folder)
        : m_folder(copiesFolder(folder)), m_lock(m_folder + QStringLiteral("/.lock")) {
        m_lock.setStaleLockTime(int(StaleTime.count()));
    }

    // False if `step` has ended the work. Raises like makeDailyCopy.
    bool take(const CopyStep& step) {
        makePrivateFolder(m_folder);
        const QDeadlineTimer deadline(WaitForOther);
        while (!m_lock.tryLock(WaitPiece)) {
            if (m_lock.error() != QLockFile::LockFailedError)
                failCopy(QStringLiteral("The folder \"%1\" cannot be written."), m_folder);
            if (step && !step(m_folder)) return false;
            if (deadline.hasExpired())
                throw RunTimeError(RunTimeError::PathAccess,
                                   QStringLiteral("Another copy is being made."));
        }
        return true;
    }

private:
    QString m_folder;
    QLockFile m_lock;
};

// Under another name first: a copy that is half removed must not be taken for a whole one.
void removeCopy(const QString& path) {
    const QString doomed = QFileInfo(path).path() + QLatin1Char('/') + Removed;
    if (QDir().rename(path, doomed)) QDir(doomed).removeRecursively();
}

void removeLeftovers(const QString& folder) {
    for (const QLatin1String name : {Unfinished, Removed})
        QDir(copiesFolder(folder) + QLatin1Char('/') + name).removeRecursively();
}

void removeOldCopies(const QString& folder, const QDate& today) {
    std::vector<CopyFolder> days = complete(folder);
    std::erase_if(days, [](const CopyFolder& copy) { return !copy.ofDay; });
    std::set<QDate> kept{today};
    std::vector<QDate> firstOfMonth;
    for (size_t i = 0; i < days.size(); ++i) {
        const QDate day = days[i].day;
        if (i < DaysKept) kept.insert(day);
        const bool isFirst = i + 1 == days.size() || days[i + 1].day.month() != day.month() ||
                             days[i + 1].day.year() != day.year();
        if (isFirst && firstOfMonth.size() < MonthsKept) firstOfMonth.push_back(day);
    }
    kept.insert(firstOfMonth.begin(), firstOfMonth.end());
    for (const CopyFolder& copy : days)
        if (!kept.contains(copy.day)) removeCopy(copy.path);
}

void removeOldSetAside(const QString& folder) {
    std::vector<CopyFolder> copies = complete(folder);
    std::erase_if(copies, [](const CopyFolder& copy) { return copy.ofDay; });
    for (size_t i = SetAsideKept; i < copies.size(); ++i) removeCopy(copies[i].path);
}

// Makes the copy beside its place and puts it there. False if `step` has ended it.
bool makeCopy(const QString& folder, const QString& name, const CopyStep& step) {
    const QString copies = copiesFolder(folder);
    const QString unfinished = copies + QLatin1Char('/') + Unfinished;
    try {
        CopyWriter writer(folder, unfinished, newestCopy(folder), step);
        if (writer.write() && writer.goesOn(name)) {
            const QString target = copies + QLatin1Char('/') + name;
            if (!QDir().rename(unfinished, target))
                failCopy(QStringLiteral("The folder \"%1\" cannot be made."), target);
            syncFolder(copies);
            return true;
        }
    } catch (const RunTimeError&) {
        // On a full disk its room is needed for the user's work.
        removeLeftovers(folder);
        throw;
    }
    removeLeftovers(folder);
    return false;
}

QLatin1String words(SetAsideReason reason) {
    switch (reason) {
        case SetAsideReason::BeforeRestore:
            return QLatin1String("before restore");
        case SetAsideReason::BeforeReset:
            return QLatin1String("before reset");
        case SetAsideReason::BeforeMend:
            return QLatin1String("before mending links");
        case SetAsideReason::BeforeImport:
            break;
    }
    return QLatin1String("before import");
}

}  // namespace

CopyOutcome makeDailyCopy(const QString& folder, const QDate& day, const CopyStep& step) {
    const QString name = day.toString(Qt::ISODate);
    const QString path = copiesFolder(folder) + QLatin1Char('/') + name;
    if (QFileInfo::exists(path)) return CopyOutcome::AlreadyThere;
    CopiesLock lock(folder);
    if (!lock.take(step)) return CopyOutcome::Cancelled;
    if (QFileInfo::exists(path)) return CopyOutcome::AlreadyThere;
    removeLeftovers(folder);
    if (!makeCopy(folder, name, step)) return CopyOutcome::Cancelled;
    removeOldCopies(folder, day);
    return CopyOutcome::Made;
}

QString setAside(const QString& folder, const QDate& day, SetAsideReason reason) {
    CopiesLock lock(folder);
    lock.take({});
    removeLeftovers(folder);
    const QString first = day.toString(Qt::ISODate) + QLatin1Char(' ') + words(reason);
    QString name = first;
    const QString copies = copiesFolder(folder) + QLatin1Char('/');
    for (int n = 2; QFileInfo::exists(copies + name); ++n)
        name = QStringLiteral("%1 (%2)").arg(first, QString::number(n));
    makeCopy(folder, name, {});
    removeOldSetAside(folder);
    return copies + name;
}

QStringList copiesIn(const QString& folder) {
    QStringList paths;
    for (const CopyFolder& copy : complete(folder)) paths.append(copy.path);
    return paths;
}

QString newestCopy(const QString& folder) { return copiesIn(folder).value(0); }
