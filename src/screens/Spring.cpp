#include "screens/Spring.h"

#include "screens/Style.h"

#include <cmath>
#include <numbers>

double springAt(std::chrono::duration<double> time, std::chrono::duration<double> response, double damping) {
    const double frequency = 2 * std::numbers::pi / response.count();
    const double decay = damping * frequency;
    const double swing = frequency * std::sqrt(1 - damping * damping);
    const double phase = swing * time.count();
    return 1 - std::exp(-decay * time.count()) * (std::cos(phase) + decay / swing * std::sin(phase));
}

QEasingCurve markerSpring() {
    QEasingCurve curve;
    curve.setCustomType([](double progress) {
        // A spring never quite arrives.
        return progress < 1
                   ? springAt(progress * style::markerRest, style::markerResponse, style::markerDamping)
                   : 1;
    });
    return curve;
}
