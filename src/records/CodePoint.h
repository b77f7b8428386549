#pragma once

#include <QStringView>

/// One code point of a text and how many units it has there, 1 or 2. Half of a surrogate pair is a code point
/// of its own.
struct CodePoint {
    char32_t value;
    qsizetype length;
};

/// The code point that begins at `place`, which is in the text. Any thread.
inline CodePoint codePointAt(QStringView text, qsizetype place) {
    const QChar first = text[place];
    if (first.isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate())
        return {QChar::surrogateToUcs4(first, text[place + 1]), 2};
    return {first.unicode(), 1};
}
