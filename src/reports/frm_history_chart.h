// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The bar chart of the months in which a song was played: its backdrop and its bars.
#pragma once

#include "reports/rules/song_history.h"

#include <QWidget>

// The measures of the chart, in pixels of its window.
namespace HistoryChart {

constexpr int Months = MonthsInYear;
constexpr int BarWidth = 44;     // 660 twips
constexpr int Step = 15;         // height of one performance, 225 twips
constexpr int Foot = 204;        // bottom of a song's bars, 3065 twips
constexpr int FootAtRest = 195;  // bottom of the bars after a list was loaded, 2930 twips

// The left edge of a month's bar; January is 0.
int barLeft(int month);

// The English name of a month; January is 0.
QString monthName(int month);

}  // namespace HistoryChart

// The backdrop: a line for each performance, a number at every fifth line, and the names of the
// months below the bars. It lies at the left edge of its window.
class HistoryBackdrop : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// The red bar of one month. Its height shows the count.
class HistoryBar : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Resets the bar to height 0 at its bottom.
    void reset(int month, int foot);

    // Extends the bar upward by a number of performances, without an upper limit, and shows the
    // count as tool tip and accessible name.
    void grow(int month, int count);

protected:
    void paintEvent(QPaintEvent* event) override;
};
