#pragma once

/// The network of this machine with itself. Only for a process in a network of its own.
void takeLoopbackDown();
void bringLoopbackUp();
