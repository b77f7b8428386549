#include "pages/drawing/QuoteView.h"

#include "pages/drawing/Fill.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double barWidth = 3;
constexpr double barGap = 12;
constexpr double barOpacity = 0.75;

} // namespace

QuoteView::QuoteView(const DrawingTheme &theme)
    : BlockView(theme),
      m_text(theme, {.step = TextStep::quote, .color = theme.secondary, .use = TextPart::Use::selectable}) {}

double QuoteView::take(const BlockContent &content) {
    const bool wasRightToLeft = m_text.isRightToLeft();
    const double changed = m_text.setText(joinedLines(std::get<block::Quote>(content).lines));
    return m_text.isRightToLeft() == wasRightToLeft ? changed : 0;
}

double QuoteView::arrange(double width) {
    m_text.moveTo({m_text.isRightToLeft() ? 0 : barWidth + barGap, 0});
    return m_text.layIn(std::max(width - barWidth - barGap, 1.0));
}

void QuoteView::drawFigure(QPainter &painter, const QRectF &) const {
    const double left = m_text.isRightToLeft() ? width() - barWidth : 0;
    fill(painter, QRectF(left, 0, barWidth, height()), theme().shade(barOpacity));
}

SpokenPart QuoteView::spoken() const {
    return {.role = QAccessible::Grouping,
            .name = u"Quote"_s,
            .area = QRectF(0, 0, width(), height()),
            .parts = {spokenText(m_text, QAccessible::Paragraph)}};
}
