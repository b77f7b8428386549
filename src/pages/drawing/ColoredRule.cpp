#include "pages/drawing/ColoredRule.h"

#include "pages/drawing/Fill.h"

namespace {

constexpr double barWidth = 36;
constexpr double barHeight = 3;
constexpr double clearSpace = 6;
constexpr double neutralOpacity = 0.75;

} // namespace

double ColoredRule::take(const BlockContent &content) {
    m_color = theme().tint(std::get<block::Divider>(content).color, theme().shade(neutralOpacity));
    return 0;
}

double ColoredRule::arrange(double) {
    return barHeight + 2 * clearSpace;
}

void ColoredRule::drawFigure(QPainter &painter, const QRectF &) const {
    fill(painter, QRectF(0, clearSpace, barWidth, barHeight), m_color);
}

SpokenPart ColoredRule::spoken() const {
    return {.role = QAccessible::Separator, .area = QRectF(0, 0, width(), height())};
}
