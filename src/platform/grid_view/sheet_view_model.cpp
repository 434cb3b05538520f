// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/sheet_view_model.h"

#include <algorithm>

SheetModel::SheetModel(const SheetGrid& grid, Entered entered, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_entered(std::move(entered)) {}

void SheetModel::resizeToGrid() {
    const int rows = m_grid.rowsOf(m_grid.ActiveSheet());
    const int cols = m_grid.colsOf(m_grid.ActiveSheet());
    if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    } else if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    }
    if (cols < m_cols) {
        beginRemoveColumns({}, cols, m_cols - 1);
        m_cols = cols;
        endRemoveColumns();
    } else if (cols > m_cols) {
        beginInsertColumns({}, m_cols, cols - 1);
        m_cols = cols;
        endInsertColumns();
    }
}

void SheetModel::announceRows(int firstRow, int lastRow) {
    if (firstRow <= 0 && m_cols > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, m_cols - 1);
    const int first = std::max(firstRow, 1) - 1;
    const int last = std::min(lastRow, m_rows) - 1;
    if (first > last) return;
    Q_EMIT headerDataChanged(Qt::Vertical, first, last);
    if (m_cols > 0) Q_EMIT dataChanged(index(first, 0), index(last, m_cols - 1));
}

int SheetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rows; }

int SheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_cols;
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::AccessibleDescriptionRole && m_spoken)
        return m_spoken(index.column() + 1, index.row() + 1);
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    return m_grid.textAt(m_grid.ActiveSheet(), index.column() + 1, index.row() + 1);
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
    m_entered(index.column() + 1, index.row() + 1, value.toString());
    return true;
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool acrossColumns = orientation == Qt::Horizontal;
    if (role == Qt::AccessibleDescriptionRole && acrossColumns && section + 1 == m_orderedCol)
        return m_order == SortOrder::Ascending ? QStringLiteral("sorted ascending")
                                               : QStringLiteral("sorted descending");
    const bool speaks = role == Qt::AccessibleTextRole;
    if ((role != Qt::DisplayRole && !speaks) || section < 0) return {};
    if (section >= (acrossColumns ? m_cols : m_rows)) return {};
    const QString text = acrossColumns ? m_grid.textAt(m_grid.ActiveSheet(), section + 1, 0)
                                       : m_grid.textAt(m_grid.ActiveSheet(), 0, section + 1);
    // A head without a text is spoken by its number.
    if (speaks && text.trimmed().isEmpty())
        return (acrossColumns ? QStringLiteral("Column %1") : QStringLiteral("Row %1"))
            .arg(section + 1);
    return text;
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (m_readOnly || isLocked(index.column() + 1, index.row() + 1)) return plain;
    const CellFormat format =
        m_grid.formatAt(m_grid.ActiveSheet(), index.column() + 1, index.row() + 1);
    return format.kind == CellKind::Picture ? plain : plain | Qt::ItemIsEditable;
}
