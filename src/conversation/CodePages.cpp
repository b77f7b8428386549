#include "conversation/CodePages.h"

#include <QStringConverter>

#include <algorithm>
#include <array>

namespace {

struct CodePage {
    int number;
    const char *name;
};

/// All of them have the printable characters of ASCII where ASCII has them.
constexpr std::array<CodePage, 37> codePages{{
    {437, "IBM437"},           {737, "cp737"},
    {775, "IBM775"},           {850, "IBM850"},
    {852, "IBM852"},           {855, "IBM855"},
    {857, "IBM857"},           {858, "cp858"},
    {860, "IBM860"},           {861, "IBM861"},
    {862, "IBM862"},           {863, "IBM863"},
    {865, "IBM865"},           {866, "IBM866"},
    {869, "IBM869"},           {874, "windows-874"},
    {932, "windows-932"},      {936, "windows-936"},
    {949, "windows-949"},      {950, "windows-950"},
    {1250, "windows-1250"},    {1251, "windows-1251"},
    {1252, "windows-1252"},    {1253, "windows-1253"},
    {1254, "windows-1254"},    {1255, "windows-1255"},
    {1256, "windows-1256"},    {1257, "windows-1257"},
    {1258, "windows-1258"},    {10000, "macintosh"},
    {10001, "Shift_JIS"},      {10006, "x-mac-greek"},
    {10007, "x-mac-cyrillic"}, {10029, "x-mac-centraleurroman"},
    {10081, "x-mac-turkish"},  {54936, "GB18030"},
    {65001, "UTF-8"},
}};

struct CharacterSet {
    int number;
    int codePage;
};

constexpr std::array<CharacterSet, 21> characterSets{{
    {0, westernCodePage}, {2, westernCodePage}, {77, 10000}, {78, 10001}, {85, 10006}, {86, 10081},
    {88, 10029},          {89, 10007},          {128, 932},  {129, 949},  {134, 936},  {136, 950},
    {161, 1253},          {162, 1254},          {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
    {204, 1251},          {222, 874},           {238, 1250},
}};

/// The entry of `table` with that number; nullptr if there is none.
template<typename Table>
auto entryOf(const Table &table, int number) {
    const auto found = std::ranges::find(table, number, &Table::value_type::number);
    return found == table.end() ? nullptr : &*found;
}

const char *nameOf(int codePage) {
    const CodePage *known = entryOf(codePages, codePage);
    return known ? known->name : nameOf(westernCodePage);
}

bool isAscii(QByteArrayView bytes) {
    return std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace

QString textInCodePage(QByteArrayView bytes, int codePage) {
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    QStringDecoder decoder(nameOf(codePage), QStringConverter::Flag::Stateless);
    if (!decoder.isValid())
        return QString::fromLatin1(bytes);
    return decoder(bytes);
}

std::optional<int> codePageOfCharacterSet(int characterSet) {
    const CharacterSet *known = entryOf(characterSets, characterSet);
    return known ? std::optional(known->codePage) : std::nullopt;
}
