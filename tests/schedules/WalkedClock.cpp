#include "schedules/WalkedClock.h"

#include <stdexcept>

namespace {

/// Whether the minute of a clock's reading is one of the schedule's.
bool isTimeOf(const Schedule &schedule, qint64 reading) {
    const qint64 minuteOfDay = reading / 60 % 1440;
    // The first of January 1970 was a Thursday, which is 5.
    const qint64 weekday = (reading / 86'400 + 4) % 7 + 1;
    return minuteOfDay == schedule.hour * 60 + schedule.minute &&
           (schedule.recurrence == ScheduleRecurrence::daily || schedule.weekdays.contains(weekday));
}

} // namespace

WalkedClock::WalkedClock(const QByteArray &zone, int firstYear, int lastYear)
    : m_first(QDateTime(QDate(firstYear, 1, 1).addDays(-10), QTime(0, 0), Qt::UTC).toSecsSinceEpoch()) {
    const QTimeZone timeZone(zone);
    if (!timeZone.isValid())
        throw std::runtime_error("this machine knows no zone " + zone.toStdString());
    const qint64 last =
        QDateTime(QDate(lastYear, 12, 31).addDays(10), QTime(0, 0), Qt::UTC).toSecsSinceEpoch();
    for (qint64 moment = m_first; moment < last; moment += minute)
        m_shown.push_back(moment + timeZone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(moment, Qt::UTC)));
}

std::vector<qint64> WalkedClock::runsOf(const Schedule &schedule) const {
    std::vector<qint64> runs;
    qint64 latest = m_shown.front();
    for (size_t index = 1; index < m_shown.size(); ++index) {
        bool isReached = false;
        for (; latest < m_shown[index]; latest += minute)
            isReached |= isTimeOf(schedule, latest + minute);
        if (isReached)
            runs.push_back(m_first + static_cast<qint64>(index) * minute);
    }
    return runs;
}
