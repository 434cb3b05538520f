// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/chart_view.h"

#include "charts/rules/chart_page.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"

#include <QHeaderView>
#include <QScrollBar>

void setUpChartView(SheetView& view) {
    view.setPalette(themePalette(themeColours(false)));
    view.setAutoFillBackground(true);  // panels are behind it, and the tab bar has no background
    view.setSpoken([](int, int row) {
        if (row <= ChartRow::LastTitle) return QStringLiteral("title");
        if (row == ChartRow::Spacer) return QString();
        return row % 2 == 0 ? QStringLiteral("lyrics") : QStringLiteral("chord");
    });
    setUpChart(view);
    view.flush();
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view.setFixedWidth(view.horizontalHeader()->length() + 2 * view.frameWidth() +
                       view.verticalScrollBar()->sizeHint().width());
}
