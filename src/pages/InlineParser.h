#pragma once

#include "pages/AttributedText.h"

/// Reads the inline Markdown of a text: emphasis, strong, code, strikethrough and links, as CommonMark
/// has them; an image is its text. Nothing is taken for a block, and white space stays as it is, line
/// feeds included, but within code, where CommonMark makes blanks of these. A text of more than
/// `longestInlineText` units, or one that can't be read, is plain. Any thread.
AttributedText parseInlineMarkdown(const QString &text);

/// No paragraph is so long: what is comes from somebody who tries the patience of whoever lays it out.
inline constexpr qsizetype longestInlineText = 500'000;
