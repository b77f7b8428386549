// Repairs a reply; what the regular expressions of the tests find, the repair must find too.

#include "client/PlainTextRepair.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (extractThinking(text) != plainlyExtractedThinking(text) ||
        extractToolCalls(text) != plainlyExtractedToolCalls(text) ||
        hideTags(text) != plainlyHiddenTags(text))
        std::abort();
    return 0;
}
