#include "pages/ChartNumber.h"

#include "pages/Lines.h"

#include <QVarLengthArray>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

using Characters = QVarLengthArray<char, 64>;

/// The value without the signs that may adorn a number; nothing if a character is none of ASCII's.
std::optional<Characters> bareNumber(QStringView value) {
    Characters bare;
    for (const QChar character : value) {
        if (character == u'%' || character == u'$' || character == u',')
            continue;
        if (character.unicode() >= 0x80 && !isBlank(character))
            return std::nullopt;
        bare.append(isBlank(character) ? ' ' : static_cast<char>(character.unicode()));
    }
    return bare;
}

/// Without the blanks at its ends, and without other white space at its beginning, which strtod skips.
std::string_view trimmed(std::string_view text) {
    while (text.ends_with(' '))
        text.remove_suffix(1);
    while (!text.empty() && std::string_view(" \v\f\r\n").find(text.front()) != std::string_view::npos)
        text.remove_prefix(1);
    return text;
}

/// The exponent that is written behind `mark`; one that 32 bits can't hold is as far away as they reach.
qint64 writtenExponent(std::string_view number, char mark) {
    const size_t place = number.find_first_of(mark == 'e' ? "eE" : "pP");
    if (place == std::string_view::npos)
        return 0;
    std::string_view digits = number.substr(place + 1);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    qint32 exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec == std::errc())
        return exponent;
    return digits.starts_with('-') ? std::numeric_limits<qint32>::min() : std::numeric_limits<qint32>::max();
}

/// What strtod makes of a number that no double is near to: an infinity or a zero.
double beyondDoubles(std::string_view number, std::chars_format format) {
    const bool isHex = format == std::chars_format::hex;
    const char mark = isHex ? 'p' : 'e';
    const std::string_view digits = number.substr(0, number.find_first_of(isHex ? "pP" : "eE"));
    const auto point = static_cast<qint64>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<qint64>(digits.find_first_not_of("0."));
    const qint64 size = (point - first) * (isHex ? 4 : 1) + writtenExponent(number, mark);
    return size > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

bool startsHexDigits(std::string_view text) {
    return !text.empty() && (std::isxdigit(static_cast<unsigned char>(text.front())) || text.front() == '.');
}

/// The number without a sign that is the whole of `text`.
std::optional<double> unsignedNumber(std::string_view text) {
    auto format = std::chars_format::general;
    if ((text.starts_with("0x") || text.starts_with("0X")) && startsHexDigits(text.substr(2))) {
        format = std::chars_format::hex;
        text.remove_prefix(2);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, format);
    if (error == std::errc::invalid_argument || end != text.data() + text.size() || text.starts_with('-'))
        return std::nullopt;
    return error == std::errc() ? number : beyondDoubles(text, format);
}

} // namespace

double parseChartNumber(QStringView value) {
    constexpr double none = 1.0;
    const std::optional<Characters> bare = bareNumber(value);
    if (!bare)
        return none;
    std::string_view text = trimmed({bare->data(), static_cast<size_t>(bare->size())});
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    const std::optional<double> number = unsignedNumber(text);
    if (!number)
        return none;
    return isNegative ? -*number : *number;
}

QString formatChartValue(double value) {
    constexpr double limit = 9223372036854775808.0; // 2 to the power of 63
    if (std::isnan(value))
        return u"–"_s;
    if (std::isinf(value))
        return value > 0 ? u"∞"_s : u"-∞"_s;
    if (value != std::trunc(value)) {
        // A double with a fraction has 16 digits before the point at most.
        std::array<char, 32> text;
        const auto end =
            std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 1).ptr;
        return QString::fromLatin1(text.data(), end - text.data());
    }
    if (value >= -limit && value < limit)
        return QString::number(static_cast<qint64>(value));
    return QString::number(value, 'g', 3);
}
