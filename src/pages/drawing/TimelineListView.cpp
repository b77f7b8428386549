#include "pages/drawing/TimelineListView.h"

#include "pages/drawing/Fill.h"

#include <algorithm>

namespace {

constexpr double dotSize = 7;
constexpr double dotDrop = 5; ///< from the top of its row
constexpr double lineWidth = 1;
constexpr double lineOpacity = 0.15;
constexpr double itemGap = 10;    ///< beside the rail
constexpr double clearSpace = 10; ///< below an item

} // namespace

TimelineListView::TimelineListView(const DrawingTheme &theme)
    : RowsView(theme, 0),
      m_items(theme, {.use = TextPart::Use::selectable}) {}

double TimelineListView::take(const BlockContent &content) {
    const auto &[items, color] = std::get<block::Timeline>(content);
    const QColor tint = theme().tint(color, theme().primary);
    const bool isSame = std::exchange(m_tint, tint) == tint;
    const bool wasMirrored = isMirrored();
    const qsizetype changed = m_items.setTexts(items);
    return isSame && isMirrored() == wasMirrored ? topOfChange(changed, items.size()) : 0;
}

double TimelineListView::placeRow(qsizetype row, double top, double width) {
    m_items[row].moveTo({isMirrored() ? 0 : dotSize + itemGap, top});
    return m_items[row].layIn(std::max(width - dotSize - itemGap, 1.0)) + clearSpace;
}

void TimelineListView::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    const QRectF dot(isMirrored() ? area.right() - dotSize : 0, area.top() + dotDrop, dotSize, dotSize);
    const double left = dot.left() + (dotSize - lineWidth) / 2;
    const QColor lineColor = theme().shade(lineOpacity);
    if (row > 0)
        fill(painter, {left, area.top(), lineWidth, dotDrop}, lineColor);
    if (row + 1 < rowCount())
        fill(painter, {left, dot.bottom(), lineWidth, area.bottom() - dot.bottom()}, lineColor);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_tint);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawEllipse(dot);
}

bool TimelineListView::isMirrored() const {
    return m_items.size() > 0 && m_items[0].isRightToLeft();
}
