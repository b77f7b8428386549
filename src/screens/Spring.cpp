#include "screens/Spring.h"

#include "screens/Style.h"

#include <cmath>
#include <numbers>

namespace {

using Seconds = std::chrono::duration<double>;

/// A spring never quite arrives; here it has after `rest`.
double shareOfWay(double progress, Seconds rest, Seconds response, double damping) {
    return progress < 1 ? springAt(progress * rest, response, damping) : 1;
}

QEasingCurve curveOf(QEasingCurve::EasingFunction way) {
    QEasingCurve curve;
    curve.setCustomType(way);
    return curve;
}

} // namespace

double springAt(std::chrono::duration<double> time, std::chrono::duration<double> response, double damping) {
    const double frequency = 2 * std::numbers::pi / response.count();
    const double decay = damping * frequency;
    const double swing = frequency * std::sqrt(1 - damping * damping);
    const double phase = swing * time.count();
    return 1 - std::exp(-decay * time.count()) * (std::cos(phase) + decay / swing * std::sin(phase));
}

QEasingCurve markerSpring() {
    return curveOf([](double progress) {
        return shareOfWay(progress, style::markerRest, style::markerResponse, style::markerDamping);
    });
}

QEasingCurve arrivalSpring() {
    return curveOf([](double progress) {
        return shareOfWay(progress, style::arrivalRest, style::arrivalResponse, style::arrivalDamping);
    });
}
