// What a SheetView is made of. Only its own files look in here.
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
#include <QUndoStack>

// A scroll bar that is as high as the page tabs beside it.
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
    QUndoStack undo;
    CellPlaces changed;  // cells whose Change has still to be raised
    std::vector<CellSpan> spans;
    int fillCol = 0;
    int wrapCol = 0;
    double zoom = 1;
    bool layoutWanted = true;  // the whole layout has to be redone at the next look
    bool pending = true;       // the grid has changes that are not shown
    bool applying = false;     // the view follows the grid, not the other way round
    bool byUser = false;       // the grid's changes come from an edit of the user
    bool committing = false;   // an open editor's text is being taken
    Cell pressed;              // under the left button
    Cell pressedHandle;
    Cell rightPressed;
    bool rightReported = false;
};
