#include "pages/MarkdownCache.h"

#include "pages/MarkdownParser.h"
#include "pages/TextCache.h"

QList<MarkdownBlock> cachedMarkdownBlocks(const QString &text) {
    static TextCache<BlockBox> cache(rememberedBlockTexts);
    if (const std::optional<BlockBox> known = cache.find(text))
        return known->blocks;
    const BlockBox box{parseMarkdownBlocks(text)};
    cache.insert(text, box);
    return box.blocks;
}
