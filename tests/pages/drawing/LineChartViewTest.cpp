#include "pages/drawing/Figure.h"
#include "pages/drawing/MarkdownView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int plotWidth = 301;
constexpr int plotHeight = 150;

class LineChartViewTest : public Figure {
protected:
    BlockView &line(const QStringList &lines, const QString &color = {}) {
        return shown(fence(u"line"_s + color, lines), plotWidth);
    }

    QRect plotInk() const {
        return inkIn(picture().copy(0, 0, plotWidth + 2 * pictureMargin, plotHeight - 2 + pictureMargin));
    }

    QRect labelInk(double left, double right) const {
        const int top = plotHeight + 4 + pictureMargin;
        const QImage drawn = picture();
        const QRect ink =
            inkIn(drawn.copy(int(left) + pictureMargin, top, int(right - left), drawn.height() - top));
        return ink.isNull() ? ink : ink.translated(int(left) + pictureMargin, 0);
    }
};

} // namespace

TEST_F(LineChartViewTest, anEmptyPlotHasItsBaseline) {
    EXPECT_EQ(line({}).height(), plotHeight);
    EXPECT_EQ(inkIn(picture()), QRect(0, plotHeight - 1, plotWidth, 1));
    EXPECT_EQ(colorAt(picture(), 5, plotHeight - 1), on(theme.shade(0.12)));
}

TEST_F(LineChartViewTest, aSinglePointIsADotOfSixAtTheLeftEdge) {
    line({u"a: 0.5"_s});
    EXPECT_EQ(plotInk(), QRect(-3, 75 - 3, 6, 6));
    EXPECT_EQ(colorAt(picture(), 0, 75), on(theme.primary));
}

TEST_F(LineChartViewTest, pointsStandWhereTheirNumbersSay) {
    line({u"a: 10"_s, u"b: 5"_s, u"c: 0"_s, u"d: 10"_s});
    const QImage drawn = picture();
    for (const QPoint &dot : {QPoint(0, 0), {100, 75}, {200, 150}, {300, 0}})
        EXPECT_EQ(colorAt(drawn, dot.x(), dot.y()), on(theme.primary)) << dot.x();
    EXPECT_EQ(colorAt(drawn, 100, 60), bare());
}

TEST_F(LineChartViewTest, theLineIsTwoWide) {
    line({u"a: 2"_s, u"b: 1"_s, u"c: 1"_s});
    EXPECT_EQ(countInColumn(picture(), 225, on(theme.primary)), 2);
}

TEST_F(LineChartViewTest, theAxisStartsAtZeroAndTheScaleIsAtLeastOne) {
    line({u"a: 0.2"_s, u"b: 0.2"_s});
    EXPECT_NEAR(plotInk().center().y(), plotHeight - 30, 1);
}

TEST_F(LineChartViewTest, aNegativePointStandsBelowThePlot) {
    line({u"a: 50"_s, u"b: -5"_s, u"c: 50"_s});
    const QImage drawn = picture();
    EXPECT_EQ(colorAt(drawn, 150, plotHeight + 14), on(theme.primary));
    EXPECT_EQ(colorAt(drawn, 150, plotHeight - 10), bare());
}

TEST_F(LineChartViewTest, noNumberIsDrawnFarOutside) {
    for (const QString &value : {u"nan"_s, u"inf"_s, u"-inf"_s, u"1e308"_s, u"-1e308"_s, u"-0"_s, u"-7"_s}) {
        line({u"a: 1"_s, u"b: "_s + value, u"c: 1"_s});
        EXPECT_TRUE(QRect(-4, -4, plotWidth + 8, int(view->height()) + 8).contains(inkIn(picture())))
            << value.toStdString();
    }
}

TEST_F(LineChartViewTest, aDotAtTheTopIsDrawnInTheGapAbove) {
    MarkdownView text(theme);
    text.layIn(plotWidth);
    text.setText(u"above\n"_s + fence(u"line"_s, {u"a: 1"_s, u"b: 1"_s}));
    const double top = text.topOf(1);
    QImage gap(plotWidth, 2, QImage::Format_RGB32);
    gap.fill(ground);
    QPainter painter(&gap);
    painter.translate(0, 2 - top);
    text.draw(painter, QRectF(0, top - 2, plotWidth, 1.5));
    EXPECT_EQ(gap.pixel(0, 1), on(theme.primary));
}

TEST_F(LineChartViewTest, theColourIsThatOfLineAndDots) {
    line({u"a: 1"_s, u"b: 1"_s}, u":purple"_s);
    const QRgb purple = QColor::fromRgbF(0.48F, 0.28F, 0.76F).rgb();
    EXPECT_EQ(colorAt(picture(), 100, 0), purple);
    EXPECT_EQ(colorAt(picture(), 1, 1), purple);
    line({u"a: 1"_s, u"b: 1"_s}, u":mauve"_s);
    EXPECT_EQ(colorAt(picture(), 100, 0), on(theme.primary));
}

TEST_F(LineChartViewTest, labelsStandInTheMiddleOfEqualColumns) {
    line({u"iii: 1"_s, u"iii: 2"_s, u"iii: 3"_s});
    const double column = (plotWidth - 8) / 3.0;
    for (int index = 0; index < 3; ++index) {
        const double left = index * (column + 4);
        const QRect ink = labelInk(left, left + column);
        EXPECT_NEAR(ink.center().x(), left + column / 2, 1.5) << index;
    }
}

TEST_F(LineChartViewTest, aLabelShrinksBeforeItIsCut) {
    line({u"a: 1"_s, u"b: 1"_s, u"c: 1"_s, u"d: 1"_s, u"HHHHHHHH: 1"_s});
    const double column = (plotWidth - 16) / 5.0;
    const QRect whole = labelInk(4 * (column + 4), plotWidth);
    line({u"a: 1"_s, u"b: 1"_s, u"c: 1"_s, u"d: 1"_s, u"HHHHHHHHHHHH: 1"_s});
    const QRect smaller = labelInk(4 * (column + 4), plotWidth);
    EXPECT_LT(smaller.height(), whole.height());
    line({u"a: 1"_s, u"b: 1"_s, u"c: 1"_s, u"d: 1"_s, u"%1: 1"_s.arg(QString(500, u'H'))});
    const QRect cut = labelInk(4 * (column + 4) - 3, plotWidth + 3);
    EXPECT_EQ(cut.height(), 6); // the capitals of letters of size 7
    EXPECT_LE(cut.width(), column + 1);
    EXPECT_TRUE(labelInk(3 * (column + 4) + column, 4 * (column + 4)).isNull());
}

TEST_F(LineChartViewTest, labelsWithoutRoomAreLeftOut) {
    line(manyLines(u"item %1: 1"_s, 500));
    EXPECT_TRUE(labelInk(0, plotWidth).isNull());
}

TEST_F(LineChartViewTest, aLineWithoutEndIsDrawn) {
    line(manyLines(u"item %1: %1"_s, 10'000));
    EXPECT_EQ(colorAt(picture(), plotWidth - 1, 1), on(theme.primary));
    EXPECT_EQ(colorAt(picture(), plotWidth / 2, plotHeight / 2), on(theme.primary));
}

TEST_F(LineChartViewTest, theDarkThemeLightensBaselineAndLine) {
    useDarkTheme();
    line({u"a: 1"_s, u"b: 1"_s});
    EXPECT_EQ(colorAt(picture(), 100, 0), theme.primary.rgb());
    EXPECT_EQ(colorAt(picture(), 100, plotHeight - 1), on(theme.shade(0.12)));
}

TEST_F(LineChartViewTest, anyChangeIsDrawnAsAnew) {
    line({u"a: 1"_s});
    for (const QStringList &lines : {QStringList{u"a: 1"_s, u"b: 50"_s}, {u"c: 1"_s}, {}, {u"שלום: 4"_s}})
        expectChange(fence(u"line"_s, lines));
}

TEST_F(LineChartViewTest, aScreenReaderHearsTheNumbers) {
    EXPECT_EQ(line({u"May: 1.5"_s, u"June: 3"_s}).spoken().name, u"Line chart: May 1.5, June 3"_s);
}

TEST_F(LineChartViewTest, theLabelsGrowWithTheText) {
    const QString line = fence(u"line"_s, {u"a: 1"_s, u"b: 2"_s});
    theme.bodySize = 13;
    const double small = shown(line).height();
    theme.bodySize = 19;
    EXPECT_GT(shown(line).height(), small + 4);
}
