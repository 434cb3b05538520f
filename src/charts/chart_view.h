// A chart on the screen.
#pragma once

class SheetView;

// Makes a grid of the design a chart of one page that looks like a printed one: a white sheet in
// the dark theme too, as wide as its cells and its scroll bar.
void setUpChartView(SheetView& view);
