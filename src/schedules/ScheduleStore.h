#pragma once

#include "schedules/Schedule.h"

/// The schedules on disk: one file with a list. Nothing is kept in memory between the calls, and no call
/// reports a failure. The file has one writer at a time, the program or a scheduled run. Main thread.

/// All schedules in their order; none if the file is missing or can't be read.
QList<Schedule> loadSchedules();

/// Replaces the file atomically.
void saveSchedules(const QList<Schedule> &schedules);

/// Puts a schedule in the place of the one with its id, or at the end.
void upsertSchedule(const Schedule &schedule);

/// Removes every schedule with that id.
void deleteSchedule(const QUuid &id);
