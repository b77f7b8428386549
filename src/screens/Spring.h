#pragma once

#include <QEasingCurve>

#include <chrono>

/// Where a spring is that set out from 0 to 1, that time ago. It would take `response` for one swing if
/// nothing damped it; `damping`, 0 to 1, is how little it goes past its end. Pure.
double springAt(std::chrono::duration<double> time, std::chrono::duration<double> response, double damping);

/// The way of the list's marker, over style::markerRest.
QEasingCurve markerSpring();

/// The way of a chat that is opened, over style::arrivalRest.
QEasingCurve arrivalSpring();
