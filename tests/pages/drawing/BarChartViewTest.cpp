#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldWidth = 300;

class BarChartViewTest : public Figure {
protected:
    BlockView &chart(const QStringList &lines, const QString &color = {}) {
        return shown(fence(u"chart"_s + color, lines), fieldWidth);
    }

    /// The height of a row with one line of label, without the space between rows.
    double rowHeight() { return chart({u"a: 1"_s}).height(); }
};

} // namespace

TEST_F(BarChartViewTest, anEmptyChartIsNothing) {
    EXPECT_EQ(chart({}).height(), 0);
    EXPECT_TRUE(inkIn(picture()).isNull());
    EXPECT_EQ(view->spoken().name, u"Bar chart"_s);
}

TEST_F(BarChartViewTest, theBarIsFiveHighAtTheBottomOfAFieldOfEight) {
    chart({u"a: 1"_s, u"b: 0"_s});
    const QImage drawn = picture();
    const int bottom = int(rowHeight()) - 1;
    const QRgb primary = on(theme.primary);
    for (int row = 0; row < 5; ++row)
        EXPECT_EQ(countInRow(drawn, bottom - row, primary), fieldWidth) << row;
    EXPECT_EQ(countInRow(drawn, bottom - 5, bare()), drawn.width());
    EXPECT_EQ(countInRow(drawn, bottom - 8, bare()), drawn.width());
}

TEST_F(BarChartViewTest, aHairlineRunsAlongTheBottomOfTheField) {
    const int bottom = int(rowHeight()) - 1;
    chart({u"a: 0"_s});
    const QRgb hairline = on(theme.shade(0.12));
    EXPECT_EQ(countInRow(picture(), bottom, hairline), fieldWidth);
    EXPECT_EQ(countInRow(picture(), bottom - 1, bare()), picture().width());
}

TEST_F(BarChartViewTest, rowsStandFourteenApart) {
    const double one = rowHeight();
    EXPECT_EQ(chart({u"a: 1"_s, u"b: 2"_s, u"c: 3"_s}).height(), 3 * one + 2 * 14);
}

TEST_F(BarChartViewTest, barsTakeTheirShareOfTheLargest) {
    const int one = int(rowHeight());
    chart({u"a: 5"_s, u"b: -5"_s, u"c: 2.5"_s});
    const QImage drawn = picture();
    const QRgb primary = on(theme.primary);
    EXPECT_EQ(countInRow(drawn, one - 1, primary), fieldWidth);
    EXPECT_EQ(countInRow(drawn, 2 * one + 14 - 1, primary), 0);
    EXPECT_EQ(countInRow(drawn, 3 * one + 28 - 1, primary), fieldWidth / 2);
}

TEST_F(BarChartViewTest, smallNumbersDontFillTheField) {
    const int one = int(rowHeight());
    chart({u"a: 0.2"_s, u"b: 0.4"_s});
    EXPECT_EQ(countInRow(picture(), one - 1, on(theme.primary)), fieldWidth / 5);
    EXPECT_EQ(countInRow(picture(), 2 * one + 14 - 1, on(theme.primary)), fieldWidth * 2 / 5);
}

TEST_F(BarChartViewTest, aColourFillsTheBarsAndAnUnknownOneIsNone) {
    const int bottom = int(rowHeight()) - 1;
    chart({u"a: 1"_s}, u":green"_s);
    EXPECT_EQ(colorAt(picture(), 10, bottom), QColor::fromRgbF(0.11F, 0.58F, 0.33F).rgb());
    chart({u"a: 1"_s}, u":mauve"_s);
    EXPECT_EQ(colorAt(picture(), 10, bottom), on(theme.primary));
}

TEST_F(BarChartViewTest, inTheDarkTheNeutralBarIsLight) {
    useDarkTheme();
    chart({u"a: 1"_s, u"b: 0"_s});
    EXPECT_EQ(colorAt(picture(), 10, int(view->height() - 14) / 2 - 1), theme.primary.rgb());
    EXPECT_EQ(colorAt(picture(), 10, int(view->height()) - 1), on(theme.shade(0.12)));
}

TEST_F(BarChartViewTest, theNumberStandsAtTheRightAndTheLabelAtTheLeft) {
    chart({u"Rent: $1,200"_s});
    const QRect ink = inkIn(picture().copy(0, 0, picture().width(), pictureMargin + 16));
    EXPECT_LE(ink.left(), 3);
    EXPECT_GE(ink.right(), fieldWidth - 4);
}

TEST_F(BarChartViewTest, aLabelFromTheRightStandsBesideTheNumber) {
    chart({u"שכר: 7"_s});
    const QImage labels = picture().copy(0, 0, picture().width(), pictureMargin + 16);
    EXPECT_GT(inkIn(labels).left(), fieldWidth / 2);
}

TEST_F(BarChartViewTest, aLongLabelGoesOverLinesAndLeavesTheNumberFree) {
    const double one = rowHeight();
    chart({u"%1: 1200"_s.arg(u"word "_s.repeated(30))});
    EXPECT_GT(view->height(), one + 20);
    const QImage drawn = picture();
    const double numberLeft = view->width() - 45;
    for (int y = 30; y < int(view->height()) - 10; ++y)
        EXPECT_EQ(colorAt(drawn, int(numberLeft) + 20, y), bare()) << y;
}

TEST_F(BarChartViewTest, everyNumberStaysInsideItsField) {
    for (const QString &value : {u"nan"_s, u"inf"_s, u"-inf"_s, u"1e308"_s, u"-1e308"_s, u"-0"_s, u"-7"_s}) {
        chart({u"a: "_s + value, u"b: 1"_s});
        EXPECT_TRUE(QRect(-1, -1, fieldWidth + 2, int(view->height()) + 2).contains(inkIn(picture())))
            << value.toStdString();
    }
}

TEST_F(BarChartViewTest, anyChangeIsDrawnAsAnew) {
    chart({u"a: 1"_s});
    for (const QStringList &lines : {QStringList{u"a: 1"_s, u"b: 0.5"_s},
                                     {u"a: 1"_s, u"b: 0.52"_s},
                                     {u"a: 1"_s, u"b: 0.5"_s, u"c: 4"_s},
                                     {u"a: 1"_s, u"be: 0.5"_s, u"c: 4"_s},
                                     {u"a: 1"_s},
                                     {},
                                     {u"c: 9"_s}})
        expectChange(fence(u"chart"_s, lines));
    expectChange(fence(u"chart:red"_s, {u"c: 9"_s}));
    expectChange(fence(u"chart:red"_s, {u"c: 9"_s, u"d: 4"_s}));
}

TEST_F(BarChartViewTest, oneMoreRowChangesNothingAbove) {
    const double height = chart({u"a: 3"_s, u"b: 2"_s}).height();
    EXPECT_EQ(change(fence(u"chart"_s, {u"a: 3"_s, u"b: 2"_s, u"c: 1"_s})), height);
    EXPECT_EQ(change(fence(u"chart"_s, {u"a: 3"_s, u"b: 2"_s, u"c: 4"_s})), 0);
}

TEST_F(BarChartViewTest, aListWithoutEndIsLaid) {
    const double one = rowHeight();
    chart(manyLines(u"item %1: %1"_s, 10'000));
    EXPECT_EQ(view->height(), 10'000 * one + 9'999 * 14);
    QImage strip(fieldWidth, 40, QImage::Format_RGB32);
    strip.fill(Qt::white);
    QPainter painter(&strip);
    const double top = view->height() - 40;
    painter.translate(0, -top);
    view->draw(painter, QRectF(0, top, fieldWidth, 40));
    EXPECT_EQ(strip.pixel(fieldWidth - 1, 39), theme.primary.rgb());
}

TEST_F(BarChartViewTest, aScreenReaderHearsTheNumbers) {
    EXPECT_EQ(chart({u"Rent: $1,200"_s, u"Food: 30%"_s}).spoken().name, u"Bar chart: Rent 1200, Food 30"_s);
    EXPECT_EQ(view->spoken().role, QAccessible::Graphic);
    EXPECT_TRUE(chart(manyLines(u"a%1: 1"_s, 60)).spoken().name.endsWith(u"a49 1, and 10 more"_s));
}
