#include "pages/drawing/GlyphContext.h"

namespace {

/// True for an x that isn't within a word.
bool isSignOfTimes(QStringView text, qsizetype place) {
    const bool followsLetter = place > 0 && text.at(place - 1).isLetter();
    const bool leadsLetter = place + 1 < text.size() && text.at(place + 1).isLetter();
    const bool besideDigit = (place > 0 && text.at(place - 1).isDigit()) ||
                             (place + 1 < text.size() && text.at(place + 1).isDigit());
    return besideDigit || (!followsLetter && !leadsLetter);
}

/// The characters that Inter draws in a way that depends on their neighbours.
bool dependsOnNeighbours(QStringView text, qsizetype place) {
    const QChar character = text.at(place);
    if (character == u'x')
        return isSignOfTimes(text, place);
    static constexpr QStringView ascii = u"()*+-:<=>@[]{}~";
    static constexpr QStringView others = u"–—•";
    return character.unicode() < 0x80 ? ascii.contains(character) : others.contains(character);
}

} // namespace

QList<QTextLayout::FormatRange> glyphsApart(QStringView text) {
    QList<QTextLayout::FormatRange> apart;
    for (qsizetype place = 0; place < text.size() && apart.size() < mostGlyphsApart; ++place) {
        if (!dependsOnNeighbours(text, place))
            continue;
        const bool isCarrier = place + 1 < text.size() && text.at(place + 1).isMark();
        if (!isCarrier)
            apart.append({int(place), 1, QTextCharFormat()});
    }
    return apart;
}
