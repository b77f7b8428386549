#include "pages/drawing/GlyphContext.h"

#include "pages/drawing/DrawingTheme.h"

#include <QGlyphRun>
#include <QRawFont>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString printable() {
    QString all = u"–—•"_s;
    for (char16_t character = u' '; character < 0x7F; ++character)
        all += character;
    return all;
}

QList<quint32> glyphsOf(const QString &text, const QFont &font) {
    QTextLayout layout(text, font);
    layout.setFormats(glyphsApart(text));
    layout.beginLayout();
    layout.createLine().setLineWidth(1000);
    layout.endLayout();
    QList<quint32> glyphs;
    for (const QGlyphRun &run : layout.glyphRuns())
        glyphs += run.glyphIndexes();
    return glyphs;
}

} // namespace

TEST(GlyphContext, everyGlyphStandsForItsCharacter) {
    const QString all = printable();
    for (const QFont &font : {paperTheme().font(TextStep::body), paperTheme().font(TextStep::code)}) {
        const QRawFont raw = QRawFont::fromFont(font);
        for (const QChar one : all) {
            for (const QChar two : all) {
                const QString text = u"A1"_s + one + two + u"B 2 "_s + two + one;
                ASSERT_EQ(glyphsOf(text, font), raw.glyphIndexesForString(text))
                    << font.family().toStdString() << ": " << text.toStdString();
            }
        }
    }
}

TEST(GlyphContext, whatIsWrittenIsReadAsItIs) {
    const QFont font = paperTheme().font(TextStep::body);
    const QRawFont raw = QRawFont::fromFont(font);
    for (const QString &text : {u"0x1F"_s, u"3x4"_s, u"a->b"_s, u"=>"_s, u"<->"_s})
        EXPECT_EQ(glyphsOf(text, font), raw.glyphIndexesForString(text)) << text.toStdString();
}

TEST(GlyphContext, aMarkStaysWithItsLetter) {
    EXPECT_TRUE(glyphsApart(u"a-\u0301b").isEmpty());
    EXPECT_EQ(glyphsApart(u"a-b").size(), 1);
}

TEST(GlyphContext, aTextOfNothingButSignsHasItsLimit) {
    EXPECT_EQ(glyphsApart(QString(100'000, u'=')).size(), mostGlyphsApart);
}
