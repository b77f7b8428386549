#include "screens/MessageRow.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/ManualClock.h"

using namespace Qt::StringLiterals;

namespace {

/// The person's words as they are painted.
class BubbleTest : public testing::Test {
protected:
    BubbleTest()
        : row(look, clock, {.id = QUuid::createUuid(), .text = u"\u2588\u2588\u2588\u2588\u2588\u2588"_s}) {}

    void draw(Theme theme) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        row.resize(600, row.layIn(600));
        picture = QImage(row.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        row.render(&picture, {}, {}, QWidget::DrawChildren);
        bubble = QRect();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qAlpha(picture.pixel(x, y)) > 0)
                    bubble |= QRect(x, y, 1, 1);
            }
        }
    }

    /// A pixel of the bubble, from its upper left corner.
    QColor at(int x, int y) const { return picture.pixelColor(bubble.topLeft() + QPoint(x, y)); }

    StillLook look;
    ManualClock clock;
    MessageRow row;
    QImage picture;
    QRect bubble; ///< all that is painted
};

} // namespace

TEST_F(BubbleTest, itIsFilledWithTheAccentAndWrittenInTheInkOnIt) {
    for (const Theme theme : themes) {
        SCOPED_TRACE(displayName(theme).toStdString());
        draw(theme);
        EXPECT_EQ(at(4, bubble.height() / 2).rgb(), look.palette().accent.rgb());
        EXPECT_GT(pixelsOf(picture.copy(row.textView()->geometry()), look.palette().onAccent()), 20);
    }
}

TEST_F(BubbleTest, itsCornersAreRoundBySixteen) {
    draw(Theme::crispWhite);
    const QRgb accent = look.palette().accent.rgb();
    ASSERT_GE(bubble.height(), 32);
    EXPECT_EQ(at(16, 0).rgb(), accent);
    EXPECT_EQ(at(0, 16).rgb(), accent);
    EXPECT_EQ(at(5, 5).rgb(), accent);
    EXPECT_NE(at(4, 4).rgba(), accent);
    EXPECT_EQ(at(3, 3).alpha(), 0);
}

TEST_F(BubbleTest, itsTextHasItsSpace) {
    draw(Theme::crispWhite);
    const QRect text = row.textView()->geometry();
    EXPECT_EQ(text.left() - bubble.left(), 14);
    EXPECT_EQ(bubble.right() - text.right(), 14);
    EXPECT_EQ(text.top() - bubble.top(), 10);
    EXPECT_EQ(bubble.bottom() - text.bottom(), 10);
}
