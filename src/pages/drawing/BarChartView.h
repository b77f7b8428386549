#pragma once

#include "pages/drawing/BarRowsView.h"

/// A bar chart: the largest number, or 1 if that is more, takes the whole width.
class BarChartView : public BarRowsView {
public:
    explicit BarChartView(const DrawingTheme &theme);

private:
    Bars barsOf(const BlockContent &content) const override;
};
