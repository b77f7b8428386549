#include "pages/paper/PdfFont.h"

#include <QDataStream>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// Outlines and advances are told in thousandths of the size (ISO 32000-1, 9.2.4).
constexpr double unitsPerEm = 1000;
constexpr qsizetype mostCodes = 65535;
/// The most that one block of a table of texts may list (Adobe technical note 5014).
constexpr qsizetype mostPerBlock = 100;

/// Pictures of one size, as colour fonts have them; the tables that tell where they are.
bool hasPictureTable(const QRawFont &face) {
    return !face.fontTable("CBLC").isEmpty() || !face.fontTable("sbix").isEmpty();
}

/// Places of a glyph in thousandths, so that what looks the same is the same.
QPoint rounded(const QPointF &place, double scale) {
    return (place * scale).toPoint();
}

QByteArray keyOf(const TextShape &shape, double scale) {
    QByteArray key;
    QDataStream stream(&key, QIODevice::WriteOnly);
    stream << shape.text << shape.glyphs;
    for (const QPointF &place : shape.places)
        stream << rounded(place, scale);
    return key;
}

} // namespace

PdfFont::PdfFont(const QRawFont &face, int number)
    : m_face(face),
      m_large(face),
      m_number(number),
      m_hasPictures(hasPictureTable(face)),
      m_glyphs{GlyphOutline()},
      m_texts{QString()} {
    m_large.setPixelSize(unitsPerEm);
}

bool PdfFont::isFull() const {
    return m_glyphs.size() == mostCodes;
}

int PdfFont::codeOf(const TextShape &shape) {
    const QByteArray key = keyOf(shape, unitsPerEm / m_face.pixelSize());
    const auto known = m_codes.constFind(key);
    if (known != m_codes.constEnd())
        return *known;
    const int code = int(m_glyphs.size());
    m_glyphs.append(outlineOf(shape));
    m_texts.append(shape.text);
    m_codes.insert(key, code);
    return code;
}

GlyphOutline PdfFont::outlineOf(const TextShape &shape) const {
    const double scale = unitsPerEm / m_face.pixelSize();
    GlyphOutline outline{{}, int(std::lround(shape.advance * scale))};
    if (m_hasPictures)
        return outline;
    for (qsizetype index = 0; index < shape.glyphs.size(); ++index)
        outline.path.addPath(
            m_large.pathForGlyph(shape.glyphs.at(index)).translated(rounded(shape.places.at(index), scale)));
    outline.path = QTransform::fromScale(1, -1).map(outline.path);
    return outline;
}

PdfFile::Object PdfFont::writeTo(PdfFile &file) const {
    const PdfFile::Object glyphs =
        file.add("<</Type/Font/Subtype/CIDFontType0/BaseFont/" + name() +
                 "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor " +
                 pdf::reference(writeDescriptor(file)) + "/W[0[" + advances() + "]]>>");
    return file.add("<</Type/Font/Subtype/Type0/BaseFont/" + name() +
                    "/Encoding/Identity-H/DescendantFonts[" + pdf::reference(glyphs) + "]/ToUnicode " +
                    pdf::reference(writeTexts(file)) + ">>");
}

/// As the names of parts of fonts are: six letters before that of the font.
QByteArray PdfFont::name() const {
    QByteArray tag;
    for (int rest = m_number; tag.size() < 6; rest /= 26)
        tag.prepend(char('A' + rest % 26));
    QByteArray plain;
    for (const QChar character : m_face.familyName() + u'-' + m_face.styleName()) {
        if (character.unicode() < 0x80 && (character.isLetterOrNumber() || character == u'-'))
            plain += char(character.unicode());
    }
    return tag + '+' + plain;
}

PdfFile::Object PdfFont::writeDescriptor(PdfFile &file) const {
    constexpr int symbolic = 4;
    constexpr int slant = -12;
    constexpr int stem = 80;
    const PdfFile::Object program = file.addStream("/Subtype/CIDFontType0C", compactFont(name(), m_glyphs));
    const QRectF box = boundsOf(m_glyphs);
    return file.add("<</Type/FontDescriptor/FontName/" + name() + "/Flags " + pdf::number(symbolic) +
                    "/FontBBox[" + pdf::numbers({box.left(), box.top(), box.right(), box.bottom()}) +
                    "]/ItalicAngle " + pdf::number(m_face.style() == QFont::StyleNormal ? 0 : slant) +
                    "/Ascent " + pdf::number(m_large.ascent()) + "/Descent " +
                    pdf::number(-m_large.descent()) + "/CapHeight " + pdf::number(m_large.capHeight()) +
                    "/StemV " + pdf::number(stem) + "/FontFile3 " + pdf::reference(program) + ">>");
}

PdfFile::Object PdfFont::writeTexts(PdfFile &file) const {
    QList<QByteArray> lines;
    for (int code = 1; code < m_texts.size(); ++code) {
        if (!m_texts.at(code).isEmpty())
            lines.append('<' + pdf::code(code) + "><" + pdf::utf16(m_texts.at(code)) + ">\n");
    }
    QByteArray map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                     "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
                     "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
                     "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
    for (qsizetype first = 0; first < lines.size(); first += mostPerBlock) {
        const QList<QByteArray> block = lines.mid(first, mostPerBlock);
        map += QByteArray::number(block.size()) + " beginbfchar\n" + block.join() + "endbfchar\n";
    }
    return file.addStream({}, map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n");
}

QByteArray PdfFont::advances() const {
    QByteArray advances;
    for (const GlyphOutline &glyph : m_glyphs)
        advances += QByteArray::number(glyph.advance) + ' ';
    return advances;
}
