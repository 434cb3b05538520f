// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a window works on, kept while it is not saved and offered when the window opens next.
#pragma once

#include "keeping/work_keeper.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class FormBase;
class UnsavedStrip;

// A window has one for each thing that it works on. It watches the controls that hold the work,
// has the window's strip offer what was kept, and learns when other work comes on view.
class KeptWork : public QObject {
    Q_OBJECT

public:
    struct Work {
        UnsavedKind kind = UnsavedKind::Set;
        WorkKeeper::Content content;     // see WorkKeeper
        WorkKeeper::Content comparison;  // may be empty
        // Brings the work of an entry's file on view. False if the file cannot be read.
        std::function<bool(const QString& path)> bringBack;
    };

    // To be created at the end of the window's constructor, with its first work on view. Shows the
    // strip if unsaved work of this kind is kept.
    KeptWork(FormBase& window, Work work);

    // Makes the keeper notice every signal of a control that its content has changed.
    template <typename Sender, typename Signal>
    void watch(Sender* control, Signal signal) {
        connect(control, signal, &m_keeper, [this] { m_keeper.workChanged(); });
    }

    // To be called just before other work replaces the work on view: keeps that if it is not saved.
    void leave() { m_keeper.workLeft(); }

    // The work on view has just been loaded, or emptied.
    void loaded() { m_keeper.workLoaded(); }

    // Both, around a function that brings other work on view. What it raises goes on.
    void replaceBy(const std::function<void()>& bringOther);

    // The work on view has just been saved.
    void saved() { m_keeper.workSaved(); }

    WorkKeeper& keeper() { return m_keeper; }

    // The strip; null as long as nothing was offered.
    UnsavedStrip* strip() const { return m_strip; }

private:
    void offerNext();
    void bringBack();
    void discard();

    FormBase& m_window;
    Work m_work;
    UnsavedStore m_store;
    WorkKeeper m_keeper;
    UnsavedStrip* m_strip = nullptr;
    std::optional<UnsavedEntry> m_offered;
};
