#include "schedules/Agents.h"

#include "platform/LaunchAgents.h"
#include "platform/linux/UserTimers.h"
#include "schedules/Samples.h"
#include "support/RecordingCommand.h"

#include <QDir>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString idText = u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s;
const QString label = u"com.quennarbel.ostrelin.schedule."_s + idText;
const QString executable = u"/opt/ostrelin"_s;

Schedule inBackground(Schedule schedule = sampleSchedule()) {
    schedule.runInBackground = true;
    return schedule;
}

/// What the system was asked for, in words.
class RecordingJobs : public UserJobs {
public:
    void bootOut(const QString &name) override { asked.append(u"out "_s + name); }
    void bootstrap(const UserJob &job) override {
        asked.append(u"in "_s + job.label);
        jobs.append(job);
    }

    QStringList asked;
    QList<UserJob> jobs;
};

} // namespace

TEST(AgentLabel, endsWithTheIdInUpperCase) {
    EXPECT_EQ(agentLabel(QUuid(idText.toLower())), label);
}

TEST(CalendarIntervals, dailyIsOneWithoutAWeekday) {
    Schedule schedule = sampleSchedule();
    schedule.minute = 30;
    schedule.weekdays = {2, 4};
    EXPECT_EQ(calendarIntervals(schedule), (QList<CalendarInterval>{{9, 30, {}}}));
}

TEST(CalendarIntervals, weeklyIsOneAWeekdayInItsOrderAndNumbering) {
    EXPECT_EQ(calendarIntervals(weeklySchedule({2, 4})), (QList<CalendarInterval>{{9, 0, 2}, {9, 0, 4}}));
    EXPECT_EQ(calendarIntervals(weeklySchedule({7, 1})), (QList<CalendarInterval>{{9, 0, 7}, {9, 0, 1}}));
}

TEST(CalendarIntervals, weeklyWithoutWeekdaysIsTheFirst) {
    EXPECT_EQ(calendarIntervals(weeklySchedule({})), (QList<CalendarInterval>{{9, 0, 1}}));
}

TEST(CalendarIntervals, onceHasTheFormOfDaily) {
    Schedule schedule = weeklySchedule({2, 4});
    schedule.recurrence = ScheduleRecurrence::once;
    EXPECT_EQ(calendarIntervals(schedule), (QList<CalendarInterval>{{9, 0, {}}}));
}

TEST(SyncAgents, everyJobIsBootedOutAndOnlyWantedOnesComeBack) {
    Schedule foreground = sampleSchedule();
    Schedule disabled = inBackground();
    disabled.enabled = false;
    Schedule once = inBackground();
    once.recurrence = ScheduleRecurrence::once;
    once.onceDate = QDateTime(QDate(2030, 1, 1), QTime(9, 0), Qt::UTC);
    for (const Schedule &schedule : {foreground, disabled, once}) {
        RecordingJobs jobs;
        syncAgents({schedule}, jobs, executable);
        EXPECT_EQ(jobs.asked, QStringList{u"out "_s + label});
    }
    for (const Schedule &schedule : {inBackground(), inBackground(weeklySchedule({}))}) {
        RecordingJobs jobs;
        syncAgents({schedule}, jobs, executable);
        EXPECT_EQ(jobs.asked, (QStringList{u"out "_s + label, u"in "_s + label}));
        EXPECT_EQ(jobs.jobs.first().command, (QStringList{executable, u"--run-schedule"_s, idText}));
        EXPECT_EQ(jobs.jobs.first().intervals, calendarIntervals(schedule));
    }
}

TEST(SyncAgents, theyComeInTheOrderOfTheSchedules) {
    QStringList expected;
    QList<Schedule> schedules;
    for (int index = 0; index < 3; ++index) {
        Schedule schedule = inBackground();
        schedule.id = QUuid::createUuid();
        schedules.append(schedule);
        expected << u"out "_s + agentLabel(schedule.id) << u"in "_s + agentLabel(schedule.id);
    }
    RecordingJobs jobs;
    syncAgents(schedules, jobs, executable);
    EXPECT_EQ(jobs.asked, expected);
}

TEST(SyncAgents, withoutAnExecutableNothingIsHandedOver) {
    RecordingJobs jobs;
    syncAgents({inBackground()}, jobs, QString());
    EXPECT_EQ(jobs.asked, QStringList{u"out "_s + label});
}

TEST(SyncAgents, withoutSchedulesNobodyIsAsked) {
    RecordingJobs jobs;
    syncAgents({}, jobs, executable);
    EXPECT_TRUE(jobs.asked.isEmpty());
}

TEST(SyncAgents, asLaunchAgents) {
    const QTemporaryDir home;
    const RecordingCommand launchctl(u"launchctl"_s);
    LaunchAgents agents(home.path(), launchctl.path());
    Schedule schedule = inBackground(weeklySchedule({2, 4}));
    syncAgents({schedule}, agents, executable);
    const QString domain = u"gui/"_s + QString::number(::getuid());
    const QString path = home.filePath(u"Library/LaunchAgents/"_s + label + u".plist"_s);
    const QStringList bootOut{u"bootout"_s, domain + u'/' + label};
    EXPECT_EQ(launchctl.calls(), (QList<QStringList>{bootOut, {u"bootstrap"_s, domain, path}}));
    EXPECT_TRUE(QFile::exists(path));
    schedule.enabled = false;
    syncAgents({schedule}, agents, executable);
    EXPECT_EQ(launchctl.calls().size(), 3);
    EXPECT_EQ(launchctl.calls().last(), bootOut);
    EXPECT_TRUE(QFile::exists(path)) << "it stays";
}

TEST(SyncAgents, asUserTimers) {
    const QTemporaryDir folder;
    const RecordingCommand systemctl(u"systemctl"_s);
    UserTimers timers(folder.path(), systemctl.path());
    Schedule schedule = inBackground();
    syncAgents({schedule}, timers, executable);
    schedule.runInBackground = false;
    syncAgents({schedule}, timers, executable);
    const QString timer = label + u".timer"_s;
    const QStringList bootOut{u"--user"_s, u"disable"_s, u"--now"_s, timer};
    EXPECT_EQ(systemctl.calls(), (QList<QStringList>{bootOut,
                                                     {u"--user"_s, u"daemon-reload"_s},
                                                     {u"--user"_s, u"enable"_s, u"--now"_s, timer},
                                                     bootOut}));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files, QDir::Name),
              (QStringList{label + u".service"_s, timer}));
}
