#include "pages/drawing/InlineText.h"

#include "pages/TextCache.h"
#include "pages/drawing/HtmlEntity.h"

#include <algorithm>
#include <array>
#include <optional>

#include <md4c.h>

using namespace Qt::StringLiterals;

namespace {

/// Stands before and after the text. It is white space to the rules of emphasis, as the ends of a text
/// are, but none that may begin a line of a block or be cut from its end.
constexpr QChar edge = QChar::Nbsp;
constexpr qsizetype edgeBytes = 2;

/// The text as one line in UTF-8, between its edges: what has no second line makes no block.
QByteArray lineOf(const QString &source) {
    QString line = edge + source + edge;
    for (QChar &character : line) {
        if (character == u'\n' || character == u'\r' || character.isNull())
            character = u' ';
    }
    return line.toUtf8();
}

/// Makes an InlineText of what md4c calls out. It reads UTF-8, but the text is taken from the source,
/// where the line ends still are.
class Reader {
public:
    explicit Reader(const QString &source) : m_source(source), m_line(lineOf(source)) {}

    bool read() {
        MD_PARSER parser{};
        parser.flags = MD_FLAG_STRIKETHROUGH | MD_FLAG_NOINDENTEDCODEBLOCKS | MD_FLAG_NOHTMLBLOCKS;
        parser.enter_block = [](MD_BLOCKTYPE, void *, void *) { return 0; };
        parser.leave_block = parser.enter_block;
        parser.enter_span = [](MD_SPANTYPE type, void *detail, void *reader) {
            static_cast<Reader *>(reader)->enter(type, detail);
            return 0;
        };
        parser.leave_span = [](MD_SPANTYPE type, void *, void *reader) {
            static_cast<Reader *>(reader)->leave(type);
            return 0;
        };
        parser.text = [](MD_TEXTTYPE type, const MD_CHAR *text, MD_SIZE size, void *reader) {
            static_cast<Reader *>(reader)->take(type, text, size);
            return 0;
        };
        return md_parse(m_line.constData(), MD_SIZE(m_line.size()), &parser, this) == 0;
    }

    const InlineText &result() const { return m_result; }

private:
    static constexpr std::array spanStyles = {
        std::pair(MD_SPAN_STRONG, InlineStyle::bold),
        std::pair(MD_SPAN_EM, InlineStyle::italic),
        std::pair(MD_SPAN_DEL, InlineStyle::strikethrough),
        std::pair(MD_SPAN_CODE, InlineStyle::code),
    };

    void enter(MD_SPANTYPE type, void *detail) {
        if (type == MD_SPAN_A)
            m_link = linkTo(static_cast<MD_SPAN_A_DETAIL *>(detail)->href);
        for (size_t index = 0; index < spanStyles.size(); ++index)
            m_depths[index] += spanStyles[index].first == type ? 1 : 0;
    }

    void leave(MD_SPANTYPE type) {
        if (type == MD_SPAN_A)
            m_link.clear();
        for (size_t index = 0; index < spanStyles.size(); ++index)
            m_depths[index] -= spanStyles[index].first == type ? 1 : 0;
    }

    void take(MD_TEXTTYPE type, const MD_CHAR *text, MD_SIZE size) {
        const qsizetype first = placeOf(text - m_line.constData());
        const qsizetype last = placeOf(text - m_line.constData() + size);
        const QStringView part = QStringView(m_source).sliced(first, last - first);
        const int start = int(m_result.text.size());
        if (type == MD_TEXT_ENTITY)
            m_result.text += htmlEntity(part).value_or(part.toString());
        else
            m_result.text += part;
        setApart(start, int(m_result.text.size()) - start);
    }

    void setApart(int start, int length) {
        InlineStyle style = InlineStyle::plain;
        for (size_t index = 0; index < spanStyles.size(); ++index) {
            if (m_depths[index] > 0)
                style = style | spanStyles[index].second;
        }
        if (length == 0 || (style == InlineStyle::plain && m_link.isEmpty()))
            return;
        QList<InlineSpan> &spans = m_result.spans;
        const bool goesOn = !spans.isEmpty() && spans.last().end() == start && spans.last().style == style &&
                            spans.last().link == m_link;
        if (goesOn)
            spans.last().length += length;
        else
            spans.append({start, length, style, m_link});
    }

    /// The place in the source of a byte of the line. The parser goes forth, and so does this.
    qsizetype placeOf(qsizetype byte) {
        byte = std::clamp<qsizetype>(byte, edgeBytes, m_line.size() - edgeBytes);
        if (byte < m_byte) {
            m_byte = edgeBytes;
            m_place = 0;
        }
        for (; m_byte < byte; ++m_byte) {
            const auto lead = static_cast<unsigned char>(m_line.at(m_byte));
            const bool goesOn = (lead & 0xC0U) == 0x80U;
            m_place += goesOn ? 0 : lead >= 0xF0U ? 2 : 1;
        }
        return m_place;
    }

    static QUrl linkTo(const MD_ATTRIBUTE &address) {
        static constexpr std::array<QStringView, 3> schemes{u"http", u"https", u"mailto"};
        if (address.size == 0)
            return {};
        QString decoded;
        for (int index = 0; address.substr_offsets[index] < address.size; ++index) {
            const MD_OFFSET start = address.substr_offsets[index];
            const MD_OFFSET end = address.substr_offsets[index + 1];
            const QString part = QString::fromUtf8(address.text + start, qsizetype(end - start));
            const bool isEntity = address.substr_types[index] == MD_TEXT_ENTITY;
            decoded += isEntity ? htmlEntity(part).value_or(part) : part;
        }
        const QUrl url(decoded, QUrl::TolerantMode);
        const bool isKnown = std::find(schemes.begin(), schemes.end(), url.scheme()) != schemes.end();
        const bool leadsSomewhere =
            url.scheme() == schemes.back() ? !url.path().isEmpty() : !url.host().isEmpty();
        return url.isValid() && isKnown && leadsSomewhere ? url : QUrl();
    }

    const QString &m_source;
    const QByteArray m_line;
    qsizetype m_byte = edgeBytes;
    qsizetype m_place = 0;
    std::array<int, spanStyles.size()> m_depths{};
    QUrl m_link;
    InlineText m_result;
};

struct InlineBox {
    InlineText value;
};

/// True if there is a sign in the text that may be more than text.
bool mayHaveMarkup(const QString &source) {
    return std::any_of(source.cbegin(), source.cend(),
                       [](QChar character) { return QStringView(u"*_~`[]!<&\\").contains(character); });
}

} // namespace

InlineText parseInlineText(const QString &source) {
    if (source.size() > longestInlineText || !mayHaveMarkup(source))
        return {source, {}};
    Reader reader(source);
    return reader.read() ? reader.result() : InlineText{source, {}};
}

InlineText inlineAttributedText(const QString &source) {
    if (!mayHaveMarkup(source))
        return {source, {}};
    static TextCache<InlineBox> cache(rememberedInlineTexts);
    if (const std::optional<InlineBox> known = cache.find(source))
        return known->value;
    const InlineBox box{parseInlineText(source)};
    cache.insert(source, box);
    return box.value;
}
