#pragma once

#include "platform/UserJobs.h"
#include "schedules/Schedule.h"

/// The jobs by which the system runs background schedules while the program isn't open: one a schedule, that
/// starts this executable for it.

/// The system's name for the job of a schedule.
QString agentLabel(const QUuid &id);

/// When the system starts the job of a daily or weekly schedule; for weekly at each of its weekdays, and at 1
/// where it has none. A weekday's number is passed on as it is, and the system counts from Monday: the job
/// runs on the day after the schedule's own.
QList<CalendarInterval> calendarIntervals(const Schedule &schedule);

/// Makes the jobs of these schedules anew: each is booted out, and those that are enabled, in the background
/// and not for once are handed to the system again, with `executable` if there is one. Blocks as long as
/// `jobs` does. A job of a schedule that isn't in the list stays as it is. Any thread.
void syncAgents(const QList<Schedule> &schedules, UserJobs &jobs, const QString &executable);

/// The same with this system's jobs and the running program.
void syncAgents(const QList<Schedule> &schedules);
