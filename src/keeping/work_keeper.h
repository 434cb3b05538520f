// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keeps what one window works on while it differs from what was loaded or saved last.
#pragma once

#include "core/data/thread_calls.h"
#include "keeping/unsaved_store.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

// One for each piece of work on view. The window reports what happens; the keeper writes the work
// into the store 30 seconds after a change, so that never more than that is lost. Only the taking
// of the bytes happens in the caller's thread. Used from the thread of the windows.
class WorkKeeper : public QObject {
    Q_OBJECT

public:
    // The bytes of the work as it is now: SheetGrid::fileBytes or writeFields. Empty for work that
    // cannot be kept. Raises nothing.
    using Content = std::function<QByteArray()>;

    WorkKeeper(const QString& programFolder, UnsavedKind kind, Content content,
               QObject* parent = nullptr);

    // Waits for what is being written, and keeps nothing more: call keepNow at the closing.
    ~WorkKeeper() override;

    // Sets what decides whether the work has changed, a check sum for example, instead of the
    // bytes: SheetGrid::contentSum for a grid, whose bytes hold the page on view too. To be set
    // before workLoaded. Raises nothing.
    void setComparison(Content comparison) { m_comparison = std::move(comparison); }

    // Whether the work on view differs from what was loaded or saved last.
    bool hasUnsavedWork() const { return m_changed && sumNow() != m_baseline; }

    // Other work is about to come on view: keeps the work like keepNow, and its entry stays.
    void workLeft();

    // Other work is on view now, unchanged: a file or record was loaded, or the form was emptied.
    // What was kept of the work before stays.
    void workLoaded();

    // The work on view was saved: what was kept of it goes.
    void workSaved();

    // The work on view may have changed.
    void workChanged();

    // The work on view was brought back from this entry: saving it removes the entry, and later
    // states replace it.
    void workBroughtBack(const UnsavedEntry& entry);

    // Keeps the work if it has changed, and returns when it is on the disk. Work that has been
    // changed back to what was loaded or saved is kept no longer. False if it cannot be written.
    bool keepNow();

    UnsavedKind kind() const { return m_kind; }

    // The bytes of the work on view, as they would be kept.
    QByteArray content() const { return m_content(); }

    // The path of the entry that the work on view is kept in; empty if it is not kept.
    QString entryOnView() const;

    // keepNow for all keepers there are, for the end of the program by an error or a signal.
    static void keepAllNow();

    // Another time from a change to its keeping, for tests.
    void setDelay(std::chrono::milliseconds delay) { m_timer.setInterval(delay); }

Q_SIGNALS:
    // hasUnsavedWork has become another; comes shortly after a change of the work.
    void unsavedWorkChanged(bool hasUnsavedWork);

    // The work could not be written; `why` is a sentence for the user. Comes once for a row of
    // failures.
    void failed(const QString& why);

private:
    struct Kept;

    void keep();
    void takeBaseline();
    void tellUnsavedWork();
    QByteArray sumNow() const;

    ThreadCalls m_calls;  // of the thread that writes
    UnsavedStore m_store;
    UnsavedKind m_kind;
    Content m_content;
    Content m_comparison;
    QTimer m_timer{this};
    QTimer m_tellTimer;
    QByteArray m_baseline;  // a check sum
    bool m_changed = false;
    bool m_wasUnsaved = false;
    std::shared_ptr<Kept> m_kept;
};
