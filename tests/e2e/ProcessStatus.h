#pragma once

#include <QString>

/// What the kernel tells of a process of this machine, by id.

/// True while there is such a process, and it hasn't ended.
bool isAlive(qint64 processIdentifier);

/// The processor time that it has used so far, in the kernel's ticks (mostly 10 ms); -1 if it is gone.
qint64 processorTicks(qint64 processIdentifier);

/// Its parent; 0 if it is gone.
qint64 parentOf(qint64 processIdentifier);

/// The living processes of which `processIdentifier` is the parent.
QList<qint64> childrenOf(qint64 processIdentifier);

/// Runs the event loop until the process has used no processor time for 0.3 s; false if that rest
/// doesn't begin within `milliseconds`.
bool comesToRest(qint64 processIdentifier, int milliseconds);
