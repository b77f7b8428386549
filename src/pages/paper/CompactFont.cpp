#include "pages/paper/CompactFont.h"

#include <algorithm>
#include <cmath>

namespace {

/// The operators of a dictionary that are used here, and of a charstring (5176, table 9 and 10; 5177, 4).
enum DictionaryOperator : quint16 {
    fontBoxOperator = 5,
    charsetOperator = 15,
    charStringsOperator = 17,
    privateOperator = 18,
    rosOperator = 0x0C1E,
    cidCountOperator = 0x0C22,
    fontArrayOperator = 0x0C24,
    fontSelectOperator = 0x0C25,
};
enum CharStringOperator : quint8 { lineTo = 5, curveTo = 8, endChar = 14, moveTo = 21 };

/// The first two names that a font can add to the standard ones.
constexpr int adobeName = 391;
constexpr int identityName = 392;

void appendBytes(QByteArray &bytes, quint32 value, int count) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += char((value >> shift) & 0xFF);
}

/// An operand of a charstring.
void appendNumber(QByteArray &bytes, int value) {
    constexpr int shortest = 107;
    constexpr quint8 shortMarker = 28;
    if (std::abs(value) <= shortest) {
        bytes += char(value + 139);
        return;
    }
    bytes += char(shortMarker);
    appendBytes(bytes, quint32(std::clamp(value, -32768, 32767)), 2);
}

class Dictionary {
public:
    /// All operands take five bytes, so that the size is known before the values are.
    void add(DictionaryOperator name, std::initializer_list<qsizetype> operands) {
        constexpr char longMarker = 29;
        for (const qsizetype operand : operands) {
            m_bytes += longMarker;
            appendBytes(m_bytes, quint32(operand), 4);
        }
        appendBytes(m_bytes, name, name > 0xFF ? 2 : 1);
    }
    const QByteArray &bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QByteArray indexOf(const QList<QByteArray> &entries) {
    constexpr int offsetSize = 4;
    QByteArray index;
    appendBytes(index, quint32(entries.size()), 2);
    if (entries.isEmpty())
        return index;
    appendBytes(index, offsetSize, 1);
    quint32 offset = 1;
    appendBytes(index, offset, offsetSize);
    for (const QByteArray &entry : entries)
        appendBytes(index, offset += quint32(entry.size()), offsetSize);
    for (const QByteArray &entry : entries)
        index += entry;
    return index;
}

/// Writes a path as steps between whole numbers: what is rounded is each place, so that nothing drifts.
class CharString {
public:
    explicit CharString(const GlyphOutline &glyph) {
        appendNumber(m_bytes, glyph.advance);
        for (int place = 0; place < glyph.path.elementCount(); ++place)
            place += take(glyph.path, place);
        m_bytes += char(endChar);
    }
    const QByteArray &bytes() const { return m_bytes; }

private:
    /// Gives how many elements it took beside the one at `place`.
    int take(const QPainterPath &path, int place) {
        const QPainterPath::Element &element = path.elementAt(place);
        const bool isCurve = element.isCurveTo();
        const int further = isCurve ? 2 : 0;
        for (int point = place; point <= place + further; ++point)
            step(path.elementAt(point));
        m_bytes += char(element.isMoveTo() ? moveTo : isCurve ? curveTo : lineTo);
        return further;
    }

    void step(const QPointF &to) {
        const QPoint rounded = to.toPoint();
        appendNumber(m_bytes, rounded.x() - m_place.x());
        appendNumber(m_bytes, rounded.y() - m_place.y());
        m_place = rounded;
    }

    QByteArray m_bytes;
    QPoint m_place;
};

/// Identifier and glyph are the same.
QByteArray identityCharset(qsizetype count) {
    QByteArray charset;
    if (count == 1)
        return QByteArray(1, 0);
    appendBytes(charset, 2, 1);
    appendBytes(charset, 1, 2);
    appendBytes(charset, quint32(count - 2), 2);
    return charset;
}

/// Every glyph belongs to the first font.
QByteArray oneFontSelect(qsizetype count) {
    QByteArray select;
    appendBytes(select, 3, 1);
    appendBytes(select, 1, 2);
    appendBytes(select, 0, 3);
    appendBytes(select, quint32(count), 2);
    return select;
}

QByteArray charStringsOf(const QList<GlyphOutline> &glyphs) {
    QList<QByteArray> strings;
    for (const GlyphOutline &glyph : glyphs)
        strings.append(CharString(glyph).bytes());
    return indexOf(strings);
}

/// Where the tables behind the first dictionary stand.
struct Places {
    qsizetype charset = 0;
    qsizetype fontSelect = 0;
    qsizetype charStrings = 0;
    qsizetype fontArray = 0;
};

QByteArray firstDictionary(const QRectF &bounds, qsizetype count, const Places &places) {
    Dictionary top;
    top.add(rosOperator, {adobeName, identityName, 0});
    top.add(fontBoxOperator, {qsizetype(std::floor(bounds.left())), qsizetype(std::floor(bounds.top())),
                              qsizetype(std::ceil(bounds.right())), qsizetype(std::ceil(bounds.bottom()))});
    top.add(cidCountOperator, {count});
    top.add(charsetOperator, {places.charset});
    top.add(fontSelectOperator, {places.fontSelect});
    top.add(charStringsOperator, {places.charStrings});
    top.add(fontArrayOperator, {places.fontArray});
    return indexOf({top.bytes()});
}

/// The only font of the array; what it could say privately is nothing.
QByteArray fontArrayAt(qsizetype place) {
    Dictionary font;
    font.add(privateOperator, {0, place});
    return indexOf({font.bytes()});
}

} // namespace

QRectF boundsOf(const QList<GlyphOutline> &glyphs) {
    QRectF bounds;
    for (const GlyphOutline &glyph : glyphs)
        bounds |= glyph.path.controlPointRect();
    return bounds;
}

QByteArray compactFont(const QByteArray &name, const QList<GlyphOutline> &glyphs) {
    const QByteArray header("\x01\x00\x04\x04", 4);
    const QByteArray names = indexOf({name});
    const QByteArray rest = indexOf({"Adobe", "Identity"}) + indexOf({});
    const QByteArray charset = identityCharset(glyphs.size());
    const QByteArray select = oneFontSelect(glyphs.size());
    const QByteArray charStrings = charStringsOf(glyphs);
    const QRectF bounds = boundsOf(glyphs);

    Places places;
    const qsizetype dictionarySize = firstDictionary(bounds, glyphs.size(), places).size();
    places.charset = header.size() + names.size() + dictionarySize + rest.size();
    places.fontSelect = places.charset + charset.size();
    places.charStrings = places.fontSelect + select.size();
    places.fontArray = places.charStrings + charStrings.size();
    return header + names + firstDictionary(bounds, glyphs.size(), places) + rest + charset + select +
           charStrings + fontArrayAt(places.fontArray);
}
