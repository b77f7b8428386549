#include "pages/drawing/SpecView.h"

#include "pages/drawing/Fill.h"

#include <algorithm>

namespace {

constexpr double keyWidth = 160;
constexpr double keyTracking = 1;
constexpr double columnGap = 16;
constexpr double padding = 10; ///< above each row and below it

TextPart::Setting keySetting(const DrawingTheme &theme) {
    TextPart::Setting setting = captionSetting(theme, keyTracking);
    setting.reading = TextPart::Reading::plain;
    return setting;
}

} // namespace

SpecView::SpecView(const DrawingTheme &theme)
    : RowsView(theme, figure::hairline),
      m_keys(theme, keySetting(theme)),
      m_values(theme, {.step = TextStep::callout, .use = TextPart::Use::selectable}) {}

double SpecView::take(const BlockContent &content) {
    const auto &items = std::get<block::Spec>(content).items;
    const qsizetype key = m_keys.setTexts(leftsOf(items));
    const qsizetype value = m_values.setTexts(rightsOf(items));
    return topOfChange(std::min(key, value), items.size());
}

double SpecView::placeRow(qsizetype row, double top, double width) {
    m_keys[row].moveTo({0, top + padding});
    m_values[row].moveTo({keyWidth + columnGap, top + padding});
    const double key = m_keys[row].layIn(keyWidth);
    const double value = m_values[row].layIn(std::max(width - keyWidth - columnGap, 1.0));
    return std::max(key, value) + 2 * padding;
}

void SpecView::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    if (row + 1 < rowCount())
        fill(painter, {0, area.bottom(), area.width(), figure::hairline},
             theme().shade(figure::hairlineOpacity));
}

void SpecView::listTexts(TextParts &texts) const {
    for (qsizetype row = 0; row < m_keys.size(); ++row)
        texts.insert(texts.end(), {&m_keys[row], &m_values[row]});
}
