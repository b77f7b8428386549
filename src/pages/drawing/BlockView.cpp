#include "pages/drawing/BlockView.h"

#include <QPainter>

#include <cmath>

namespace {

Target targetOf(const TextPart &text, const TextPart::Link &link) {
    return {.kind = Target::Kind::link,
            .name = text.text().sliced(link.start, link.length),
            .address = link.address,
            .areas = text.areasOf(link)};
}

/// A link that consists of a line end covers nothing that could be pressed.
QList<Target> targetsOf(const TextPart &text) {
    QList<Target> targets;
    for (const TextPart::Link &link : text.links())
        targets.append(targetOf(text, link));
    targets.removeIf([](const Target &target) { return target.areas.isEmpty(); });
    return targets;
}

bool contains(const Target &target, const QPointF &point) {
    return std::any_of(target.areas.begin(), target.areas.end(),
                       [&](const QRectF &area) { return area.contains(point); });
}

} // namespace

double BlockView::setBlock(const BlockContent &content) {
    const double changed = take(content);
    arrangeAll();
    return changed;
}

double BlockView::layIn(double width) {
    if (std::exchange(m_width, width) != width)
        arrangeAll();
    return m_height;
}

void BlockView::arrangeAll() {
    m_height = std::ceil(arrange(m_width));
    m_texts.clear();
    listTexts(m_texts);
    std::vector<Part> selectable;
    for (const TextPart *text : m_texts) {
        if (text->isSelectable())
            selectable.push_back({&text->flow(), text->area().topLeft()});
    }
    join(std::move(selectable));
}

void BlockView::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection) const {
    painter.save();
    drawFigure(painter, clip);
    int start = 0;
    for (const TextPart *text : m_texts) {
        if (!text->isSelectable()) {
            text->draw(painter, clip);
            continue;
        }
        const int length = text->flow().length();
        text->draw(painter, clip,
                   {std::clamp(selection.start() - start, 0, length),
                    std::clamp(selection.end() - start, 0, length)});
        start += length + 1;
    }
    painter.restore();
}

QList<Target> BlockView::targets() const {
    QList<Target> targets;
    for (const TextPart *text : m_texts)
        targets.append(targetsOf(*text));
    return targets + buttons();
}

std::optional<Target> BlockView::targetAt(const QPointF &point) const {
    for (const TextPart *text : m_texts) {
        const bool isInside = text->area().contains(point);
        if (const TextPart::Link *link = isInside ? text->linkAt(point) : nullptr)
            return targetOf(*text, *link);
    }
    for (const Target &button : buttons()) {
        if (contains(button, point))
            return button;
    }
    return std::nullopt;
}

SpokenPart BlockView::spokenText(const TextPart &text, QAccessible::Role role) const {
    SpokenPart spoken{.role = role, .name = text.text(), .area = text.area()};
    for (const Target &target : targetsOf(text))
        spoken.parts.push_back(
            {.role = QAccessible::Link, .name = target.name, .area = target.areas.first(), .target = target});
    return spoken;
}
