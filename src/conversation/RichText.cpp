#include "conversation/RichText.h"

#include "conversation/CodePages.h"
#include "conversation/RichTextTokens.h"
#include "conversation/RichTextWords.h"

#include <QByteArray>
#include <QHash>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

using Destination = RichTextDestination;
using Meaning = RichTextMeaning;

/// What a group has from the one around it, and may change for itself.
struct Group {
    static constexpr int defaultFont = -1;

    int font = defaultFont;
    quint16 fallbackLength = 1;
    Destination destination = Destination::text;
    bool isHidden = false;
};

/// Fonts of symbols have their characters here. Nobody else knows them.
bool isOfSymbolFont(int point) {
    return point >= 0xF000 && point <= 0xF0FF;
}

class RichTextReader {
public:
    explicit RichTextReader(QByteArrayView document) : m_tokens(document) {}

    QString read();

private:
    void take(const RichTextToken &token);
    void takeWord(const RichTextToken &token);
    void takeSymbol(QByteArrayView symbol);
    void takeBytes(QByteArrayView bytes);
    void beginGroup();
    void endGroup();
    void obey(const RichTextWord &word, std::optional<int> parameter);
    void enter(Destination destination);
    void addUnicode(int number);
    void endRow();
    void add(char32_t character);
    void decodeBytes();
    bool isFallback();
    bool isShown() const;
    int font() const;
    Group &group() { return m_groups.back(); }

    RichTextTokens m_tokens;
    std::vector<Group> m_groups{Group()}; ///< the first stands for what is around the document
    QHash<int, int> m_fontCodePages;
    int m_codePage = westernCodePage; ///< of fonts that have none of their own
    int m_defaultFont = 0;
    int m_fallbackLeft = 0;    ///< so many characters of a fallback are still to come
    bool m_isOptional = false; ///< whether who doesn't know the next word is to skip the group
    QByteArray m_bytes;        ///< not yet decoded, since a character may have two of them
    int m_bytesCodePage = westernCodePage;
    QString m_text;
};

QString RichTextReader::read() {
    while (const std::optional<RichTextToken> token = m_tokens.next()) {
        take(*token);
        if (m_groups.size() == 1)
            break;
    }
    decodeBytes();
    if (m_text.isValidUtf16())
        return m_text;
    return QString::fromStdU32String(m_text.toStdU32String());
}

void RichTextReader::take(const RichTextToken &token) {
    switch (token.kind) {
    case RichTextToken::Kind::groupStart:
        return beginGroup();
    case RichTextToken::Kind::groupEnd:
        return endGroup();
    case RichTextToken::Kind::word:
        return takeWord(token);
    case RichTextToken::Kind::symbol:
        return takeSymbol(token.text);
    case RichTextToken::Kind::bytes:
        return takeBytes(token.text);
    }
}

void RichTextReader::takeWord(const RichTextToken &token) {
    const bool isOptional = std::exchange(m_isOptional, false);
    const bool isReplaced = isFallback();
    const RichTextWord *word = findRichTextWord(token.text);
    if (isOptional && (!word || word->meaning != Meaning::destination))
        enter(Destination::skipped);
    else if (word && !(isReplaced && word->meaning == Meaning::character))
        obey(*word, token.parameter);
}

void RichTextReader::takeSymbol(QByteArrayView symbol) {
    const char sign = symbol.front();
    if (sign == '\\' || sign == '{' || sign == '}')
        return takeBytes(symbol);
    m_isOptional = sign == '*';
    const bool isReplaced = isFallback();
    if (sign == '\r' || sign == '\n')
        add(U'\n');
    else if (sign == '\t')
        add(U'\t');
    else if (sign == '~' && !isReplaced)
        add(U'\u00A0');
    else if (sign == '_' && !isReplaced)
        add(U'\u2011');
}

void RichTextReader::takeBytes(QByteArrayView bytes) {
    const qsizetype replaced = std::min<qsizetype>(m_fallbackLeft, bytes.size());
    m_fallbackLeft -= static_cast<int>(replaced);
    if (!isShown())
        return;
    const int codePage = m_fontCodePages.value(font(), m_codePage);
    if (codePage != m_bytesCodePage)
        decodeBytes();
    m_bytesCodePage = codePage;
    m_bytes += bytes.sliced(replaced);
}

void RichTextReader::beginGroup() {
    m_fallbackLeft = 0;
    m_isOptional = false;
    m_groups.push_back(group());
}

void RichTextReader::endGroup() {
    m_fallbackLeft = 0;
    m_isOptional = false;
    const Destination ended = group().destination;
    m_groups.pop_back();
    if (ended == Destination::footnote && group().destination == Destination::text)
        add(U']');
}

void RichTextReader::obey(const RichTextWord &word, std::optional<int> parameter) {
    switch (word.meaning) {
    case Meaning::character:
    case Meaning::separator:
        return add(static_cast<char32_t>(word.value));
    case Meaning::rowEnd:
        return endRow();
    case Meaning::destination:
        return enter(static_cast<Destination>(word.value));
    case Meaning::unicode:
        return addUnicode(parameter.value_or(0));
    case Meaning::fallbackLength:
        group().fallbackLength = static_cast<quint16>(
            std::clamp(parameter.value_or(1), 0, int(std::numeric_limits<quint16>::max())));
        return;
    case Meaning::font:
        group().font = parameter.value_or(0);
        return;
    case Meaning::plain:
        group().font = Group::defaultFont;
        group().isHidden = false;
        return;
    case Meaning::hidden:
        group().isHidden = parameter != 0;
        return;
    case Meaning::codePage:
        m_codePage = parameter.value_or(word.value);
        return;
    case Meaning::defaultFont:
        m_defaultFont = parameter.value_or(0);
        return;
    case Meaning::fontCodePage:
        m_fontCodePages.insert(font(), parameter.value_or(m_codePage));
        return;
    case Meaning::fontCharacterSet:
        if (const std::optional<int> codePage = codePageOfCharacterSet(parameter.value_or(0)))
            m_fontCodePages.insert(font(), *codePage);
        return;
    }
}

void RichTextReader::enter(Destination destination) {
    Destination &present = group().destination;
    if (present == Destination::skipped ||
        (destination == Destination::text && present != Destination::container) ||
        (destination == Destination::footnote && present != Destination::text))
        return;
    if (destination == Destination::footnote) {
        add(U' ');
        add(U'[');
    }
    present = destination;
}

void RichTextReader::addUnicode(int number) {
    constexpr int pointsOf16Bits = 0x10000;
    const int point = number < 0 ? number + pointsOf16Bits : number;
    const bool isKnown = point > 0 && point <= int(QChar::LastValidCodePoint) && !isOfSymbolFont(point);
    m_fallbackLeft = isKnown ? group().fallbackLength : 0;
    if (isKnown)
        add(static_cast<char32_t>(point));
}

/// The tabulator behind the last cell gives way to the line feed.
void RichTextReader::endRow() {
    if (!isShown())
        return;
    decodeBytes();
    if (m_text.endsWith(u'\t'))
        m_text.chop(1);
    add(U'\n');
}

void RichTextReader::add(char32_t character) {
    if (!isShown())
        return;
    decodeBytes();
    m_text += QChar::fromUcs4(character);
}

void RichTextReader::decodeBytes() {
    if (m_bytes.isEmpty())
        return;
    m_text += textInCodePage(m_bytes, m_bytesCodePage);
    m_bytes.resize(0);
}

/// Whether the piece that comes is a part of a fallback, of which it is then taken off.
bool RichTextReader::isFallback() {
    if (m_fallbackLeft == 0)
        return false;
    --m_fallbackLeft;
    return true;
}

bool RichTextReader::isShown() const {
    const Group &present = m_groups.back();
    return !present.isHidden &&
           (present.destination == Destination::text || present.destination == Destination::footnote);
}

int RichTextReader::font() const {
    return m_groups.back().font == Group::defaultFont ? m_defaultFont : m_groups.back().font;
}

} // namespace

std::optional<QString> plainTextOfRichText(QByteArrayView document) {
    if (!document.startsWith("{\\rtf"))
        return std::nullopt;
    return RichTextReader(document).read();
}
