#include "records/DecimalInteger.h"

#include <algorithm>

std::optional<qint64> decimalInteger(const QString &text) {
    const bool isSigned = text.startsWith(u'+') || text.startsWith(u'-');
    const QStringView digits = QStringView(text).sliced(isSigned ? 1 : 0);
    const bool isPlain = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), [](QChar digit) {
        return digit >= u'0' && digit <= u'9';
    });
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return isPlain && fits ? std::optional(number) : std::nullopt;
}
