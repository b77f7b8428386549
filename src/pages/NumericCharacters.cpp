#include "pages/NumericCharacters.h"

#include <algorithm>
#include <array>

namespace {

/// The letters among the numeric characters, in ascending order: Unicode 14.0, DerivedNumericType.txt,
/// less the general categories Nd, Nl and No.
constexpr std::array<char32_t, 81> numericIdeographs{
    0x3405,  0x3483,  0x382A,  0x3B4D,  0x4E00,  0x4E03,  0x4E07,  0x4E09,  0x4E5D,  0x4E8C,  0x4E94,
    0x4E96,  0x4EBF,  0x4EC0,  0x4EDF,  0x4EE8,  0x4F0D,  0x4F70,  0x5104,  0x5146,  0x5169,  0x516B,
    0x516D,  0x5341,  0x5343,  0x5344,  0x5345,  0x534C,  0x53C1,  0x53C2,  0x53C3,  0x53C4,  0x56DB,
    0x58F1,  0x58F9,  0x5E7A,  0x5EFE,  0x5EFF,  0x5F0C,  0x5F0D,  0x5F0E,  0x5F10,  0x62FE,  0x634C,
    0x67D2,  0x6F06,  0x7396,  0x767E,  0x8086,  0x842C,  0x8CAE,  0x8CB3,  0x8D30,  0x9621,  0x9646,
    0x964C,  0x9678,  0x96F6,  0xF96B,  0xF973,  0xF978,  0xF9B2,  0xF9D1,  0xF9D3,  0xF9FD,  0x20001,
    0x20064, 0x200E2, 0x20121, 0x2092A, 0x20983, 0x2098C, 0x2099C, 0x20AEA, 0x20AFD, 0x20B19, 0x22390,
    0x22998, 0x23B1B, 0x2626D, 0x2F890};

bool isNumeric(char32_t point) {
    if (point < 0x80)
        return point >= U'0' && point <= U'9';
    return QChar::isNumber(point) ||
           std::binary_search(numericIdeographs.begin(), numericIdeographs.end(), point);
}

} // namespace

qsizetype numericPrefix(QStringView text) {
    qsizetype end = 0;
    while (end < text.size()) {
        const bool isPair =
            text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        const char32_t point =
            isPair ? QChar::surrogateToUcs4(text[end], text[end + 1]) : text[end].unicode();
        if (!isNumeric(point))
            break;
        end += isPair ? 2 : 1;
    }
    return end;
}
