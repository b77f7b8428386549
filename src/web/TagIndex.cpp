#include "web/TagIndex.h"

#include <algorithm>
#include <iterator>

namespace {

bool isBelow(const Tag &tag, const Tag &other) {
    return tag.name < other.name;
}

} // namespace

QStringView tagName(QStringView page, qsizetype from) {
    qsizetype end = from;
    while (end < page.size() &&
           ((page[end] >= u'a' && page[end] <= u'z') || (page[end] >= u'0' && page[end] <= u'9')))
        ++end;
    return page.sliced(from, end - from);
}

TagIndex::TagIndex(QStringView page) {
    for (qsizetype start = page.indexOf(u'<'); start >= 0; start = page.indexOf(u'<', start + 1)) {
        const bool isClosing = start + 1 < page.size() && page[start + 1] == u'/';
        const qsizetype nameStart = start + (isClosing ? 2 : 1);
        const QStringView name = tagName(page, nameStart);
        const qsizetype nameEnd = nameStart + name.size();
        if (name.isEmpty())
            continue;
        if (!isClosing)
            m_openings.append({start, name, Tag::Kind::opening});
        else if (nameEnd < page.size() && page[nameEnd] == u'>')
            m_closings.append({start, name, Tag::Kind::closing});
    }
    std::sort(m_openings.begin(), m_openings.end(), isBelow);
    std::sort(m_closings.begin(), m_closings.end(), isBelow);
}

QList<Tag> TagIndex::tagsOf(QStringView name) const {
    const Tag wanted{0, name, Tag::Kind::opening};
    QList<Tag> tags;
    for (auto tag = std::lower_bound(m_openings.begin(), m_openings.end(), wanted, isBelow);
         tag != m_openings.end() && tag->name.startsWith(name); ++tag)
        tags.append(*tag);
    const auto closings = std::equal_range(m_closings.begin(), m_closings.end(), wanted, isBelow);
    std::copy(closings.first, closings.second, std::back_inserter(tags));
    std::sort(tags.begin(), tags.end(),
              [](const Tag &one, const Tag &other) { return one.start < other.start; });
    return tags;
}
