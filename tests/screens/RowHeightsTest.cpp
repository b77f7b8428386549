#include "screens/RowHeights.h"

#include <gtest/gtest.h>

namespace {
constexpr int padding = 20;
constexpr int spacing = 4;
} // namespace

TEST(RowHeightsTest, anEmptyListHasNoHeightAndNoRow) {
    const RowHeights heights(padding, spacing);
    EXPECT_EQ(heights.total(), 0);
    EXPECT_EQ(heights.rowAt(0), -1);
}

TEST(RowHeightsTest, rowsStandBelowEachOther) {
    RowHeights heights(padding, spacing);
    heights.replace(0, 0, {10, 30, 50});
    EXPECT_EQ(heights.top(0), 20);
    EXPECT_EQ(heights.top(1), 34);
    EXPECT_EQ(heights.top(2), 68);
    EXPECT_EQ(heights.total(), 138);
}

TEST(RowHeightsTest, aHeightLeadsToItsRow) {
    RowHeights heights(padding, spacing);
    heights.replace(0, 0, {10, 30, 50});
    EXPECT_EQ(heights.rowAt(-5), 0);
    EXPECT_EQ(heights.rowAt(0), 0);
    EXPECT_EQ(heights.rowAt(33), 0);
    EXPECT_EQ(heights.rowAt(34), 1);
    EXPECT_EQ(heights.rowAt(1000), 2);
}

TEST(RowHeightsTest, aMeasureMovesTheRowsBelow) {
    RowHeights heights(padding, spacing);
    heights.replace(0, 0, {10, 30, 50});
    EXPECT_FALSE(heights.isMeasured(1));
    heights.measure(1, 40);
    EXPECT_TRUE(heights.isMeasured(1));
    EXPECT_EQ(heights.top(1), 34);
    EXPECT_EQ(heights.top(2), 78);
    heights.forget(1);
    EXPECT_FALSE(heights.isMeasured(1));
    EXPECT_EQ(heights.height(1), 40);
}

TEST(RowHeightsTest, replacedRowsAreEstimatesAndTheOthersKeepTheirMeasure) {
    RowHeights heights(padding, spacing);
    heights.replace(0, 0, {10, 30, 50});
    heights.measure(0, 11);
    heights.measure(2, 51);
    heights.replace(1, 1, {5, 6});
    EXPECT_EQ(heights.count(), 4);
    EXPECT_TRUE(heights.isMeasured(0));
    EXPECT_FALSE(heights.isMeasured(1));
    EXPECT_FALSE(heights.isMeasured(2));
    EXPECT_TRUE(heights.isMeasured(3));
    EXPECT_EQ(heights.top(3), 20 + 11 + 4 + 5 + 4 + 6 + 4);
}
