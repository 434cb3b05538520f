// Dates as texts: the form "mm/dd/yy", and what is read as a date.
#pragma once

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

// The current day. All of the program asks here.
QDate today();

// Lets a test choose the day; an invalid date gives the calendar back.
void setToday(const QDate& date);

// The date that a text stands for: m/d/yy, m/d/yyyy, yyyy-mm-dd (with "-" or "/" between), or a
// month's English name with day and year. Two-digit years 00 to 29 are 2000 to 2029, 30 to 99 are
// 1930 to 1999. Nothing where the text is no date; no error.
std::optional<QDate> parseDate(QStringView text);

// As parseDate; raises 13 (type mismatch) where the text is no date.
QDate toDate(QStringView text);

// The form "mm/dd/yy" of a date.
QString formatDate(const QDate& date);

// The form "mm/dd/yy" of a text that is a date; any other text, the empty one too, as it stands.
QString formatDate(const QString& text);
