#include "pages/InlineParser.h"

#include "pages/CharacterReference.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <optional>

#include <md4c.h>

namespace {

constexpr std::array<bool, 128> marks = [] {
    std::array<bool, 128> isMark{};
    for (const char mark : {'*', '_', '`', '~', '[', ']', '<', '&', '\\'})
        isMark[size_t(mark)] = true;
    return isMark;
}();

bool mayHaveMarkup(const QString &text) {
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() < marks.size() && marks[character.unicode()];
    });
}

/// Spaces that don't occur in the text and that are no blanks for the rules of blocks.
struct UnusedSpaces {
    QChar fence;
    QChar carriageReturn; ///< stands for one, which the parser would take for a line end
};

std::optional<UnusedSpaces> unusedSpaces(const QString &text) {
    QVarLengthArray<QChar, 8> unused;
    for (const char16_t space : {u'\u2003', u'\u2002', u'\u2001', u'\u2000', u'\u205F', u'\u1680'}) {
        if (!text.contains(space))
            unused.append(space);
    }
    if (unused.size() < 2)
        return std::nullopt;
    return UnusedSpaces{unused[0], unused[1]};
}

/// The text with the space at both ends of each line. So no line begins a block or is blank, and no
/// white space stands where the parser would drop it, while the rules of emphasis, for which any space of
/// Unicode is like the end of a line, see no difference.
QByteArray fenced(const QString &text, UnusedSpaces spaces) {
    QString result;
    result.reserve(text.size() + text.size() / 8);
    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        result += spaces.fence;
        result += line;
        // A backslash there is a mark of its own.
        if (!line.endsWith(u'\\'))
            result += spaces.fence;
        result += u'\n';
    }
    result.chop(1);
    return result.replace(u'\r', spaces.carriageReturn).toUtf8();
}

class InlineReader {
public:
    explicit InlineReader(UnusedSpaces spaces) : m_spaces(spaces) {}

    /// Nothing if the parser gives up.
    std::optional<AttributedText> read(const QByteArray &text) {
        MD_PARSER parser{};
        parser.flags = MD_FLAG_STRIKETHROUGH;
        parser.enter_block = [](MD_BLOCKTYPE, void *, void *) { return 0; };
        parser.leave_block = parser.enter_block;
        parser.enter_span = [](MD_SPANTYPE type, void *detail, void *reader) {
            return static_cast<InlineReader *>(reader)->span(type, detail, 1);
        };
        parser.leave_span = [](MD_SPANTYPE type, void *detail, void *reader) {
            return static_cast<InlineReader *>(reader)->span(type, detail, -1);
        };
        parser.text = [](MD_TEXTTYPE type, const MD_CHAR *characters, MD_SIZE size, void *reader) {
            static_cast<InlineReader *>(reader)->add(pieceOf(type, QUtf8StringView(characters, size)));
            return 0;
        };
        if (md_parse(text.constData(), static_cast<MD_SIZE>(text.size()), &parser, this) != 0)
            return std::nullopt;
        return std::move(m_result);
    }

private:
    static QString pieceOf(MD_TEXTTYPE type, QUtf8StringView characters) {
        switch (type) {
        case MD_TEXT_NULLCHAR:
            return QString(QChar::ReplacementCharacter);
        case MD_TEXT_BR:
        case MD_TEXT_SOFTBR:
            return QString(u'\n');
        case MD_TEXT_ENTITY:
            return resolvedReference(characters.toString());
        default:
            return characters.toString();
        }
    }

    static QString linkOf(const MD_ATTRIBUTE &attribute) {
        QString link;
        for (int part = 0; attribute.substr_offsets[part] < attribute.size; ++part) {
            const MD_OFFSET start = attribute.substr_offsets[part];
            const MD_OFFSET end = attribute.substr_offsets[part + 1];
            link += pieceOf(attribute.substr_types[part], {attribute.text + start, attribute.text + end});
        }
        return link;
    }

    int span(MD_SPANTYPE type, void *detail, int step) {
        if (type == MD_SPAN_EM)
            m_depths[0] += step;
        else if (type == MD_SPAN_STRONG)
            m_depths[1] += step;
        else if (type == MD_SPAN_CODE)
            m_depths[2] += step;
        else if (type == MD_SPAN_DEL)
            m_depths[3] += step;
        else if (type == MD_SPAN_A)
            m_link = step > 0 ? linkOf(static_cast<MD_SPAN_A_DETAIL *>(detail)->href) : QString();
        return 0;
    }

    InlineStyles styles() const {
        constexpr std::array all{InlineStyle::emphasis, InlineStyle::strong, InlineStyle::code,
                                 InlineStyle::strikethrough};
        InlineStyles styles;
        for (size_t index = 0; index < all.size(); ++index)
            styles.setFlag(all[index], m_depths[index] > 0);
        return styles;
    }

    void add(QString piece) {
        piece.remove(m_spaces.fence).replace(m_spaces.carriageReturn, u'\r');
        if (piece.isEmpty())
            return;
        const InlineRun run{m_result.text.size(), piece.size(), styles(), m_link};
        m_result.text += piece;
        if (!run.styles && run.link.isEmpty())
            return;
        QList<InlineRun> &runs = m_result.runs;
        const bool goesOn = !runs.isEmpty() && runs.last().start + runs.last().length == run.start &&
                            runs.last().styles == run.styles && runs.last().link == run.link;
        if (goesOn)
            runs.last().length += run.length;
        else
            runs.append(run);
    }

    const UnusedSpaces m_spaces;
    std::array<int, 4> m_depths{}; ///< how many spans of each style are open
    QString m_link;
    AttributedText m_result;
};

} // namespace

AttributedText parseInlineMarkdown(const QString &text) {
    if (text.size() > longestInlineText || !mayHaveMarkup(text))
        return {text, {}};
    const auto spaces = unusedSpaces(text);
    if (!spaces)
        return {text, {}};
    return InlineReader(*spaces).read(fenced(text, *spaces)).value_or(AttributedText{text, {}});
}
