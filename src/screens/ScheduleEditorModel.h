#pragma once

#include "schedules/Schedule.h"

#include <array>

/// Which fields the editor of a schedule offers, and what those for times show. A plain value.
struct ScheduleEditorModel {
    bool offersWeekdays = false;
    bool offersMoment = false; ///< the date and time of a single run
    bool offersTime = false;   ///< the time of day of all runs
    QDateTime moment;          ///< a reading of the clock on the wall: see WallClock.h
    QTime time;
    bool canRunInBackground = false;
    bool canSave = false;

    bool operator==(const ScheduleEditorModel &) const = default;
};

/// All recurrences, in the order in which the editor shows them.
inline constexpr std::array recurrences = {ScheduleRecurrence::once, ScheduleRecurrence::daily,
                                           ScheduleRecurrence::weekly};

/// A schedule as it is before anything of it is written.
Schedule newSchedule();

/// What the editor shows of a draft at that moment. A single run without a moment shows the next hour, which
/// isn't in the draft; a time that the clock skips today shows as the one that it jumps to. Main thread.
ScheduleEditorModel scheduleEditorModel(const Schedule &draft, const QDateTime &now);
