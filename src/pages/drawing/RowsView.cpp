#include "pages/drawing/RowsView.h"

#include <algorithm>

double RowsView::topOf(qsizetype row) const {
    return row < rowCount() ? m_tops[size_t(row)] : height();
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
