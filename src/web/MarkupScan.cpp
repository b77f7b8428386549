#include "web/MarkupScan.h"

#include "records/CodePoint.h"

#include <algorithm>

namespace {

char16_t folded(QChar letter) {
    constexpr char16_t longS = u'\u017F';
    constexpr char16_t kelvinSign = u'\u212A';
    const char16_t unit = letter.unicode();
    if (unit >= u'A' && unit <= u'Z')
        return static_cast<char16_t>(unit + (u'a' - u'A'));
    if (unit == longS)
        return u's';
    return unit == kelvinSign ? u'k' : unit;
}

bool isOfWords(char32_t point) {
    constexpr char32_t nonJoiner = 0x200C;
    constexpr char32_t joiner = 0x200D;
    switch (QChar::category(point)) {
    case QChar::Letter_Uppercase:
    case QChar::Letter_Lowercase:
    case QChar::Letter_Titlecase:
    case QChar::Letter_Modifier:
    case QChar::Letter_Other:
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Punctuation_Connector:
        return true;
    default:
        return point == nonJoiner || point == joiner;
    }
}

bool isWordBefore(QStringView text, qsizetype place) {
    if (place == 0)
        return false;
    const QStringView before = text.first(place);
    const bool isPair = place > 1 && codePointAt(before, place - 2).length == 2;
    return isOfWords(codePointAt(before, place - (isPair ? 2 : 1)).value);
}

bool isWordAfter(QStringView text, qsizetype place) {
    if (place == text.size())
        return false;
    return isOfWords(codePointAt(text, place).value);
}

} // namespace

QString foldedCase(QStringView text) {
    QString result(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(), [](QChar each) { return QChar(folded(each)); });
    return result;
}

bool isWordBorder(QStringView text, qsizetype place) {
    return isWordBefore(text, place) != isWordAfter(text, place);
}

qsizetype NextPlace::from(qsizetype from) {
    if (m_place < from) {
        const qsizetype found = m_text.indexOf(m_character, from);
        m_place = found < 0 ? m_text.size() : found;
    }
    return m_place;
}
