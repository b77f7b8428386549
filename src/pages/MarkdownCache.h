#pragma once

#include "pages/MarkdownBlock.h"

#include <QString>

/// The blocks of a text, as one reading of it gave them.
struct BlockBox {
    const QList<MarkdownBlock> blocks;
};

/// How many texts the process remembers the blocks of.
inline constexpr qsizetype rememberedBlockTexts = 400;

/// What parseMarkdownBlocks() gives for the text, from memory if it was asked before: what draws a text
/// may call this for every picture. Any thread.
QList<MarkdownBlock> cachedMarkdownBlocks(const QString &text);
