#include "core/data/texts.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QFile>

#include <cmath>
#include <limits>

int toLong(const QString& text) {
    bool ok = false;
    const qlonglong value = text.trimmed().toLongLong(&ok);
    if (!ok) throw RunTimeError(RunTimeError::TypeMismatch);
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        throw RunTimeError(RunTimeError::Overflow);
    return static_cast<int>(value);
}

double toNumber(const QString& text) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number)) throw RunTimeError(RunTimeError::TypeMismatch);
    return number;
}

QString withUnixLineEnds(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QStringList textLines(const QString& text) {
    QString lines = withUnixLineEnds(text);
    if (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
    return lines.isEmpty() ? QStringList() : lines.split(QLatin1Char('\n'));
}

QStringList linesOf(const QString& path) {
    QFile file(resolvedPath(path));
    if (!file.exists()) throw RunTimeError(RunTimeError::FileNotFound);
    if (!file.open(QIODevice::ReadOnly)) throw RunTimeError(RunTimeError::PathAccess);
    return textLines(QString::fromUtf8(file.readAll()));
}

QString joinedLinesOf(const QString& path) { return linesOf(path).join(QString()); }
