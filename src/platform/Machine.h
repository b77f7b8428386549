#pragma once

#include <QList>

/// What this machine is and has. Any thread.

/// The memory of the machine in bytes; 0 if the system doesn't tell.
quint64 physicalMemory();

/// Whether this build runs on a processor that it was made for and that the program supports.
bool runsNatively();

/// Whether the system translates this process for a processor that it wasn't made for.
bool isTranslated();

/// The bytes that the person may still write to the volume of the home folder; 0 if that can't be read.
qint64 freeDisk();

/// The version of the system: its first three numbers, fewer where it has no more.
QList<qint64> systemVersion();
