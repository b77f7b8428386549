#include "pages/drawing/FlowDiagramView.h"

#include "pages/drawing/ColorOf.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double paddingX = 14;
constexpr double paddingY = 10;
constexpr double radius = 8;
constexpr double stroke = 1;
constexpr double strokeOpacity = 0.35;
constexpr double arrowSize = 10;
constexpr double arrowLeft = 20;
constexpr double arrowGap = 4; ///< above it and below
constexpr double arrowStroke = 1.6;
constexpr double arrowOpacity = 0.55;

} // namespace

FlowDiagramView::FlowDiagramView(const DrawingTheme &theme)
    : RowsView(theme, arrowGap + arrowSize + arrowGap),
      m_steps(theme, {.use = TextPart::Use::selectable}) {}

double FlowDiagramView::take(const BlockContent &content) {
    const auto &[steps, color] = std::get<block::Flow>(content);
    const QColor tint = theme().tint(color, theme().primary);
    const bool isSame = std::exchange(m_tint, tint) == tint;
    const qsizetype changed = m_steps.setTexts(steps);
    return isSame ? topOfChange(changed, steps.size()) : 0;
}

double FlowDiagramView::placeRow(qsizetype row, double top, double width) {
    m_steps[row].moveTo({paddingX, top + paddingY});
    return m_steps[row].layIn(std::max(width - 2 * paddingX, 1.0)) + 2 * paddingY;
}

void FlowDiagramView::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    constexpr double half = stroke / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faded(m_tint, strokeOpacity), stroke));
    painter.drawRoundedRect(area.adjusted(half, half, -half, -half), radius, radius);
    if (row + 1 < rowCount())
        drawArrow(painter, area.bottom() + arrowGap);
}

void FlowDiagramView::drawArrow(QPainter &painter, double top) const {
    constexpr double inset = arrowStroke / 2;
    constexpr double reach = 3.5; ///< of the point's sides
    const QPointF tip(arrowLeft + arrowSize / 2, top + arrowSize - inset);
    painter.setPen(
        QPen(faded(m_tint, arrowOpacity), arrowStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath arrow(QPointF(tip.x(), top + inset));
    arrow.lineTo(tip);
    arrow.moveTo(tip - QPointF(reach, reach));
    arrow.lineTo(tip);
    arrow.lineTo(tip + QPointF(reach, -reach));
    painter.drawPath(arrow);
}
