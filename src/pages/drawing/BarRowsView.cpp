#include "pages/drawing/BarRowsView.h"

#include "pages/drawing/Fill.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double fieldGap = 6;
constexpr double trackOpacity = 0.12;

QRectF bottomOf(const QRectF &area, double height, double share) {
    return {area.left(), area.bottom() - height, area.width() * share, height};
}

} // namespace

BarRowsView::BarRowsView(const DrawingTheme &theme, const Kind &kind)
    : RowsView(theme, kind.spacing),
      m_kind(kind),
      m_lines(theme) {}

double BarRowsView::take(const BlockContent &content) {
    const Bars bars = barsOf(content);
    const QColor tint = theme().tint(bars.color, theme().primary);
    if (std::exchange(m_tint, tint) != tint)
        m_shares.clear();
    const auto difference =
        std::mismatch(m_shares.begin(), m_shares.end(), bars.shares.begin(), bars.shares.end());
    const qsizetype line = m_lines.setLines(bars.labels, bars.numbers);
    const qsizetype bar = std::distance(m_shares.begin(), difference.first);
    m_shares = bars.shares;
    return topOf(std::min(line, bar));
}

double BarRowsView::placeRow(qsizetype row, double top, double width) {
    return m_lines.place(row, {0, top}, width) + fieldGap + m_kind.fieldHeight;
}

void BarRowsView::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    fill(painter, bottomOf(area, m_kind.trackHeight, 1), theme().shade(trackOpacity));
    fill(painter, bottomOf(area, m_kind.barHeight, m_shares[row]), m_tint);
}

SpokenPart BarRowsView::spoken() const {
    return {.role = QAccessible::Graphic,
            .name = m_lines.sentence(m_kind.name),
            .area = {0, 0, width(), height()}};
}
