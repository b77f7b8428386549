// Reads a text of the page dialect; what the plain reading of the tests gives, the parser must give too.

#include "pages/ChartNumber.h"
#include "pages/Described.h"
#include "pages/MarkdownParser.h"
#include "pages/PlainDialect.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Whether both readings have the same tables of characters: the plain one has but a few ideographs.
bool isComparable(const QString &text) {
    constexpr qsizetype longestPlainText = 400;
    return text.size() <= longestPlainText &&
           std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x3400; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString reading = described(parseMarkdownBlocks(text));
    formatChartValue(parseChartNumber(text));
    if (isComparable(text) && reading != plainlyDescribed(text))
        std::abort();
    return 0;
}
