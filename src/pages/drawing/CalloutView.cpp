#include "pages/drawing/CalloutView.h"

#include "pages/PageColor.h"
#include "pages/drawing/Fill.h"

#include <algorithm>

namespace {

constexpr double barWidth = 3;
constexpr double barGap = 12;
constexpr double barOpacity = 0.35;
constexpr double captionTracking = 1.2;
constexpr double lineGap = 6;

} // namespace

CalloutView::CalloutView(const DrawingTheme &theme)
    : BlockView(theme),
      m_caption(theme, captionSetting(theme, captionTracking)),
      m_text(theme, {.use = TextPart::Use::selectable}) {}

double CalloutView::take(const BlockContent &content) {
    const auto &[text, color] = std::get<block::Callout>(content);
    const QColor barColor = theme().tint(color, theme().shade(barOpacity));
    const bool isSameBar = std::exchange(m_barColor, barColor) == barColor;
    const bool wasRightToLeft = m_text.isRightToLeft();
    m_caption.setColor(theme().tint(color, theme().secondary));
    m_caption.setText(calloutLabel(color));
    const double changed = m_text.area().top() + m_text.setText(text);
    return isSameBar && m_text.isRightToLeft() == wasRightToLeft ? changed : 0;
}

double CalloutView::arrange(double width) {
    const double room = std::max(width - barWidth - barGap, 1.0);
    const bool isMirrored = m_text.isRightToLeft();
    const double left = isMirrored ? 0 : barWidth + barGap;
    const double captionHeight = m_caption.layIn(room);
    m_caption.moveTo({isMirrored ? room - m_caption.usedWidth() : left, 0});
    m_text.moveTo({left, captionHeight + lineGap});
    return captionHeight + lineGap + m_text.layIn(room);
}

void CalloutView::drawFigure(QPainter &painter, const QRectF &) const {
    const double left = m_text.isRightToLeft() ? width() - barWidth : 0;
    fill(painter, {left, 0, barWidth, height()}, m_barColor);
}

SpokenPart CalloutView::spoken() const {
    return {.role = QAccessible::Grouping,
            .name = m_caption.text(),
            .area = {0, 0, width(), height()},
            .parts = {spokenText(m_text, QAccessible::Paragraph)}};
}
