// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/files.h"

#include "support/answers.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void answerWithLostFolder(Answers& answers, const QString& folder, const QString& name) {
    answers.custom(QStringLiteral("folder that is removed"), [folder, name](QWidget* dialog) {
        const QString lost = folder + QStringLiteral("/gone");
        QDir().mkpath(lost);
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
            ->setText(lost + QLatin1Char('/') + name);
        QMetaObject::invokeMethod(dialog, "accept");
        QDir().rmdir(lost);
    });
}
