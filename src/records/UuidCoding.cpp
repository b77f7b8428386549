#include "records/Coder.h"

#include <array>

// By hand: Qt's own conversion writes lower case and also takes texts with braces.

namespace {

constexpr qsizetype textSize = 36;

/// A UUID as its 32 hexadecimal digits see it: two halves, the highest digit first.
using Halves = std::array<quint64, 2>;

constexpr bool isDashAt(qsizetype index) {
    return index == 8 || index == 13 || index == 18 || index == 23;
}

Halves halvesOf(const QUuid &id) {
    Halves halves{quint64{id.data1} << 32 | quint64{id.data2} << 16 | id.data3, 0};
    for (const uchar byte : id.data4)
        halves[1] = halves[1] << 8 | byte;
    return halves;
}

QUuid uuidOf(const Halves &halves) {
    const auto byte = [low = halves[1]](int index) { return static_cast<uchar>(low >> (56 - 8 * index)); };
    return {static_cast<uint>(halves[0] >> 32),
            static_cast<ushort>(halves[0] >> 16),
            static_cast<ushort>(halves[0]),
            byte(0),
            byte(1),
            byte(2),
            byte(3),
            byte(4),
            byte(5),
            byte(6),
            byte(7)};
}

/// The value of a hexadecimal digit; -1 for anything else.
int digitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    return unit >= u'A' && unit <= u'F' ? unit - u'A' + 10 : -1;
}

} // namespace

QString encodeUuid(const QUuid &id) {
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    const Halves halves = halvesOf(id);
    QString text(textSize, u'-');
    QChar *place = text.data();
    int digit = 0;
    for (qsizetype index = 0; index < textSize; ++index) {
        if (isDashAt(index))
            continue;
        place[index] = digits[halves[digit / 16] >> (60 - 4 * (digit % 16)) & 15];
        ++digit;
    }
    return text;
}

std::optional<QUuid> decodeUuid(QStringView text) {
    if (text.size() != textSize)
        return std::nullopt;
    Halves halves{};
    int digit = 0;
    for (qsizetype index = 0; index < textSize; ++index) {
        const char16_t unit = text[index].unicode();
        if (isDashAt(index)) {
            if (unit != u'-')
                return std::nullopt;
            continue;
        }
        const int value = digitValue(unit);
        if (value < 0)
            return std::nullopt;
        quint64 &half = halves[digit++ / 16];
        half = half << 4 | static_cast<quint64>(value);
    }
    return uuidOf(halves);
}
