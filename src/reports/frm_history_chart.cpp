// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/frm_history_chart.h"

#include "platform/desktop/desktop.h"

#include <QLocale>
#include <QPainter>

namespace HistoryChart {

int barLeft(int month) {
    constexpr int lefts[Months] = {390,  1140, 1875, 2610, 3330, 4050,
                                   4785, 5520, 6255, 6975, 7695, 8430};  // twips
    return px(lefts[month]);
}

QString monthName(int month) { return QLocale::c().standaloneMonthName(month + 1); }

}  // namespace HistoryChart

using namespace HistoryChart;

namespace {

constexpr int MostMarks = 13;  // performances that fit on the backdrop
constexpr int MarkEvery = 5;   // a stronger line with a number
constexpr int NameHeight = 24;
constexpr int NumberGap = 6;
constexpr QColor BarRed(255, 0, 0);

}  // namespace

void HistoryBackdrop::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.translate(-pos());
    const int left = barLeft(0);
    const int right = barLeft(Months - 1) + BarWidth;
    const QColor strong = palette().color(QPalette::Mid);
    QColor faint = strong;
    faint.setAlphaF(0.35F);
    for (int n = 0; n <= MostMarks; ++n) {
        const int y = Foot - n * Step;
        const bool marked = n % MarkEvery == 0;
        painter.setPen(marked ? strong : faint);
        painter.drawLine(left, y, right, y);
        if (!marked || n == 0) continue;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(0, y - Step / 2, left - NumberGap, Step),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(n));
    }
    painter.setPen(palette().color(QPalette::WindowText));
    for (int month = 0; month < Months; ++month)
        painter.drawText(QRect(barLeft(month), Foot, BarWidth, NameHeight), Qt::AlignCenter,
                         monthName(month).left(3));
}

void HistoryBar::reset(int month, int foot) {
    setGeometry(barLeft(month), foot, BarWidth, 0);
    setToolTip(QString());
    setAccessibleName(monthName(month));
}

void HistoryBar::grow(int month, int count) {
    // Deliberate: behaviour 152.
    const int height = count * Step;
    setGeometry(x(), y() - height, BarWidth, height);
    const QString text = QStringLiteral("%1: %2").arg(monthName(month)).arg(count);
    setToolTip(text);
    setAccessibleName(text);
}

void HistoryBar::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), BarRed); }
