// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/work_keeper.h"

#include "core/data/run_time_error.h"
#include "core/data/worker.h"

#include <QCryptographicHash>
#include <QFile>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr std::chrono::seconds KeepDelay(30);

// Often enough for a mark in a title, and seldom enough for a large chart while typing.
constexpr std::chrono::milliseconds TellDelay(250);

// One thread for all, so that writes come in the order of their calls.
Worker& writer() {
    static Worker worker;
    return worker;
}

std::vector<WorkKeeper*>& keepers() {
    static std::vector<WorkKeeper*> list;
    return list;
}

QByteArray sumOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

}  // namespace

// What is on the disk. Touched by the writing thread, or while that has nothing to do.
struct WorkKeeper::Kept {
    QString path;    // of the work's entry; empty if it has none
    QByteArray sum;  // of the entry's content
    bool failed = false;
};

WorkKeeper::WorkKeeper(const QString& programFolder, UnsavedKind kind, Content content,
                       QObject* parent)
    : QObject(parent),
      m_store(programFolder),
      m_kind(kind),
      m_content(std::move(content)),
      m_kept(std::make_shared<Kept>()) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(KeepDelay);
    connect(&m_timer, &QTimer::timeout, this, &WorkKeeper::keep);
    m_tellTimer.setSingleShot(true);
    m_tellTimer.setInterval(TellDelay);
    connect(&m_tellTimer, &QTimer::timeout, this, &WorkKeeper::tellUnsavedWork);
    keepers().push_back(this);
}

WorkKeeper::~WorkKeeper() {
    std::erase(keepers(), this);
    writer().waitForDone();
}

QByteArray WorkKeeper::sumNow() const { return m_comparison ? m_comparison() : sumOf(m_content()); }

void WorkKeeper::takeBaseline() {
    m_timer.stop();
    m_changed = false;
    m_baseline = sumNow();
    tellUnsavedWork();
}

void WorkKeeper::tellUnsavedWork() {
    m_tellTimer.stop();
    const bool isUnsaved = hasUnsavedWork();
    if (std::exchange(m_wasUnsaved, isUnsaved) != isUnsaved) Q_EMIT unsavedWorkChanged(isUnsaved);
}

void WorkKeeper::workLeft() {
    keepNow();
    *m_kept = {};
    // If the other work fails to load, what is on view then is nobody's.
    m_changed = false;
    tellUnsavedWork();
}

void WorkKeeper::workLoaded() {
    takeBaseline();
    // Later states are those of other work, and get an entry of their own.
    writer().start([kept = m_kept] { *kept = {}; });
}

void WorkKeeper::workSaved() {
    takeBaseline();
    writer().start([store = m_store, kept = m_kept] {
        store.discard(kept->path);
        *kept = {};
    });
}

void WorkKeeper::workChanged() {
    m_changed = true;
    // Not again at each change: typing without a pause is kept too.
    if (!m_timer.isActive()) m_timer.start();
    if (!m_tellTimer.isActive()) m_tellTimer.start();
}

void WorkKeeper::workBroughtBack(const UnsavedEntry& entry) {
    m_timer.stop();
    m_changed = true;
    // The entry is as the work on view is, unless it was removed as one too many since.
    writer().start([kept = m_kept, path = entry.path, sum = sumNow()] {
        *kept = {path, QFile::exists(path) ? sum : QByteArray()};
    });
    tellUnsavedWork();
}

QString WorkKeeper::entryOnView() const {
    writer().waitForDone();
    return m_kept->path;
}

void WorkKeeper::keep() {
    m_timer.stop();
    if (!m_changed) return;
    const QByteArray sum = sumNow();
    const bool isUnsaved = sum != m_baseline;
    const QByteArray content = isUnsaved ? m_content() : QByteArray();
    if (isUnsaved && content.isEmpty()) return;
    writer().start([this, store = m_store, kind = m_kind, kept = m_kept, sum, content] {
        if (content.isEmpty()) {
            store.discard(kept->path);
            *kept = {};
        } else if (sum != kept->sum) {
            try {
                *kept = {store.keep(kind, content, kept->path), sum};
            } catch (const RunTimeError& error) {
                // The destructor waits for the writing, so this keeper is there.
                if (!std::exchange(kept->failed, true))
                    m_calls.post([this, why = error.description()] { Q_EMIT failed(why); });
            }
        }
    });
}

bool WorkKeeper::keepNow() {
    keep();
    writer().waitForDone();
    return !m_kept->failed;
}

void WorkKeeper::keepAllNow() {
    for (WorkKeeper* keeper : keepers()) keeper->keep();
    writer().waitForDone();
}
