// The chart of a song's months: the ground with its marks, and the bars.
#pragma once

#include <QWidget>

// The measures of the chart, in pixels of the window in which it stands.
namespace HistoryChart {

constexpr int Months = 12;
constexpr int BarWidth = 44;     // 660 twips
constexpr int Step = 15;         // height of one performance, 225 twips
constexpr int Foot = 204;        // of the bars of a song, 3065 twips
constexpr int FootAtRest = 195;  // of the empty bars, 2930 twips

// Left edge of a month's bar; January is 0.
int barLeft(int month);

// A month's English name; January is 0.
QString monthName(int month);

}  // namespace HistoryChart

// The ground: a line for each performance, numbers at every fifth, the months' names under the
// foot. It stands at the left edge of its window; the height above the foot takes what the window
// leaves it.
class HistoryBackdrop : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// The red bar of one month. Its height is its count.
class HistoryBar : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Moves the bar to its foot, with no height.
    void reset(int month, int foot);

    // Lets the bar grow upward from its foot by a number of performances, beyond the ground where
    // they are many, and tells the count as tool tip and to screen readers.
    void grow(int month, int count);

protected:
    void paintEvent(QPaintEvent* event) override;
};
