// Another folder as the user's own.
#pragma once

#include <QScopeGuard>
#include <QString>
#include <QtGlobal>

// Makes a folder the user's own until the returned guard goes.
[[nodiscard]] inline auto withHome(const QString& folder) {
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", folder.toUtf8());
    return qScopeGuard([before] { qputenv("HOME", before); });
}
