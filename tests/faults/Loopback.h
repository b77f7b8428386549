#pragma once

/// The network of this machine with itself. Only for a process in a network of its own; throw
/// std::system_error where the system refuses.
void takeLoopbackDown();
void bringLoopbackUp();
