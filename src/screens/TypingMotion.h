#pragma once

#include <chrono>

/// How the three dots of the typing indicator move, as functions of the time since they were first
/// shown. Pure.
namespace typing {

/// The size of a dot, from half to whole.
double scaleAt(std::chrono::milliseconds time, int dot);

/// How much of the accent's colour a dot has, 0 to 1: it moves on by one dot every two seconds.
double accentShareAt(std::chrono::milliseconds time, int dot);

} // namespace typing
