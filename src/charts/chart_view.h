// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A chart on screen.
#pragma once

class SheetView;

// Sets up a view for a chart of one page that looks like a printed one: white in the dark theme
// too, and as wide as its cells and its scroll bar.
void setUpChartView(SheetView& view);
