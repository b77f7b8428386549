#include "schedules/Samples.h"
#include "schedules/WalkedClock.h"
#include "support/EnvironmentVariable.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QDateTime utc(int year, int month, int day, int hour, int minute = 0, int second = 0) {
    return {QDate(year, month, day), QTime(hour, minute, second), Qt::UTC};
}

/// The machine stands in that zone.
class NextRun : public ::testing::Test {
protected:
    EnvironmentVariable zone{"TZ", "UTC"};
};

Schedule dailyAt(qint64 hour, qint64 minute) {
    Schedule schedule = sampleSchedule();
    schedule.hour = hour;
    schedule.minute = minute;
    return schedule;
}

} // namespace

// The 15th of November 2026 is a Sunday.

TEST_F(NextRun, aDailyOneRunsTodayIfItsTimeIsStillToCome) {
    EXPECT_EQ(sampleSchedule().nextRun(utc(2026, 11, 15, 8, 59, 59)), utc(2026, 11, 15, 9));
    EXPECT_EQ(sampleSchedule().nextRun(utc(2026, 11, 15, 0)), utc(2026, 11, 15, 9));
}

TEST_F(NextRun, exactlyAtItsTimeItIsTomorrows) {
    EXPECT_EQ(sampleSchedule().nextRun(utc(2026, 11, 15, 9)), utc(2026, 11, 16, 9));
    EXPECT_EQ(sampleSchedule().nextRun(utc(2026, 11, 15, 9).addMSecs(-1)), utc(2026, 11, 15, 9));
    EXPECT_EQ(sampleSchedule().nextRun(utc(2026, 12, 31, 9)), utc(2027, 1, 1, 9));
    EXPECT_EQ(sampleSchedule().nextRun(utc(2028, 2, 28, 10)), utc(2028, 2, 29, 9));
}

TEST_F(NextRun, aWeeklyOneRunsOnTheNearestOfItsDays) {
    const Schedule schedule = weeklySchedule({6, 2, 4}); // Friday, Monday, Wednesday
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 15, 10)), utc(2026, 11, 16, 9));
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 16, 9)), utc(2026, 11, 18, 9));
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 18, 9)), utc(2026, 11, 20, 9));
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 20, 9)), utc(2026, 11, 23, 9));
}

TEST_F(NextRun, eachNumberIsItsWeekday) {
    for (int number = 1; number <= 7; ++number)
        EXPECT_EQ(weeklySchedule({number}).nextRun(utc(2026, 11, 15, 8)), utc(2026, 11, 14 + number, 9));
}

TEST_F(NextRun, aWeeklyOneAfterItsTimeIsNextWeeks) {
    EXPECT_EQ(weeklySchedule({4}).nextRun(utc(2026, 11, 18, 10)), utc(2026, 11, 25, 9));
}

TEST_F(NextRun, aWeeklyOneWithoutDaysRunsOnThisWeekday) {
    EXPECT_EQ(weeklySchedule({}).nextRun(utc(2026, 11, 18, 8)), utc(2026, 11, 18, 9));
    EXPECT_EQ(weeklySchedule({}).nextRun(utc(2026, 11, 18, 10)), utc(2026, 11, 25, 9));
}

TEST_F(NextRun, aDailyOneHasNoDays) {
    Schedule schedule = sampleSchedule();
    schedule.weekdays = {4};
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 15, 10)), utc(2026, 11, 16, 9));
}

TEST_F(NextRun, aNumberThatIsNoWeekdayIsNoDay) {
    EXPECT_FALSE(weeklySchedule({0, 8, -1}).nextRun(utc(2026, 11, 15, 8)));
    EXPECT_EQ(weeklySchedule({8, 2}).nextRun(utc(2026, 11, 15, 8)), utc(2026, 11, 16, 9));
}

TEST_F(NextRun, aTimeThatNoClockShowsNeverComes) {
    for (const auto &[hour, minute] : QList<std::pair<qint64, qint64>>{
             {24, 0}, {-1, 0}, {9, 60}, {9, -1}, {1LL << 40, 0}, {9, (1LL << 32) + 5}})
        EXPECT_FALSE(dailyAt(hour, minute).nextRun(utc(2026, 11, 15, 8))) << hour << ':' << minute;
    EXPECT_EQ(dailyAt(23, 59).nextRun(utc(2026, 11, 15, 8)), utc(2026, 11, 15, 23, 59));
    EXPECT_EQ(dailyAt(0, 0).nextRun(utc(2026, 11, 15, 8)), utc(2026, 11, 16, 0));
}

TEST_F(NextRun, onceIsItsMomentUntilThatHasCome) {
    Schedule schedule = dailyAt(99, 99);
    schedule.recurrence = ScheduleRecurrence::once;
    EXPECT_FALSE(schedule.nextRun(utc(2026, 11, 15, 8)));
    schedule.onceDate = utc(2026, 11, 15, 8, 30, 17);
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 15, 8)), schedule.onceDate);
    EXPECT_EQ(schedule.nextRun(utc(2026, 11, 15, 8, 30, 16)), schedule.onceDate);
    EXPECT_FALSE(schedule.nextRun(*schedule.onceDate));
    EXPECT_FALSE(schedule.nextRun(utc(2026, 11, 16, 8)));
}

TEST_F(NextRun, whatIsNotEnabledNeverRuns) {
    Schedule once = sampleSchedule();
    once.recurrence = ScheduleRecurrence::once;
    once.onceDate = utc(2030, 1, 1, 0);
    for (Schedule schedule : {sampleSchedule(), weeklySchedule({1, 2, 3}), once}) {
        schedule.enabled = false;
        for (int day = 1; day <= 30; ++day)
            EXPECT_FALSE(schedule.nextRun(utc(2026, 11, day, 8)));
    }
}

TEST_F(NextRun, theZoneOfTheMomentDoesNotMatter) {
    const QDateTime after = utc(2026, 11, 15, 8, 30);
    for (const QDateTime &same : {after.toOffsetFromUtc(7200), after.toTimeZone(QTimeZone("Asia/Tokyo"))})
        EXPECT_EQ(sampleSchedule().nextRun(same), utc(2026, 11, 15, 9));
}

TEST_F(NextRun, theZoneOfTheMachineMayChange) {
    const QDateTime after = utc(2026, 7, 15, 4);
    EXPECT_EQ(sampleSchedule().nextRun(after), utc(2026, 7, 15, 9));
    {
        const EnvironmentVariable elsewhere("TZ", "Europe/Berlin");
        EXPECT_EQ(sampleSchedule().nextRun(after), utc(2026, 7, 15, 7));
    }
    {
        const EnvironmentVariable elsewhere("TZ", "<-0330>3:30");
        EXPECT_EQ(sampleSchedule().nextRun(after), utc(2026, 7, 15, 12, 30));
    }
    EXPECT_EQ(sampleSchedule().nextRun(after), utc(2026, 7, 15, 9));
}

// The clock in Berlin goes from 02:00 to 03:00 on the 29th of March 2026, and from 03:00 to 02:00 on the 25th
// of October.

TEST_F(NextRun, aTimeThatIsLeftOutIsTheMomentOfTheChange) {
    const EnvironmentVariable berlin("TZ", "Europe/Berlin");
    const QDateTime change = utc(2026, 3, 29, 1);
    EXPECT_EQ(dailyAt(2, 30).nextRun(utc(2026, 3, 28, 12)), change);
    EXPECT_EQ(dailyAt(2, 0).nextRun(utc(2026, 3, 28, 12)), change);
    EXPECT_EQ(dailyAt(3, 0).nextRun(utc(2026, 3, 28, 12)), change);
    EXPECT_EQ(dailyAt(2, 30).nextRun(change.addMSecs(-1)), change);
    EXPECT_EQ(dailyAt(2, 30).nextRun(change), utc(2026, 3, 30, 0, 30)) << "its own time again";
}

TEST_F(NextRun, aTimeThatComesTwiceIsTheFirstTime) {
    const EnvironmentVariable berlin("TZ", "Europe/Berlin");
    const QDateTime first = utc(2026, 10, 25, 0, 30);
    EXPECT_EQ(dailyAt(2, 30).nextRun(utc(2026, 10, 24, 12)), first);
    EXPECT_EQ(dailyAt(2, 30).nextRun(first.addMSecs(-1)), first);
    EXPECT_EQ(dailyAt(2, 30).nextRun(first), utc(2026, 10, 26, 1, 30));
    EXPECT_EQ(dailyAt(2, 30).nextRun(first.addSecs(1800)), utc(2026, 10, 26, 1, 30)) << "in the second pass";
}

TEST_F(NextRun, aDayThatWasLeftOutIsReachedWithTheNextOne) {
    const EnvironmentVariable samoa("TZ", "Pacific/Apia"); // no 30th of December 2011 there
    const QDateTime change = utc(2011, 12, 30, 10);
    EXPECT_EQ(sampleSchedule().nextRun(utc(2011, 12, 29, 20)), change);
    EXPECT_EQ(sampleSchedule().nextRun(change), utc(2011, 12, 30, 19));
    EXPECT_EQ(weeklySchedule({6}).nextRun(utc(2011, 12, 29, 20)), change) << "a Friday";
}

TEST_F(NextRun, aWeekdayWhoseTimeWasShownAlreadyIsNextWeeks) {
    // A minute after midnight on Sunday, the 7th of November 2010, the clock there went back to 23:01.
    const EnvironmentVariable newfoundland("TZ", "America/St_Johns");
    Schedule sundays = weeklySchedule({1});
    sundays.hour = 0;
    const QDateTime secondSaturday = utc(2010, 11, 7, 3);
    EXPECT_EQ(sundays.nextRun(secondSaturday), utc(2010, 11, 14, 3, 30));
}

TEST_F(NextRun, dueIsWhatCameInTheLastFiveMinutes) {
    const QDateTime nine = utc(2026, 11, 15, 9);
    const Schedule schedule = sampleSchedule();
    EXPECT_FALSE(schedule.isDue(nine.addMSecs(-1)));
    EXPECT_TRUE(schedule.isDue(nine));
    EXPECT_TRUE(schedule.isDue(nine.addSecs(240)));
    EXPECT_TRUE(schedule.isDue(nine.addSecs(300).addMSecs(-1)));
    EXPECT_FALSE(schedule.isDue(nine.addSecs(300))) << "five minutes before it was nine already";
    EXPECT_FALSE(schedule.isDue(nine.addSecs(360)));
}

TEST_F(NextRun, whatHasRunIsNotDueUntilItsNextTime) {
    const QDateTime nine = utc(2026, 11, 15, 9);
    Schedule schedule = sampleSchedule();
    schedule.lastRun = nine.addDays(-1);
    EXPECT_TRUE(schedule.isDue(nine.addSecs(20)));
    schedule.lastRun = nine.addMSecs(-1);
    EXPECT_TRUE(schedule.isDue(nine.addSecs(20)));
    schedule.lastRun = nine;
    EXPECT_FALSE(schedule.isDue(nine.addSecs(20)));
    schedule.lastRun = nine.addSecs(10);
    for (int second = 0; second < 300; second += 30)
        EXPECT_FALSE(schedule.isDue(nine.addSecs(second)));
    EXPECT_TRUE(schedule.isDue(nine.addDays(1)));
}

TEST_F(NextRun, onceIsDueForFiveMinutesToo) {
    Schedule schedule = sampleSchedule();
    schedule.recurrence = ScheduleRecurrence::once;
    schedule.onceDate = utc(2026, 11, 15, 9, 0, 30);
    EXPECT_FALSE(schedule.isDue(utc(2026, 11, 15, 9)));
    EXPECT_TRUE(schedule.isDue(utc(2026, 11, 15, 9, 0, 30)));
    EXPECT_TRUE(schedule.isDue(utc(2026, 11, 15, 9, 5)));
    EXPECT_FALSE(schedule.isDue(utc(2026, 11, 15, 9, 6)));
    schedule.enabled = false;
    EXPECT_FALSE(schedule.isDue(utc(2026, 11, 15, 9, 1)));
}

/// Two years of a zone.
struct Place {
    const char *zone;
    int firstYear;
};

std::string nameOfTest(const ::testing::TestParamInfo<Place> &info) {
    return QByteArray(info.param.zone).replace('/', '_').toStdString();
}

class NextRunInZone : public ::testing::TestWithParam<Place> {};

TEST_P(NextRunInZone, everyHourOfTwoYearsIsAsAWalkMinuteByMinuteHasIt) {
    const auto [name, firstYear] = GetParam();
    const EnvironmentVariable zone("TZ", name);
    const WalkedClock clock(name, firstYear, firstYear + 1);
    QList<Schedule> schedules{weeklySchedule({1}), weeklySchedule({2, 7})};
    for (const auto &[hour, minute] : QList<std::pair<qint64, qint64>>{
             {0, 0}, {0, 1}, {0, 30}, {1, 45}, {2, 0}, {2, 10}, {2, 30}, {3, 0}, {12, 0}, {23, 30}, {23, 59}})
        schedules.append(dailyAt(hour, minute));
    schedules[0].hour = 2;
    schedules[1].hour = 0;
    for (const Schedule &schedule : schedules) {
        const std::vector<qint64> runs = clock.runsOf(schedule);
        const auto expectAsWalked = [&](qint64 after) {
            const auto next = schedule.nextRun(QDateTime::fromSecsSinceEpoch(after, Qt::UTC));
            ASSERT_TRUE(next);
            ASSERT_EQ(next->toSecsSinceEpoch(), *std::upper_bound(runs.begin(), runs.end(), after))
                << schedule.hour << ':' << schedule.minute << " after " << after;
        };
        const qint64 end = utc(firstYear + 2, 1, 1, 0).toSecsSinceEpoch();
        for (qint64 after = utc(firstYear, 1, 1, 0).toSecsSinceEpoch(); after < end; after += 3600)
            ASSERT_NO_FATAL_FAILURE(expectAsWalked(after));
        for (auto run = runs.begin(); *run < end; ++run) {
            ASSERT_NO_FATAL_FAILURE(expectAsWalked(*run - 1));
            ASSERT_NO_FATAL_FAILURE(expectAsWalked(*run));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, NextRunInZone,
                         ::testing::Values(Place{"UTC", 2026}, Place{"Europe/Berlin", 2026},
                                           Place{"America/New_York", 2026},
                                           Place{"Australia/Lord_Howe", 2026}, Place{"Asia/Kathmandu", 2026},
                                           Place{"Antarctica/Troll", 2026}, Place{"Africa/Casablanca", 2026},
                                           Place{"America/Sao_Paulo", 2017}, Place{"America/St_Johns", 2010},
                                           Place{"Europe/Moscow", 2014}, Place{"America/Caracas", 2007},
                                           Place{"Pacific/Apia", 2011}, Place{"Pacific/Kwajalein", 1993}),
                         nameOfTest);
