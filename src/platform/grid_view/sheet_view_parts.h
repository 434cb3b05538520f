// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The parts of a SheetView, for its own files alone.
#pragma once

#include "platform/grid_view/sheet_view.h"
#include "platform/grid_view/sheet_view_editors.h"
#include "platform/grid_view/sheet_view_edits.h"
#include "platform/grid_view/sheet_view_find.h"
#include "platform/grid_view/sheet_view_head.h"
#include "platform/grid_view/sheet_view_model.h"
#include "platform/grid_view/sheet_view_paint.h"

#include <QScrollBar>
#include <QTabBar>

#include <map>

// A scroll bar with the height of the tabs beside it.
class PageScrollBar : public QScrollBar {
public:
    explicit PageScrollBar(QWidget* parent) : QScrollBar(Qt::Horizontal, parent) {}

    void setBeside(const QWidget* tabs) {
        m_tabs = tabs;
        updateGeometry();
    }
    QSize sizeHint() const override {
        const QSize plain = QScrollBar::sizeHint();
        return m_tabs ? QSize(plain.width(), m_tabs->sizeHint().height()) : plain;
    }

private:
    const QWidget* m_tabs = nullptr;
};

struct SheetView::Parts {
    explicit Parts(SheetView& view)
        : model(
              view,
              [&view](int col, int row, const QString& text) {
                  const int sheet = view.ActiveSheet();
                  view.enter(sheet, {{col, row, view.textAt(sheet, col, row), text}});
              },
              nullptr),
          painter(view, view),
          delegate(view, painter, nullptr),
          cols(new SheetHead(Qt::Horizontal, view, &view)),
          rows(new SheetHead(Qt::Vertical, view, &view)),
          tabs(new QTabBar(&view)),
          pageBar(new PageScrollBar(&view)),
          findBar(new FindBar(&view)) {}

    SheetModel model;
    SheetPainter painter;
    SheetDelegate delegate;
    SheetHead* cols;
    SheetHead* rows;
    QTabBar* tabs;
    PageScrollBar* pageBar;
    FindBar* findBar;
    EditHistory history;
    std::vector<CellSpan> spans;
    int fillCol = 0;
    int wrapCol = 0;
    double zoom = 1;
    std::map<int, double> colZooms;  // of columns with another factor
    bool layoutWanted = true;        // the whole layout has to be redone
    bool pending = true;             // the grid has changes that are not shown yet
    bool applying = false;           // the view follows the grid and not the user
    bool byUser = false;             // the grid changes because of the user's edit
    bool undoing = false;            // the edit is an undo or redo
    bool clicksBelow = false;        // setClicksBelowRows
    bool committing = false;         // the open editor is being closed with its text
    bool entering = false;           // the text of the open editor is being taken over
    Cell typingStart{1, 1};          // setTypingStart
    Cell pressed;                    // under the left button
    Cell pressedHandle;
    bool pressedBelow = false;
    Cell rightPressed;
    bool rightReported = false;
};
