#include "screens/Spring.h"

#include "screens/Style.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(SpringTest, itSetsOutSlowlyAndComesToRest) {
    EXPECT_DOUBLE_EQ(springAt(0s, 300ms, 0.8), 0);
    EXPECT_LT(springAt(10ms, 300ms, 0.8), 0.03);
    EXPECT_NEAR(springAt(2s, 300ms, 0.8), 1, 1e-9);
}

TEST(SpringTest, itGoesALittlePastItsEnd) {
    double furthest = 0;
    for (auto time = 0ms; time < 1s; time += 1ms)
        furthest = std::max(furthest, springAt(time, 300ms, 0.8));
    // exp(-π · 0.8 / √(1 − 0.8²))
    EXPECT_NEAR(furthest, 1.0152, 1e-3);
}

TEST(SpringTest, aQuickerSpringIsTheSameInLessTime) {
    EXPECT_NEAR(springAt(100ms, 300ms, 0.8), springAt(200ms, 600ms, 0.8), 1e-12);
}

TEST(SpringTest, theMarkerIsExactlyThereAtTheEnd) {
    const QEasingCurve curve = markerSpring();
    EXPECT_EQ(curve.valueForProgress(0), 0);
    EXPECT_EQ(curve.valueForProgress(1), 1);
    EXPECT_NEAR(curve.valueForProgress(0.999), 1, 1e-3) << "and doesn't jump there";
}
