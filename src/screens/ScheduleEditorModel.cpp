#include "screens/ScheduleEditorModel.h"

#include "schedules/WallClock.h"

namespace {

constexpr qint64 untilSingleRun = 3600;

/// To the minute, as the fields show it.
QTime toTheMinute(const QTime &time) {
    return {time.hour(), time.minute()};
}

QDateTime momentOf(const Schedule &draft, const QDateTime &now) {
    const QDateTime shown = shownAt(draft.onceDate.value_or(now.addSecs(untilSingleRun)));
    return {shown.date(), toTheMinute(shown.time()), Qt::UTC};
}

QTime timeOf(const Schedule &draft, const QDateTime &now) {
    const QDateTime today = shownAt(now);
    const bool isShown = draft.hour >= 0 && draft.hour <= 23 && draft.minute >= 0 && draft.minute <= 59;
    if (!isShown)
        return toTheMinute(today.time());
    const QTime time(int(draft.hour), int(draft.minute));
    return shownAt(firstReached(QDateTime(today.date(), time, Qt::UTC))).time();
}

} // namespace

Schedule newSchedule() {
    return {.id = QUuid::createUuid(), .hour = 9, .enabled = true};
}

ScheduleEditorModel scheduleEditorModel(const Schedule &draft, const QDateTime &now) {
    const bool isSingle = draft.recurrence == ScheduleRecurrence::once;
    return {.offersWeekdays = draft.recurrence == ScheduleRecurrence::weekly,
            .offersMoment = isSingle,
            .offersTime = !isSingle,
            .moment = momentOf(draft, now),
            .time = timeOf(draft, now),
            .canRunInBackground = !isSingle,
            .canSave = !draft.prompt.trimmed().isEmpty()};
}
