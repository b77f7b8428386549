#include "pages/drawing/HtmlEntity.h"

#include <QChar>
#include <QString>

#include <array>

namespace {

struct NamedEntity {
    QStringView name;
    char16_t character;
};

constexpr std::array entities = {
    NamedEntity{u"amp", u'&'},         NamedEntity{u"lt", u'<'},          NamedEntity{u"gt", u'>'},
    NamedEntity{u"quot", u'"'},        NamedEntity{u"apos", u'\''},       NamedEntity{u"nbsp", u'\u00A0'},
    NamedEntity{u"iexcl", u'\u00A1'},  NamedEntity{u"cent", u'\u00A2'},   NamedEntity{u"pound", u'\u00A3'},
    NamedEntity{u"yen", u'\u00A5'},    NamedEntity{u"sect", u'\u00A7'},   NamedEntity{u"copy", u'\u00A9'},
    NamedEntity{u"laquo", u'\u00AB'},  NamedEntity{u"reg", u'\u00AE'},    NamedEntity{u"deg", u'\u00B0'},
    NamedEntity{u"plusmn", u'\u00B1'}, NamedEntity{u"micro", u'\u00B5'},  NamedEntity{u"para", u'\u00B6'},
    NamedEntity{u"middot", u'\u00B7'}, NamedEntity{u"raquo", u'\u00BB'},  NamedEntity{u"frac12", u'\u00BD'},
    NamedEntity{u"iquest", u'\u00BF'}, NamedEntity{u"times", u'\u00D7'},  NamedEntity{u"divide", u'\u00F7'},
    NamedEntity{u"ndash", u'\u2013'},  NamedEntity{u"mdash", u'\u2014'},  NamedEntity{u"lsquo", u'\u2018'},
    NamedEntity{u"rsquo", u'\u2019'},  NamedEntity{u"ldquo", u'\u201C'},  NamedEntity{u"rdquo", u'\u201D'},
    NamedEntity{u"bull", u'\u2022'},   NamedEntity{u"hellip", u'\u2026'}, NamedEntity{u"euro", u'\u20AC'},
    NamedEntity{u"trade", u'\u2122'},  NamedEntity{u"larr", u'\u2190'},   NamedEntity{u"uarr", u'\u2191'},
    NamedEntity{u"rarr", u'\u2192'},   NamedEntity{u"darr", u'\u2193'},   NamedEntity{u"minus", u'\u2212'},
    NamedEntity{u"ne", u'\u2260'},     NamedEntity{u"le", u'\u2264'},     NamedEntity{u"ge", u'\u2265'},
};

/// What can't be a character is shown as the sign for one that is missing.
QString characterOf(char32_t code) {
    const bool isCharacter = code > 0 && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    const char32_t shown = isCharacter ? code : char32_t(QChar::ReplacementCharacter);
    return QString::fromUcs4(&shown, 1);
}

} // namespace

std::optional<QString> htmlEntity(QStringView reference) {
    if (reference.size() < 3 || reference.front() != u'&' || reference.back() != u';')
        return std::nullopt;
    const QStringView name = reference.sliced(1).chopped(1);
    if (name.startsWith(u'#')) {
        const bool isHexadecimal = name.size() > 1 && (name[1] == u'x' || name[1] == u'X');
        bool isNumber = false;
        const uint code =
            isHexadecimal ? name.sliced(2).toUInt(&isNumber, 16) : name.sliced(1).toUInt(&isNumber, 10);
        return isNumber ? std::optional(characterOf(code)) : std::nullopt;
    }
    for (const NamedEntity &entity : entities) {
        if (entity.name == name)
            return QString(entity.character);
    }
    return std::nullopt;
}
