// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/texts.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

// The characters 0x80 to 0x9f of code page 1252, where Latin-1 has control characters.
constexpr std::array<char16_t, 32> WesternSigns = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

[[noreturn]] void failAsNumber(const QString& text) {
    throw RunTimeError(RunTimeError::TypeMismatch,
                       QStringLiteral("Type mismatch: \"%1\" is not a number.").arg(text));
}

}  // namespace

int toLong(const QString& text) {
    bool ok = false;
    const qlonglong value = text.trimmed().toLongLong(&ok);
    if (!ok) failAsNumber(text);
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        throw RunTimeError(RunTimeError::Overflow);
    return static_cast<int>(value);
}

double toNumber(const QString& text) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number)) failAsNumber(text);
    return number;
}

QString withUnixLineEnds(QString text) {
    if (!text.contains(QLatin1Char('\r'))) return text;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QStringList textLines(const QString& text) {
    QString lines = withUnixLineEnds(text);
    if (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
    return lines.isEmpty() ? QStringList() : lines.split(QLatin1Char('\n'));
}

QString fromCodePage1252(QByteArrayView bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text)
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9f) c = WesternSigns[c.unicode() - 0x80];
    return text;
}

uchar toCodePage1252(QChar c) {
    if (c.unicode() < 0x80 || (c.unicode() >= 0xa0 && c.unicode() <= 0xff))
        return uchar(c.unicode());
    if (c.unicode() < 0xa0) return 0;
    const auto sign = std::find(WesternSigns.begin(), WesternSigns.end(), c.unicode());
    return sign == WesternSigns.end() ? 0 : uchar(0x80 + (sign - WesternSigns.begin()));
}

QStringList linesOf(const QString& path) {
    QFile file(resolvedPath(path));
    if (!file.exists()) throw RunTimeError(RunTimeError::FileNotFound);
    if (!file.open(QIODevice::ReadOnly)) throw RunTimeError(RunTimeError::PathAccess);
    return textLines(QString::fromUtf8(file.readAll()));
}

QString joinedLinesOf(const QString& path) { return linesOf(path).join(QString()); }
