#include "pages/drawing/ListView.h"

#include "pages/drawing/Tabular.h"

#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double itemGap = 6;
constexpr double markerGap = 8;

const Texts &itemsOf(const BlockContent &content) {
    if (const auto *bullet = std::get_if<block::Bullet>(&content))
        return bullet->items;
    if (const auto *numbered = std::get_if<block::Numbered>(&content))
        return numbered->items;
    return std::get<block::Sources>(content).items;
}

} // namespace

ListView::ListView(const DrawingTheme &theme, Marker marker)
    : RowsView(theme, itemGap),
      m_marker(marker),
      m_font(theme.font(TextStep::body)),
      m_items(theme, {.use = TextPart::Use::selectable}) {}

double ListView::take(const BlockContent &content) {
    const double changed = topOf(m_items.setTexts(itemsOf(content)));
    const double markerWidth = widestMarker();
    // All items move when the numbers get another digit.
    return std::exchange(m_markerWidth, markerWidth) == markerWidth ? changed : 0;
}

double ListView::placeRow(qsizetype row, double top, double width) {
    TextPart &item = m_items[row];
    const double indent = m_markerWidth + markerGap;
    item.moveTo({item.isRightToLeft() ? 0 : indent, top});
    return item.layIn(std::max(width - indent, 1.0));
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
    SpokenPart list = spokenList(m_items);
    for (qsizetype row = 0; m_marker != Marker::bullet && row < m_items.size(); ++row) {
        QString &name = list.parts[size_t(row)].name;
        name = markerOf(row) + u' ' + name;
    }
    return list;
}

QString ListView::markerOf(qsizetype item) const {
    const QString place = QString::number(item + 1);
    switch (m_marker) {
    case Marker::bullet:
        return u"•"_s;
    case Marker::number:
        return place + u'.';
    case Marker::source:
        return u'[' + place + u']';
    }
    Q_UNREACHABLE();
}

double ListView::widestMarker() const {
    const QString last = m_items.size() == 0 ? QString() : markerOf(m_items.size() - 1);
    return std::ceil(tabularWidth(QFontMetricsF(m_font), last));
}
