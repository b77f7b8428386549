#include "pages/drawing/FigureArithmetic.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using figure::Slice;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr QSizeF plot(300, 150);

void expectNear(const Slice &slice, double from, double to) {
    EXPECT_NEAR(slice.from, from, 1e-12);
    EXPECT_NEAR(slice.to, to, 1e-12);
}

} // namespace

TEST(FigureArithmetic, theScaleIsTheLargestNumberButAtLeastOne) {
    EXPECT_EQ(figure::scaleOf({}), 1);
    EXPECT_EQ(figure::scaleOf({0.2, 0.4}), 1);
    EXPECT_EQ(figure::scaleOf({-5, 5, 3}), 5);
    EXPECT_EQ(figure::scaleOf({-5, -7}), 1);
    EXPECT_EQ(figure::scaleOf({notANumber, 2, notANumber}), 2);
}

TEST(FigureArithmetic, aBarTakesItsShareOfTheField) {
    EXPECT_DOUBLE_EQ(figure::barShare(0.2, 1), 0.2);
    EXPECT_DOUBLE_EQ(figure::barShare(5, 5), 1);
    EXPECT_EQ(figure::barShare(-5, 5), 0);
    EXPECT_EQ(figure::barShare(-0.0, 5), 0);
    EXPECT_EQ(figure::barShare(notANumber, 5), 0);
    EXPECT_EQ(figure::barShare(-infinity, 5), 0);
}

TEST(FigureArithmetic, anInfiniteNumberIsTheLargestOne) {
    const QList<double> values = {infinity, 7, 1e308};
    const double scale = figure::scaleOf(values);
    EXPECT_TRUE(std::isfinite(scale));
    EXPECT_EQ(figure::barShare(infinity, scale), 1);
    EXPECT_EQ(figure::barShare(1e308, scale), 1);
    EXPECT_LT(figure::barShare(7, scale), 1e-200);
}

TEST(FigureArithmetic, pointsStandEvenlyFromEdgeToEdgeAndAsHighAsTheirShare) {
    EXPECT_EQ(figure::plotPoint(0, 3, 0, 10, plot), QPointF(0, 150));
    EXPECT_EQ(figure::plotPoint(1, 3, 5, 10, plot), QPointF(150, 75));
    EXPECT_EQ(figure::plotPoint(2, 3, 10, 10, plot), QPointF(300, 0));
}

TEST(FigureArithmetic, aSinglePointStandsAtTheLeftEdge) {
    EXPECT_EQ(figure::plotPoint(0, 1, 4, 4, plot), QPointF(0, 0));
    EXPECT_EQ(figure::plotPoint(0, 1, 0.5, 1, plot), QPointF(0, 75));
}

TEST(FigureArithmetic, aNegativePointStandsBelowThePlot) {
    EXPECT_EQ(figure::plotPoint(0, 2, -2, 10, plot), QPointF(0, 180));
}

TEST(FigureArithmetic, noPointIsWhereAPainterCantReach) {
    for (const double value : {infinity, -infinity, notANumber, 1e308, -1e308, -0.0}) {
        const QPointF point = figure::plotPoint(1, 2, value, 1, plot);
        EXPECT_GE(point.y(), 0) << value;
        EXPECT_LE(point.y(), 1e6) << value;
    }
}

TEST(FigureArithmetic, ofManyPointsOnlyWhatIsSeenStays) {
    const QList<QPointF> few{{0, 5}, {0.25, 7}, {1, 2}, {1.75, 2}};
    EXPECT_EQ(figure::thinned(few), few);
    const QList<QPointF> many{{0, 5}, {0.1, 6}, {0.2, 1}, {0.3, 4}, {0.4, 9}, {0.5, 8}, {0.6, 7}, {1, 3}};
    EXPECT_EQ(figure::thinned(many), (QList<QPointF>{{0, 5}, {0.2, 1}, {0.4, 9}, {0.6, 7}, {1, 3}}));
    EXPECT_TRUE(figure::thinned({}).isEmpty());
}

TEST(FigureArithmetic, slicesFollowOneAnotherRoundTheRing) {
    const QList<Slice> slices = figure::slicesOf({50, 30, 120});
    ASSERT_EQ(slices.size(), 3);
    expectNear(slices[0], 0, 0.25);
    expectNear(slices[1], 0.25, 0.4);
    expectNear(slices[2], 0.4, 1);
}

TEST(FigureArithmetic, aSmallSumLeavesTheRingOpen) {
    const QList<Slice> slices = figure::slicesOf({0.2, 0.3});
    expectNear(slices[0], 0, 0.2);
    expectNear(slices[1], 0.2, 0.5);
    EXPECT_EQ(figure::sharesOf({0.2, 0.3}), (QStringList{u"20%"_s, u"30%"_s}));
}

TEST(FigureArithmetic, aNegativeSliceGoesBack) {
    const QList<Slice> slices = figure::slicesOf({10, -5, 5});
    expectNear(slices[0], 0, 1);
    expectNear(slices[1], 1, 0.5);
    expectNear(slices[2], 0.5, 1);
}

TEST(FigureArithmetic, sharesAreRoundedAwayFromZero) {
    EXPECT_EQ(figure::sharesOf({1, 7}), (QStringList{u"13%"_s, u"88%"_s}));
    EXPECT_EQ(figure::sharesOf({-1, 9}), (QStringList{u"-13%"_s, u"113%"_s}));
    EXPECT_EQ(figure::sharesOf({100, 100, 100}), (QStringList{u"33%"_s, u"33%"_s, u"33%"_s}));
}

TEST(FigureArithmetic, everyListOfNumbersHasSlicesAndShares) {
    const QList<double> values = {infinity, -infinity, notANumber, 1e308, -1e308, 1e308, -0.0};
    for (const Slice &slice : figure::slicesOf(values)) {
        EXPECT_TRUE(slice.from >= 0 && slice.from <= 1);
        EXPECT_TRUE(slice.to >= 0 && slice.to <= 1);
    }
    EXPECT_EQ(figure::sharesOf(values).constFirst(), u"100%"_s);
    EXPECT_EQ(figure::sharesOf({notANumber, -0.0}), (QStringList{u"0%"_s, u"0%"_s}));
    EXPECT_TRUE(figure::slicesOf({}).isEmpty());
}

TEST(FigureArithmetic, progressIsBetweenNothingAndAll) {
    EXPECT_EQ(figure::printedPercentage(140), u"100%"_s);
    EXPECT_EQ(figure::printedPercentage(-3), u"0%"_s);
    EXPECT_EQ(figure::printedPercentage(33.5), u"34%"_s);
    EXPECT_EQ(figure::printedPercentage(-0.0), u"0%"_s);
    EXPECT_EQ(figure::printedPercentage(notANumber), u"0%"_s);
    EXPECT_EQ(figure::percentage(infinity), 100);
    EXPECT_EQ(figure::percentage(-infinity), 0);
}
