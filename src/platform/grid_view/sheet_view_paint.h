// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Painting of a grid's cells.
#pragma once

#include "platform/grid_view/cell_look.h"

#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QPixmap>
#include <QTableView>

struct ThemeColours;

// The state of a view that affects its painting.
struct SheetLook {
    bool list = false;  // the whole active row is highlighted
    bool focus = false;
    int activeCol = 0;
    int activeRow = 0;
    int wrapCol = 0;  // the column whose texts are wrapped
    int editCol = 0;  // the cell under an open editor
    int editRow = 0;
};

// Paints in two passes: backgrounds, grid lines and borders first, then the texts, which may run
// over into empty neighbours.
class SheetPainter {
public:
    SheetPainter(const QTableView& view, const SheetGrid& grid) : m_view(view), m_grid(grid) {}

    void paint(QPainter& painter, const QRect& dirty, const SheetLook& look);

    // The part of a cell that opens its list or calendar or is its button; empty if there is none.
    QRect handleRect(const CellFormat& format, const QRect& cell, bool list) const;

    // The width that a cell's text needs in one line.
    int wantedWidth(int col, int row);

    // The height that a cell's text needs when it is wrapped in a column of this width.
    int wrappedHeight(int col, int row, int width);

    // The whole text of a cell that shows only a part of it; empty if it shows all.
    QString cutText(int col, int row, const SheetLook& look);

    // The font of a cell.
    const QFont& fontOf(const CellFormat& format) { return face(format).font; }

private:
    struct Face {
        QFont font;
        QFontMetrics metrics;
    };
    struct Picture {
        QByteArray file;  // kept, because its address is the key
        QPixmap pixmap;
    };
    struct Pass;  // one painting

    // Where a text goes.
    struct Placed {
        QRect rect;
        QRect clip;             // with the empty neighbours that it runs over
        bool lines = false;     // it may have several lines
        bool runsOver = false;  // it may run over its neighbours
        bool cut = false;       // a part of it has no room
    };

    const Face& face(const CellFormat& format);
    QPixmap picture(const QByteArray& file);

    void paintGrounds(Pass& pass);
    void paintGround(Pass& pass, int col, int row, const QRect& rect);
    void paintBorders(Pass& pass);
    void paintHandle(Pass& pass, const CellFormat& format, const QRect& handle);
    void paintTexts(Pass& pass, int row);
    void paintText(Pass& pass, int col, int row, const CellFormat& format, const QString& text);
    void paintActive(Pass& pass);
    QColor textColour(const Pass& pass, int row, const CellFormat& format) const;
    Placed place(const SheetLook& look, int col, int row, const CellFormat& format,
                 const QString& text);
    QRect overflowRect(int col, int row, HAlign align, int wanted, QRect rect) const;
    QRect cellRect(int col, int row) const;

    const QTableView& m_view;
    const SheetGrid& m_grid;
    QHash<QString, Face> m_faces;
    QFont m_facesFor;
    QHash<const char*, Picture> m_pictures;
};
