#pragma once

#include <QByteArrayView>

#include <string_view>

/// What the text of a group is for.
enum class RichTextDestination : quint8 {
    text,
    footnote,
    container, ///< isn't text itself, but has text in it
    skipped,   ///< isn't text, and has none in it
};

/// What a control word does, as far as the plain text goes.
enum class RichTextMeaning {
    character, ///< stands for a character
    separator, ///< ends a line or a cell, in plain text by a character
    rowEnd,
    destination,
    unicode,        ///< stands for the character of that number
    fallbackLength, ///< how many characters behind such a one are for readers that don't know it
    font,
    plain,  ///< back to the default font, and shown
    hidden, ///< a property of text that no reader is to see
    codePage,
    defaultFont,
    fontCharacterSet,
    fontCodePage,
};

/// One control word of "Rich Text Format 1.9.1" that matters to the plain text.
struct RichTextWord {
    std::string_view name;
    RichTextMeaning meaning;
    int value = 0; ///< the character, the destination, or the code page where no number says it
};

/// The word of that name; nullptr if it doesn't matter. Any thread.
const RichTextWord *findRichTextWord(QByteArrayView name);
