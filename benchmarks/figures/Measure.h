#pragma once

#include "figures/Figure.h"

#include <vector>

/// A figure that Google Benchmark takes: which of the BENCHMARK functions give its value and its peer's.
/// The time is the processor's, or that of the clock if the function was declared with UseRealTime().
struct Measure {
    std::string name;      ///< of the figure
    std::string function;  ///< of the thing that is measured
    std::string peer = {}; ///< the function of the peer; empty for none
    Budget budget = {};
};

/// All measures of this program, in the order of their declaration.
inline std::vector<Measure> &measures() {
    static std::vector<Measure> all;
    return all;
}

/// Declares a measure, beside the functions that it names:
///
///     const Declared save{{.name = "…", .function = "save", .budget = {.most = 60}}};
struct Declared {
    explicit Declared(const Measure &measure) { measures().push_back(measure); }
};

/// Takes the measures whose name contains `filter` and prints a figure each: the median of several
/// repetitions, with those of the different functions shuffled, so that a slow spell of the machine
/// meets a thing and its peer alike. Gives the program's exit status.
int takeMeasures(const std::string &filter);
