// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checks.h"
#include "core/grid/sheet_grid.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTextTable>

namespace {

constexpr qint64 MostCells = 2000;  // what the reader of the page takes in reasonable time

// Documents take their fonts from an application.
void needApplication() {
    static int count = 1;
    static char name[] = "check";
    static char* names[] = {name, nullptr};
    if (qApp) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(count, names);
}

// A text without what a page of HTML does not keep: controls, and which kind a blank is.
QString plain(const QString& text) {
    QString kept;
    for (const QChar c : QString::fromUtf8(text.toUtf8())) {
        const ushort unit = c.unicode();
        const bool isControl = unit < ' ' && unit != '\t' && unit != '\r' && unit != '\n';
        const bool isNoCharacter = unit >= 0xfdd0 && (unit <= 0xfdef || unit >= 0xfff9);
        if (!isControl && !isNoCharacter) kept += c;
    }
    return kept.simplified();
}

QString textOf(const QTextTableCell& cell) {
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
    return plain(cursor.selectedText());
}

QList<int> seen(const SheetGrid& grid, int count, bool (SheetGrid::*isHidden)(int, int) const) {
    QList<int> numbers;
    for (int n = 1; n <= count; ++n)
        if (!(grid.*isHidden)(grid.Sheet(), n)) numbers += n;
    return numbers;
}

QString checkTable(const SheetGrid& grid, const QTextTable* table) {
    const int sheet = grid.Sheet();
    const QList<int> rows = seen(grid, grid.rowsOf(sheet), &SheetGrid::isRowHidden);
    const QList<int> cols = seen(grid, grid.colsOf(sheet), &SheetGrid::isColHidden);
    if (rows.isEmpty() || cols.isEmpty()) return {};
    if (!table) return QStringLiteral("no table");
    if (table->columns() != cols.size())
        return QStringLiteral("%1 columns and not %2").arg(table->columns()).arg(cols.size());
    if (table->rows() != rows.size())
        return QStringLiteral("%1 rows and not %2").arg(table->rows()).arg(rows.size());
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < cols.size(); ++c) {
            const CellSpan span = grid.spanAt(sheet, cols[c], rows[r]);
            const QString text = span.cols > 0 ? grid.textAt(sheet, span.col, span.row)
                                               : grid.textAt(sheet, cols[c], rows[r]);
            const QString read = textOf(table->cellAt(r, c));
            if (read != plain(text))
                return QStringLiteral("cell (%1, %2) reads \"%3\" and not \"%4\"")
                    .arg(cols[c])
                    .arg(rows[r])
                    .arg(read, plain(text));
        }
    }
    return {};
}

QString checkSheet(const SheetGrid& grid, const QString& path) {
    const int sheet = grid.Sheet();
    const int rows = grid.rowsOf(sheet);
    if (qint64(rows) * grid.colsOf(sheet) > MostCells) return {};
    if (!grid.ExportRangeToHTML(1, 1, -1, rows, path, false, QStringLiteral("lsl")))
        return QStringLiteral("nothing is written");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QStringLiteral("no file");
    const QByteArray html = file.readAll();
    if (!html.startsWith("<HTML>\n")) return QStringLiteral("<HTML> does not begin a line");
    if (html.count("<TABLE ") != 1 || html.count("\n</TABLE>\n") != 1)
        return QStringLiteral("not one table");
    if (!QString::fromUtf8(html).toUtf8().startsWith(html)) return QStringLiteral("no UTF-8");
    QTextDocument document;
    document.setHtml(QString::fromUtf8(html));
    const QTextTable* table = nullptr;
    for (const QTextFrame* frame : document.rootFrame()->childFrames())
        if (!table) table = qobject_cast<const QTextTable*>(frame);
    return rows == 0 ? QString() : checkTable(grid, table);
}

}  // namespace

QString checkHtmlExport(const QByteArray& bytes) {
    needApplication();
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("grid"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return QStringLiteral("no room for the file");
    file.write(bytes);
    file.close();
    SheetGrid grid;
    if (!grid.LoadFromFile(path)) return {};
    for (int sheet = 1; sheet <= std::min(grid.SheetCount(), 3); ++sheet) {
        grid.Sheet(sheet);
        const QString wrong = checkSheet(grid, folder.filePath(QStringLiteral("grid.html")));
        if (!wrong.isEmpty()) return QStringLiteral("sheet %1: ").arg(sheet) + wrong;
    }
    return {};
}
