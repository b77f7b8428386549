#pragma once

#include <string>
#include <vector>

/// What a process has needed from its start to its end.
struct Needed {
    double seconds = 0;
    double peakMegabytes = 0; ///< resident, of the process itself
};

/// Runs a program to its end; what it prints is thrown away. Throws std::runtime_error unless it ends with
/// status 0.
Needed runMeasured(const std::vector<std::string> &commandLine);
