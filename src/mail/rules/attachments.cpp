// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/attachments.h"

#include <QDir>
#include <QStringList>

QString withChosenFiles(const QString& attachments, const QString& result) {
    QStringList paths = result.split(QChar(u'\0'));
    if (paths.size() > 1) {
        QString folder = paths.takeFirst();
        if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
            folder += QDir::separator();
        for (QString& path : paths) path.prepend(folder);
    }
    if (!attachments.isEmpty()) paths.prepend(attachments);
    return paths.join(QLatin1Char(';'));
}
