#include "conversation/RichTextWords.h"

#include <algorithm>
#include <array>

namespace {

using Destination = RichTextDestination;
using Meaning = RichTextMeaning;

constexpr RichTextWord leadsTo(std::string_view name, Destination destination) {
    return {name, Meaning::destination, static_cast<int>(destination)};
}

/// Destinations that are only ever written as {\*\name} needn't be here: who doesn't know the name skips
/// them.
constexpr auto words = std::to_array<RichTextWord>({
    {"ansi", Meaning::codePage, 1252},
    {"ansicpg", Meaning::codePage, 1252},
    {"bullet", Meaning::character, 0x2022},
    {"cell", Meaning::separator, '\t'},
    leadsTo("colortbl", Destination::skipped),
    {"column", Meaning::separator, '\n'},
    {"cpg", Meaning::fontCodePage},
    {"deff", Meaning::defaultFont},
    {"deleted", Meaning::hidden},
    {"emdash", Meaning::character, 0x2014},
    {"emspace", Meaning::character, 0x2003},
    {"endash", Meaning::character, 0x2013},
    {"enspace", Meaning::character, 0x2002},
    {"f", Meaning::font},
    {"fcharset", Meaning::fontCharacterSet},
    leadsTo("fldinst", Destination::skipped),
    leadsTo("fonttbl", Destination::skipped),
    leadsTo("footer", Destination::skipped),
    leadsTo("footerf", Destination::skipped),
    leadsTo("footerl", Destination::skipped),
    leadsTo("footerr", Destination::skipped),
    leadsTo("footnote", Destination::footnote),
    leadsTo("header", Destination::skipped),
    leadsTo("headerf", Destination::skipped),
    leadsTo("headerl", Destination::skipped),
    leadsTo("headerr", Destination::skipped),
    leadsTo("info", Destination::skipped),
    {"ldblquote", Meaning::character, 0x201C},
    {"line", Meaning::separator, '\n'},
    {"lquote", Meaning::character, 0x2018},
    {"ltrmark", Meaning::character, 0x200E},
    {"mac", Meaning::codePage, 10000},
    {"nestcell", Meaning::separator, '\t'},
    {"nestrow", Meaning::rowEnd},
    leadsTo("nesttableprops", Destination::text),
    leadsTo("nonesttables", Destination::skipped),
    leadsTo("nonshppict", Destination::skipped),
    leadsTo("objclass", Destination::skipped),
    leadsTo("objdata", Destination::skipped),
    {"page", Meaning::separator, '\n'},
    {"par", Meaning::separator, '\n'},
    {"pc", Meaning::codePage, 437},
    {"pca", Meaning::codePage, 850},
    leadsTo("pict", Destination::skipped),
    {"plain", Meaning::plain},
    {"qmspace", Meaning::character, 0x2005},
    {"rdblquote", Meaning::character, 0x201D},
    {"row", Meaning::rowEnd},
    {"rquote", Meaning::character, 0x2019},
    {"rtlmark", Meaning::character, 0x200F},
    leadsTo("rxe", Destination::skipped),
    {"sect", Meaning::separator, '\n'},
    leadsTo("shpinst", Destination::container),
    leadsTo("shprslt", Destination::skipped),
    leadsTo("shptxt", Destination::text),
    leadsTo("stylesheet", Destination::skipped),
    {"tab", Meaning::separator, '\t'},
    leadsTo("tc", Destination::skipped),
    leadsTo("tcn", Destination::skipped),
    leadsTo("txe", Destination::skipped),
    {"u", Meaning::unicode},
    {"uc", Meaning::fallbackLength},
    leadsTo("ud", Destination::text),
    leadsTo("upr", Destination::container),
    {"v", Meaning::hidden},
    leadsTo("xe", Destination::skipped),
    {"zwbo", Meaning::character, 0x200B},
    {"zwj", Meaning::character, 0x200D},
    {"zwnbo", Meaning::character, 0x2060},
    {"zwnj", Meaning::character, 0x200C},
});
static_assert(std::ranges::is_sorted(words, {}, &RichTextWord::name));

} // namespace

const RichTextWord *findRichTextWord(QByteArrayView name) {
    const std::string_view wanted(name.data(), static_cast<size_t>(name.size()));
    const auto found = std::ranges::lower_bound(words, wanted, {}, &RichTextWord::name);
    return found != words.end() && found->name == wanted ? &*found : nullptr;
}
