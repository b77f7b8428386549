#include "web/Elements.h"

#include "web/Attribute.h"
#include "web/MarkupScan.h"
#include "web/TagIndex.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// An attribute with the class that is looked for.
struct ClassAttribute {
    qsizetype start;
    qsizetype tagEnd; ///< behind the tag in which it may stand
};

bool hasWord(QStringView text, QStringView word) {
    for (qsizetype place = text.indexOf(word); place >= 0; place = text.indexOf(word, place + 1)) {
        if (isWordBorder(text, place) && isWordBorder(text, place + word.size()))
            return true;
    }
    return false;
}

bool isQuote(QChar character) {
    return character == u'"' || character == u'\'';
}

qsizetype nextQuote(QStringView page, qsizetype from) {
    while (from < page.size() && !isQuote(page[from]))
        ++from;
    return from;
}

QList<ClassAttribute> attributesWithClass(QStringView className, QStringView page) {
    QList<ClassAttribute> attributes;
    NextPlace tagEnds(page, u'>');
    qsizetype from = 0;
    while (const auto attribute = findAttribute(page, u"class", from)) {
        from = attribute->value;
        if (from == page.size() || !isQuote(page[from]))
            continue;
        const qsizetype valueEnd = nextQuote(page, from + 1);
        const qsizetype tagEnd = tagEnds.from(valueEnd);
        if (tagEnd == page.size())
            break;
        if (hasWord(page.sliced(from + 1, valueEnd - from - 1), className))
            attributes.append({attribute->start, tagEnd + 1});
    }
    return attributes;
}

/// The tags with the class, with their names. Of several such attributes before its first ">" a tag has the
/// last one, and ends where that says.
QList<Tag> tagsWithClass(QStringView className, QStringView page) {
    const QList<ClassAttribute> attributes = attributesWithClass(className, page);
    QList<Tag> tags;
    NextPlace ends(page, u'>');
    qsizetype passed = 0;
    qsizetype from = 0;
    for (qsizetype start = page.indexOf(u'<'); start >= 0; start = page.indexOf(u'<', from)) {
        from = start + 1;
        while (passed < attributes.size() && attributes[passed].start < ends.from(start))
            ++passed;
        const QStringView name = tagName(page, from);
        if (name.isEmpty() || passed == 0 || attributes[passed - 1].start <= from)
            continue;
        const ClassAttribute &own = attributes[passed - 1];
        tags.append({start, name.first(std::min(name.size(), own.start - from)), Tag::Kind::opening});
        from = own.tagEnd;
    }
    return tags;
}

qsizetype endOf(const Tag &closing) {
    return closing.start + closing.name.size() + qsizetype(sizeof "</>" - 1);
}

/// By its beginning the end of each element among the tags of one name, which pair like brackets.
QHash<qsizetype, qsizetype> pairedEnds(const QList<Tag> &tags) {
    QHash<qsizetype, qsizetype> ends;
    QList<qsizetype> open;
    for (const Tag &tag : tags) {
        if (tag.kind == Tag::Kind::opening)
            open.append(tag.start);
        else if (!open.isEmpty())
            ends.insert(open.takeLast(), endOf(tag));
    }
    return ends;
}

} // namespace

QList<QStringView> elementsWithClass(QStringView className, QStringView page) {
    const QString lowered = foldedCase(page);
    const QList<Tag> tags = tagsWithClass(foldedCase(className), lowered);
    if (tags.isEmpty())
        return {};
    const TagIndex index(lowered);
    QHash<QStringView, QHash<qsizetype, qsizetype>> endsByName;
    QList<QStringView> elements;
    for (const Tag &tag : tags) {
        auto ends = endsByName.find(tag.name);
        if (ends == endsByName.end())
            ends = endsByName.insert(tag.name, pairedEnds(index.tagsOf(tag.name)));
        if (const auto end = ends->constFind(tag.start); end != ends->cend())
            elements.append(page.sliced(tag.start, *end - tag.start));
    }
    return elements;
}

std::optional<QStringView> outerElement(QStringView tag, qsizetype start, QStringView page) {
    if (start >= page.size())
        return std::nullopt;
    const QString lowered = foldedCase(page.sliced(start));
    const QString name = foldedCase(tag);
    const QString opening = u'<' + name;
    const QString closing = u"</"_s + name + u'>';
    qsizetype depth = 0;
    for (qsizetype place = lowered.indexOf(u'<'); place >= 0; place = lowered.indexOf(u'<', place + 1)) {
        const QStringView rest = QStringView(lowered).sliced(place);
        if (rest.startsWith(opening))
            ++depth;
        else if (rest.startsWith(closing) && --depth == 0)
            return page.sliced(start, place + closing.size());
    }
    return std::nullopt;
}
