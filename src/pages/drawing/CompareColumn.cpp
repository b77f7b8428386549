#include "pages/drawing/CompareColumn.h"

#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Fill.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double barHeight = 2;
constexpr double barOpacity = 0.6;
constexpr double partGap = 10;
constexpr double dashGap = 8;

QString dash() {
    return u"—"_s;
}

double dashWidth(const QFont &font) {
    return std::ceil(QFontMetricsF(font).horizontalAdvance(dash()));
}

} // namespace

CompareColumn::CompareColumn(const DrawingTheme &theme)
    : m_theme(theme),
      m_font(theme.font(TextStep::body)),
      m_title(theme, {.step = TextStep::headline}),
      m_items(theme, {}) {}

double CompareColumn::setTexts(QStringView title, const Texts &items) {
    const bool isSameTitle = m_title.shows(title);
    const qsizetype count = m_items.size();
    m_title.setText(title);
    const qsizetype changed = m_items.setTexts(items);
    if (!isSameTitle || m_items.size() < count)
        return 0;
    return changed < count ? m_items[changed].area().top() - m_area.top() : m_area.height();
}

double CompareColumn::place(const QPointF &origin, double width) {
    const double indent = dashWidth(m_font) + dashGap;
    double bottom = origin.y() + barHeight + partGap;
    m_title.moveTo({origin.x(), bottom});
    bottom += m_title.layIn(width);
    for (qsizetype index = 0; index < m_items.size(); ++index) {
        TextPart &item = m_items[index];
        bottom += partGap;
        item.moveTo({origin.x() + (item.isRightToLeft() ? 0 : indent), bottom});
        bottom += item.layIn(std::max(width - indent, 1.0));
    }
    m_area = QRectF(origin, QPointF(origin.x() + width, bottom));
    return m_area.height();
}

void CompareColumn::draw(QPainter &painter, const QRectF &clip) const {
    fill(painter, {m_area.topLeft(), QSizeF(m_area.width(), barHeight)}, faded(m_base, barOpacity));
    painter.setFont(m_font);
    painter.setPen(m_theme.secondary);
    for (qsizetype index = 0; index < m_items.size(); ++index) {
        const TextPart &item = m_items[index];
        if (!item.area().intersects(clip))
            continue;
        const double left = item.isRightToLeft() ? m_area.right() - dashWidth(m_font) : m_area.left();
        painter.drawText(QPointF(left, item.area().top() + item.firstBaseline()), dash());
    }
}

void CompareColumn::listTexts(std::vector<const TextPart *> &texts) const {
    texts.push_back(&m_title);
    m_items.listTexts(texts);
}
