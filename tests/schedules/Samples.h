#pragma once

#include "schedules/Schedule.h"

/// A schedule like one that a person makes: every day at 09:00.
inline Schedule sampleSchedule() {
    return {.id = QUuid(QStringLiteral("6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11")),
            .title = QStringLiteral("Morning"),
            .prompt = QStringLiteral("What is good today?"),
            .recurrence = ScheduleRecurrence::daily,
            .hour = 9,
            .minute = 0,
            .enabled = true};
}

/// The sample, on these weekdays (1 is Sunday).
inline Schedule weeklySchedule(const QList<qint64> &weekdays) {
    Schedule schedule = sampleSchedule();
    schedule.recurrence = ScheduleRecurrence::weekly;
    schedule.weekdays = weekdays;
    return schedule;
}
