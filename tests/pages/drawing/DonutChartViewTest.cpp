#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Figure.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int ringSize = 132;
constexpr double middleOfStroke = 66 - 7;

class DonutChartViewTest : public Figure {
protected:
    BlockView &donut(const QStringList &lines, const QString &color = {}) {
        return shown(fence(u"donut"_s + color, lines), 400);
    }

    /// The ring's colour at that part of the circle, clockwise from the top.
    QRgb ringAt(double part, double radius = middleOfStroke) const {
        const double angle = part * 2 * std::numbers::pi;
        const double top = std::floor((view->height() - ringSize) / 2);
        return colorAt(picture(), int(std::floor(66 + radius * std::sin(angle))),
                       int(std::floor(top + 66 - radius * std::cos(angle))));
    }

    /// The colour of a slice, which is drawn over the empty ring.
    QRgb slice(qsizetype index, const QString &color = {}) const {
        return laidOn(QColor(empty()), colorOf(seriesColor(index, color)));
    }

    QRgb empty() const { return on(theme.shade(0.08)); }
};

} // namespace

TEST_F(DonutChartViewTest, anEmptyDonutIsAnEmptyRing) {
    EXPECT_EQ(donut({}).height(), ringSize);
    EXPECT_EQ(inkIn(picture()), QRect(0, 0, ringSize, ringSize));
    for (const double part : {0.1, 0.35, 0.6, 0.85})
        EXPECT_EQ(ringAt(part), empty()) << part;
}

TEST_F(DonutChartViewTest, theRingIsFourteenWide) {
    donut({});
    EXPECT_EQ(ringAt(0.25, 65), empty());
    EXPECT_EQ(ringAt(0.25, 53), empty());
    EXPECT_EQ(ringAt(0.25, 51), bare());
    EXPECT_EQ(ringAt(0.25, 0), bare());
}

TEST_F(DonutChartViewTest, slicesRunClockwiseFromTheTop) {
    donut({u"a: 50"_s, u"b: 25"_s, u"c: 25"_s});
    EXPECT_EQ(ringAt(0.01), slice(0));
    EXPECT_EQ(ringAt(0.49), slice(0));
    EXPECT_EQ(ringAt(0.51), slice(1));
    EXPECT_EQ(ringAt(0.74), slice(1));
    EXPECT_EQ(ringAt(0.76), slice(2));
    EXPECT_EQ(ringAt(0.99), slice(2));
}

TEST_F(DonutChartViewTest, smallSumsLeaveTheRingOpen) {
    donut({u"a: 0.2"_s, u"b: 0.3"_s});
    EXPECT_EQ(ringAt(0.19), slice(0));
    EXPECT_EQ(ringAt(0.21), slice(1));
    EXPECT_EQ(ringAt(0.49), slice(1));
    EXPECT_EQ(ringAt(0.51), empty());
}

TEST_F(DonutChartViewTest, aColourGivesShadesOfIt) {
    donut({u"a: 50"_s, u"b: 50"_s}, u":green"_s);
    EXPECT_EQ(ringAt(0.25), slice(0, u"green"_s));
    EXPECT_EQ(ringAt(0.75), slice(1, u"green"_s));
    EXPECT_NE(slice(0, u"green"_s), slice(1, u"green"_s));
    donut({u"a: 50"_s, u"b: 50"_s}, u":mauve"_s);
    EXPECT_EQ(ringAt(0.75), slice(1));
}

TEST_F(DonutChartViewTest, coloursRepeatAfterEight) {
    donut(manyLines(u"item %1: 1"_s, 10));
    for (int index = 0; index < 10; ++index)
        EXPECT_EQ(ringAt((index + 0.5) / 10), slice(index)) << index;
    EXPECT_EQ(ringAt(0.05), ringAt(0.85));
}

TEST_F(DonutChartViewTest, theLegendStandsBesideTheRing) {
    donut({u"a: 3"_s, u"b: 1"_s});
    const QImage drawn = picture();
    const int left = ringSize + 24;
    EXPECT_EQ(countInColumn(drawn, left, colorOf(seriesColor(0, {})).rgb()), 8);
    EXPECT_EQ(countInColumn(drawn, left + 7, colorOf(seriesColor(1, {})).rgb()), 8);
    EXPECT_EQ(countInColumn(drawn, left - 1, bare()), drawn.height());
    EXPECT_EQ(countInColumn(drawn, left + 8, bare()), drawn.height());
    EXPECT_GE(inkIn(drawn).right(), 400 - 4);
}

TEST_F(DonutChartViewTest, ringAndLegendAreCentred) {
    donut({u"a: 1"_s});
    EXPECT_EQ(view->height(), ringSize);
    const QRect legend = inkIn(picture().copy(ringSize + 15 + pictureMargin, 0, 240, ringSize + 20));
    EXPECT_NEAR(legend.center().y(), ringSize / 2, 3);
    donut(manyLines(u"item %1: 1"_s, 20));
    const double height = view->height();
    EXPECT_GT(height, ringSize);
    const QRect ring = inkIn(picture().copy(0, 0, ringSize + 20, int(height) + 20));
    EXPECT_EQ(ring, QRect(0, int(std::floor((height - ringSize) / 2)), ringSize, ringSize));
}

TEST_F(DonutChartViewTest, labelAndShareStandOnOneBaseline) {
    donut({u"HH: 77"_s});
    QImage large(int(view->width()) * 4, ringSize * 4, QImage::Format_RGB32);
    large.fill(Qt::white);
    QPainter painter(&large);
    painter.scale(4, 4);
    view->draw(painter, QRectF(0, 0, view->width(), ringSize));
    painter.end();
    const auto bottomOf = [&](int left, int right) {
        return inkIn(large.copy(left * 4, 0, (right - left) * 4, large.height())).bottom();
    };
    EXPECT_NEAR(bottomOf(ringSize + 36, ringSize + 70), bottomOf(370, 400), 1);
}

TEST_F(DonutChartViewTest, aScreenReaderHearsTheShares) {
    EXPECT_EQ(donut({u"Rent: 150"_s, u"Food: 50"_s}).spoken().name, u"Donut chart: Rent 75%, Food 25%"_s);
}

TEST_F(DonutChartViewTest, everyNumberHasARing) {
    for (const QString &value : {u"nan"_s, u"inf"_s, u"-inf"_s, u"1e308"_s, u"-1e308"_s, u"-0"_s, u"-7"_s}) {
        donut({u"a: "_s + value, u"b: 1"_s, u"c: "_s + value});
        EXPECT_TRUE(QRect(-1, -1, 402, int(view->height()) + 2).contains(inkIn(picture())))
            << value.toStdString();
    }
}

TEST_F(DonutChartViewTest, slicesTooSmallToBeSeenStillFillTheRing) {
    donut(manyLines(u"item %1: 1"_s, 10'000));
    QImage strip(ringSize, ringSize, QImage::Format_RGB32);
    strip.fill(Qt::white);
    QPainter painter(&strip);
    const double top = std::floor((view->height() - ringSize) / 2);
    painter.translate(0, -top);
    view->draw(painter, QRectF(0, top, ringSize, ringSize));
    for (const QPoint &place : {QPoint(66, 7), {125, 66}, {66, 125}, {7, 66}}) {
        EXPECT_NE(strip.pixel(place), bare());
        EXPECT_NE(strip.pixel(place), empty());
    }
}

TEST_F(DonutChartViewTest, anyChangeIsDrawnAsAnew) {
    donut({u"a: 1"_s});
    for (const QStringList &lines : {QStringList{u"a: 1"_s, u"b: 50"_s}, {u"a: 1"_s}, {}, {u"b: 4"_s}})
        expectChange(fence(u"donut"_s, lines));
    expectChange(fence(u"donut:red"_s, {u"b: 4"_s}));
}

TEST_F(DonutChartViewTest, aNarrowOneHoldsItsRing) {
    shown(fence(u"donut"_s, {u"a label: 1"_s}), 100);
    EXPECT_GE(view->height(), ringSize);
    EXPECT_FALSE(inkIn(picture()).isNull());
}
