#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int trackWidth = 200;

class ProgressListViewTest : public Figure {
protected:
    BlockView &list(const QStringList &lines, const QString &color = {}) {
        return shown(fence(u"progress"_s + color, lines), trackWidth);
    }

    int filled(const QString &value) {
        list({u"a: "_s + value});
        return countInRow(picture(), int(view->height()) - 1, on(theme.primary));
    }
};

} // namespace

TEST_F(ProgressListViewTest, anEmptyListIsNothing) {
    EXPECT_EQ(list({}).height(), 0);
    EXPECT_TRUE(inkIn(picture()).isNull());
}

TEST_F(ProgressListViewTest, theTrackIsThreeHighAndFilledFromTheLeft) {
    list({u"a: 25"_s});
    const QImage drawn = picture();
    const int bottom = int(view->height()) - 1;
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(countInRow(drawn, bottom - row, on(theme.primary)), trackWidth / 4);
        EXPECT_EQ(countInRow(drawn, bottom - row, on(theme.shade(0.12))), trackWidth * 3 / 4);
        EXPECT_EQ(colorAt(drawn, 0, bottom - row), on(theme.primary));
    }
    EXPECT_EQ(countInRow(drawn, bottom - 3, bare()), drawn.width());
    EXPECT_EQ(countInRow(drawn, bottom - 8, bare()), drawn.width());
}

TEST_F(ProgressListViewTest, rowsStandTwelveApart) {
    const double one = list({u"a: 1"_s}).height();
    EXPECT_EQ(list({u"a: 1"_s, u"b: 2"_s}).height(), 2 * one + 12);
}

TEST_F(ProgressListViewTest, numbersAreTakenAsPercentAndKeptWithinAHundred) {
    EXPECT_EQ(filled(u"50"_s), trackWidth / 2);
    EXPECT_EQ(filled(u"140"_s), trackWidth);
    EXPECT_EQ(filled(u"inf"_s), trackWidth);
    for (const QString &value : {u"-3"_s, u"0"_s, u"-0"_s, u"nan"_s, u"-inf"_s, u"-1e308"_s})
        EXPECT_EQ(filled(value), 0) << value.toStdString();
}

TEST_F(ProgressListViewTest, theColourFillsTheTrack) {
    list({u"a: 100"_s}, u":green"_s);
    EXPECT_EQ(colorAt(picture(), 10, int(view->height()) - 1), QColor::fromRgbF(0.11F, 0.58F, 0.33F).rgb());
}

TEST_F(ProgressListViewTest, anyChangeIsDrawnAsAnew) {
    list({u"a: 1"_s});
    for (const QStringList &lines : {QStringList{u"a: 1"_s, u"b: 50"_s}, {u"a: 1"_s, u"b: 50.2"_s}, {}})
        expectChange(fence(u"progress"_s, lines));
}

TEST_F(ProgressListViewTest, aScreenReaderHearsThePercentages) {
    EXPECT_EQ(list({u"Walls: 33.5"_s, u"Roof: 140"_s}).spoken().name, u"Progress: Walls 34%, Roof 100%"_s);
}
