#include "pages/drawing/ProgressListView.h"

#include "pages/drawing/FigureArithmetic.h"

using namespace Qt::StringLiterals;

ProgressListView::ProgressListView(const DrawingTheme &theme)
    : BarRowsView(
          theme, {.name = u"Progress"_s, .spacing = 12, .fieldHeight = 3, .trackHeight = 3, .barHeight = 3}) {
}

BarRowsView::Bars ProgressListView::barsOf(const BlockContent &content) const {
    const auto &progress = std::get<block::Progress>(content);
    Bars bars{.labels = labelsOf(progress.items), .color = progress.color};
    for (const LabelledNumber &item : progress.items) {
        bars.numbers.append(figure::printedPercentage(item.value));
        bars.shares.append(figure::percentage(item.value) / 100);
    }
    return bars;
}
