#pragma once

#include <string>

/// What the long page takes as a file in a process that has never exported one, and has drawn nothing. Prints
/// the figures that `filter` asks for; throws std::runtime_error if it can't be measured.
void measureFirstExports(const std::string &filter);
