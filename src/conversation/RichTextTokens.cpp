#include "conversation/RichTextTokens.h"

#include <algorithm>
#include <charconv>

namespace {

using Kind = RichTextToken::Kind;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// Line ends among them.
bool isControl(char byte) {
    constexpr char erase = 0x7F;
    const auto value = static_cast<unsigned char>(byte);
    return (value < ' ' && byte != '\t') || byte == erase;
}

bool isText(char byte) {
    return byte != '\\' && byte != '{' && byte != '}' && !isControl(byte);
}

} // namespace

std::optional<RichTextToken> RichTextTokens::next() {
    passOver(isControl);
    if (isAtEnd())
        return std::nullopt;
    const qsizetype start = m_position;
    const char first = m_document[start];
    if (isText(first)) {
        passOver(isText);
        return RichTextToken{Kind::bytes, since(start)};
    }
    ++m_position;
    if (first == '\\')
        return control();
    return RichTextToken{first == '{' ? Kind::groupStart : Kind::groupEnd, since(start)};
}

/// What stands behind a backslash.
std::optional<RichTextToken> RichTextTokens::control() {
    if (isAtEnd())
        return std::nullopt;
    if (isLetter(m_document[m_position]))
        return word();
    const qsizetype start = m_position++;
    if (m_document[start] == '\'')
        return codedByte();
    return RichTextToken{Kind::symbol, since(start)};
}

std::optional<RichTextToken> RichTextTokens::word() {
    const qsizetype start = m_position;
    passOver(isLetter);
    RichTextToken token{Kind::word, since(start)};
    token.parameter = number();
    if (isAtEnd())
        return std::nullopt;
    if (m_document[m_position] == ' ')
        ++m_position;
    if (token.text == QByteArrayView("bin"))
        passOverData(token.parameter.value_or(0));
    return token;
}

std::optional<int> RichTextTokens::number() {
    constexpr qint64 largest = 1'000'000'000;
    const qsizetype start = m_position;
    const bool isNegative = !isAtEnd() && m_document[start] == '-';
    const qsizetype digits = start + (isNegative ? 1 : 0);
    m_position = digits;
    passOver(isDigit);
    if (m_position == digits) {
        m_position = isAtEnd() ? digits : start;
        return std::nullopt;
    }
    qint64 value = 0;
    for (const char digit : since(digits))
        value = std::min(value * 10 + (digit - '0'), largest);
    return static_cast<int>(isNegative ? -value : value);
}

/// The byte that two hexadecimal digits stand for; a symbol without a meaning if there aren't two, or if
/// they stand for a control character.
std::optional<RichTextToken> RichTextTokens::codedByte() {
    constexpr qsizetype size = 2;
    if (m_document.size() - m_position < size) {
        m_position = m_document.size();
        return std::nullopt;
    }
    const RichTextToken nothing{Kind::symbol, m_document.sliced(m_position - 1, 1)};
    unsigned char value = 0;
    const char *const digits = m_document.data() + m_position;
    if (std::from_chars(digits, digits + size, value, 16).ptr != digits + size)
        return nothing;
    m_position += size;
    m_codedByte = static_cast<char>(value);
    if (isControl(m_codedByte))
        return nothing;
    return RichTextToken{Kind::bytes, QByteArrayView(&m_codedByte, 1)};
}

void RichTextTokens::passOverData(int size) {
    m_position += std::clamp<qsizetype>(size, 0, m_document.size() - m_position);
}

template<typename Test>
void RichTextTokens::passOver(Test test) {
    while (!isAtEnd() && test(m_document[m_position]))
        ++m_position;
}
