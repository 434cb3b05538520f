// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/kept_work.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"
#include "platform/desktop/unsaved_strip.h"

#include <QDir>
#include <QPushButton>

#include <utility>

KeptWork::KeptWork(FormBase& window, Work work)
    : QObject(&window),
      m_window(window),
      m_work(std::move(work)),
      m_store(programFolder()),
      m_keeper(programFolder(), m_work.kind, m_work.content, this) {
    if (m_work.comparison) m_keeper.setComparison(m_work.comparison);
    m_keeper.workLoaded();
    connect(&m_keeper, &WorkKeeper::failed, this, [](const QString& why) { setStatusText(why); });
    offerNext();
}

// Offers the newest work that is not on view.
void KeptWork::offerNext() {
    m_offered.reset();
    for (const UnsavedEntry& entry : m_store.list(m_work.kind)) {
        if (entry.path == m_keeper.entryOnView()) continue;
        m_offered = entry;
        break;
    }
    if (!m_strip && m_offered) {
        m_strip = new UnsavedStrip(&m_window);
        // Queued: the button must not be hidden or moved while it is being released.
        const auto bringBackAtEdge = [this] {
            atEdge(m_window.onFailure(), [this] { bringBack(); });
        };
        connect(m_strip->cmdBringBack, &QPushButton::clicked, this, bringBackAtEdge,
                Qt::QueuedConnection);
        connect(m_strip->cmdDiscard, &QPushButton::clicked, this, &KeptWork::discard,
                Qt::QueuedConnection);
    }
    if (!m_strip) return;
    if (m_offered) m_strip->offer(*m_offered);
    m_window.showStrip(m_strip, m_offered.has_value());
}

void KeptWork::bringBack() {
    if (!m_offered) return;
    UnsavedEntry entry = *m_offered;
    const std::optional<QByteArray> bytes = UnsavedStore::load(entry.path);
    leave();
    try {
        // The work on view is offered first next time. The work that is left was kept later, and
        // may have made this entry one too many.
        const auto entries = m_store.list(entry.kind);
        if (bytes && (entries.empty() || entries[0].path != entry.path))
            entry.path = m_store.keep(entry.kind, *bytes, entry.path);
    } catch (const RunTimeError& error) {
        setStatusText(error.description());
        return;
    }
    if (!bytes || !m_work.bringBack(entry.path)) {
        setStatusText(QStringLiteral("The file \"%1\" cannot be read.")
                          .arg(QDir::toNativeSeparators(entry.path)));
        return;
    }
    m_keeper.workBroughtBack(entry);
    offerNext();
    m_window.Show();
}

void KeptWork::replaceBy(const std::function<void()>& bringOther) {
    leave();
    bringOther();
    loaded();
}

void KeptWork::discard() {
    if (!m_offered) return;
    m_store.discard(m_offered->path);
    offerNext();
    if (!m_offered) m_window.Show();
}
