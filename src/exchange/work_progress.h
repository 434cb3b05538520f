// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The progress of a long command, with Cancel.
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

// A dialog that comes up when the work takes longer than a moment, and keeps the other windows from
// being used. Called with the number done and in all; returns false after Cancel.
class WorkProgress {
public:
    explicit WorkProgress(const QString& what);

    bool operator()(int done, int all);

    bool wasCancelled() const { return m_dialog.wasCanceled(); }

private:
    QProgressDialog m_dialog;
    QElapsedTimer m_sinceShown;
};
