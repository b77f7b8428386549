#include "records/Formatters.h"

#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// A number with that many decimals, rounded as C does it and with a point in every locale.
QString fixed(double value, int decimals) {
    std::array<char, 400> text; // more than the digits of the greatest double
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
    return QString::fromLatin1(text.data(), end - text.data());
}

} // namespace

QString formatBytes(qint64 bytes) {
    const double gigabytes = static_cast<double>(bytes) / 1e9;
    if (gigabytes >= 10)
        return fixed(gigabytes, 0) + u" GB"_s;
    if (gigabytes >= 1)
        return fixed(gigabytes, 1) + u" GB"_s;
    return fixed(static_cast<double>(bytes) / 1e6, 0) + u" MB"_s;
}

QString formatTimeLeft(double seconds) {
    if (!std::isfinite(seconds) || seconds <= 0)
        return u"calculating time left"_s;
    if (seconds < 90)
        return u"about a minute left"_s;
    return u"about "_s + fixed(std::round(seconds / 60), 0) + u" min left"_s;
}
