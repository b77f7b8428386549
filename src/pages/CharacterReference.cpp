#include "pages/CharacterReference.h"

#include <QStringView>

#include <array>

namespace {

struct NamedCharacter {
    QStringView name;
    char16_t character;
};

constexpr std::array<NamedCharacter, 26> names{{
    {u"amp", u'&'},       {u"lt", u'<'},    {u"gt", u'>'},     {u"quot", u'"'},  {u"apos", u'\''},
    {u"nbsp", u'\u00A0'}, {u"copy", u'©'},  {u"reg", u'®'},    {u"trade", u'™'}, {u"deg", u'°'},
    {u"middot", u'·'},    {u"bull", u'•'},  {u"hellip", u'…'}, {u"ndash", u'–'}, {u"mdash", u'—'},
    {u"lsquo", u'‘'},     {u"rsquo", u'’'}, {u"ldquo", u'“'},  {u"rdquo", u'”'}, {u"laquo", u'«'},
    {u"raquo", u'»'},     {u"times", u'×'}, {u"euro", u'€'},   {u"pound", u'£'}, {u"larr", u'←'},
    {u"rarr", u'→'},
}};

QString numbered(QStringView digits) {
    const bool isHex = digits.startsWith(u'x', Qt::CaseInsensitive);
    bool isNumber = false;
    const uint point = isHex ? digits.sliced(1).toUInt(&isNumber, 16) : digits.toUInt(&isNumber, 10);
    if (!isNumber || point == 0 || point > QChar::LastValidCodePoint || QChar::isSurrogate(point))
        return QString(QChar::ReplacementCharacter);
    const auto character = static_cast<char32_t>(point);
    return QString::fromUcs4(&character, 1);
}

} // namespace

QString resolvedReference(const QString &reference) {
    if (!reference.startsWith(u'&') || !reference.endsWith(u';'))
        return reference;
    const QStringView name = QStringView(reference).sliced(1).chopped(1);
    if (name.startsWith(u'#'))
        return numbered(name.sliced(1));
    for (const NamedCharacter &each : names) {
        if (each.name == name)
            return QString(each.character);
    }
    return reference;
}
