// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/dates.h"

#include "core/data/run_time_error.h"

#include <QStringList>

#include <array>
#include <atomic>

namespace {

std::atomic<QDate> g_today;  // work is kept by another thread

int fullYear(int year, qsizetype digits) {
    if (digits > 2) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

// Reads up to `most` digits from `at` on and moves `at` behind them. Returns -1 if there are none.
int readNumber(QStringView text, qsizetype& at, int most) {
    int value = -1;
    for (int n = 0; n < most && at < text.size(); ++n, ++at) {
        const ushort unit = text[at].unicode();
        if (unit < '0' || unit > '9') break;
        value = (value < 0 ? 0 : value * 10) + (unit - '0');
    }
    return value;
}

bool isSeparator(QChar c) { return c == QLatin1Char('/') || c == QLatin1Char('-'); }

std::optional<QDate> valid(int year, int month, int day) {
    if (!QDate::isValid(year, month, day)) return std::nullopt;
    return QDate(year, month, day);
}

std::optional<QDate> parseNumbers(QStringView text) {
    std::array<int, 3> part{};
    std::array<qsizetype, 3> digits{};
    qsizetype at = 0;
    for (int i = 0; i < 3; ++i) {
        if (i > 0) {
            if (at >= text.size() || !isSeparator(text[at])) return std::nullopt;
            ++at;
        }
        const qsizetype start = at;
        part[i] = readNumber(text, at, 4);
        digits[i] = at - start;
        if (part[i] < 0) return std::nullopt;
    }
    if (at != text.size()) return std::nullopt;
    if (digits[0] == 4)
        return digits[1] > 2 || digits[2] > 2 ? std::nullopt : valid(part[0], part[1], part[2]);
    if (digits[0] > 2 || digits[1] > 2 || digits[2] == 3) return std::nullopt;
    return valid(fullYear(part[2], digits[2]), part[0], part[1]);
}

int monthOfName(QStringView word) {
    static const QStringList names = QStringLiteral(
                                         "january february march april may june july august "
                                         "september october november december")
                                         .split(QLatin1Char(' '));
    if (word.size() < 3) return 0;
    for (int i = 0; i < names.size(); ++i)
        if (names[i].startsWith(word, Qt::CaseInsensitive)) return i + 1;
    return 0;
}

// "June 5, 2026", "5 June 2026", "Jun 5 26": a name and two numbers, the year last.
std::optional<QDate> parseWords(QStringView text) {
    QString plain = text.toString();
    for (QChar& c : plain)
        if (c == QLatin1Char(',') || c == QLatin1Char('.') || isSeparator(c)) c = QLatin1Char(' ');
    const QStringList words = plain.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.size() != 3) return std::nullopt;
    const int nameAt = monthOfName(words[0]) ? 0 : 1;
    const int month = monthOfName(words[nameAt]);
    bool dayOk = false;
    bool yearOk = false;
    const int day = words[1 - nameAt].toInt(&dayOk);
    const int year = words[2].toInt(&yearOk);
    if (!month || !dayOk || !yearOk || words[2].size() > 4 || words[2].size() == 3)
        return std::nullopt;
    return valid(fullYear(year, words[2].size()), month, day);
}

}  // namespace

QDate today() {
    const QDate set = g_today;
    return set.isValid() ? set : QDate::currentDate();
}

void setToday(const QDate& date) { g_today = date; }

std::optional<QDate> parseDate(QStringView text) {
    text = text.trimmed();
    if (text.isEmpty()) return std::nullopt;
    const ushort first = text.front().unicode();
    if (first >= '0' && first <= '9')
        if (const auto date = parseNumbers(text)) return date;
    return parseWords(text);
}

QDate toDate(QStringView text) {
    if (const auto date = parseDate(text)) return *date;
    throw RunTimeError(RunTimeError::TypeMismatch,
                       QStringLiteral("Type mismatch: \"%1\" is not a date such as 06/12/05.")
                           .arg(text.toString()));
}

QString formatDate(const QDate& date) {
    const auto two = [](int n) {
        return std::array<QChar, 2>{QChar(ushort('0' + n / 10 % 10)), QChar(ushort('0' + n % 10))};
    };
    const auto month = two(date.month());
    const auto day = two(date.day());
    const auto year = two(date.year() % 100);
    const QChar slash = QLatin1Char('/');
    const QChar text[] = {month[0], month[1], slash, day[0], day[1], slash, year[0], year[1]};
    return QString(text, 8);
}

QString formatDate(const QString& text) {
    const auto date = parseDate(text);
    return date ? formatDate(*date) : text;
}
