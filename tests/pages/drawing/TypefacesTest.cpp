#include "pages/drawing/DrawingTheme.h"
#include "pages/drawing/Drawn.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Whether something in that text, written in dark letters on white, is neither dark nor white.
bool hasColors(const QString &text, TextStep step) {
    DrawingTheme theme = paperTheme();
    theme.primary = Qt::black;
    QImage picture(200, 60, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(theme.font(step));
    painter.drawText(10, 40, text);
    painter.end();
    int colored = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colored += picture.pixelColor(x, y).saturation() > 100;
    }
    return colored > 0;
}

} // namespace

TEST(Typefaces, emojiHaveTheirColorsInEveryFace) {
    for (const TextStep step : {TextStep::body, TextStep::quote, TextStep::code, TextStep::pageTitle}) {
        for (const QString &text : {u"😀"_s, u"👍"_s, u"👍🏽"_s, u"✅"_s, u"🚀"_s})
            EXPECT_TRUE(hasColors(text, step)) << text.toStdString() << " in " << int(step);
    }
}

TEST(Typefaces, whatIsTextStaysText) {
    for (const TextStep step : {TextStep::body, TextStep::quote, TextStep::code, TextStep::pageTitle}) {
        for (const QString &text : {u"0123456789"_s, u"# * ✓ © ® ™"_s, u"→ – • ½"_s})
            EXPECT_FALSE(hasColors(text, step)) << text.toStdString() << " in " << int(step);
    }
}
