#include "screens/Spring.h"

#include "screens/Style.h"

#include <numbers>

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

TEST(SpringTest, theMarkerMovesAsAWeightOnASpring) {
    // A weight that a spring of response 0.3 s and damping 0.8 draws from 0 to 1, in small steps of time.
    const double frequency = 2 * std::numbers::pi / 0.3;
    const double length = 0.45;
    constexpr double step = 1e-6;
    double place = 0;
    double speed = 0;
    const QEasingCurve curve = markerSpring();
    int checked = 0;
    for (int count = 1; count <= 440'000; ++count) {
        speed += step * (frequency * frequency * (1 - place) - 2 * 0.8 * frequency * speed);
        place += step * speed;
        if (count % 50'000 != 0)
            continue;
        EXPECT_NEAR(curve.valueForProgress(count * step / length), place, 1e-4) << count * step;
        ++checked;
    }
    EXPECT_EQ(checked, 8);
    EXPECT_EQ(style::markerRest, 450ms);
}

TEST(SpringTest, theMarkerIsExactlyThereAtTheEnd) {
    const QEasingCurve curve = markerSpring();
    EXPECT_EQ(curve.valueForProgress(0), 0);
    EXPECT_EQ(curve.valueForProgress(1), 1);
    EXPECT_NEAR(curve.valueForProgress(0.999), 1, 1e-3) << "and doesn't jump there";
}
