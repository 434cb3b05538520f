// Edits cells of a grid in place: texts, lists and dates.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

#include <memory>

class SheetPainter;

// The open editor's cell.
struct EditedCell {
    int sheet = 0;
    int col = 0;
    int row = 0;
    QString before;   // the cell's text at the opening
    QString offered;  // the editor's text at the opening
};

// A line that types a text into a cell; it grows over its neighbours while the text does.
class CellLine : public QLineEdit {
    Q_OBJECT

public:
    explicit CellLine(QWidget* parent);

    // The cell's place in the parent.
    void setCell(const QRect& cell);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void grow();

    QRect m_cell;
};

// A line for dates: typed, by Up and Down from day to day, or picked from a calendar.
class DateLine : public CellLine {
    Q_OBJECT

public:
    DateLine(bool spin, QWidget* parent);

    void openCalendar();

Q_SIGNALS:
    // A day was picked from the calendar.
    void picked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void step(int days);

    bool m_spin;
};

// Makes the editors of a SheetView and takes their texts. A user's step that leaves the cell, by
// Enter, Tab or Shift+Tab, ends with the hints SubmitModelCache, EditNextItem, EditPreviousItem.
class SheetDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    SheetDelegate(const SheetGrid& grid, SheetPainter& painter, QObject* parent);
    ~SheetDelegate() override;

    // The open editor, null where none is.
    QWidget* editor() const { return m_editor; }
    const EditedCell& cell() const { return m_cell; }

    // Whether a widget is the open editor or belongs to it, as its list does.
    bool owns(const QObject* object) const;

    // Opens the list or the calendar of the open editor.
    void drop();

    // The editor is gone.
    void forget();

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
    // An editor has been opened.
    void opened() const;
    // The user has given a cell a text; raised where it differs from the one at the opening.
    void entered(const EditedCell& cell, const QString& text) const;
    // Something outside the editor is about to act: its text has to be taken first.
    void actedOutside();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void take(QWidget* editor);
    QWidget* makeEditor(QWidget* parent, const CellFormat& format) const;
    static QString textOf(const QWidget* editor);

    const SheetGrid& m_grid;
    SheetPainter& m_painter;
    std::unique_ptr<QObject> m_watch;  // sees what happens outside the open editor
    mutable QPointer<QWidget> m_editor;
    mutable EditedCell m_cell;
};
