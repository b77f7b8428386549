// Makes text of a page; what the regular expressions of the tests leave of it, the quick reading must leave.

#include "web/ReadableText.h"

#include "web/PlainMarkup.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // On longer texts regular expressions give up.
    constexpr qsizetype longest = 1000;
    const QString html =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString text = plainText(html);
    if (html.size() <= longest &&
        (text != plainlyReadText(html) || cleanText(html) != plainlyCleanText(html)))
        std::abort();
    return 0;
}
