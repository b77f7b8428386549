#include "pages/drawing/BarChartView.h"

#include "pages/ChartNumber.h"
#include "pages/drawing/FigureArithmetic.h"

using namespace Qt::StringLiterals;

BarChartView::BarChartView(const DrawingTheme &theme)
    : BarRowsView(
          theme,
          {.name = u"Bar chart"_s, .spacing = 14, .fieldHeight = 8, .trackHeight = 1, .barHeight = 5}) {}

BarRowsView::Bars BarChartView::barsOf(const BlockContent &content) const {
    const auto &chart = std::get<block::Chart>(content);
    const double scale = figure::scaleOf(valuesOf(chart.items));
    Bars bars{.labels = labelsOf(chart.items), .color = chart.color};
    for (const LabelledNumber &item : chart.items) {
        bars.numbers.append(formatChartValue(item.value));
        bars.shares.append(figure::barShare(item.value, scale));
    }
    return bars;
}
