// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Today, and dates as texts in the form "mm/dd/yy".
#pragma once

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

// The current day. The whole program takes it from here.
QDate today();

// Sets the day for a test; an invalid date returns to the calendar.
void setToday(const QDate& date);

// Reads a date: m/d/yy, m/d/yyyy, yyyy-mm-dd (with "-" or "/" as separators), or the English name
// of a month with day and year. Two-digit years 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to
// 1999. Returns nothing if the text is not a date.
std::optional<QDate> parseDate(QStringView text);

// Reads a date like parseDate. Raises RunTimeError::TypeMismatch if the text is not a date.
QDate toDate(QStringView text);

// A date in the form "mm/dd/yy". As a text in the database it sorts by month first.
// Deliberate: behaviour 8.
QString formatDate(const QDate& date);

// A text that is a date in the form "mm/dd/yy"; any other text unchanged.
QString formatDate(const QString& text);
