// Splits a reply into what is shown and a page; what the plain reading of the tests gives, the quick one
// must give too.

#include "pages/PageAnalysis.h"

#include "pages/PlainAnalysis.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    constexpr qsizetype longestPlainText = 400;
    const QString split = describedAnalysis(text);
    const QString shown = hidePageWhileStreaming(text).toString();
    if (text.size() <= longestPlainText &&
        (split != plainlyAnalyzed(text) || shown != plainlyHiddenPage(text)))
        std::abort();
    return 0;
}
