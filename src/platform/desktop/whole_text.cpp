// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/whole_text.h"

#include <QFontMetrics>
#include <QPoint>
#include <QRegularExpression>
#include <QToolTip>

namespace {

// The length of the folders in a whole path, with their last separator; 0 for any other text.
qsizetype foldersOf(const QString& text) {
    static const QRegularExpression path(
        QStringLiteral("^(/|[A-Za-z]:[/\\\\]|\\\\\\\\).*[/\\\\](?=[^/\\\\]+$)"));
    return path.match(text).capturedLength();
}

}  // namespace

QString elidedText(const QFontMetrics& metrics, const QString& text, int width) {
    if (metrics.horizontalAdvance(text) <= width) return text;
    const qsizetype folders = foldersOf(text);
    if (folders == 0) return metrics.elidedText(text, Qt::ElideRight, width);
    // The name with its separator.
    const QString name = text.mid(folders - 1);
    const int room = width - metrics.horizontalAdvance(name);
    const QString cut = metrics.elidedText(text.left(folders - 1), Qt::ElideRight, room);
    return cut.isEmpty() ? metrics.elidedText(text, Qt::ElideRight, width) : cut + name;
}

void showWholeText(const QPoint& place, const QString& text, QWidget& widget) {
    // Marked up, so that it is broken into lines and its own markup is not read.
    QToolTip::showText(place,
                       text.isEmpty() ? QString()
                                      : QStringLiteral("<qt>%1</qt>")
                                            .arg(text.toHtmlEscaped().replace(
                                                QLatin1Char('\n'), QStringLiteral("<br>"))),
                       &widget);
}
