#include "pages/drawing/CompareView.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double columnGap = 12;

/// The first of the texts, and the others without the empty ones.
double show(CompareColumn &column, Texts texts) {
    const QStringView title = texts.isEmpty() ? QStringView() : texts.takeFirst();
    texts.removeIf([](QStringView text) { return text.isEmpty(); });
    return column.setTexts(title, texts);
}

} // namespace

double CompareView::take(const BlockContent &content) {
    const auto &[rows, color] = std::get<block::Compare>(content);
    const QColor base = theme().tint(color, theme().primary);
    const bool isSame = std::exchange(m_base, base) == base;
    m_left.setBase(base);
    m_right.setBase(base);
    const double left = show(m_left, leftsOf(rows));
    const double right = show(m_right, rightsOf(rows));
    return isSame ? std::min(left, right) : 0;
}

double CompareView::arrange(double width) {
    const double columnWidth = std::max(std::floor((width - columnGap) / 2), 1.0);
    const double left = m_left.place({0, 0}, columnWidth);
    const double right = m_right.place({columnWidth + columnGap, 0}, columnWidth);
    return std::max(left, right);
}

void CompareView::listTexts(TextParts &texts) const {
    m_left.listTexts(texts);
    m_right.listTexts(texts);
}

void CompareView::drawFigure(QPainter &painter, const QRectF &clip) const {
    m_left.draw(painter, clip);
    m_right.draw(painter, clip);
}

SpokenPart CompareView::spoken() const {
    return {.role = QAccessible::Grouping,
            .area = {0, 0, width(), height()},
            .parts = {spokenColumn(m_left), spokenColumn(m_right)}};
}

SpokenPart CompareView::spokenColumn(const CompareColumn &column) const {
    SpokenPart list{.role = QAccessible::List, .name = column.title().text(), .area = column.area()};
    list.parts = spokenText(column.title()).parts;
    for (qsizetype index = 0; index < column.items().size(); ++index)
        list.parts.push_back(spokenText(column.items()[index], QAccessible::ListItem));
    return list;
}
