#pragma once

#include <QtGlobal>

/// What a process of this machine has used of processors so far, in seconds, all its threads together.
/// Throws std::runtime_error if there is no such process.
double processorSecondsOf(qint64 processIdentifier);
