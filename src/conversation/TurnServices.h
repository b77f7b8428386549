#pragma once

#include "conversation/TurnPoints.h"

class Clock;

/// A turn's points as the program sets them: what was written as text is found there, a speed other than
/// full paces the reply, a new chat gets a title, and pages are made of replies. `clock` must outlive every
/// turn. Any thread.
TurnPoints turnServices(Clock &clock);
