// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalogue/rules/categories.h"

#include "core/data/database.h"
#include "core/grid/sheet_grid.h"

void setUpCategories(SheetGrid& grid) {
    grid.MaxCols(CategoryColumn::Description);
    grid.MaxRows(0);
    grid.RowHeadersShow(false);
    grid.SetText(CategoryColumn::Name, 0, QStringLiteral("Name"));
    grid.SetText(CategoryColumn::Description, 0, QStringLiteral("Description"));
    grid.ColWidth(CategoryColumn::Name, 20);
}

void listCategories(SheetGrid& grid) {
    Recordset rs = select(QStringLiteral("Select * from categories"));
    for (int row = 1; !rs.EOF_(); rs.MoveNext(), ++row) {
        if (row > grid.MaxRows()) grid.MaxRows(row);
        grid.SetText(CategoryColumn::ID, row, rs.Fields("ID"));
        grid.SetText(CategoryColumn::Name, row, rs.Fields("Name"));
        grid.SetText(CategoryColumn::Description, row, rs.Fields("Description"));
    }
    rs.Close();
}

QStringList categoryNames() {
    QStringList names;
    Recordset rs = select(QStringLiteral("SELECT name FROM categories"));
    for (; !rs.EOF_(); rs.MoveNext()) names.append(rs.Fields("name"));
    rs.Close();
    return names;
}

// Deliberate: behaviour 39.
bool isReservedCategory(const QString& name) {
    return name == QLatin1String("hymns") || name == QLatin1String("Hymns");
}

void storeCategory(const Category& category, const QString& oldName) {
    if (category.id.isEmpty()) {
        execute(QStringLiteral("INSERT INTO categories (name, description) VALUES ('") +
                category.name + QStringLiteral("', '") + category.description +
                QStringLiteral("');"));
        return;
    }
    execute(QStringLiteral("UPDATE categories SET name = '") + category.name +
            QStringLiteral("', description = '") + category.description +
            QStringLiteral("' WHERE ID = ") + category.id);
    // Deliberate: behaviour 40. They also run if only the description has changed.
    for (const char* slot : {"cat1", "cat2", "cat3", "cat4", "cat5"}) {
        const QLatin1String column(slot);
        execute(QStringLiteral("UPDATE songs SET ") + column + QStringLiteral(" = '") +
                    category.name + QStringLiteral("' WHERE ") + column + QStringLiteral(" = '") +
                    oldName + QLatin1Char('\''),
                LockType::BatchOptimistic);
    }
}

// Deliberate: behaviour 41.
void deleteCategory(const QString& id) {
    execute(QStringLiteral("DELETE FROM categories WHERE ID = ") + id);
}

bool giveCategory(const QString& songID, const QString& category) {
    // Deliberate: behaviour 42. The fifth look is at cat4 again.
    constexpr const char* columns[] = {"cat1", "cat2", "cat3", "cat4", "cat4"};
    const char* free = nullptr;
    Recordset rs = select(QStringLiteral("SELECT * FROM songs WHERE ID = ") + songID);
    for (const char* column : columns)
        if (!free && rs.Fields(column).isEmpty()) free = column;
    rs.Close();
    if (!free) return false;
    execute(QStringLiteral("UPDATE songs SET ") + QLatin1String(free) + QStringLiteral(" = '") +
            category + QStringLiteral("' WHERE ID = ") + songID);
    return true;
}
