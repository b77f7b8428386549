#include "client/TextRepair.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

/// The name of a tag, in lower case.
struct TagName {
    QStringView name;
    QStringView tail; ///< may follow the name
};

constexpr TagName think{u"think", u"ing"};
constexpr TagName toolCall{u"tool_call", {}};
constexpr QStringView opening = u"<";
constexpr QStringView closing = u"</";

struct Span {
    qsizetype start;
    qsizetype end;
};

/// The letter in lower case, as far as the names of tags go: Unicode has a second capital K.
char16_t lowered(QChar letter) {
    constexpr char16_t kelvinSign = u'\u212A';
    const char16_t unit = letter.unicode();
    if (unit >= u'A' && unit <= u'Z')
        return static_cast<char16_t>(unit + (u'a' - u'A'));
    return unit == kelvinSign ? u'k' : unit;
}

bool startsWith(QStringView text, QStringView name) {
    return text.size() >= name.size() &&
           std::equal(name.begin(), name.end(), text.begin(),
                      [](QChar expected, QChar letter) { return expected.unicode() == lowered(letter); });
}

/// The end of the tag whose name begins at `start`; nothing if it is another tag, or none.
std::optional<qsizetype> tagEnd(QStringView text, qsizetype start, TagName tag) {
    if (!startsWith(text.sliced(start), tag.name))
        return std::nullopt;
    qsizetype end = start + tag.name.size();
    if (!tag.tail.isEmpty() && startsWith(text.sliced(end), tag.tail))
        end += tag.tail.size();
    if (end == text.size() || text[end] != u'>')
        return std::nullopt;
    return end + 1;
}

/// The first tag of that name from `from` on.
std::optional<Span> findTag(QStringView text, qsizetype from, QStringView bracket, TagName tag) {
    for (qsizetype start = text.indexOf(bracket, from); start >= 0;
         start = text.indexOf(bracket, start + 1)) {
        if (const auto end = tagEnd(text, start + bracket.size(), tag))
            return Span{start, *end};
    }
    return std::nullopt;
}

/// Finds the ends of blocks, in ascending order of their beginnings.
class ClosedBlocks {
public:
    explicit ClosedBlocks(QStringView text) : m_text(text) {}

    /// The end of the block that begins with the bracket at `start`; nothing if none does, or if it
    /// isn't closed.
    std::optional<qsizetype> endOf(qsizetype start) {
        for (Kind &kind : m_kinds) {
            const auto opened = tagEnd(m_text, start + opening.size(), kind.tag);
            if (!opened || !kind.isClosedLater)
                continue;
            if (const auto closed = findTag(m_text, *opened, closing, kind.tag))
                return closed->end;
            kind.isClosedLater = false;
        }
        return std::nullopt;
    }

private:
    struct Kind {
        TagName tag;
        bool isClosedLater = true; ///< so that a missing end is looked for only once
    };

    QStringView m_text;
    std::array<Kind, 2> m_kinds{{{think}, {toolCall}}};
};

QString withoutClosedBlocks(QStringView text) {
    ClosedBlocks blocks(text);
    QString kept;
    kept.reserve(text.size());
    qsizetype done = 0;
    for (qsizetype start = text.indexOf(opening); start >= 0;) {
        const auto end = blocks.endOf(start);
        if (end) {
            kept += text.sliced(done, start - done);
            done = *end;
        }
        start = text.indexOf(opening, end.value_or(start + 1));
    }
    return kept += text.sliced(done);
}

qsizetype firstOpenTag(QStringView text) {
    for (qsizetype start = text.indexOf(opening); start >= 0; start = text.indexOf(opening, start + 1)) {
        const qsizetype name = start + opening.size();
        if (tagEnd(text, name, think) || tagEnd(text, name, toolCall))
            return start;
    }
    return text.size();
}

} // namespace

ExtractedThinking extractThinking(const QString &text) {
    if (!text.contains(u"<think"))
        return {text, {}};
    const QStringView whole(text);
    ExtractedThinking found;
    qsizetype done = 0;
    while (const auto opened = findTag(whole, done, opening, think)) {
        const auto closed = findTag(whole, opened->end, closing, think);
        if (!closed)
            break;
        found.text += whole.sliced(done, opened->start - done);
        found.thinking += whole.sliced(opened->end, closed->start - opened->end);
        done = closed->end;
    }
    found.text += whole.sliced(done);
    return {found.text.trimmed(), found.thinking.trimmed()};
}

QString hideTags(const QString &text) {
    if (!text.contains(u'<'))
        return text;
    QString kept = withoutClosedBlocks(text);
    kept.truncate(firstOpenTag(kept));
    return kept;
}
