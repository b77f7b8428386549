#include "figures/Measure.h"
#include "schedules/Schedule.h"

#include <benchmark/benchmark.h>

namespace {

/// A thousand schedules, every other one weekly, of which none comes due.
QList<Schedule> quietSchedules() {
    QList<Schedule> schedules;
    for (int index = 0; index < 1000; ++index) {
        Schedule schedule{.id = QUuid::createUuid(),
                          .title = QStringLiteral("A schedule"),
                          .prompt = QStringLiteral("What is good today?"),
                          .hour = index % 24,
                          .minute = index % 60,
                          .enabled = true};
        if (index % 2 == 0) {
            schedule.recurrence = ScheduleRecurrence::weekly;
            schedule.weekdays = {2, 3, 4, 5, 6};
        }
        schedule.lastRun = QDateTime::currentDateTimeUtc().addDays(1);
        schedules.append(schedule);
    }
    return schedules;
}

/// What a tick of the scheduler does.
void tickOfAThousandSchedules(benchmark::State &state) {
    const QList<Schedule> schedules = quietSchedules();
    for (auto round : state) {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (const Schedule &schedule : schedules)
            benchmark::DoNotOptimize(schedule.isDue(now));
    }
}
BENCHMARK(tickOfAThousandSchedules)->Unit(benchmark::kMillisecond);

const Declared ticks{{.name = "a look at 1,000 schedules, every 30 seconds",
                      .function = "tickOfAThousandSchedules",
                      .budget = {.most = 10}}};

} // namespace
