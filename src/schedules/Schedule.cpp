#include "schedules/Schedule.h"

#include "records/JsonFields.h"
#include "schedules/WallClock.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int daysInWeek = 7;

constexpr auto scheduleFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("title"_L1, value.title);
    record.required("prompt"_L1, value.prompt);
    record.required("recurrence"_L1, value.recurrence);
    record.required("hour"_L1, value.hour);
    record.required("minute"_L1, value.minute);
    record.required("weekdays"_L1, value.weekdays);
    record.optional("onceDate"_L1, value.onceDate);
    record.required("enabled"_L1, value.enabled);
    record.required("runInBackground"_L1, value.runInBackground);
    record.optional("lastRun"_L1, value.lastRun);
    record.optional("lastChatId"_L1, value.lastChatId);
};

/// The schedules' number of a weekday: 1 is Sunday.
qint64 weekdayOf(const QDate &day) {
    return day.dayOfWeek() % daysInWeek + 1;
}

/// The time of day; nothing if no clock shows it.
std::optional<QTime> timeOfDay(qint64 hour, qint64 minute) {
    const bool isShown = hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59;
    return isShown ? std::optional(QTime(static_cast<int>(hour), static_cast<int>(minute))) : std::nullopt;
}

} // namespace

QString Schedule::name() const {
    return title.isEmpty() ? u"Scheduled run"_s : title;
}

std::optional<QDateTime> Schedule::nextRun(const QDateTime &after) const {
    if (!enabled)
        return std::nullopt;
    if (recurrence == ScheduleRecurrence::once)
        return onceDate && *onceDate > after ? onceDate : std::nullopt;
    const std::optional<QTime> time = timeOfDay(hour, minute);
    if (!time)
        return std::nullopt;

    const QDate today = shownAt(after).date();
    const bool isEveryDay = recurrence == ScheduleRecurrence::daily;
    const QList<qint64> days = weekdays.isEmpty() ? QList{weekdayOf(today)} : weekdays;
    // A day more than a week: today's time may have come already, and be shown again after a change.
    for (int offset = 0; offset <= daysInWeek + 1; ++offset) {
        const QDate day = today.addDays(offset);
        if (!isEveryDay && !days.contains(weekdayOf(day)))
            continue;
        const QDateTime moment = firstReached(QDateTime(day, *time, Qt::UTC));
        if (moment > after)
            return moment;
    }
    return std::nullopt;
}

bool Schedule::isDue(const QDateTime &now) const {
    const std::optional<QDateTime> next = nextRun(now.addSecs(-longestDelay));
    return next && *next <= now && (!lastRun || *lastRun < *next);
}

QJsonValue encode(const Schedule &value) {
    return encodeFields(value, scheduleFields);
}

void decode(const QJsonValue &json, Schedule &value) {
    decodeFields(json, value, scheduleFields);
}
