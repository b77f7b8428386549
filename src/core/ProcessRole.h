#pragma once

#include <QStringList>
#include <QUuid>

#include <optional>

/// Which of its two roles this process plays: the interactive program, or the run of one scheduled prompt
/// that the system's timer has started. Any thread, also before there is an application object.

/// The id of the schedule to run: the argument after the first "--run-schedule", if it is a UUID in the
/// canonical form of either case. Nothing in every other case, also where a later "--run-schedule" has an
/// id that would do: a malformed command line starts the interactive program.
std::optional<QUuid> headlessScheduleID(const QStringList &arguments);

/// The same for the command line of this process.
std::optional<QUuid> headlessScheduleID();

/// Whether this process runs a schedule, without a window.
bool isHeadless();
