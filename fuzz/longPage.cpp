// A page that says the same again and again, so that what takes time of the square of its length is too slow.

#include "web/ReadableText.h"
#include "web/SearchResults.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr qsizetype length = 200'000;
    const QString unit =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (unit.isEmpty())
        return 0;
    const QString page = unit.repeated(length / unit.size());
    plainText(page);
    parseSearchResults(page);
    return 0;
}
