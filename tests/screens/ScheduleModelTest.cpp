#include "screens/ScheduleEditorModel.h"
#include "screens/ScheduleRowModel.h"
#include "support/EnvironmentVariable.h"

#include <ctime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A place whose clock is known. On March 29 2026 it jumps from 02:00 to 03:00.
class ScheduleModelTest : public testing::Test {
protected:
    ScheduleModelTest() { tzset(); }

    EnvironmentVariable zone{"TZ", "Europe/Berlin"};
    const QDateTime now{QDate(2026, 11, 15), QTime(12, 18, 42), Qt::UTC};
    const QTime shownNow{13, 18};
};

QString summary(const Schedule &schedule) {
    return scheduleRowModel(schedule).summary;
}

} // namespace

TEST_F(ScheduleModelTest, aNewScheduleIsDailyAtNine) {
    const Schedule made = newSchedule();
    EXPECT_FALSE(made.id.isNull());
    EXPECT_NE(made.id, newSchedule().id);
    EXPECT_EQ(made, (Schedule{.id = made.id,
                              .recurrence = ScheduleRecurrence::daily,
                              .hour = 9,
                              .minute = 0,
                              .enabled = true,
                              .runInBackground = false}));
}

TEST_F(ScheduleModelTest, theSummaryTellsHowOftenAndWhen) {
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::once, .hour = 9}), u"Once · 09:00"_s);
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::daily, .hour = 23, .minute = 5}),
              u"Daily · 23:05"_s);
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::weekly, .hour = 0, .minute = 30}),
              u"Weekly · 00:30"_s);
}

TEST_F(ScheduleModelTest, theSummaryTellsOfTheBackgroundEvenForASingleRun) {
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::daily, .hour = 7, .runInBackground = true}),
              u"Daily · 07:00 · runs in the background"_s);
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::once, .hour = 7, .runInBackground = true}),
              u"Once · 07:00 · runs in the background"_s);
}

TEST_F(ScheduleModelTest, theSummaryOfASingleRunIsNotItsMoment) {
    EXPECT_EQ(summary({.recurrence = ScheduleRecurrence::once, .hour = 9, .onceDate = now}),
              u"Once · 09:00"_s);
}

TEST_F(ScheduleModelTest, aScheduleWithoutATitleIsAScheduledRun) {
    EXPECT_EQ(scheduleRowModel({}).name, u"Scheduled run"_s);
    EXPECT_EQ(scheduleRowModel({.title = u" \u200B"_s}).name, u"Scheduled run"_s) << "nothing to be seen";
    EXPECT_EQ(scheduleRowModel({.title = u"Morning"_s}).name, u"Morning"_s);
}

TEST_F(ScheduleModelTest, aLineIsOneLineHoweverLongThePromptIs) {
    const QString prompt = u"\n one\ntwo "_s + QString(1'000'000, u'x');
    const ScheduleRowModel model = scheduleRowModel({.title = u"two\nlines"_s, .prompt = prompt});
    EXPECT_EQ(model.name, u"two lines"_s);
    EXPECT_TRUE(model.prompt.startsWith(u"one two x"_s));
    EXPECT_LT(model.prompt.size(), 1000);
}

TEST_F(ScheduleModelTest, eachRecurrenceOffersItsOwnFields) {
    const auto model = [this](ScheduleRecurrence recurrence) {
        return scheduleEditorModel({.recurrence = recurrence}, now);
    };
    const ScheduleEditorModel once = model(ScheduleRecurrence::once);
    EXPECT_TRUE(once.offersMoment);
    EXPECT_FALSE(once.offersTime || once.offersWeekdays || once.canRunInBackground);
    const ScheduleEditorModel daily = model(ScheduleRecurrence::daily);
    EXPECT_TRUE(daily.offersTime && daily.canRunInBackground);
    EXPECT_FALSE(daily.offersMoment || daily.offersWeekdays);
    const ScheduleEditorModel weekly = model(ScheduleRecurrence::weekly);
    EXPECT_TRUE(weekly.offersTime && weekly.canRunInBackground && weekly.offersWeekdays);
    EXPECT_FALSE(weekly.offersMoment);
}

TEST_F(ScheduleModelTest, onlyAPromptWithAWordInItCanBeSaved) {
    for (const QString &blank : {QString(), u"   "_s, u" \n\t\r\n "_s, u"\u00A0\u2003"_s})
        EXPECT_FALSE(scheduleEditorModel({.prompt = blank}, now).canSave);
    EXPECT_TRUE(scheduleEditorModel({.prompt = u" a\n"_s}, now).canSave) << "a title isn't needed";
    EXPECT_FALSE(scheduleEditorModel({.title = u"Morning"_s}, now).canSave);
}

TEST_F(ScheduleModelTest, aSingleRunWithoutAMomentShowsTheNextHour) {
    EXPECT_EQ(scheduleEditorModel({}, now).moment, QDateTime(QDate(2026, 11, 15), QTime(14, 18), Qt::UTC));
}

TEST_F(ScheduleModelTest, aMomentShowsAsTheClockOnTheWallDoesAlsoOnceItHasPassed) {
    const QDateTime past(QDate(2026, 7, 1), QTime(22, 30), Qt::UTC);
    EXPECT_EQ(scheduleEditorModel({.onceDate = past}, now).moment,
              QDateTime(QDate(2026, 7, 2), QTime(0, 30), Qt::UTC));
}

TEST_F(ScheduleModelTest, theTimeIsThatOfTheSchedule) {
    EXPECT_EQ(scheduleEditorModel({.hour = 8, .minute = 5}, now).time, QTime(8, 5));
}

TEST_F(ScheduleModelTest, aTimeThatNoClockShowsIsNow) {
    EXPECT_EQ(scheduleEditorModel({.hour = 24}, now).time, shownNow);
    EXPECT_EQ(scheduleEditorModel({.minute = 60}, now).time, shownNow);
    EXPECT_EQ(scheduleEditorModel({.hour = -1}, now).time, shownNow);
    EXPECT_EQ(scheduleEditorModel({.hour = (1LL << 32) + 9}, now).time, shownNow);
}

TEST_F(ScheduleModelTest, aTimeThatTheClockSkipsTodayIsTheNextThatItShows) {
    const QDateTime dayOfTheChange(QDate(2026, 3, 29), QTime(12, 0), Qt::UTC);
    EXPECT_EQ(scheduleEditorModel({.hour = 2, .minute = 30}, dayOfTheChange).time, QTime(3, 0));
    EXPECT_EQ(scheduleEditorModel({.hour = 2, .minute = 30}, now).time, QTime(2, 30));
}
