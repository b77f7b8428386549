#include "pages/drawing/CardsView.h"

#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Fill.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype columns = 2;
constexpr double gap = 12; ///< between rows and between columns
constexpr double barHeight = 2;
constexpr double barOpacity = 0.7;
constexpr double neutralOpacity = 0.2;
constexpr double partGap = 8; ///< between the parts of a card

} // namespace

CardsView::CardsView(const DrawingTheme &theme)
    : RowsView(theme, gap),
      m_titles(theme, {.step = TextStep::headline}),
      m_texts(theme, {.step = TextStep::callout, .color = theme.secondary}) {}

double CardsView::take(const BlockContent &content) {
    const auto &[items, color] = std::get<block::Cards>(content);
    const std::optional<Color> named = pageColor(color);
    const QColor barColor = named ? faded(colorOf(*named), barOpacity) : theme().shade(neutralOpacity);
    const bool isSame = std::exchange(m_barColor, barColor) == barColor;
    const qsizetype title = m_titles.setTexts(leftsOf(items));
    const qsizetype text = m_texts.setTexts(rightsOf(items));
    return isSame ? topOf(std::min(title, text) / columns) : 0;
}

qsizetype CardsView::rowsIn(double width) {
    m_cardWidth = std::max(std::floor((width - gap) / columns), 1.0);
    return (m_titles.size() + columns - 1) / columns;
}

double CardsView::placeRow(qsizetype row, double top, double) {
    double height = 0;
    for (qsizetype card = row * columns; card < std::min((row + 1) * columns, m_titles.size()); ++card)
        height = std::max(height, placeCard(card, top));
    return height;
}

double CardsView::placeCard(qsizetype card, double top) {
    double bottom = top + barHeight + partGap;
    m_titles[card].moveTo({leftOf(card), bottom});
    bottom += m_titles[card].layIn(m_cardWidth);
    if (m_texts[card].text().isEmpty())
        return bottom - top;
    m_texts[card].moveTo({leftOf(card), bottom + partGap});
    return bottom + partGap + m_texts[card].layIn(m_cardWidth) - top;
}

void CardsView::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    for (qsizetype card = row * columns; card < std::min((row + 1) * columns, m_titles.size()); ++card)
        fill(painter, {leftOf(card), area.top(), m_cardWidth, barHeight}, m_barColor);
}

void CardsView::listTexts(TextParts &texts) const {
    for (qsizetype card = 0; card < m_titles.size(); ++card)
        texts.insert(texts.end(), {&m_titles[card], &m_texts[card]});
}

double CardsView::leftOf(qsizetype card) const {
    return double(card % columns) * (m_cardWidth + gap);
}
