#include "pages/drawing/ListView.h"

#include "pages/drawing/Tabular.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr double itemGap = 6;
constexpr double markerGap = 8;

} // namespace

ListView::ListView(const DrawingTheme &theme, Marker marker)
    : RowsView(theme, itemGap),
      m_marker(marker),
      m_font(theme.font(TextStep::body)),
      m_items(theme, {.use = TextPart::Use::selectable}) {}

double ListView::take(const BlockContent &content) {
    const bool isNumbered = m_marker == Marker::number;
    const Texts &items =
        isNumbered ? std::get<block::Numbered>(content).items : std::get<block::Bullet>(content).items;
    const double changed = topOf(m_items.setTexts(items));
    // All items move when the numbers get another digit.
    return std::exchange(m_markerWidth, widestMarker()) == m_markerWidth ? changed : 0;
}

double ListView::placeRow(qsizetype row, double top, double width) {
    TextPart &item = m_items[row];
    const double indent = m_markerWidth + markerGap;
    item.moveTo({item.isRightToLeft() ? 0 : indent, top});
    return item.layIn(std::max(width - indent, 1.0));
}

void ListView::listTexts(TextParts &texts) const {
    for (qsizetype row = 0; row < m_items.size(); ++row)
        texts.push_back(&m_items[row]);
}

void ListView::drawRow(QPainter &painter, qsizetype row, const QRectF &) const {
    const TextPart &item = m_items[row];
    const QString marker = markerOf(row);
    // Numbers end in line with each other.
    const double x = item.isRightToLeft() ? item.area().right() + markerGap
                                          : m_markerWidth - tabularWidth(QFontMetricsF(m_font), marker);
    painter.setFont(m_font);
    painter.setPen(theme().secondary);
    drawTabular(painter, {x, item.area().top() + item.firstBaseline()}, marker);
}

SpokenPart ListView::spoken() const {
    SpokenPart list{.role = QAccessible::List, .area = QRectF(0, 0, width(), height())};
    list.parts.reserve(size_t(m_items.size()));
    for (qsizetype row = 0; row < m_items.size(); ++row) {
        SpokenPart item = spokenText(m_items[row], QAccessible::ListItem);
        if (m_marker == Marker::number)
            item.name = markerOf(row) + u' ' + item.name;
        list.parts.push_back(std::move(item));
    }
    return list;
}

QString ListView::markerOf(qsizetype item) const {
    return m_marker == Marker::bullet ? QString(u'•') : QString::number(item + 1) + u'.';
}

double ListView::widestMarker() const {
    const QString last = m_items.size() == 0 ? QString() : markerOf(m_items.size() - 1);
    return std::ceil(tabularWidth(QFontMetricsF(m_font), last));
}
