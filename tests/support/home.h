// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Another home folder.
#pragma once

#include <QScopeGuard>
#include <QString>
#include <QtGlobal>

// Makes a folder the home folder until the returned guard is destroyed.
[[nodiscard]] inline auto withHome(const QString& folder) {
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", folder.toUtf8());
    return qScopeGuard([before] { qputenv("HOME", before); });
}
