#include "pages/paper/TextShape.h"

#include "records/CodePoint.h"

#include <QGlyphRun>
#include <QPaintEngine>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

/// What one code of a PDF's font can say is limited to 512 bytes (ISO 32000-1, 9.10.3).
constexpr qsizetype longestText = 64;

Qt::LayoutDirection directionOf(const QTextItem &item) {
    return item.renderFlags() & QTextItem::RightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
}

bool isToDivide(const TextShape &shape, Qt::LayoutDirection direction) {
    return (direction == Qt::RightToLeft && !shape.text.isEmpty()) || shape.text.size() > longestText;
}

/// A text laid into one line in one direction, and the glyphs of each part of it.
class ShapedLine {
public:
    explicit ShapedLine(const QTextItem &item) : m_layout(item.text(), item.font()) {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        m_layout.setTextOption(option);
        // What the text is part of has decided its direction.
        m_layout.setFlags(directionOf(item) == Qt::RightToLeft ? Qt::TextForceRightToLeft
                                                               : Qt::TextForceLeftToRight);
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        m_line.setLineWidth(m_line.naturalTextWidth());
        m_layout.endLayout();
    }

    QList<QGlyphRun> glyphs(qsizetype from, qsizetype length) const {
        return m_line.glyphRuns(int(from), int(length));
    }
    double advance(qsizetype from, qsizetype length) const {
        return std::abs(m_line.cursorToX(int(from + length)) - m_line.cursorToX(int(from)));
    }
    /// True if a reader sees a character end there.
    bool isBorder(qsizetype place) const { return m_layout.isValidCursorPosition(int(place)); }
    double baseline() const { return m_line.y() + m_line.ascent(); }

private:
    QTextLayout m_layout;
    QTextLine m_line;
};

qsizetype countOf(const QList<QGlyphRun> &runs) {
    qsizetype count = 0;
    for (const QGlyphRun &run : runs)
        count += run.glyphIndexes().size();
    return count;
}

/// Where the cluster that begins at `start` ends: where a reader's character ends, and where the two sides
/// share no glyph. What isn't drawn goes with what is before it.
qsizetype clusterEnd(const ShapedLine &line, QStringView text, qsizetype start) {
    qsizetype last = start;
    qsizetype lastLength = codePointAt(text, start).length;
    qsizetype lastCount = countOf(line.glyphs(last, lastLength));
    bool isDrawn = lastCount > 0;
    for (qsizetype next = last + lastLength; next < text.size();) {
        const qsizetype length = codePointAt(text, next).length;
        const qsizetype count = countOf(line.glyphs(next, length));
        const bool isApart = countOf(line.glyphs(last, lastLength + length)) == lastCount + count;
        if (isApart && count > 0 && isDrawn && line.isBorder(next))
            return next;
        isDrawn = isDrawn || count > 0;
        last = next;
        lastLength = length;
        lastCount = count;
        next += length;
    }
    return text.size();
}

TextShape shapeOf(const QGlyphRun &run, double baseline) {
    const QList<QPointF> positions = run.positions();
    TextShape shape{{}, run.rawFont(), run.glyphIndexes(), {}, positions.first().x(), 0};
    for (const QPointF &position : positions)
        shape.places.append(position - QPointF(shape.left, baseline));
    return shape;
}

/// The glyphs of a cluster, of which the first shape says it all and is as wide as all.
QList<TextShape> clusterShapes(const ShapedLine &line, const QString &text, qsizetype start,
                               qsizetype length) {
    QList<TextShape> shapes;
    for (const QGlyphRun &run : line.glyphs(start, length))
        shapes.append(shapeOf(run, line.baseline()));
    if (shapes.isEmpty())
        return {};
    shapes.first().text = text.sliced(start, length);
    shapes.first().advance = line.advance(start, length);
    return shapes;
}

/// The shape divided among its characters, the leftmost of which shows it all.
QList<TextShape> divided(TextShape shape, Qt::LayoutDirection direction) {
    QStringList characters;
    for (qsizetype place = 0; place < shape.text.size();) {
        const qsizetype length = codePointAt(shape.text, place).length;
        characters.insert(direction == Qt::RightToLeft ? 0 : characters.size(),
                          shape.text.sliced(place, length));
        place += length;
    }
    shape.advance /= double(characters.size());
    QList<TextShape> parts;
    for (const QString &character : characters) {
        shape.text = character;
        parts.append(shape);
        shape.glyphs.clear();
        shape.places.clear();
        shape.left += shape.advance;
    }
    return parts;
}

} // namespace

QList<TextShape> shapesOf(const QTextItem &item) {
    const QString text = item.text();
    const Qt::LayoutDirection direction = directionOf(item);
    const ShapedLine line(item);
    QList<TextShape> shapes;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = clusterEnd(line, text, start);
        for (const TextShape &shape : clusterShapes(line, text, start, end - start))
            shapes.append(isToDivide(shape, direction) ? divided(shape, direction) : QList{shape});
        start = end;
    }
    std::stable_sort(shapes.begin(), shapes.end(),
                     [](const TextShape &one, const TextShape &other) { return one.left < other.left; });
    return shapes;
}
