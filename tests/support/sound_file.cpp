// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/sound_file.h"

#include <QByteArray>
#include <QFile>
#include <QTest>
#include <QtEndian>

namespace {

constexpr quint32 Rate = 8000;

template <typename Number>
QByteArray little(Number number) {
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

}  // namespace

void writeSilence(const QString& path, double seconds) {
    const QByteArray samples(qsizetype(seconds * Rate) * 2, '\0');
    const auto size = static_cast<quint32>(samples.size());
    // One channel of 16 bits.
    const QByteArray form = little<quint16>(1) + little<quint16>(1) + little(Rate) +
                            little(Rate * 2) + little<quint16>(2) + little<quint16>(16);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write("RIFF" + little(size + 36) + "WAVEfmt " + little<quint32>(16) + form + "data" +
                   little(size) + samples) < 0)
        QTest::qFail(qPrintable(path), __FILE__, __LINE__);
}
