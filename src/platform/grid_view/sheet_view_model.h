// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The table model of a grid's sheet on view.
#pragma once

#include "core/grid/sheet_grid.h"

#include <QAbstractTableModel>

#include <functional>

// Row r and column c of the model are row r + 1 and column c + 1 of the grid's ActiveSheet. Texts
// are those of the grid at any time; the size is the one at the last resizeToGrid.
class SheetModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using Entered = std::function<void(int col, int row, const QString& text)>;

    // `entered` is called by setData.
    SheetModel(const SheetGrid& grid, Entered entered, QObject* parent);

    // Takes over the grid's size. Rows and columns are added and removed at the ends, so that
    // indexes, an open editor and the scroll position stay valid.
    void resizeToGrid();

    // Emits the signals for rows whose cells have changed; 0 is the head row.
    void announceRows(int firstRow, int lastRow);

    void setReadOnly(bool on) { m_readOnly = on; }
    bool isReadOnly() const { return m_readOnly; }

    using Spoken = std::function<QString(int col, int row)>;
    void setSpoken(Spoken spoken) { m_spoken = std::move(spoken); }

    // The column by which the rows are sorted, 0 for none, and the order; for screen readers.
    void setOrder(int col, SortOrder order) {
        m_orderedCol = col;
        m_order = order;
    }

    using Locked = std::function<bool(int col, int row)>;
    void setLocked(Locked isLocked) { m_isLocked = std::move(isLocked); }
    bool isLocked(int col, int row) const { return m_isLocked && m_isLocked(col, row); }

    // The index of a cell; invalid for heads and outside the model.
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
    Locked m_isLocked;
    Spoken m_spoken;
    int m_orderedCol = 0;
    SortOrder m_order = SortOrder::None;
    int m_rows = 0;
    int m_cols = 0;
    bool m_readOnly = false;
};
