#include "pages/paper/CompactFont.h"

#include <QRawFont>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The font as the system's own reader of fonts has it, with a pixel to each of its units.
QRawFont fontOf(const QList<GlyphOutline> &glyphs) {
    return QRawFont(compactFont("Test-Regular", glyphs), 1000, QFont::PreferNoHinting);
}

/// The path as fonts have it: in whole numbers, with y downwards as on a screen.
QPainterPath drawn(const QRawFont &font, quint32 glyph) {
    return font.pathForGlyph(glyph);
}

QPainterPath upsideDown(const QPainterPath &path) {
    return QTransform::fromScale(1, -1).map(path);
}

GlyphOutline square(int left, int top, int size) {
    GlyphOutline outline{{}, left + size};
    outline.path.addRect(left, top, size, size);
    return outline;
}

} // namespace

TEST(CompactFont, itsGlyphsHaveTheOutlinesThatWereGiven) {
    GlyphOutline curved{{}, 777};
    curved.path.moveTo(-5, 700);
    curved.path.cubicTo(100, -1200, 1131, 0, 1132, 5000);
    curved.path.lineTo(0, 0);
    curved.path.closeSubpath();
    curved.path.addEllipse(100, 200, 60, 60);
    const QRawFont font = fontOf({square(0, 0, 10), curved, square(-2000, 300, 4000)});
    ASSERT_TRUE(font.isValid());
    EXPECT_EQ(drawn(font, 2).boundingRect(), QRectF(-2000, -4300, 4000, 4000));
    const QPainterPath path = drawn(font, 1);
    const QPainterPath expected = upsideDown(curved.path);
    for (const qreal share : {0.0, 0.1, 0.3, 0.5, 0.9}) {
        const QPointF distance = path.pointAtPercent(share) - expected.pointAtPercent(share);
        EXPECT_LT(distance.manhattanLength(), 3) << share;
    }
}

TEST(CompactFont, itsGlyphsMoveOnAsTold) {
    const QRawFont font = fontOf({{}, {{}, 250}, {{}, 0}, {{}, 1500}, {{}, 30000}});
    const QList<QPointF> advances = font.advancesForGlyphIndexes({1, 2, 3, 4});
    EXPECT_EQ(advances, (QList<QPointF>{{250, 0}, {0, 0}, {1500, 0}, {30000, 0}}));
}

TEST(CompactFont, roundingDoesNotAddUp) {
    GlyphOutline stairs{{}, 1000};
    stairs.path.moveTo(0, 0);
    for (int step = 1; step <= 300; ++step)
        stairs.path.lineTo(step * 1.4, step * 0.4);
    EXPECT_EQ(drawn(fontOf({{}, stairs}), 1).boundingRect(), QRectF(0, -120, 420, 120));
}

TEST(CompactFont, itMayHaveASingleGlyphOrThousands) {
    EXPECT_TRUE(fontOf({square(0, 0, 10)}).isValid());
    QList<GlyphOutline> glyphs;
    for (int size = 0; size < 20'000; ++size)
        glyphs.append(square(0, 0, size % 700));
    EXPECT_EQ(drawn(fontOf(glyphs), 19'999).boundingRect(), QRectF(0, -399, 399, 399));
}
