#include "pages/drawing/JoinedText.h"

#include <QStringList>

namespace {

TextSelection shifted(const TextSelection &selection, int by) {
    return {selection.anchor + by, selection.caret + by};
}

} // namespace

void JoinedText::join(std::vector<Part> parts) {
    m_parts = std::move(parts);
    int start = 0;
    for (Part &part : m_parts) {
        part.start = start;
        start += part.text->length() + 1;
    }
}

int JoinedText::length() const {
    return isEmpty() ? 0 : m_parts.back().start + m_parts.back().text->length();
}

QString JoinedText::textBetween(int start, int end) const {
    if (isEmpty())
        return {};
    QStringList texts;
    for (size_t index = indexOf(start); index < m_parts.size() && m_parts[index].start <= end; ++index) {
        const Part &part = m_parts[index];
        const int last = std::min(end - part.start, part.text->length());
        texts.append(part.text->textBetween(std::max(start - part.start, 0), last));
    }
    return texts.join(u'\n');
}

int JoinedText::positionAt(const QPointF &point) const {
    if (isEmpty())
        return 0;
    const auto isBelow = [](double y, const Part &part) { return y < part.origin.y(); };
    const auto after = std::upper_bound(m_parts.begin(), m_parts.end(), point.y(), isBelow);
    const Part &part = after == m_parts.begin() ? *after : *std::prev(after);
    return part.start + part.text->positionAt(point - part.origin);
}

QRectF JoinedText::caretAt(int position) const {
    if (isEmpty())
        return {};
    const Part &part = m_parts[indexOf(position)];
    return part.text->caretAt(position - part.start).translated(part.origin);
}

int JoinedText::moved(int position, Move move) const {
    if (isEmpty() || move == Move::textStart)
        return 0;
    if (move == Move::textEnd)
        return length();
    const size_t index = indexOf(position);
    const Part &part = m_parts[index];
    const int inside = part.start + part.text->moved(position - part.start, move);
    return inside == position ? beyond(index, position, move) : inside;
}

int JoinedText::beyond(size_t index, int position, Move move) const {
    const bool isFirst = index == 0;
    const bool isLast = index + 1 == m_parts.size();
    switch (move) {
    case Move::previousCharacter:
    case Move::previousWord:
        return isFirst ? position : position - 1;
    case Move::nextCharacter:
    case Move::nextWord:
        return isLast ? position : position + 1;
    case Move::lineUp:
        return isFirst ? position
                       : straightFrom(position, m_parts[index - 1], m_parts[index - 1].text->length());
    case Move::lineDown:
        return isLast ? position : straightFrom(position, m_parts[index + 1], 0);
    default:
        return position;
    }
}

int JoinedText::straightFrom(int position, const Part &part, int lineOf) const {
    const double x = caretAt(position).x() - part.origin.x();
    return part.start + part.text->positionAt({x, part.text->caretAt(lineOf).center().y()});
}

TextSelection JoinedText::wordAt(int position) const {
    if (isEmpty())
        return {};
    const Part &part = m_parts[indexOf(position)];
    return shifted(part.text->wordAt(position - part.start), part.start);
}

TextSelection JoinedText::paragraphAt(int position) const {
    if (isEmpty())
        return {};
    const Part &part = m_parts[indexOf(position)];
    return shifted(part.text->paragraphAt(position - part.start), part.start);
}

size_t JoinedText::indexOf(int position) const {
    const auto isBefore = [](int place, const Part &part) { return place < part.start; };
    const auto after = std::upper_bound(m_parts.begin(), m_parts.end(), position, isBefore);
    return after == m_parts.begin() ? 0 : size_t(std::distance(m_parts.begin(), after)) - 1;
}
