// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The text of a text box.
#pragma once

#include <QString>
#include <QTextDocument>

// The text with line feeds between its lines. Non-breaking spaces stay, which toPlainText of Qt's
// text boxes replaces.
inline QString rawTextOf(const QTextDocument& document) {
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text.replace(QChar::LineSeparator, QLatin1Char('\n'));
}
