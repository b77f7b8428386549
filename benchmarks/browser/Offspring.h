#pragma once

#include <map>

#include <sys/types.h>

/// All processes that this one has started, with those that they have started, and so on. One that ends while
/// it is looked at is left out.

/// From now on, what a child leaves behind is a child of this process.
void adoptOrphans();

/// How many there are.
int offspringCount();

/// What each has used of processors so far, in seconds. Throws std::runtime_error if the system doesn't tell.
std::map<pid_t, double> offspringProcessorSeconds();

/// What they have in use together, in bytes.
struct OffspringMemory {
    double resident = 0;     ///< with what they share counted in each
    double proportional = 0; ///< with what they share divided among those who share it
};

/// Throws std::runtime_error if the system doesn't tell.
OffspringMemory offspringMemory();
