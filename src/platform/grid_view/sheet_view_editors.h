// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The editors of a grid's cells: for texts, lists and dates.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

#include <functional>
#include <memory>

class SheetPainter;

// The open editor's cell.
struct EditedCell {
    int sheet = 0;
    int col = 0;
    int row = 0;
    QString before;   // text of the cell at the opening
    QString offered;  // text of the editor at the opening
};

// Edits the text of a cell. The field grows over the neighbouring cells with its text.
class CellLine : public QLineEdit {
    Q_OBJECT

public:
    explicit CellLine(QWidget* parent);

    // The rectangle of the cell in the parent.
    void setCell(const QRect& cell);

    // Whether the first key goes to the end of the text instead of replacing the selection.
    void setContinuing(bool on) { m_continuing = on; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void grow();

    QRect m_cell;
    bool m_continuing = false;
};

// Edits a date: typed, stepped with Up and Down from day to day, or picked from a calendar.
class DateLine : public CellLine {
    Q_OBJECT

public:
    DateLine(bool spin, QWidget* parent);

    void openCalendar();

    // Whether Up and Down step from day to day.
    bool spins() const { return m_spin; }

Q_SIGNALS:
    // A day was picked in the calendar.
    void picked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void step(int days);

    bool m_spin;
};

// Creates the editors of a SheetView and takes over their texts. When the user leaves a cell with
// Enter, Tab or Shift+Tab, the editor closes with the hint SubmitModelCache, EditNextItem or
// EditPreviousItem.
class SheetDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    SheetDelegate(const SheetGrid& grid, SheetPainter& painter, QObject* parent);
    ~SheetDelegate() override;

    // The open editor; null if there is none.
    QWidget* editor() const { return m_editor; }
    const EditedCell& cell() const { return m_cell; }

    // Whether an object is the open editor or a part of it, such as its list.
    bool owns(const QObject* object) const;

    // Opens the list or the calendar of the open editor.
    void drop();

    // Forgets the open editor.
    void forget();

    // Whether the next editor of a text continues it at its end when the user types.
    void setContinuing(bool on) { m_continuing = on; }

    // Whether the open editor was opened by typing. Then the arrow keys go on to the next cell,
    // until F2, Home, End or the mouse moves the text cursor.
    void setTyped(bool on) { m_typed = on; }

    // Sets what takes over the text and makes the cell `cols` to the right or `rows` below active.
    // It returns false if there is no such cell.
    using Arrows = std::function<bool(int cols, int rows)>;
    void setArrows(Arrows arrows) { m_arrows = std::move(arrows); }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

Q_SIGNALS:
    // An editor was opened.
    void opened() const;
    // The user has entered a text other than the one at the opening.
    void entered(const EditedCell& cell, const QString& text) const;
    // A click or shortcut outside the editor is about to act; the text has to be taken over first.
    void actedOutside();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void take(QWidget* editor);
    bool takesKey(const QKeyEvent& key);
    bool takesArrow(const QKeyEvent& key);
    QWidget* makeEditor(QWidget* parent, const CellFormat& format) const;
    static QString textOf(const QWidget* editor);

    const SheetGrid& m_grid;
    SheetPainter& m_painter;
    std::unique_ptr<QObject> m_watch;  // watches for clicks and shortcuts outside the editor
    Arrows m_arrows;
    bool m_continuing = false;
    bool m_typed = false;
    mutable QPointer<QWidget> m_editor;
    mutable EditedCell m_cell;
};
