#pragma once

#include "schedules/Schedule.h"

/// What the line of a schedule shows. A plain value.
struct ScheduleRowModel {
    QUuid id;
    QString name;    ///< on one line
    QString prompt;  ///< as much of it as a line could show
    QString summary; ///< how often and when it runs, and whether also in the background
    bool isEnabled = false;

    bool operator==(const ScheduleRowModel &) const = default;
};

/// How often a schedule runs, as the screens say it.
QString displayName(ScheduleRecurrence recurrence);

ScheduleRowModel scheduleRowModel(const Schedule &schedule);
