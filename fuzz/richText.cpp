// Reads a document in the Rich Text Format, and the first half of it, whose text must be the beginning of the
// whole one's.

#include "conversation/RichText.h"

#include "conversation/TextBeginning.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArrayView document(data, static_cast<qsizetype>(size));
    const std::optional<QString> whole = plainTextOfRichText(document);
    if (whole.has_value() != document.startsWith("{\\rtf"))
        std::abort();
    if (!whole)
        return 0;
    if (!whole->isValidUtf16() || whole->size() > document.size())
        std::abort();
    const std::optional<QString> half = plainTextOfRichText(document.first(document.size() / 2));
    if (half && !isTextOfBeginning(*half, *whole))
        std::abort();
    return 0;
}
