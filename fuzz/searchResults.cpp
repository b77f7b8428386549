// Reads a search page; what the regular expressions of the tests find, the quick reading must find too.

#include "web/SearchResults.h"

#include "web/Elements.h"
#include "web/PlainMarkup.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // On longer texts regular expressions give up.
    constexpr qsizetype longest = 400;
    const QString page =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<SearchSource> results = parseSearchResults(page);
    if (page.size() > longest)
        return 0;
    QStringList elements;
    for (const QStringView element : elementsWithClass(u"result__a", page))
        elements.append(element.toString());
    if (elements != plainlyFoundElements(u"result__a"_s, page) || results != plainlyReadResults(page))
        std::abort();
    return 0;
}
