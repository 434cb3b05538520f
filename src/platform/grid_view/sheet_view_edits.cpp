#include "platform/grid_view/sheet_view_edits.h"

void EditCommand::run(QString CellEdit::*from, QString CellEdit::*to) {
    const AddressedSheet here(m_grid, m_sheet);
    const size_t changedBefore = m_changed.size();
    if (m_grid.Sheet() == m_sheet) {
        for (CellEdit& edit : m_edits) {
            if (m_grid.GetText(edit.col, edit.row) != edit.*from) continue;
            m_grid.SetText(edit.col, edit.row, edit.*to);
            const QString now = m_grid.GetText(edit.col, edit.row);
            if (now == edit.*from) continue;
            edit.*to = now;  // a date cell changes the form of a date
            m_changed.emplace_back(edit.col, edit.row);
        }
    }
    if (m_changed.size() == changedBefore) setObsolete(true);
}

QString toClipboardText(const TextRows& rows) {
    QString text;
    for (const std::vector<QString>& row : rows) {
        if (&row != &rows.front()) text += QLatin1Char('\n');
        for (const QString& cell : row) {
            if (&cell != &row.front()) text += QLatin1Char('\t');
            const bool quoted =
                cell.contains(QLatin1Char('\t')) || cell.contains(QLatin1Char('\n')) ||
                cell.contains(QLatin1Char('\r')) || cell.startsWith(QLatin1Char('"'));
            if (!quoted) {
                text += cell;
                continue;
            }
            QString doubled = cell;
            doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
            text += QLatin1Char('"') + doubled + QLatin1Char('"');
        }
    }
    return text;
}

TextRows fromClipboardText(const QString& text) {
    TextRows rows;
    std::vector<QString> row;
    QString cell;
    const qsizetype end = text.size();
    qsizetype at = 0;
    const auto takeQuoted = [&] {
        // The cell has to end after the closing mark; otherwise the marks are part of the text.
        QString inner;
        for (qsizetype i = at + 1; i < end; ++i) {
            if (text[i] != QLatin1Char('"')) {
                inner += text[i];
            } else if (i + 1 < end && text[i + 1] == QLatin1Char('"')) {
                inner += text[i++];
            } else {
                const bool closes = i + 1 == end || text[i + 1] == QLatin1Char('\t') ||
                                    text[i + 1] == QLatin1Char('\n') ||
                                    text[i + 1] == QLatin1Char('\r');
                if (!closes) return;
                cell = inner;
                at = i + 1;
                return;
            }
        }
    };
    bool open = false;  // a row was begun
    while (at < end) {
        if (cell.isEmpty() && text[at] == QLatin1Char('"')) {
            const qsizetype start = at;
            takeQuoted();
            open = true;
            if (at > start) continue;
        }
        const QChar c = text[at++];
        if (c == QLatin1Char('\t')) {
            row.push_back(std::exchange(cell, {}));
            open = true;
        } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            if (c == QLatin1Char('\r') && at < end && text[at] == QLatin1Char('\n')) ++at;
            row.push_back(std::exchange(cell, {}));
            rows.push_back(std::exchange(row, {}));
            open = false;
        } else {
            cell += c;
            open = true;
        }
    }
    if (open) {
        row.push_back(cell);
        rows.push_back(std::move(row));
    }
    return rows;
}
