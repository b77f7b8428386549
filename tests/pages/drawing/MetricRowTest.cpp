#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 374;
constexpr int columnWidth = 100; // of three columns

class MetricRowTest : public Figure {
protected:
    BlockView &metric(const QStringList &lines, const QString &color = {}) {
        return shown(fence(u"metric"_s + color, lines), width);
    }

    /// The columns of pixels that are a hairline from top to bottom of a view of one row.
    QList<int> hairlines() const {
        QList<int> places;
        const QImage drawn = picture();
        for (int x = 0; x < int(view->width()); ++x) {
            if (countInColumn(drawn, x, on(theme.shade(0.12))) == int(view->height()))
                places.append(x);
        }
        return places;
    }
};

} // namespace

TEST_F(MetricRowTest, columnsAreEqualWithAHairlineBetweenEachTwo) {
    metric({u"a: 1"_s, u"b: 2"_s, u"c: 3"_s});
    EXPECT_EQ(hairlines(), (QList<int>{columnWidth + 18, 2 * columnWidth + 37 + 18}));
    metric({u"a: 1"_s});
    EXPECT_TRUE(hairlines().isEmpty());
}

TEST_F(MetricRowTest, aColumnIsLabelAndValueSixBelow) {
    const double label = TextPart(theme, captionSetting(theme, 1.2)).height();
    const double value = TextPart(theme, {.step = TextStep::value}).height();
    EXPECT_EQ(metric({u"a: 1"_s, u"b: 2"_s}).height(), label + 6 + value);
}

TEST_F(MetricRowTest, theValueHasTheColour) {
    metric({u"a: ▇▇"_s}, u":green"_s);
    const int middle = int(view->height()) - 18;
    EXPECT_GT(countInRow(picture(), middle, QColor::fromRgbF(0.11F, 0.58F, 0.33F).rgb()), 10);
    metric({u"a: ▇▇"_s});
    EXPECT_GT(countInRow(picture(), middle, on(theme.primary)), 10);
}

TEST_F(MetricRowTest, everyDigitTakesTheSameRoom) {
    const auto widthOf = [this](const QString &number) {
        metric({u"a: "_s + number});
        const QImage drawn = picture();
        const int top = pictureMargin + 20;
        return inkIn(drawn.copy(0, top, width, drawn.height() - top)).width();
    };
    EXPECT_EQ(widthOf(u"81118"_s), widthOf(u"80008"_s));
    EXPECT_EQ(widthOf(u"8:118"_s), widthOf(u"8:008"_s));
}

TEST_F(MetricRowTest, aNumberIsNeverBroken) {
    const double one = metric({u"a: 1"_s}).height();
    metric({u"a: $1,234,567"_s, u"b: $1,234,567"_s, u"c: $1,234,567"_s});
    EXPECT_EQ(view->height(), 2 * one + 18);
    metric({u"a: $1,234"_s, u"b: 2"_s, u"c: 3"_s, u"d: 4"_s});
    EXPECT_EQ(view->height(), 2 * one + 18) << "two and two rather than three and one";
}

TEST_F(MetricRowTest, severalWordsGoOverLinesInTheirColumn) {
    const double one = metric({u"a: 1"_s, u"b: 2"_s}).height();
    metric({u"a: one two three four five six"_s, u"b: 2"_s});
    EXPECT_GT(view->height(), one + 20);
    EXPECT_EQ(hairlines().size(), 1);
}

TEST_F(MetricRowTest, fiveHundredColumnsStandInRows) {
    const double one = metric({u"a: 1"_s}).height();
    metric(manyLines(u"m%1: 10000"_s, 500));
    EXPECT_EQ(std::fmod(view->height() + 18, one + 18), 0);
    EXPECT_GT(view->height(), 100 * one);
}

TEST_F(MetricRowTest, aValueMayBeMissing) {
    metric({u"a:"_s, u"Time: 10:30"_s});
    EXPECT_EQ(view->spoken().name, u"Metrics: a, Time 10:30"_s);
}

TEST_F(MetricRowTest, aValueMayBeLongBeyondMeasure) {
    metric({u"a: "_s + u"1234567890"_s.repeated(10'000)});
    EXPECT_GT(view->height(), 10'000);
}
