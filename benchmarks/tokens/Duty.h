#pragma once

#include <string>

class EndlessEngine;

/// How much of a processor the engine takes while a reply comes at each speed, beside full speed. Prints
/// the figures that `filter` asks for; throws std::runtime_error if the engine gives no reply.
void measureDuty(const EndlessEngine &engine, const std::string &filter);

/// True if measureDuty() would print anything.
bool isDutyWanted(const std::string &filter);
