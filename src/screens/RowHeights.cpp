#include "screens/RowHeights.h"

#include <algorithm>

int RowHeights::total() const {
    return m_rows.isEmpty() ? 0 : bottom(count() - 1) + m_padding;
}

int RowHeights::rowAt(int y) const {
    const auto after = std::upper_bound(m_rows.begin(), m_rows.end(), y,
                                        [](int height, const Row &row) { return height < row.top; });
    const int row = int(std::distance(m_rows.begin(), after)) - 1;
    return m_rows.isEmpty() ? -1 : std::max(row, 0);
}

void RowHeights::replace(int first, int removed, const QList<int> &estimates) {
    QList<Row> rows = m_rows.mid(0, first);
    rows.reserve(first + estimates.size() + m_rows.size() - first - removed);
    for (const int estimate : estimates)
        rows.append({0, estimate, false});
    rows.append(m_rows.mid(first + removed));
    m_rows = rows;
    stack(first);
}

void RowHeights::measure(int row, int height) {
    m_rows[row].isMeasured = true;
    if (std::exchange(m_rows[row].height, height) != height)
        stack(row);
}

void RowHeights::forget(int row) {
    m_rows[row].isMeasured = false;
}

void RowHeights::stack(int first) {
    int top = first == 0 ? m_padding : bottom(first - 1) + m_spacing;
    for (int row = first; row < count(); ++row) {
        m_rows[row].top = top;
        top += m_rows.at(row).height + m_spacing;
    }
}
