// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keeps what one window works on while it differs from what was loaded or saved last.
#pragma once

#include "keeping/unsaved_store.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

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

    // keepNow for all keepers there are, for the end of the program by an error or a signal.
    static void keepAllNow();

    // Another time from a change to its keeping, for tests.
    void setDelay(std::chrono::milliseconds delay) { m_timer.setInterval(delay); }

Q_SIGNALS:
    // The work could not be written; `why` is a sentence for the user. Comes once for a row of
    // failures.
    void failed(const QString& why);

private:
    struct Kept;

    void keep();
    void takeBaseline();

    UnsavedStore m_store;
    UnsavedKind m_kind;
    Content m_content;
    QTimer m_timer{this};
    QByteArray m_baseline;  // a check sum
    bool m_changed = false;
    std::shared_ptr<Kept> m_kept;
};
