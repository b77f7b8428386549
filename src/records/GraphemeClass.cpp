#include "records/GraphemeClass.h"

#include "records/GraphemeRanges.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

// Everything that people write in lies below; what is above is looked for in the ranges.
constexpr char32_t tableEnd = 0x20000;

using Table = std::array<GraphemeClass, tableEnd>;

constexpr void addHangulSyllables(Table &table) {
    constexpr char32_t first = 0xAC00;
    constexpr char32_t last = 0xD7A3;
    constexpr char32_t trailingConsonants = 28; // "none" included
    for (char32_t point = first; point <= last; ++point)
        table[point] = (point - first) % trailingConsonants == 0 ? GraphemeClass::hangulOpenSyllable
                                                                 : GraphemeClass::hangulClosedSyllable;
}

constexpr Table makeTable() {
    Table table{};
    for (const GraphemeRange &range : GraphemeRanges::all) {
        for (char32_t point = range.first; point <= range.last && point < tableEnd; ++point)
            table[point] = range.graphemeClass;
    }
    addHangulSyllables(table);
    return table;
}

constexpr Table table = makeTable();

GraphemeClass rareClassOf(char32_t point) {
    const auto *const range =
        std::lower_bound(std::begin(GraphemeRanges::all), std::end(GraphemeRanges::all), point,
                         [](const GraphemeRange &each, char32_t sought) { return each.last < sought; });
    if (range == std::end(GraphemeRanges::all) || point < range->first)
        return GraphemeClass::other;
    return range->graphemeClass;
}

} // namespace

GraphemeClass graphemeClassOf(char32_t point) {
    return point < tableEnd ? table[point] : rareClassOf(point);
}
