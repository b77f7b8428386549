#include "schedules/WallClock.h"

namespace {

/// How many seconds the clock is ahead of UTC.
qint64 offsetAt(qint64 moment) {
    return shownAt(QDateTime::fromSecsSinceEpoch(moment, Qt::UTC)).toSecsSinceEpoch() - moment;
}

/// The first second with another offset than at `early`, if it is another one at `late`.
qint64 changeBetween(qint64 early, qint64 late) {
    const qint64 before = offsetAt(early);
    while (late - early > 1) {
        const qint64 middle = early + (late - early) / 2;
        (offsetAt(middle) == before ? early : late) = middle;
    }
    return late;
}

} // namespace

QDateTime shownAt(const QDateTime &moment) {
    // Not by its offset, which Qt works out of the reading: that may stand for two moments.
    const QDateTime local = moment.toLocalTime();
    return {local.date(), local.time(), Qt::UTC};
}

QDateTime firstReached(const QDateTime &reading) {
    // No clock is a whole day off, and none changes twice within two days.
    constexpr qint64 day = 86'400;
    const qint64 shown = reading.toSecsSinceEpoch();
    const qint64 before = offsetAt(shown - day);
    const qint64 after = offsetAt(shown + day);
    qint64 moment = shown - before;
    if (before != after) {
        const qint64 change = changeBetween(shown - day, shown + day);
        if (moment >= change)
            moment = std::max(change, shown - after);
    }
    return QDateTime::fromSecsSinceEpoch(moment, Qt::UTC);
}
