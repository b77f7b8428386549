#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// How a part of a text is set apart. Flags.
enum class InlineStyle : unsigned char {
    plain = 0,
    bold = 1,
    italic = 2,
    strikethrough = 4,
    code = 8,
};

constexpr InlineStyle operator|(InlineStyle one, InlineStyle other) {
    return InlineStyle(static_cast<unsigned char>(one) | static_cast<unsigned char>(other));
}
constexpr bool has(InlineStyle styles, InlineStyle style) {
    return (static_cast<unsigned char>(styles) & static_cast<unsigned char>(style)) != 0;
}

/// A stretch of the shown text that is set apart, in UTF-16 code units; never an empty one.
struct InlineSpan {
    int start = 0;
    int length = 0;
    InlineStyle style = InlineStyle::plain;
    QUrl link; ///< http, https or mailto; empty for none

    int end() const { return start + length; }

    bool operator==(const InlineSpan &) const = default;
};

/// A text as it is shown, and what of it is set apart: spans in order that don't overlap.
struct InlineText {
    QString text;
    QList<InlineSpan> spans;

    bool operator==(const InlineText &) const = default;
};

/// A longer text is plain: it is no sentence that somebody wrote, and reading brackets and emphasis takes
/// a time that grows with the square of their number.
inline constexpr qsizetype longestInlineText = 32'768;

/// How many texts the process remembers the reading of.
inline constexpr qsizetype rememberedInlineTexts = 600;

/// Reads the inline Markdown of one run of text: strong, emphasis, strikethrough, code, links, and images
/// as their text (CommonMark 0.30, with GitHub's strikethrough). Whatever makes a block elsewhere is text
/// here, and so is HTML; white space and line feeds stay as they are. A link to anything but http, https
/// and mailto is text. Never fails. Any thread.
InlineText parseInlineText(const QString &source);

/// The same, from memory if it was asked before. Any thread.
InlineText inlineAttributedText(const QString &source);
