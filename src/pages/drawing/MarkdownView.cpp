#include "pages/drawing/MarkdownView.h"

#include "pages/MarkdownCache.h"
#include "pages/drawing/BlockViews.h"

#include <QPainter>

namespace {

constexpr double blockGap = 12;

} // namespace

void MarkdownView::setTheme(const DrawingTheme &theme) {
    if (m_theme == theme)
        return;
    m_theme = theme;
    m_blocks.clear();
    m_places.clear();
    showBlocks();
}

double MarkdownView::setText(const QString &text) {
    if (m_text == text)
        return height();
    m_text = text;
    return showBlocks();
}

double MarkdownView::layIn(double width) {
    if (std::exchange(m_width, width) == width)
        return height();
    for (const Place &place : m_places)
        place.view->layIn(blockWidth());
    if (m_places.empty())
        showBlocks();
    else
        stack();
    return height();
}

double MarkdownView::height() const {
    const double bottom =
        m_places.empty() ? m_margins.top() : m_places.back().top + m_places.back().view->height();
    return bottom + m_margins.bottom();
}

double MarkdownView::showBlocks() {
    const double end = height();
    const bool isLaid = blockWidth() > 0;
    const QList<MarkdownBlock> before =
        std::exchange(m_blocks, isLaid ? cachedMarkdownBlocks(m_text) : QList<MarkdownBlock>());
    const auto count = size_t(m_blocks.size());
    double changed = count < m_places.size() ? m_places[count].top : end;
    m_places.resize(std::min(count, m_places.size()));
    while (m_places.size() < count)
        m_places.push_back({.top = end});
    for (qsizetype index = 0; index < m_blocks.size(); ++index) {
        const BlockContent *shown = index < before.size() ? &before.at(index).content : nullptr;
        const BlockContent &content = m_blocks.at(index).content;
        if (!shown || *shown != content)
            changed = std::min(changed, show(content, shown, m_places[size_t(index)]));
    }
    stack();
    return changed;
}

double MarkdownView::show(const BlockContent &content, const BlockContent *shown, Place &place) {
    if (shown && areOfOneKind(*shown, content))
        return place.top + place.view->setBlock(content);
    place.view = makeBlockView(content, m_theme);
    place.view->layIn(blockWidth());
    place.view->setBlock(content);
    return place.top;
}

void MarkdownView::stack() {
    std::vector<Part> parts;
    double top = m_margins.top();
    int start = 0;
    for (Place &place : m_places) {
        place.top = top;
        place.start = start;
        top += place.view->height() + blockGap;
        if (place.view->isEmpty())
            continue;
        parts.push_back({place.view.get(), QPointF(m_margins.left(), place.top)});
        start += place.view->length() + 1;
    }
    join(std::move(parts));
}

void MarkdownView::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection) const {
    for (size_t index = blockAt(clip.top() - figure::reach); index < m_places.size(); ++index) {
        const Place &place = m_places[index];
        if (place.top - figure::reach > clip.bottom())
            break;
        const QPointF origin = originOf(index);
        painter.translate(origin);
        place.view->draw(painter, clip.translated(-origin),
                         {selection.anchor - place.start, selection.caret - place.start});
        painter.translate(-origin);
    }
}

bool MarkdownView::isTextAt(double y) const {
    return !m_places.empty() && !m_places[blockAt(y)].view->isEmpty();
}

QList<Target> MarkdownView::targets() const {
    QList<Target> targets;
    for (size_t index = 0; index < m_places.size(); ++index) {
        for (const Target &target : m_places[index].view->targets())
            targets.append(::moved(target, originOf(index)));
    }
    return targets;
}

std::optional<Target> MarkdownView::targetAt(const QPointF &point) const {
    if (m_places.empty())
        return std::nullopt;
    const size_t index = blockAt(point.y());
    const QPointF origin = originOf(index);
    const std::optional<Target> target = m_places[index].view->targetAt(point - origin);
    return target ? std::optional(::moved(*target, origin)) : std::nullopt;
}

size_t MarkdownView::blockAt(double y) const {
    const auto isBelow = [](double height, const Place &place) { return height < place.top; };
    const auto after = std::upper_bound(m_places.begin(), m_places.end(), y, isBelow);
    return after == m_places.begin() ? 0 : size_t(std::distance(m_places.begin(), after)) - 1;
}
