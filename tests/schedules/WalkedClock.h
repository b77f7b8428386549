#pragma once

#include "schedules/Schedule.h"

#include <QTimeZone>

#include <vector>

/// A second, slow reading of when a schedule runs: a clock of the zone that is watched minute by minute, by
/// the toolkit's own reading of the zone's file.
class WalkedClock {
public:
    /// Watches the clock through those years, with some days before and behind.
    WalkedClock(const QByteArray &zone, int firstYear, int lastYear);

    /// All moments at which the schedule runs, in seconds since 1970: whenever the clock shows one of its
    /// times for the first time, or goes past it. Not for `once`, and not for a weekly one without days.
    std::vector<qint64> runsOf(const Schedule &schedule) const;

private:
    static constexpr qint64 minute = 60;

    qint64 m_first;
    std::vector<qint64> m_shown; ///< what the clock shows at each minute, as seconds
};
