#include "schedules/Agents.h"

#include "platform/Bundle.h"
#include "records/Coder.h"

using namespace Qt::StringLiterals;

QString agentLabel(const QUuid &id) {
    return u"com.quennarbel.ostrelin.schedule."_s + encodeUuid(id);
}

QList<CalendarInterval> calendarIntervals(const Schedule &schedule) {
    const CalendarInterval everyDay{.hour = schedule.hour, .minute = schedule.minute, .weekday = {}};
    if (schedule.recurrence != ScheduleRecurrence::weekly)
        return {everyDay};
    QList<CalendarInterval> intervals;
    for (const qint64 weekday : schedule.weekdays.isEmpty() ? QList<qint64>{1} : schedule.weekdays) {
        intervals.append(everyDay);
        intervals.last().weekday = weekday;
    }
    return intervals;
}

void syncAgents(const QList<Schedule> &schedules, UserJobs &jobs, const QString &executable) {
    for (const Schedule &schedule : schedules) {
        const QString label = agentLabel(schedule.id);
        jobs.bootOut(label);
        const bool isWanted =
            schedule.enabled && schedule.runInBackground && schedule.recurrence != ScheduleRecurrence::once;
        if (isWanted && !executable.isEmpty())
            jobs.bootstrap({.label = label,
                            .command = {executable, u"--run-schedule"_s, encodeUuid(schedule.id)},
                            .intervals = calendarIntervals(schedule)});
    }
}

void syncAgents(const QList<Schedule> &schedules) {
    syncAgents(schedules, *UserJobs::ofSystem(), executablePath());
}
