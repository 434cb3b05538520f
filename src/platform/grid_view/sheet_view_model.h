// A grid's sheet on view as a table for the toolkit's views.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QAbstractTableModel>

#include <functional>

// Row r and column c of the table are row r + 1 and column c + 1 of the grid's ActiveSheet. Texts
// are read live; the size is the one last announced by resizeToGrid.
class SheetModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using Entered = std::function<void(int col, int row, const QString& text)>;

    // `entered` is called with a text that the table was asked to take.
    SheetModel(const SheetGrid& grid, Entered entered, QObject* parent);

    // Announces the grid's size: rows and columns come and go at the ends, so that places, an open
    // editor and the scroll position stay.
    void resizeToGrid();

    // Announces rows, 0 for the heads, whose cells have changed.
    void announceRows(int firstRow, int lastRow);

    void setReadOnly(bool on) { m_readOnly = on; }
    bool isReadOnly() const { return m_readOnly; }

    // The place of a grid's cell; not valid for heads and beyond the announced size.
    QModelIndex indexOf(int col, int row) const { return index(row - 1, col - 1); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    const SheetGrid& m_grid;
    Entered m_entered;
    int m_rows = 0;
    int m_cols = 0;
    bool m_readOnly = false;
};
