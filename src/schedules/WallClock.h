#pragma once

#include <QDateTime>

/// The clock on the wall: what the machine's time zone makes of a moment. A reading of it is a date and a
/// time without a zone, kept in a QDateTime that calls itself UTC. The zone is asked for at each call, since
/// it may change while the program runs. Main thread.

/// What the clock shows at that moment.
QDateTime shownAt(const QDateTime &moment);

/// The first moment at which the clock shows `reading` or a later one, to the second. Readings that a change
/// of the clock skips are so reached at the change; of a reading that comes twice it is the first moment.
QDateTime firstReached(const QDateTime &reading);
