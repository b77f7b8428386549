#pragma once

#include <QString>

/// Other processes, by id. Any thread.

/// The path of the executable that the process runs; empty if there is no such process or it is hidden.
QString processPath(qint64 processIdentifier);

/// Sends SIGTERM or SIGKILL; a process that is gone or not ours is left alone.
void terminateProcess(qint64 processIdentifier);
void killProcess(qint64 processIdentifier);

/// Whether another process of this person runs the executable that this one runs, or ran it when it was
/// started and the file has been replaced since.
bool anotherInstanceRuns();
