#include "screens/Spring.h"

#include "screens/Style.h"

#include <numbers>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

/// Compares a curve with a weight that a spring draws from 0 to 1, in small steps of time. All in seconds.
void expectWeightOnSpring(const QEasingCurve &curve, double length, double response, double damping) {
    const double frequency = 2 * std::numbers::pi / response;
    constexpr double step = 1e-6;
    double place = 0;
    double speed = 0;
    for (int count = 1; count <= 400'000; ++count) {
        speed += step * (frequency * frequency * (1 - place) - 2 * damping * frequency * speed);
        place += step * speed;
        if (count % 50'000 == 0) {
            EXPECT_NEAR(curve.valueForProgress(count * step / length), place, 1e-4) << count * step;
        }
    }
}

} // namespace

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

TEST(SpringTest, theMarkerAndAChatMoveAsWeightsOnTheirSprings) {
    expectWeightOnSpring(markerSpring(), 0.45, 0.3, 0.8);
    expectWeightOnSpring(arrivalSpring(), 0.5, 0.35, 0.85);
    EXPECT_EQ(style::markerRest, 450ms);
    EXPECT_EQ(style::arrivalRest, 500ms);
}

TEST(SpringTest, theyAreThereAtTheEnd) {
    for (const QEasingCurve &curve : {markerSpring(), arrivalSpring()}) {
        EXPECT_EQ(curve.valueForProgress(0), 0);
        EXPECT_EQ(curve.valueForProgress(1), 1);
        EXPECT_NEAR(curve.valueForProgress(0.999), 1, 1e-3) << "and don't jump there";
    }
}
