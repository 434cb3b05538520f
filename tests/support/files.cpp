// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/files.h"

#include "support/answers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(content), content.size());
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
