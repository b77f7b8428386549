#pragma once

#include <optional>
#include <string>

/// What a figure may be at most, or at least; each part only where it is set.
struct Budget {
    std::optional<double> most;          ///< in the figure's unit
    std::optional<double> mostAbovePeer; ///< in the figure's unit
    std::optional<double> mostRatio;     ///< to the peer
    std::optional<double> leastRatio;    ///< to the peer
};

/// One thing that was measured, and what somebody else needs for the same in the same run.
struct Figure {
    std::string name;
    double value = 0;
    std::string unit;
    std::optional<double> peer = {}; ///< in the same unit
    Budget budget = {};
};

/// Writes the figure as a line to the standard output: its name, value, unit, the peer's value, the
/// ratio, the budget, and "within" or "over" where there is a budget, with the part of it that is used.
void print(const Figure &figure);

/// True if a figure of that name is asked for by `filter`, a part of a name. An empty one asks for all.
bool isWanted(const std::string &name, const std::string &filter);
