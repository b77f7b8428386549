#include "pages/drawing/TextList.h"

#include <algorithm>
#include <cmath>

namespace {

/// A text is one line in it, unless it is longer than any figure is wide.
constexpr double ampleWidth = 10'000;

template<typename Item, typename Part>
QList<Part> partsOf(const QList<Item> &items, Part Item::*part) {
    QList<Part> parts;
    parts.reserve(items.size());
    for (const Item &item : items)
        parts.append(item.*part);
    return parts;
}

} // namespace

qsizetype TextList::setTexts(const Texts &texts) {
    while (size() > texts.size())
        m_parts.pop_back();
    qsizetype first = size();
    for (qsizetype index = 0; index < texts.size(); ++index) {
        if (index == size())
            m_parts.emplace_back(m_theme, m_setting).layIn(ampleWidth);
        TextPart &part = (*this)[index];
        if (part.setText(texts[index]) < part.height())
            first = std::min(first, index);
    }
    return first;
}

void TextList::setColor(const QColor &color) {
    m_setting.color = color;
    for (TextPart &part : m_parts)
        part.setColor(color);
}

void TextList::listTexts(std::vector<const TextPart *> &texts) const {
    for (const TextPart &part : m_parts)
        texts.push_back(&part);
}

double placeSideBySide(TextPart &one, TextPart &other, const QPointF &origin, double distance) {
    const double baseline = std::ceil(std::max(one.firstBaseline(), other.firstBaseline()));
    const double dropOfOne = baseline - one.firstBaseline();
    const double dropOfOther = baseline - other.firstBaseline();
    one.moveTo(origin + QPointF(0, dropOfOne));
    other.moveTo(origin + QPointF(distance, dropOfOther));
    return std::ceil(std::max(dropOfOne + one.height(), dropOfOther + other.height()));
}

Texts leftsOf(const QList<TextPair> &pairs) {
    return partsOf(pairs, &TextPair::left);
}

Texts rightsOf(const QList<TextPair> &pairs) {
    return partsOf(pairs, &TextPair::right);
}

Texts labelsOf(const QList<LabelledNumber> &items) {
    return partsOf(items, &LabelledNumber::label);
}

QList<double> valuesOf(const QList<LabelledNumber> &items) {
    return partsOf(items, &LabelledNumber::value);
}
