#include "records/Characters.h"

#include "records/CodePoint.h"
#include "records/GraphemeBreaker.h"

#include <cstring>

namespace {

bool isAscii(QChar unit) {
    return unit.unicode() < 0x80;
}

/// Where the run of ASCII that begins at `from` ends.
qsizetype asciiRunEnd(QStringView text, qsizetype from) {
    constexpr quint64 beyondAscii = 0xFF80FF80FF80FF80;
    constexpr qsizetype unitsPerWord = 4;
    constexpr qsizetype wordsPerBlock = 8;
    constexpr qsizetype block = unitsPerWord * wordsPerBlock;
    qsizetype end = from;
    for (; end + block <= text.size(); end += block) {
        quint64 words[wordsPerBlock];
        std::memcpy(words, text.data() + end, sizeof words);
        quint64 all = 0;
        for (const quint64 word : words)
            all |= word;
        if (all & beyondAscii)
            break;
    }
    while (end < text.size() && isAscii(text[end]))
        ++end;
    return end;
}

/// How many line feeds of `ascii` follow a carriage return: each pair is one character.
qsizetype lineEndPairs(QStringView ascii) {
    qsizetype pairs = 0;
    const char16_t *units = ascii.utf16();
    for (qsizetype index = 1; index < ascii.size(); ++index)
        pairs += (units[index - 1] == u'\r') & (units[index] == u'\n');
    return pairs;
}

/// Walks through a text code point by code point.
class CharacterWalk {
public:
    explicit CharacterWalk(QStringView text) : m_text(text) {}

    qsizetype position() const { return m_position; }
    bool isAtEnd() const { return m_position == m_text.size(); }
    bool isAtAscii() const { return isAscii(m_text[m_position]); }

    /// Steps over one code point; whether a character began with it.
    bool step() { return m_breaker.breaksBefore(graphemeClassOf(takePoint())); }

    /// Steps over a run of ASCII at once; how many characters began in it. Between two of ASCII there is
    /// always a border unless they are CR LF, so only the first and the last need the rules.
    qsizetype stepOverAscii() {
        const qsizetype first = m_position;
        const qsizetype end = asciiRunEnd(m_text, first);
        qsizetype begun = step() ? 1 : 0;
        if (end - first > 1) {
            begun += end - first - 1 - lineEndPairs(m_text.sliced(first, end - first));
            m_position = end - 1;
            step();
        }
        return begun;
    }

private:
    char32_t takePoint() {
        const CodePoint point = codePointAt(m_text, m_position);
        m_position += point.length;
        return point.value;
    }

    QStringView m_text;
    qsizetype m_position = 0;
    GraphemeBreaker m_breaker;
};

} // namespace

qsizetype characterCount(QStringView text) {
    qsizetype count = 0;
    CharacterWalk walk(text);
    while (!walk.isAtEnd()) {
        if (walk.isAtAscii())
            count += walk.stepOverAscii();
        else if (walk.step())
            ++count;
    }
    return count;
}

QStringView firstCharacters(QStringView text, qsizetype count) {
    if (count >= text.size())
        return text;
    CharacterWalk walk(text);
    qsizetype begun = 0;
    while (!walk.isAtEnd()) {
        const qsizetype before = walk.position();
        if (walk.step() && ++begun > count)
            return text.first(before);
    }
    return text;
}
