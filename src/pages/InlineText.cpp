#include "pages/InlineText.h"

#include "pages/InlineParser.h"
#include "pages/TextCache.h"

AttributedText inlineAttributedText(const QString &text) {
    static TextCache<InlineBox> cache(rememberedInlineTexts);
    if (const std::optional<InlineBox> known = cache.find(text))
        return known->value;
    const InlineBox box{parseInlineMarkdown(text)};
    cache.insert(text, box);
    return box.value;
}
