#pragma once

#include "conversation/Tools.h"

class Clock;

/// A turn's points as the program sets them: what was written as text is found there, a speed other than
/// full paces the reply, a new chat gets a title, the tools ask and go into the web by `web`, and pages are
/// made of replies. `clock` must outlive every turn. Any thread.
TurnPoints turnServices(Clock &clock, const WebAccess &web = webAccess());
