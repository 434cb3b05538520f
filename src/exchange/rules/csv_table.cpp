// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/csv_table.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The separator that stands most often in the first line, outside of quotes.
QChar separatorOf(QStringView text) {
    qsizetype commas = 0, semicolons = 0, tabs = 0;
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"') quoted = !quoted;
        if (quoted) continue;
        commas += c == u',';
        semicolons += c == u';';
        tabs += c == u'\t';
        if (c == u'\n' && commas + semicolons + tabs > 0) break;
    }
    if (tabs > 0 && tabs >= semicolons && tabs >= commas) return u'\t';
    return semicolons > commas ? u';' : u',';
}

class CsvReader {
public:
    CsvReader(QStringView text, QChar separator) : m_text(text), m_separator(separator) {}

    QList<CsvRow> read() {
        while (m_at < m_text.size()) {
            CsvRow row;
            row.line = m_line;
            bool more = true;
            while (more) {
                row.cells += cell();
                more = m_at < m_text.size() && m_text[m_at] == m_separator;
                if (m_at < m_text.size()) {
                    m_line += m_text[m_at] == u'\n';
                    ++m_at;
                }
            }
            bool filled = false;
            for (const QString& cell : row.cells) filled = filled || !cell.trimmed().isEmpty();
            if (filled) m_rows += row;
        }
        return m_rows;
    }

private:
    // A cell up to the separator or line end behind it.
    QString cell() {
        qsizetype start = m_at;
        while (start < m_text.size() && m_text[start] == u' ') ++start;
        QString text;
        if (m_quotes && start < m_text.size() && m_text[start] == u'"' && quotedCell(start, text))
            return text;
        start = m_at;
        while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != u'\n') ++m_at;
        return m_text.sliced(start, m_at - start).toString();
    }

    bool quotedCell(qsizetype start, QString& text) {
        for (qsizetype i = start + 1; i < m_text.size(); ++i) {
            if (m_text[i] != u'"') {
                text += m_text[i];
            } else if (i + 1 < m_text.size() && m_text[i + 1] == u'"') {
                text += u'"';
                ++i;
            } else {
                m_line += int(text.count(u'\n'));
                m_at = i + 1;
                // What follows the closing quote belongs to the cell.
                while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != u'\n')
                    text += m_text[m_at++];
                return true;
            }
        }
        m_quotes = false;
        return false;
    }

    QStringView m_text;
    QChar m_separator;
    qsizetype m_at = 0;
    int m_line = 1;
    bool m_quotes = true;
    QList<CsvRow> m_rows;
};

}  // namespace

QList<CsvRow> csvRows(const QString& text) {
    QStringView view = text;
    if (view.startsWith("sep="_L1, Qt::CaseInsensitive) && view.size() > 4) {
        const QChar separator = view[4];
        const qsizetype end = view.indexOf(u'\n');
        return end < 0 ? QList<CsvRow>() : CsvReader(view.sliced(end + 1), separator).read();
    }
    return CsvReader(view, separatorOf(view)).read();
}

QByteArray csvBytes(const QList<QStringList>& rows) {
    QString text(QChar(0xFEFF));
    for (const QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0) text += u',';
            const QString& cell = row[i];
            const bool plain = !cell.contains(u'"') && !cell.contains(u',') &&
                               !cell.contains(u';') && !cell.contains(u'\n') &&
                               !cell.contains(u'\t') && cell == cell.trimmed();
            if (plain)
                text += cell;
            else
                text += u'"' + QString(cell).replace(u'"', u"\"\""_s) + u'"';
        }
        text += "\r\n"_L1;
    }
    return text.toUtf8();
}
