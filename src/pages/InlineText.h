#pragma once

#include "pages/AttributedText.h"

/// An inline text, as one reading of it gave it.
struct InlineBox {
    const AttributedText value;
};

/// How many texts the process remembers the reading of.
inline constexpr qsizetype rememberedInlineTexts = 600;

/// What parseInlineMarkdown() gives for the text, from memory if it was asked before: what draws an
/// element of a block may call this for every picture. Any thread.
AttributedText inlineAttributedText(const QString &text);
