#include "screens/ScheduleRowModel.h"

#include "screens/ShownTitle.h"

using namespace Qt::StringLiterals;

namespace {

/// No line is so wide that it shows more of a prompt, in characters.
constexpr int longestLine = 400;

QString summaryOf(const Schedule &schedule) {
    const QString time = QString::asprintf("%02lld:%02lld", schedule.hour, schedule.minute);
    const QString place = schedule.runInBackground ? u" · runs in the background"_s : QString();
    return displayName(schedule.recurrence) + u" · "_s + time + place;
}

} // namespace

QString displayName(ScheduleRecurrence recurrence) {
    switch (recurrence) {
    case ScheduleRecurrence::once:
        return u"Once"_s;
    case ScheduleRecurrence::daily:
        return u"Daily"_s;
    case ScheduleRecurrence::weekly:
        return u"Weekly"_s;
    }
    Q_UNREACHABLE();
}

ScheduleRowModel scheduleRowModel(const Schedule &schedule) {
    return {.id = schedule.id,
            .name = shownTitle(schedule.title, u"Scheduled run"),
            .prompt = schedule.prompt.trimmed().left(longestLine).simplified(),
            .summary = summaryOf(schedule),
            .isEnabled = schedule.enabled};
}
