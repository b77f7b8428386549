#include "pages/drawing/RowsView.h"

#include <algorithm>

using namespace Qt::StringLiterals;

double RowsView::topOf(qsizetype row) const {
    return row < rowCount() ? m_tops[size_t(row)] : height();
}

double RowsView::topOfChange(qsizetype changed, qsizetype count) const {
    const qsizetype last = std::min(count, rowCount()) - 1;
    return topOf(count == rowCount() ? changed : std::clamp<qsizetype>(last, 0, changed));
}

double RowsView::arrange(double width) {
    const qsizetype rows = rowsIn(width);
    m_tops.assign(1, 0);
    m_tops.reserve(size_t(rows) + 1);
    for (qsizetype row = 0; row < rows; ++row)
        m_tops.push_back(m_tops.back() + placeRow(row, m_tops.back(), width) + m_spacing);
    return rows == 0 ? 0 : m_tops.back() - m_spacing;
}

void RowsView::drawFigure(QPainter &painter, const QRectF &clip) const {
    const auto below = std::upper_bound(m_tops.begin(), m_tops.end(), clip.top());
    const qsizetype first = std::max<qsizetype>(std::distance(m_tops.begin(), below) - 1, 0);
    for (qsizetype row = first; row < rowCount() && topOf(row) < clip.bottom(); ++row) {
        const double bottom = m_tops[size_t(row) + 1] - m_spacing;
        drawRow(painter, row, QRectF(QPointF(0, topOf(row)), QPointF(width(), bottom)));
    }
}

SpokenPart RowsView::spokenList(const TextList &items) const {
    SpokenPart list{.role = QAccessible::List, .area = {0, 0, width(), height()}};
    list.parts.reserve(size_t(items.size()));
    for (qsizetype index = 0; index < items.size(); ++index)
        list.parts.push_back(spokenText(items[index], QAccessible::ListItem));
    return list;
}

SpokenPart RowsView::spokenPairs(const TextList &ones, const TextList &others) const {
    SpokenPart list = spokenList(ones);
    for (qsizetype index = 0; index < others.size(); ++index) {
        const SpokenPart other = spokenText(others[index]);
        SpokenPart &item = list.parts[size_t(index)];
        if (!other.name.isEmpty())
            item.name += u": "_s + other.name;
        item.area |= other.area;
        item.parts.insert(item.parts.end(), other.parts.begin(), other.parts.end());
    }
    return list;
}
