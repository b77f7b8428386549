#pragma once

#include "conversation/TurnPoints.h"

/// A turn's points with those set that find thinking and tool calls in the text of a reply; the others
/// are empty. Any thread.
TurnPoints textRepairPoints();
