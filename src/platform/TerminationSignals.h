#pragma once

#include <functional>

/// Has `quit` called on the main thread, in its event loop, when the system asks the program to end
/// (SIGTERM, SIGINT, SIGHUP). The same signal a second time ends the program at once. Called once, on the
/// main thread, with an application object.
void onTerminationSignal(std::function<void()> quit);
