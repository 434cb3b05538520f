// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/plain_text.h"

#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

namespace {

void addLines(const QTextFrame::iterator& from, const QTextFrame::iterator& end,
              QStringList& lines) {
    for (auto it = from; it != end; ++it) {
        const auto* table = qobject_cast<const QTextTable*>(it.currentFrame());
        if (!it.currentFrame()) {
            // An empty paragraph before a table is the document's own.
            auto next = it;
            if (it.currentBlock().length() == 1 && (++next).currentFrame()) continue;
            lines += it.currentBlock().text().replace(QChar::LineSeparator, QLatin1Char('\n'));
        } else if (!table) {
            addLines(it.currentFrame()->begin(), it.currentFrame()->end(), lines);
        } else {
            for (int row = 0; row < table->rows(); ++row) {
                QStringList cells;
                for (int col = 0; col < table->columns(); ++col) {
                    const QTextTableCell cell = table->cellAt(row, col);
                    if (cell.row() != row || cell.column() != col) continue;
                    QStringList inside;
                    addLines(cell.begin(), cell.end(), inside);
                    cells += inside.join(QLatin1Char('\n'));
                }
                lines += cells.join(QStringLiteral("   "));
            }
        }
    }
}

}  // namespace

QString plainTextOf(const QString& html) {
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(html);
    QStringList lines;
    addLines(document.rootFrame()->begin(), document.rootFrame()->end(), lines);
    QString text = lines.join(QLatin1Char('\n'));
    text.replace(QChar::Nbsp, QLatin1Char(' '));
    text.remove(QChar::ObjectReplacementCharacter);
    return text.trimmed() + QLatin1Char('\n');
}
