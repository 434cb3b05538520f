// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checks.h"
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"
#include "core/grid/sheet_grid_dates.h"

namespace {

QString textOf(const QByteArray& bytes) {
    if (!bytes.startsWith('\xff')) return QString::fromUtf8(bytes);
    QString text((bytes.size() - 1) / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(uchar(bytes[2 * i + 1]), uchar(bytes[2 * i + 2]));
    return text;
}

bool isMonthDayYear(const QString& text) {
    if (text.size() != 8) return false;
    for (qsizetype i = 0; i < 8; ++i) {
        const ushort unit = text[i].unicode();
        if (i % 3 == 2 ? unit != '/' : unit < '0' || unit > '9') return false;
    }
    return true;
}

QString checkForms(const QString& text, const std::optional<QDate>& date) {
    const QString form = formatDate(text);
    if (!date)
        return form == text ? QString() : QStringLiteral("a text that is no date is changed");
    if (!date->isValid()) return QStringLiteral("a date that no calendar has");
    if (form != formatDate(*date)) return QStringLiteral("two forms of one date");
    if (!isMonthDayYear(form)) return QStringLiteral("no mm/dd/yy: ") + form;
    const auto again = parseDate(form);
    // 29 February of a year like 1900, which 2000 stands for in two digits, has its form too.
    if (!again || again->month() != date->month() || again->day() != date->day() ||
        again->year() % 100 != date->year() % 100)
        return QStringLiteral("not read again: ") + form;
    if (date->year() >= 1930 && date->year() <= 2029 && *again != *date)
        return QStringLiteral("another century: ") + form;
    return {};
}

// A cell that holds a date takes a date of its range and the empty text, and nothing else.
QString checkCell(const QString& text, const std::optional<QDate>& date) {
    static SheetGrid grid;
    const QString before = QStringLiteral("11/22/26");
    setUpDateCells(grid, 1, 1);
    grid.SetText(1, 1, before);
    grid.SetText(1, 1, text);
    const QString shown = grid.GetText(1, 1);
    const bool fits = date && *date >= FirstCellDate && *date <= LastCellDate;
    const QString wanted = text.isEmpty() ? QString() : fits ? formatDate(*date) : before;
    if (shown == wanted) return {};
    return QStringLiteral("the cell shows \"%1\" and not \"%2\"").arg(shown, wanted);
}

}  // namespace

QString checkDates(const QByteArray& bytes) {
    const QString text = textOf(bytes);
    const auto date = parseDate(text);
    try {
        if (toDate(text) != date) return QStringLiteral("two dates of one text");
    } catch (const RunTimeError& error) {
        if (date || error.number() != RunTimeError::TypeMismatch)
            return QStringLiteral("a date raises ") + QString::number(error.number());
    }
    const QString wrong = checkForms(text, date);
    return wrong.isEmpty() ? checkCell(text, date) : wrong;
}
