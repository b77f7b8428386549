#include "screens/FlowLayout.h"

#include <algorithm>

FlowLayout::FlowLayout(int spacing) {
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem *item) {
    m_items.emplace_back(item);
}

QLayoutItem *FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[size_t(index)].get() : nullptr;
}

QLayoutItem *FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem *item = m_items[size_t(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

QSize FlowLayout::sizeHint() const {
    QSize size;
    for (const auto &item : m_items) {
        const QSize hint = item->sizeHint();
        size.rwidth() += hint.width() + (size.isEmpty() ? 0 : spacing());
        size.setHeight(std::max(size.height(), hint.height()));
    }
    return size;
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const auto &item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

int FlowLayout::heightForWidth(int width) const {
    return lay(QRect(0, 0, width, 0), Move::tellHeight);
}

void FlowLayout::setGeometry(const QRect &area) {
    QLayout::setGeometry(area);
    lay(area, Move::place);
}

int FlowLayout::lay(const QRect &area, Move move) const {
    QPoint place = area.topLeft();
    int lineHeight = 0;
    for (const auto &item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (place.x() > area.left() && place.x() + size.width() > area.right() + 1) {
            place = {area.left(), place.y() + lineHeight + spacing()};
            lineHeight = 0;
        }
        if (move == Move::place)
            item->setGeometry({place, size});
        place.rx() += size.width() + spacing();
        lineHeight = std::max(lineHeight, size.height());
    }
    return place.y() + lineHeight - area.top();
}
