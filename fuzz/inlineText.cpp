// Reads the inline Markdown of a text. Its runs must stand in order within the text, and a text without
// marks must come back as it is.

#include "pages/InlineParser.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const AttributedText read = parseInlineMarkdown(text);
    qsizetype done = 0;
    for (const InlineRun &run : read.runs) {
        if (run.start < done || run.length <= 0 || (!run.styles && run.link.isEmpty()))
            std::abort();
        done = run.start + run.length;
    }
    if (done > read.text.size() || read.text.size() > text.size())
        std::abort();
    // White space is neither made nor dropped, but that a line end within code becomes a blank.
    if (!text.contains(u'`') && !text.contains(u'[') && !text.contains(u'<') && !text.contains(u'&') &&
        read.text.count(u'\n') != text.count(u'\n'))
        std::abort();
    return 0;
}
