#include "schedules/Scheduler.h"

#include "conversation/TurnFixture.h"
#include "schedules/Samples.h"
#include "schedules/ScheduleStore.h"

#include <mutex>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QDateTime nine(QDate(2026, 11, 15), QTime(9, 0), Qt::UTC);

/// A scheduler at a quarter to nine, with a chat on a scripted engine.
class SchedulerTest : public TurnFixture {
protected:
    SchedulerTest() {
        clock.set(nine.addSecs(-900));
        makeScheduler();
    }

    void makeScheduler() {
        scheduler = std::make_unique<Scheduler>(
            *chat, clock,
            Scheduler::Points{.isReady = [this] { return isReady; },
                              .syncAgents =
                                  [this](const QList<Schedule> &schedules) {
                                      const std::lock_guard guard(lock);
                                      synced.append(schedules);
                                  },
                              .postNotification =
                                  [this](const QString &title, const QString &body, std::stop_token) {
                                      told.append(title + u": "_s + body);
                                      return nothing();
                                  }});
    }

    /// Begins at that moment with these schedules in the file.
    void startAt(const QDateTime &moment, const QList<Schedule> &schedules) {
        saveSchedules(schedules);
        clock.set(moment);
        scheduler->start();
    }

    /// Lets that much time pass, in ticks of the scheduler.
    void pass(std::chrono::seconds time) {
        for (; time > 0s; time -= 30s) {
            clock.advance(std::min(time, 30s));
            // It sleeps again once it has looked.
            ASSERT_TRUE(eventually([this] { return clock.hasSleepers(); }));
        }
    }

    static Schedule titled(const QString &title) {
        Schedule schedule = sampleSchedule();
        schedule.id = QUuid::createUuid();
        schedule.title = title;
        return schedule;
    }

    static Schedule stored(const QUuid &id = sampleSchedule().id) {
        for (const Schedule &schedule : loadSchedules()) {
            if (schedule.id == id)
                return schedule;
        }
        return {};
    }

    qsizetype syncs() const {
        const std::lock_guard guard(lock);
        return synced.size();
    }

    bool isTold(qsizetype count = 1) const {
        return eventually([this, count] { return told.size() == count; });
    }

    static Script halfAReply() {
        return Script().content(u"half"_s).hold().content(u" more"_s).finish(u"stop"_s).done();
    }

    bool isHalfSaid() {
        return eventually([this] { return chat->conversation() && last().content == u"half"_s; });
    }

    EnvironmentVariable zone{"TZ", "UTC"};
    bool isReady = true;
    QStringList told;
    mutable std::mutex lock;
    QList<QList<Schedule>> synced; ///< under the lock
    std::unique_ptr<Scheduler> scheduler;

private:
    static Task<> nothing() { co_return; }
};

} // namespace

TEST_F(SchedulerTest, theStartReadsTheSchedulesAndSyncsTheJobs) {
    const QSignalSpy changed(scheduler.get(), &Scheduler::schedulesChanged);
    EXPECT_TRUE(scheduler->schedules().isEmpty());
    startAt(nine.addSecs(60), {sampleSchedule()});
    EXPECT_EQ(scheduler->schedules(), QList{sampleSchedule()});
    EXPECT_EQ(changed.count(), 1);
    ASSERT_TRUE(eventually([this] { return syncs() == 1; }));
    EXPECT_EQ(synced.first(), QList{sampleSchedule()});
    letPass(50);
    EXPECT_TRUE(engine.requests().isEmpty()) << "the first look comes with the first tick";
}

TEST_F(SchedulerTest, whatComesDueIsRunInAChatOfItsOwn) {
    engine.answer(Script::reply({u"The weather."_s}));
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_EQ(told.first(), u"Morning: Your scheduled run is ready."_s);
    EXPECT_EQ(chat->conversation()->title, u"Morning"_s);
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages().first().content, u"What is good today?"_s);
    EXPECT_EQ(last().content, u"The weather."_s);
    Schedule expected = sampleSchedule();
    expected.lastRun = nine.addSecs(15);
    expected.lastChatId = chat->conversation()->id;
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(scheduler->schedules(), QList{expected});
    EXPECT_TRUE(eventually([this] { return syncs() == 2; }));
}

TEST_F(SchedulerTest, oneWithoutATitleHasAName) {
    engine.answer(Script::reply({u"Yes."_s}));
    Schedule schedule = sampleSchedule();
    schedule.title.clear();
    startAt(nine.addSecs(-15), {schedule});
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_EQ(told.first(), u"Scheduled run: Your scheduled run is ready."_s);
    EXPECT_EQ(chat->conversation()->title, u"Scheduled run"_s);
    EXPECT_EQ(stored().title, QString());
}

TEST_F(SchedulerTest, itBeginsWithTheFirstTickFromItsTimeOn) {
    engine.answer(Script::reply({u"Yes."_s}));
    startAt(nine.addSecs(-61), {sampleSchedule()});
    pass(60s);
    letPass(50);
    EXPECT_TRUE(engine.requests().isEmpty()) << "a second too early";
    pass(30s);
    ASSERT_TRUE(isTold());
}

TEST_F(SchedulerTest, whatWasMissedByFourMinutesIsRunAndBySixIsNot) {
    engine.answer(Script::reply({u"Yes."_s}));
    startAt(nine.addSecs(240), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isTold());
    scheduler.reset();
    makeScheduler();
    startAt(nine.addSecs(360), {sampleSchedule()});
    pass(120s);
    letPass(50);
    EXPECT_EQ(told.size(), 1);
    EXPECT_FALSE(stored().lastRun) << "it is passed over";
}

TEST_F(SchedulerTest, itRunsOnceAndAgainTheNextDay) {
    engine.answer(Script::reply({u"Yes."_s}));
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isTold());
    pass(570s);
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(engine.requests().size(), 1);
    clock.set(nine.addDays(1).addSecs(-15));
    pass(30s);
    EXPECT_TRUE(isTold(2));
}

TEST_F(SchedulerTest, whileTheChatIsNotReadyNothingRunsAndNothingIsRecorded) {
    engine.answer(Script::reply({u"Yes."_s}));
    isReady = false;
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(120s);
    scheduler->run(sampleSchedule());
    letPass(50);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(stored(), sampleSchedule());
    isReady = true;
    pass(30s);
    EXPECT_TRUE(isTold()) << "within the five minutes it still runs";
}

TEST_F(SchedulerTest, aBackgroundOneRunsHereWhileTheProgramIsOpen) {
    engine.answer(Script::reply({u"Yes."_s}));
    Schedule schedule = sampleSchedule();
    schedule.runInBackground = true;
    startAt(nine.addSecs(-15), {schedule});
    pass(30s);
    EXPECT_TRUE(isTold());
}

TEST_F(SchedulerTest, aDisabledOneIsRunByHandOnly) {
    engine.answer(Script::reply({u"Yes."_s}));
    Schedule schedule = sampleSchedule();
    schedule.enabled = false;
    startAt(nine.addSecs(-15), {schedule});
    pass(60s);
    letPass(50);
    EXPECT_TRUE(told.isEmpty());
    scheduler->run(schedule);
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(stored().lastRun);
    EXPECT_FALSE(stored().enabled);
}

TEST_F(SchedulerTest, ofTwoDueAtOnceTheFirstHasTheChatAndBothCountAsRun) {
    engine.answer(halfAReply());
    const Schedule one = titled(u"one"_s);
    const Schedule two = titled(u"two"_s);
    startAt(nine.addSecs(-15), {one, two});
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_EQ(told, QStringList{u"two: Your scheduled run is ready."_s});
    EXPECT_EQ(stored(two.id).lastChatId, chat->conversation()->id);
    EXPECT_FALSE(stored(one.id).lastRun);
    ASSERT_TRUE(isHalfSaid());
    engine.goOn();
    ASSERT_TRUE(isTold(2));
    EXPECT_EQ(chat->conversation()->title, u"one"_s);
    EXPECT_TRUE(stored(one.id).lastRun);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(SchedulerTest, duringAnotherReplyItCountsAsRunWithThatChat) {
    engine.answer(halfAReply());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(isHalfSaid());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_EQ(told.first(), u"Morning: Your scheduled run is ready."_s);
    EXPECT_EQ(stored().lastRun, nine.addSecs(15));
    EXPECT_EQ(stored().lastChatId, chat->conversation()->id);
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_EQ(messages().first().content, u"Hi"_s);
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(last().content, u"half more"_s);
    pass(300s);
    EXPECT_EQ(engine.requests().size(), 1) << "it isn't tried again";
}

TEST_F(SchedulerTest, aRunLongerThanATickIsRecordedByTheNextOneAndGoesOn) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    EXPECT_TRUE(told.isEmpty());
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_EQ(stored().lastRun, nine.addSecs(45));
    pass(180s);
    EXPECT_EQ(told.size(), 1) << "that ends the repeats";
    EXPECT_TRUE(chat->isGenerating());
    engine.goOn();
    ASSERT_TRUE(isTold(2));
    EXPECT_EQ(stored().lastRun, nine.addSecs(225));
    EXPECT_EQ(last().content, u"half more"_s);
}

TEST_F(SchedulerTest, aRunThatThePersonStopsCountsAsRun) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    chat->stop();
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(stored().lastRun);
}

TEST_F(SchedulerTest, withoutAnEngineTheRunEndsAndCountsAsRun) {
    host.url.reset();
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(stored().lastRun);
    EXPECT_FALSE(chat->isGenerating());
}

TEST_F(SchedulerTest, theChatIsTheOneOnScreenAtTheEnd) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    const QUuid own = chat->conversation()->id;
    chat->newChat();
    engine.goOn();
    ASSERT_TRUE(isTold());
    EXPECT_EQ(stored().lastChatId, chat->conversation()->id);
    EXPECT_NE(stored().lastChatId, own);
    EXPECT_EQ(ChatStore().load(own)->messages.last().content, u"half more"_s);
}

TEST_F(SchedulerTest, whereNoChatIsOnScreenAtTheEndNoneIsRecorded) {
    engine.answer(halfAReply());
    Schedule schedule = sampleSchedule();
    schedule.lastChatId = QUuid::createUuid();
    startAt(nine.addSecs(-15), {schedule});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    chat->resetAll();
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(stored().lastRun);
    EXPECT_FALSE(stored().lastChatId);
}

TEST_F(SchedulerTest, whatThePersonChangesDuringARunStays) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    Schedule changed = sampleSchedule();
    changed.hour = 17;
    scheduler->upsert(changed);
    engine.goOn();
    ASSERT_TRUE(isTold());
    EXPECT_EQ(stored().hour, 17);
    EXPECT_TRUE(stored().lastRun);
}

TEST_F(SchedulerTest, whatThePersonDeletesDuringARunStaysDeleted) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    scheduler->remove(sampleSchedule().id);
    engine.goOn();
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(loadSchedules().isEmpty());
}

TEST_F(SchedulerTest, oneThatIsNotInTheFileIsPutThere) {
    engine.answer(Script::reply({u"Yes."_s}));
    scheduler->run(sampleSchedule());
    ASSERT_TRUE(isTold());
    EXPECT_TRUE(stored().lastRun);
}

TEST_F(SchedulerTest, changesGoThroughTheFileAndToTheJobs) {
    const QSignalSpy changed(scheduler.get(), &Scheduler::schedulesChanged);
    const Schedule one = titled(u"one"_s);
    const Schedule two = titled(u"two"_s);
    scheduler->upsert(one);
    scheduler->upsert(two);
    EXPECT_EQ(loadSchedules(), (QList{one, two}));
    EXPECT_EQ(scheduler->schedules(), loadSchedules());
    scheduler->remove(one.id);
    EXPECT_EQ(loadSchedules(), QList{two});
    EXPECT_EQ(scheduler->schedules(), loadSchedules());
    EXPECT_EQ(changed.count(), 3);
    ASSERT_TRUE(eventually([this] { return syncs() == 3; }));
    EXPECT_EQ(synced, (QList<QList<Schedule>>{{one}, {one, two}, {two}}));
    saveSchedules({});
    EXPECT_EQ(scheduler->schedules(), QList{two});
    scheduler->reload();
    EXPECT_TRUE(scheduler->schedules().isEmpty());
    scheduler->reload();
    EXPECT_EQ(changed.count(), 4);
}

TEST_F(SchedulerTest, aSecondStartLeavesOneTimer) {
    engine.answer(Script::reply({u"Yes."_s}));
    startAt(nine.addSecs(-45), {sampleSchedule()});
    clock.advance(15s);
    scheduler->start();
    letPass(20);
    clock.advance(15s);
    letPass(50);
    EXPECT_TRUE(told.isEmpty()) << "the first timer would be early";
    clock.advance(15s);
    EXPECT_TRUE(isTold());
    letPass(50);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(SchedulerTest, afterTheStopNothingIsDueAndTheListStays) {
    engine.answer(Script::reply({u"Yes."_s}));
    startAt(nine.addSecs(-15), {sampleSchedule()});
    const Schedule other = titled(u"other"_s);
    saveSchedules({other});
    scheduler->stop();
    EXPECT_EQ(scheduler->schedules(), QList{other}) << "read a last time";
    letPass(20);
    clock.advance(120s);
    letPass(50);
    EXPECT_TRUE(engine.requests().isEmpty());
    EXPECT_FALSE(clock.hasSleepers());
}

TEST_F(SchedulerTest, aRunThatIsUnderWayAtTheStopRecordsNothing) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    scheduler->stop();
    chat->stop();
    letPass(50);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(stored(), sampleSchedule());
}

TEST_F(SchedulerTest, itMayGoInTheMiddleOfARun) {
    engine.answer(halfAReply());
    startAt(nine.addSecs(-15), {sampleSchedule()});
    pass(30s);
    ASSERT_TRUE(isHalfSaid());
    scheduler.reset();
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    letPass(50);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(stored(), sampleSchedule());
    EXPECT_EQ(last().content, u"half more"_s);
}

TEST_F(SchedulerTest, aSystemThatTakesItsTimeHoldsNothingUpButTheEnd) {
    std::promise<void> answer;
    std::shared_future<void> answered(answer.get_future());
    scheduler =
        std::make_unique<Scheduler>(*chat, clock,
                                    Scheduler::Points{.isReady = [] { return true; },
                                                      .syncAgents =
                                                          [this, answered](const QList<Schedule> &schedules) {
                                                              answered.wait();
                                                              const std::lock_guard guard(lock);
                                                              synced.append(schedules);
                                                          },
                                                      .postNotification = {}});
    const Schedule one = titled(u"one"_s);
    const Schedule two = titled(u"two"_s);
    saveSchedules({one});
    scheduler->start();
    scheduler->upsert(two);
    scheduler->remove(one.id);
    EXPECT_EQ(syncs(), 0);
    answer.set_value();
    scheduler.reset();
    EXPECT_EQ(synced, (QList<QList<Schedule>>{{one}, {one, two}, {two}}));
}
